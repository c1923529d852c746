#pragma once

#include <QColor>
#include <QIcon>

// The pictures of the clients window, drawn at every size; each is told by its shape, its colour only helps.
namespace kestrel::shell {

/// Picture of a client's status: 1 a ring, 2 a cross, 3 a bar; 0 is no picture.
QIcon StatusIcon(int picture);
/// A plug in its socket, or a plug pulled out.
QIcon LinkIcon(bool connected);
/// A field of the plot's colour.
QIcon ColourIcon(const QColor& colour, const QSize& size);

}  // namespace kestrel::shell
