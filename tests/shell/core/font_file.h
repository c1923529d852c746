#pragma once

#include <QByteArray>
#include <QFont>
#include <QRawFont>
#include <QString>
#include <QtEndian>

// Fonts of the test's own, so that no test depends on which ones the system has.
namespace kestrel::shell {

/// The outlines of the application's font as a font file of `family` with one style. Empty where the application's font
/// is none that has outlines of that kind.
inline QByteArray FontFile(const QString& family, const QString& style, bool italic) {
  const auto number = [](auto value) {
    QByteArray bytes(sizeof(value), '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
  };
  const QRawFont outlines = QRawFont::fromFont(QFont());
  // Names 1, 2, 4 and 6 (family, style, full name, name in PostScript) in UTF-16, for Windows, US English.
  QByteArray entries, texts;
  const std::pair<quint16, QString> names[] = {
      {1, family}, {2, style}, {4, family + u' ' + style}, {6, family + style}};
  for (const auto& [id, name] : names) {
    QByteArray text;
    for (const QChar letter : name) text += number(letter.unicode());
    for (const quint16 field : {quint16{3}, quint16{1}, quint16{0x409}, id, static_cast<quint16>(text.size()),
                                static_cast<quint16>(texts.size())}) {
      entries += number(field);
    }
    texts += text;
  }
  const QByteArray nameTable = number(quint16{0}) + number(quint16{4}) + number(quint16{6 + 4 * 12}) + entries + texts;

  // In the order of their tags, as the directory wants them.
  const char* const tags[] = {"OS/2", "cmap", "cvt ", "fpgm", "glyf", "head", "hhea",
                              "hmtx", "loca", "maxp", "name", "post", "prep"};
  QList<std::pair<QByteArray, QByteArray>> tables;
  for (const char* tag : tags) {
    QByteArray table = qstrcmp(tag, "name") == 0 ? nameTable : outlines.fontTable(tag);
    if (table.isEmpty()) continue;
    // Where they say whether the style is slanted or bold.
    if (qstrcmp(tag, "OS/2") == 0) table.replace(62, 2, number(italic ? quint16{0x01} : quint16{0x40}));
    if (qstrcmp(tag, "head") == 0) table.replace(44, 2, number(italic ? quint16{2} : quint16{0}));
    tables.append({QByteArray(tag), table});
  }
  if (outlines.fontTable("glyf").isEmpty()) return {};
  const auto count = static_cast<quint16>(tables.size());
  QByteArray file =
      number(quint32{0x10000}) + number(count) + number(quint16{0}) + number(quint16{0}) + number(quint16{0});
  quint32 at = 12 + 16 * quint32{count};
  QByteArray bodies;
  for (auto& [tag, table] : tables) {
    file += tag + number(quint32{0}) + number(at) + number(static_cast<quint32>(table.size()));
    while (table.size() % 4 != 0) table += '\0';
    bodies += table;
    at += static_cast<quint32>(table.size());
  }
  return file + bodies;
}

}  // namespace kestrel::shell
