#ifdef __linux__

#include "platform/linux/key_symbols.h"

#include <X11/keysym.h>
#include <gtest/gtest.h>

namespace kestrel::platform {
namespace {

TEST(KeySymbols, FunctionKeys) {
  for (unsigned long n = 0; n < 24; ++n) EXPECT_EQ(KeyOfSymbol(XK_F1 + n, 0, false), 112 + static_cast<int>(n));
}

TEST(KeySymbols, KeysThatWriteNothing) {
  struct {
    unsigned long Symbol;
    std::int32_t KeyCode;
  } const rows[] = {
      {XK_Cancel, 3},   {XK_BackSpace, 8},  {XK_Tab, 9},        {XK_Clear, 12},     {XK_Return, 13},
      {XK_Shift_L, 16}, {XK_Shift_R, 16},   {XK_Control_L, 17}, {XK_Control_R, 17}, {XK_Alt_L, 18},
      {XK_Alt_R, 18},   {XK_Pause, 19},     {XK_Caps_Lock, 20}, {XK_Escape, 27},    {XK_space, 32},
      {XK_Page_Up, 33}, {XK_Page_Down, 34}, {XK_End, 35},       {XK_Home, 36},      {XK_Left, 37},
      {XK_Up, 38},      {XK_Right, 39},     {XK_Down, 40},      {XK_Select, 41},    {XK_Execute, 43},
      {XK_Print, 44},   {XK_Insert, 45},    {XK_Delete, 46},    {XK_Help, 47},      {XK_Num_Lock, 144},
  };
  for (const auto& row : rows) EXPECT_EQ(KeyOfSymbol(row.Symbol, 0, false), row.KeyCode) << row.Symbol;
}

TEST(KeySymbols, TheKeypadWithAndWithoutItsDigits) {
  struct {
    unsigned long Symbol;
    std::int32_t Without, With;
  } const rows[] = {
      {XK_KP_Insert, 45, 96}, {XK_KP_End, 35, 97},      {XK_KP_Down, 40, 98},       {XK_KP_Page_Down, 34, 99},
      {XK_KP_Left, 37, 100},  {XK_KP_Begin, 12, 101},   {XK_KP_Right, 39, 102},     {XK_KP_Home, 36, 103},
      {XK_KP_Up, 38, 104},    {XK_KP_Page_Up, 33, 105}, {XK_KP_Delete, 46, 110},    {XK_KP_Multiply, 106, 106},
      {XK_KP_Add, 107, 107},  {XK_KP_Enter, 108, 108},  {XK_KP_Subtract, 109, 109}, {XK_KP_Divide, 111, 111},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(KeyOfSymbol(row.Symbol, 0, false), row.Without) << row.Symbol;
    EXPECT_EQ(KeyOfSymbol(row.Symbol, 0, true), row.With) << row.Symbol;
  }
}

TEST(KeySymbols, WhatWritesIsFoundByLetterThenByPlace) {
  EXPECT_EQ(KeyOfSymbol(XK_q, 24, false), 81);
  EXPECT_EQ(KeyOfSymbol(XK_a, 24, false), 65) << "French: a where q stands";
  EXPECT_EQ(KeyOfSymbol(XK_semicolon, 47, false), 186);
  EXPECT_EQ(KeyOfSymbol(XK_odiaeresis, 47, false), 186);
  EXPECT_EQ(KeyOfSymbol(XK_ampersand, 10, false), 49) << "French: 1";
  EXPECT_EQ(KeyOfSymbol(XK_Cyrillic_ef, 38, false), 65);
  EXPECT_EQ(KeyOfSymbol(XK_comma, 0, false), 188) << "of an unknown place";
  EXPECT_EQ(KeyOfSymbol(XK_Cyrillic_ef, 0, false), 0);
  EXPECT_EQ(KeyOfSymbol(0, 255, false), 0);
}

TEST(KeySymbols, AltGrIsNotAlt) { EXPECT_NE(KeyOfSymbol(XK_ISO_Level3_Shift, 108, false), 18); }

}  // namespace
}  // namespace kestrel::platform

#endif
