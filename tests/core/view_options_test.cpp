#include "core/view_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <type_traits>

#include "core/settings.h"
#include "link/roster.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using base::Changed;
using testing::ElementsAre;
using testing::SizeIs;

class ViewOptions : public testing::Test {
 protected:
  const OptionRow& Row(std::string_view control) { return RowOf(rows, control); }

  ProgramFolder folder;
  Around around{folder.Path};
  std::vector<OptionRow> rows = OptionsTable(around.State);
};

/// Where a row's value is kept.
const void* Address(const OptionField& field) {
  return std::visit(
      [](const auto& bound) -> const void* {
        if constexpr (std::is_same_v<decltype(bound), const FontField&>) {
          return bound.Font;
        } else {
          return bound;
        }
      },
      field);
}

TEST_F(ViewOptions, EachControlStandsOnceAndHasASettingOfItsOwn) {
  std::set<std::string_view> names;
  std::set<const void*> fields;
  for (const OptionRow& row : rows) {
    EXPECT_TRUE(names.insert(row.Control).second) << row.Control;
    EXPECT_TRUE(fields.insert(Address(row.Bound)).second) << row.Control;
  }
  EXPECT_THAT(rows, SizeIs(68));
  EXPECT_THROW(Row("chkNothing"), std::out_of_range);
}

TEST_F(ViewOptions, AStoredTickTellsItsRedraw) {
  EXPECT_EQ(SetOption(around.All, Row("Check1"), false), Changed::Plots);
  EXPECT_FALSE(around.State.MapOptions.REALVISIBLE);
  EXPECT_EQ(SetOption(around.All, Row("chkShowLat"), false), Changed::Map);
  EXPECT_EQ(SetOption(around.All, Row("chkMapAutofocus"), false), Changed::Nothing);
  EXPECT_EQ(SetOption(around.All, Row("Combo1"), std::int16_t{8}), Changed::MiniMap);
  EXPECT_EQ(around.State.MapOptions.MINIMAPSCALE, 8);
}

TEST_F(ViewOptions, LabelFlagsAreSetOnRecordsWithAClientIdAlone) {
  link::AddAWASCClient(
      "10\x1e"
      "Adams\x1e"
      "\x1eO",
      true, around.State.Plots);
  link::AddAWASCClient(
      "20\x1e"
      "Baker\x1e"
      "\x1eO",
      true, around.State.Plots);
  around.State.Plots.Clients[1].ClientId = 0;
  around.State.Plots.Clients[0].ShowLabel = true;
  EXPECT_EQ(SetOption(around.All, Row("Check4"), false), Changed::Plots);
  EXPECT_TRUE(around.State.Plots.Clients[0].ShowLabel);
  EXPECT_TRUE(around.State.Plots.Clients[1].ShowLabel);
  EXPECT_FALSE(around.State.Plots.Clients[2].ShowLabel);
}

TEST_F(ViewOptions, AutoFriendsOnReplacesTheListAndOffLeavesIt) {
  around.State.LinkOptions.FriendNames.Append("Cowboy");
  around.State.Plots.FriendlyList.Append("Bandit");
  EXPECT_EQ(SetOption(around.All, Row("Check7"), true), Changed::Options);
  EXPECT_THAT(around.State.Plots.FriendlyList.Live(), ElementsAre("Cowboy"));
  SetOption(around.All, Row("Check7"), false);
  EXPECT_THAT(around.State.Plots.FriendlyList.Live(), ElementsAre("Cowboy"));
}

TEST_F(ViewOptions, TypedNumbersAreReadWhateverTheLocale) {
  const std::pair<const char*, double> texts[] = {{"12.5", 12.5}, {"12,5", 12.5}, {"1.234,5", 1.234},
                                                  {"", 0},        {".", 0},       {"007", 7},
                                                  {"5.", 5},      {",25", 0.25},  {"181", 181}};
  for (const auto& [text, value] : texts) {
    const TypedNumber typed = ReadTyped(Row("txtILSDrawDist"), text);
    EXPECT_EQ(typed.Value, value) << text;
    EXPECT_FALSE(typed.OutOfRange) << text;
  }
}

TEST_F(ViewOptions, AnglesGoFromZeroUpTo180) {
  for (const char* control : {"txtILSAngle", "txtTailAngle"}) {
    for (const char* text : {"0", "0.01", "179.99", "180", "180.0"}) {
      EXPECT_FALSE(ReadTyped(Row(control), text).OutOfRange) << text;
    }
    for (const char* text : {"180.01", "181", "99999", "-1"}) {
      const TypedNumber typed = ReadTyped(Row(control), text);
      EXPECT_TRUE(typed.OutOfRange) << text;
      EXPECT_EQ(typed.Value, 0) << text;
    }
  }
}

