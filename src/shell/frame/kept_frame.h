#pragma once

#include <QWidget>

#include "core/window_places.h"

// The frame as the last closing left it, while KEEPFRAME.
namespace kestrel::shell {

/// Gives the frame, which is not shown yet, the place and size that are kept, if any are: on the nearest screen and no
/// larger than that has room for.
void TakeFrame(QWidget& frame, const core::WindowExtras& kept);

/// Keeps where the frame stands and how large it is, those while it is not maximised.
void KeepFrame(const QWidget& frame, core::WindowExtras& kept);

}  // namespace kestrel::shell
