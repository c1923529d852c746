#pragma once

#include <QLabel>

namespace kestrel::shell {

/// Least width of the windows that show them, pixels: all are alike and can stand in one column.
inline constexpr int BodyWidth = 144;

/// A label for numbers that change all the time, somewhat larger than other text: digits of one width, at the right
/// edge of room for its `longest` text, so that nothing jumps.
QLabel* NewReadOut(const char* name, const QString& longest, const QString& meaning, QWidget* owner);

}  // namespace kestrel::shell
