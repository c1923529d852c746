#pragma once

#include <QLineEdit>
#include <QValidator>
#include <algorithm>
#include <utility>

namespace kestrel::shell {

/// What a field of numbers takes.
struct NumberCharacters {
  QString Taken;              ///< anywhere in the text
  bool SignInFront = false;   ///< and one "+" or "-", as the first character
  bool CommaIsPoint = false;  ///< each "," becomes a "." at once
};

inline NumberCharacters Digits() { return {QStringLiteral("0123456789")}; }
inline NumberCharacters DigitsAndPoint() { return {QStringLiteral("0123456789,.")}; }
inline NumberCharacters SignedNumber() { return {QStringLiteral("0123456789,."), true}; }

/// Lets a person put only the characters of a number into a field. What the program has put there stands, whatever it
/// is: only what is typed or pasted is judged, all of it or nothing is taken, and what stood before can be brought
/// back.
class CharacterFilter final : public QValidator {
 public:
  /// Becomes the validator of `judged`, which owns it.
  CharacterFilter(NumberCharacters characters, QLineEdit& judged)
      : QValidator(&judged), takes(std::move(characters)), field(judged), former(judged.text()) {
    field.setValidator(this);
  }

  State validate(QString& text, int&) const override {
    // A text of the program's has no history to go back in, and one that is brought back has one to go forward in.
    const bool byHand = field.isUndoAvailable() && !field.isRedoAvailable();
    if (byHand && !MayBecome(text)) return Invalid;
    if (takes.CommaIsPoint) text.replace(u',', u'.');
    former = text;
    return Acceptable;
  }

 private:
  static bool IsSign(QChar letter) { return letter == u'-' || letter == u'+'; }

  /// Judges what `text` has between the beginning and the end that it shares with the former text.
  bool MayBecome(const QString& text) const {
    const qsizetype shared = std::min(text.size(), former.size());
    qsizetype begin = 0;
    while (begin < shared && text[begin] == former[begin]) ++begin;
    qsizetype tail = 0;
    while (tail < shared - begin && text[text.size() - 1 - tail] == former[former.size() - 1 - tail]) ++tail;
    const qsizetype end = text.size() - tail;
    for (qsizetype at = begin; at < end; ++at) {
      if (!takes.Taken.contains(text[at]) && !(takes.SignInFront && at == 0 && IsSign(text[at]))) return false;
    }
    // Nothing stands before a sign.
    return !(takes.SignInFront && begin == 0 && end > 0 && end < text.size() && IsSign(text[end]));
  }

  NumberCharacters takes;
  QLineEdit& field;
  mutable QString former;  ///< what stood in the field when it was last judged
};

}  // namespace kestrel::shell
