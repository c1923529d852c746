#pragma once

#include <QLineEdit>
#include <QString>

#include "base/numbers.h"
#include "shell/parts/unicode_text.h"

// Numbers as the fields of the editor's windows show them.
namespace kestrel::shell {

inline QString NumberText(double number) { return FromBytes(base::FormatInvariant(number, "0.00")); }

/// What is no number, an empty field too, is 0.
inline double NumberOf(const QLineEdit& field) { return base::InvariantNumber(ToBytes(field.text())); }

}  // namespace kestrel::shell
