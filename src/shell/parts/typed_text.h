#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string>

class QLabel;
class QLineEdit;

// What a person types is Unicode; the station holds bytes of its code page. Every field whose text is kept goes through
// here, so that no character turns into a "?" without a word.
namespace kestrel::shell {

/// The characters of `text` that the code page does not hold, each once, in their order. One that cannot be seen is
/// given as its number, "U+200B".
QStringList UnheldCharacters(const QString& text);

/// The sentence that names them, "This character cannot be used here: x."; empty when there are none.
QString UnheldSentence(const QStringList& characters);

/// What stands in `field` as bytes of the code page; `refused` is hidden then. Nothing when the code page does not hold
/// all of it: `refused` names the characters in a sentence, and the field, left as it was typed, has the keyboard.
std::optional<std::string> TakeText(QLineEdit& field, QLabel& refused);

}  // namespace kestrel::shell
