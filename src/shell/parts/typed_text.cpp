#include "shell/parts/typed_text.h"

#include <QLabel>
#include <QLineEdit>

#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// As many as a sentence has room for.
constexpr qsizetype MostNamed = 8;

QString Named(char32_t letter) {
  // A mark stands on the letter before it and would not be seen by itself.
  if (QChar::isPrint(letter) && !QChar::isSpace(letter) && !QChar::isMark(letter)) {
    return QString::fromUcs4(&letter, 1);
  }
  return QStringLiteral("U+%1").arg(static_cast<uint>(letter), 4, 16, QLatin1Char('0')).toUpper();
}

}  // namespace

QStringList UnheldCharacters(const QString& text) {
  QStringList unheld;
  for (const char32_t letter : text.toStdU32String()) {
    const QString character = QString::fromUcs4(&letter, 1);
    if (FromBytes(ToBytes(character)) == character) continue;
    const QString name = Named(letter);
    if (!unheld.contains(name)) unheld << name;
  }
  return unheld;
}

QString UnheldSentence(const QStringList& characters) {
  if (characters.isEmpty()) return {};
  QString named = characters.mid(0, MostNamed).join(QStringLiteral(", "));
  if (characters.size() > MostNamed) named += QStringLiteral(" and %1 more").arg(characters.size() - MostNamed);
  return (characters.size() == 1 ? QStringLiteral("This character cannot be used here: ")
                                 : QStringLiteral("These characters cannot be used here: ")) +
         named + u'.';
}

std::optional<std::string> TakeText(QLineEdit& field, QLabel& refused) {
  const QStringList unheld = UnheldCharacters(field.text());
  refused.setTextFormat(Qt::PlainText);
  refused.setText(UnheldSentence(unheld));
  refused.setVisible(!unheld.isEmpty());
  if (unheld.isEmpty()) return ToBytes(field.text());
  field.setFocus();
  return std::nullopt;
}

}  // namespace kestrel::shell
