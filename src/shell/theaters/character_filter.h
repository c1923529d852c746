#pragma once

#include <QValidator>

namespace kestrel::shell {

/// Lets a field take the characters of a list and no others.
class CharacterFilter final : public QValidator {
 public:
  CharacterFilter(QString characters, QObject* owner) : QValidator(owner), allowed(std::move(characters)) {}

  State validate(QString& text, int&) const override {
    for (const QChar letter : text) {
      if (!allowed.contains(letter)) return Invalid;
    }
    return Acceptable;
  }

 private:
  QString allowed;
};

/// What the fields of whole numbers and of map units take.
inline QString Digits() { return QStringLiteral("0123456789"); }
inline QString DigitsAndPoint() { return QStringLiteral("0123456789,."); }

}  // namespace kestrel::shell
