#pragma once

#include <QValidator>

#include "shell/theaters/character_filter.h"

namespace kestrel::shell {

/// Lets a field take digits, "," and "." and makes each "," a ".".
class NumberFilter final : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int&) const override {
    text.replace(u',', u'.');
    for (const QChar letter : text) {
      if (!DigitsAndPoint().contains(letter)) return Invalid;
    }
    return Acceptable;
  }
};

}  // namespace kestrel::shell
