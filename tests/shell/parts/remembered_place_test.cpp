#include "shell/parts/remembered_place.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QGuiApplication>
#include <QScreen>

namespace kestrel::shell {
namespace {

TEST(RememberedPlaces, ADialogStandsWhereItStood) {
  QDialog dialog;
  TakePlace(dialog, 50 * 15, 60 * 15);
  EXPECT_EQ(dialog.pos(), QPoint(50, 60));
}

TEST(RememberedPlaces, OneThatNeverStoodAnywhereFindsItsPlaceByItself) {
  QDialog dialog;
  dialog.move(7, 8);
  TakePlace(dialog, 0, 0);
  EXPECT_EQ(dialog.pos(), QPoint(7, 8));
}

TEST(RememberedPlaces, OneThatNoScreenShowsComesBackToTheNearestPlace) {
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  QDialog dialog;
  dialog.setMinimumSize(200, 100);
  TakePlace(dialog, 900'000, 60 * 15);
  EXPECT_EQ(dialog.pos(), QPoint(screen.right() + 1 - 200, 60));
  // On the screen by its corner alone.
  TakePlace(dialog, (screen.right() - 5) * 15, (screen.bottom() - 5) * 15);
  EXPECT_EQ(dialog.pos(), QPoint(screen.right() + 1 - 200, screen.bottom() + 1 - 100));
  TakePlace(dialog, -900'000, -900'000);
  EXPECT_EQ(dialog.pos(), screen.topLeft());
}

}  // namespace
}  // namespace kestrel::shell
