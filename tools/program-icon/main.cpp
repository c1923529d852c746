// Writes the program's icon, as the station paints it: as the icon file of Windows, or as pictures, each of the size
// that its path names:
//   program-icon packaging/windows/kestrel.ico
//   program-icon hicolor/16x16/apps/kestrel.png hicolor/32x32/apps/kestrel.png
#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QList>
#include <QRegularExpression>
#include <QStringList>
#include <QTextStream>

#include "shell/parts/look.h"

namespace {

/// From this side on a picture is kept as PNG, below as a plain bitmap, which old readers of icons ask for.
constexpr int SmallestPng = 64;

QImage Picture(int side) {
  return kestrel::shell::ProgramPicture(side).toImage().convertToFormat(QImage::Format_ARGB32);
}

QByteArray AsPng(const QImage& picture) {
  QBuffer bytes;
  bytes.open(QBuffer::WriteOnly);
  picture.save(&bytes, "PNG");
  return bytes.data();
}

/// A bitmap header that counts the rows twice, 32 bits for each pixel from the bottom row up, and a mask of one bit for
/// each pixel, which is empty because the pixels hold their own opacity.
QByteArray AsBitmap(const QImage& picture) {
  const int side = picture.width();
  QByteArray bytes;
  QDataStream out(&bytes, QDataStream::WriteOnly);
  out.setByteOrder(QDataStream::LittleEndian);
  out << quint32{40} << qint32{side} << qint32{2 * side} << quint16{1} << quint16{32} << quint32{0} << quint32{0}
      << quint32{0} << quint32{0} << quint32{0} << quint32{0};
  for (int y = side - 1; y >= 0; --y) {
    for (int x = 0; x < side; ++x) out << quint32{picture.pixel(x, y)};
  }
  // Rows of the mask fill whole 32 bits.
  bytes.append(QByteArray((side + 31) / 32 * 4 * side, '\0'));
  return bytes;
}

QByteArray IconFile() {
  struct Entry {
    int Side;
    QByteArray Bytes;
  };
  QList<Entry> entries;
  for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
    const QImage picture = Picture(side);
    entries.append({side, side < SmallestPng ? AsBitmap(picture) : AsPng(picture)});
  }
  QByteArray file;
  QDataStream out(&file, QDataStream::WriteOnly);
  out.setByteOrder(QDataStream::LittleEndian);
  out << quint16{0} << quint16{1} << quint16(entries.size());
  quint32 offset = 6 + 16 * static_cast<quint32>(entries.size());
  for (const Entry& entry : entries) {
    // 0 stands for 256.
    const auto side = static_cast<quint8>(entry.Side % 256);
    const auto length = static_cast<quint32>(entry.Bytes.size());
    out << side << side << quint8{0} << quint8{0} << quint16{1} << quint16{32} << length << offset;
    offset += length;
  }
  for (const Entry& entry : entries) file += entry.Bytes;
  return file;
}

/// What belongs into the file; nothing for a name that is neither.
QByteArray Contents(const QString& name) {
  if (name.endsWith(QStringLiteral(".ico"))) return IconFile();
  static const QRegularExpression size(QStringLiteral("/([0-9]+)x\\1/.*\\.png$"));
  const QRegularExpressionMatch match = size.match(name);
  return match.hasMatch() ? AsPng(Picture(match.captured(1).toInt())) : QByteArray();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  QTextStream complaint(stderr);
  const QStringList names = QCoreApplication::arguments().mid(1);
  for (const QString& name : names) {
    const QByteArray bytes = Contents(name);
    if (bytes.isEmpty()) {
      complaint << name << ": neither an .ico nor a .png in a folder such as 16x16\n";
      return 2;
    }
    QFile file(name);
    QDir().mkpath(QFileInfo(name).path());
    if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
      complaint << name << ": " << file.errorString() << "\n";
      return 1;
    }
  }
  if (names.isEmpty()) complaint << "program-icon FILE...\n";
  return names.isEmpty() ? 2 : 0;
}