TEST_F(ViewOptions, FieldsShowTwoPlaces) {
  EXPECT_EQ(TypedText(0), "0.00");
  EXPECT_EQ(TypedText(12.345), "12.35");
}

TEST_F(ViewOptions, AFontsColorGoesToItsKey) {
  map::Options& options = around.State.MapOptions;
  const base::FontRecord red{.FontName = "Arial", .FontSize = 9, .Color = 255};
  EXPECT_EQ(SetFont(around.All, Row("cmdCursorFont"), red), Changed::CursorLine);
  EXPECT_EQ(options.CURSOR_FONT.FontName, "Arial");
  EXPECT_EQ(options.CURSOR_TEXT_COOR, base::Colour{255});
  EXPECT_EQ(FontOf(Row("cmdCursorFont")).Color, base::Colour{255});
  SetFont(around.All, Row("cmdFontILS"), red);
  EXPECT_EQ(options.ILS_LABEL_FONT.Color, base::Colour{255});
  SetFont(around.All, Row("cmdAreaNameFont"), red);
  EXPECT_EQ(options.AREAS_TITLE_FONT.FontName, "Arial");
  EXPECT_EQ(options.AREAS_TITLE_FONT.Color, base::Colour{0}) << "it has no key";
}

class DebugFiles : public ViewOptions {};

TEST_F(DebugFiles, DebugOpensBothFilesAndClosesThem) {
  around.State.Notes = {"a note of the start"};
  EXPECT_EQ(SetOption(around.All, Row("chkDebug"), true), Changed::Nothing);
  EXPECT_TRUE(around.Log.On());
  EXPECT_TRUE(around.Raw.IsOpen());
  EXPECT_EQ(folder.Read("KESTRELLog.txt"), "a note of the start\r\n");
  around.Raw.Arrival("SYNCRO");
  SetOption(around.All, Row("chkDebug"), false);
  EXPECT_FALSE(around.Log.On());
  EXPECT_FALSE(around.Raw.IsOpen());
  EXPECT_EQ(folder.Read("debug_out.dat"),
            "--------->>>>>> Debug Started at 12:00:00<<<<<<---------\r\n12:00:00|SYNCRO\r\n"
            "--------->>>>>> Debug ended at 12:00:00<<<<<<---------\r\n");
}

TEST_F(DebugFiles, TickedAgainTheLogGoesOnAndTheCaptureIsMadeAnew) {
  folder.Write("KESTRELLog.txt", "of a former run");
  around.State.Notes = {"a note of the start"};
  for (const char* line : {"first", "second"}) {
    SetOption(around.All, Row("chkDebug"), true);
    around.Log.LogLine(line);
    around.Raw.Arrival(line);
    SetOption(around.All, Row("chkDebug"), false);
  }
  EXPECT_EQ(folder.Read("KESTRELLog.txt"), "a note of the start\r\nfirst\r\nsecond\r\n");
  EXPECT_THAT(folder.Read("debug_out.dat"), testing::Not(testing::HasSubstr("first")));
}

TEST_F(DebugFiles, AFileThatCannotBeMadeIsToldAndTheOtherIsWritten) {
  std::filesystem::create_directory(folder.Path / "debug_out.dat");
  SetOption(around.All, Row("chkDebug"), true);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, testing::StartsWith("No capture is written: "));
  EXPECT_EQ(around.Desk.Boxes[0].Icon, base::MessageIcon::Exclamation);
  EXPECT_TRUE(around.Log.On());
  EXPECT_FALSE(around.Raw.IsOpen());
  EXPECT_TRUE(around.State.DebugLog);
}

TEST_F(DebugFiles, AStartWithDebugSetWritesBoth) {
  WriteInstallation(folder);
  folder.Write("KESTREL.ini", "[LOG]\r\nDEBUG=1\r\n[MAPS]\r\nTOTALMAPS=1\r\nMAP1=korea.ini\r\nCURRENTMAP=1\r\n");
  ASSERT_TRUE(Main(around.All));
  EXPECT_TRUE(around.Log.On());
  EXPECT_TRUE(around.Raw.IsOpen());
  Close(around.All);
  EXPECT_FALSE(around.Raw.IsOpen());
}

}  // namespace
}  // namespace kestrel::core
