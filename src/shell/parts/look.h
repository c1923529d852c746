#pragma once

#include <QApplication>
#include <QColor>
#include <QIcon>
#include <QPalette>

// How the station looks: one style on every platform, a dark and a light palette of its own.
namespace kestrel::shell {

/// True when the system's windows are dark. To be asked before ApplyLook, which hides it; the first answer stands.
bool SystemIsDark();
/// Fusion style and our palette.
void ApplyLook(QApplication& application, bool dark);
/// What a person has chosen: 1 light, 2 dark, any other as the system. All windows change their colours at once.
void ChooseLook(int look);

/// The lamps' lit colours in the palette in use.
struct LampColours {
  QColor Connection;
  QColor Activity;
  QColor Recording;
  QColor Transmit;
};
LampColours LampColoursOf(const QPalette& palette);

/// What surrounds the theater on the map.
QColor MapSurround(const QPalette& palette);

/// The window icon: a hovering bird over the rings of a radar, drawn at every size.
QIcon ProgramIcon();
/// The picture of that icon at one size, pixels.
QPixmap ProgramPicture(int side);

}  // namespace kestrel::shell
