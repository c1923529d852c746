#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <cstdint>

// The icons of the map (map/icon_strokes) as pictures for controls.
namespace kestrel::shell {

/// Icon `number` in the middle of a field of `side` device-independent pixels, in `ink` on `ground`, at its size on the
/// map. A number without a shape leaves the ground.
QPixmap MapIconPicture(std::int32_t number, int side, double devicePixelRatio, const QColor& ink, const QColor& ground);

/// The same for a button: on nothing, in the text colour that the button has.
QIcon MapIcon(std::int32_t number);

}  // namespace kestrel::shell
