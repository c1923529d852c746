#include "areas/area_drawing.h"

#include <vector>

#include "areas/editor_fixture.h"

namespace kestrel::areas {
namespace {

using base::Changed;
using Row = std::array<std::string, 5>;

constexpr const char* AddPoints = "Click on the map to add points...";
constexpr const char* SecondPoint = "First point added, click for second point...";

Area ThreeLines() {
  Area area;
  for (const double at : {1., 2., 3.}) area.Lines.Append({at, 0, at, 10});
  return area;
}

Area ThreePoints() {
  Area area{.Type = AreaType::FlightPlan};
  for (const double at : {1., 2., 3.}) area.Points.Append({.X = at, .Y = 5, .Z = 1000.5});
  return area;
}

std::vector<double> Starts(const AreaEditor& editor) {
  std::vector<double> starts;
  for (const AreaLine& line : editor.WorkArea.Lines.Live()) starts.push_back(line.X1);
  for (const FlightPlanPoint& point : editor.WorkArea.Points.Live()) starts.push_back(point.X);
  return starts;
}

TEST_F(EditorTest, AddsASegmentWithEverySecondClick) {
  Open(AreaType::Region);
  EXPECT_EQ(Prompt(editor), AddPoints);
  Click(1, 2);
  EXPECT_EQ(Prompt(editor), SecondPoint);
  EXPECT_FALSE(editor.FirstPointPending);
  EXPECT_TRUE(editor.WorkArea.Lines.Empty()) << "nothing is added yet";
  EXPECT_EQ(Click(3, 4), Changed::Plots);
  EXPECT_EQ(Prompt(editor), AddPoints);
  EXPECT_TRUE(editor.FirstPointPending);
  ExpectLine(1, 1, 2, 3, 4);
  EXPECT_EQ(editor.WorkArea.MaxY, 4);
  EXPECT_EQ(editor.Selected, 1u);
  Click(5, 6);
  EXPECT_EQ(Prompt(editor), SecondPoint);
  EXPECT_EQ(editor.WorkArea.Lines.UpperBound(), 1u);
}

TEST_F(EditorTest, JoinsSegmentsWithSingleClicks) {
  Open(AreaType::Region);
  SetSingleClick(editor, true);
  Click(1, 2);
  EXPECT_EQ(Prompt(editor), SecondPoint);
  Click(3, 4);
  EXPECT_EQ(Prompt(editor), AddPoints);
  EXPECT_FALSE(editor.FirstPointPending);
  Click(5, 6);
  EXPECT_EQ(Prompt(editor), AddPoints);
  ASSERT_EQ(editor.WorkArea.Lines.UpperBound(), 2u);
  ExpectLine(1, 1, 2, 3, 4);
  ExpectLine(2, 3, 4, 5, 6);
  EXPECT_EQ(editor.Selected, 2u);
}

TEST_F(EditorTest, StartsAnewWhenSingleClickIsTurnedOff) {
  Open(AreaType::Region);
  SetSingleClick(editor, true);
  Click(1, 2);
  SetSingleClick(editor, false);
  EXPECT_TRUE(editor.FirstPointPending);
  EXPECT_EQ(Prompt(editor), AddPoints);
  Click(3, 4);
  Click(5, 6);
  ExpectLine(1, 3, 4, 5, 6);
}

TEST_F(EditorTest, GoesOnFromAFirstPointWhenSingleClickIsTurnedOn) {
  Open(AreaType::Region);
  Click(1, 2);
  SetSingleClick(editor, true);
  Click(3, 4);
  Click(5, 6);
  ExpectLine(1, 1, 2, 3, 4);
  ExpectLine(2, 3, 4, 5, 6);
}

TEST_F(EditorTest, PutsTheOnePositionOfATypeWhereTheMapIsClicked) {
  const std::vector<std::pair<AreaType, const char*>> prompts = {
      {AreaType::Circle, "Click on the map to define the center..."},
      {AreaType::Icon, "Click on the map to define the point..."},
      {AreaType::Text, "Click on the map to define the upper left point..."}};
  OpenNew(editor, catalogue, 1, texts);
  for (const auto& [type, prompt] : prompts) {
    ChooseType(editor, type, texts);
    EXPECT_EQ(Prompt(editor), prompt);
    EXPECT_EQ(Click(-3.456, 1e4), Changed::Plots) << "also outside the map";
    EXPECT_EQ(editor.WorkArea.X, -3.456);
    EXPECT_EQ(editor.WorkArea.Y, 1e4);
  }
  const EditorFields& fields = editor.Fields;
  EXPECT_EQ(std::vector({fields.Text3, fields.Text8, fields.Text6}), std::vector<std::string>(3, "-3.46"));
  EXPECT_EQ(std::vector({fields.Text4, fields.Text7, fields.Text2}), std::vector<std::string>(3, "10000.00"));
}

TEST_F(EditorTest, LeavesARadiusThatIsBeingTypedAtAClick) {
  Open(AreaType::Circle);
  FieldEdited(editor, &EditorFields::Text5, "5,", texts);
  Click(1, 2);
  EXPECT_EQ(editor.Fields.Text5, "5,");
}

TEST_F(EditorTest, AddsAPointOfAPlanWithEachClick) {
  Open(AreaType::FlightPlan);
  EXPECT_EQ(Prompt(editor), AddPoints);
  FPPointDetails(editor, 0, {.X = 9, .Y = 8, .Z = 20000, .Type = PointType::Target}, texts);
  EXPECT_EQ(Click(1, 2), Changed::Plots);
  EXPECT_EQ(PointRow(editor, 1), (Row{"1", "9.00", "8.00", "20000", "Target Point"}));
  EXPECT_EQ(PointRow(editor, 2), (Row{"2", "1.00", "2.00", "0", "Nav Point"})) << "nothing of the point before";
  EXPECT_EQ(editor.SelectedPoint, 2u);
  EXPECT_EQ(editor.WorkArea.MaxX, 24) << "9 and the margin of 15";
}

TEST_F(EditorTest, ShowsSegmentsWithTwoDecimals) {
  OpenStored(ThreeLines());
  PointDetails(editor, 2, {1.005, -0.001, 1234.5, 7}, texts);
  EXPECT_EQ(LineRow(editor, 2), (Row{"2", "1.01", "0.00", "1234.50", "7.00"}));
  EXPECT_EQ(LineRow(editor, 4), Row{});
  EXPECT_EQ(LineRow(editor, 0), Row{});
}

TEST_F(EditorTest, ShowsElevationsAsTheListWasFilled) {
  const auto elevations = [this] {
    std::vector<std::string> shown;
    for (std::size_t row = 1; row <= editor.WorkArea.Points.UpperBound(); ++row) {
      shown.push_back(PointRow(editor, row)[3]);
    }
    return shown;
  };
  OpenStored(ThreePoints());
  EXPECT_EQ(elevations(), (std::vector<std::string>{"1000.50", "1000.50", "1000.50"}));
  FPPointDetails(editor, 0, {.Z = 20.4}, texts);
  EXPECT_EQ(elevations(), (std::vector<std::string>{"1000.50", "1000.50", "1000.50", "20"})) << "the row that is added";
  TakeBack(editor, texts);
  TakeBack(editor, texts);
  Click(1, 1);
  EXPECT_EQ(elevations(), (std::vector<std::string>{"1000.50", "1000.50", "0"}));
  FPPointDetails(editor, 1, {.Z = 7.5}, texts);
  EXPECT_EQ(elevations(), (std::vector<std::string>{"8", "1001", "0"})) << "all rows are filled again";
  EXPECT_EQ(PointRow(editor, 4), Row{});
}

TEST_F(EditorTest, RefreshesElevationsWhenAPointIsDeleted) {
  OpenStored(ThreePoints());
  SelectPoint(editor, 1);
  DeletePoint(editor, texts);
  EXPECT_EQ(PointRow(editor, 1)[3], "1001");
}

TEST(PointType, HasItsWord) {
  EXPECT_EQ(PointTypeToText(PointType::Nav), "Nav Point");
  EXPECT_EQ(PointTypeToText(PointType::IP), "IP Point");
  EXPECT_EQ(PointTypeToText(PointType::Target), "Target Point");
  EXPECT_EQ(PointTypeToText(static_cast<PointType>(4)), "");
}

TEST_F(EditorTest, WritesTheElementThatTheDetailsWereOpenedFor) {
  OpenStored(ThreeLines());
  SelectLine(editor, 1);
  EXPECT_EQ(PointDetails(editor, 2, {5, 6, 7, 80}, texts), Changed::Plots);
  EXPECT_EQ(Starts(editor), (std::vector<double>{1, 5, 3}));
  ExpectLine(2, 5, 6, 7, 80);
  EXPECT_EQ(editor.WorkArea.MaxY, 80);
  EXPECT_EQ(editor.Selected, 1u);
  EXPECT_EQ(PointDetails(editor, 4, {9, 9, 9, 9}, texts), Changed::Nothing);
}

TEST_F(EditorTest, AddsTheSegmentOfTheDetailsWithoutAnIndex) {
  OpenStored(ThreeLines());
  EXPECT_EQ(PointDetails(editor, 0, {5, 6, 7, 8}, texts), Changed::Plots);
  ExpectLine(4, 5, 6, 7, 8);
  EXPECT_EQ(editor.Selected, 4u);
  EXPECT_EQ(editor.Y2, 8);
}

TEST_F(EditorTest, WritesOrAddsAPointOfAPlan) {
  OpenStored(ThreePoints());
  EXPECT_EQ(FPPointDetails(editor, 3, {50, 6, 7, PointType::IP}, texts), Changed::Plots);
  EXPECT_EQ(PointRow(editor, 3), (Row{"3", "50.00", "6.00", "7", "IP Point"}));
  EXPECT_EQ(editor.WorkArea.MaxX, 65);
  EXPECT_EQ(FPPointDetails(editor, 4, {}, texts), Changed::Nothing);
  EXPECT_EQ(FPPointDetails(editor, 0, {4, 3, 2, PointType::Target}, texts), Changed::Plots);
  EXPECT_EQ(PointRow(editor, 4), (Row{"4", "4.00", "3.00", "2", "Target Point"}));
}

TEST_F(EditorTest, DeletesTheSelectedSegmentAndSelectsTheNext) {
  OpenStored(ThreeLines());
  EXPECT_EQ(DeleteLine(editor, texts), Changed::Nothing) << "nothing is selected";
  EXPECT_EQ(SelectLine(editor, 2), Changed::Plots);
  EXPECT_EQ(DeleteLine(editor, texts), Changed::Plots);
  EXPECT_EQ(Starts(editor), (std::vector<double>{1, 3}));
  EXPECT_EQ(editor.WorkArea.MinX, 1);
  EXPECT_EQ(editor.Selected, 2u);
  DeleteLine(editor, texts);
  EXPECT_EQ(editor.Selected, 1u) << "the last row, the old one is past the end";
  EXPECT_EQ(editor.WorkArea.MaxX, 1);
  DeleteLine(editor, texts);
  EXPECT_EQ(editor.Selected, 0u);
  EXPECT_EQ(DeleteLine(editor, texts), Changed::Nothing) << "an empty list";
}

TEST_F(EditorTest, DeletesTheSelectedPointAlike) {
  OpenStored(ThreePoints());
  EXPECT_EQ(DeletePoint(editor, texts), Changed::Nothing);
  SelectPoint(editor, 3);
  EXPECT_EQ(DeletePoint(editor, texts), Changed::Plots);
  EXPECT_EQ(Starts(editor), (std::vector<double>{1, 2}));
  EXPECT_EQ(editor.SelectedPoint, 2u);
  EXPECT_EQ(editor.WorkArea.MaxX, 17);
  SelectPoint(editor, 1);
  DeletePoint(editor, texts);
  EXPECT_EQ(editor.SelectedPoint, 1u);
}

TEST_F(EditorTest, SelectsNoRowThatIsNotThere) {
  OpenStored(ThreeLines());
  SelectLine(editor, 4);
  EXPECT_EQ(editor.Selected, 0u);
  EXPECT_TRUE(HighLights(editor).empty());
  SelectPoint(editor, 1);
  EXPECT_EQ(editor.SelectedPoint, 0u);
}

TEST_F(EditorTest, ResetsOneListAndKeepsTheOther) {
  Area area = ThreeLines();
  area.Points = ThreePoints().Points;
  OpenStored(area);
  SelectLine(editor, 3);
  EXPECT_EQ(ResetLines(editor, texts), Changed::Plots);
  EXPECT_TRUE(editor.WorkArea.Lines.Empty());
  EXPECT_EQ(editor.WorkArea.MaxY, 0);
  EXPECT_EQ(editor.Selected, 0u);
  EXPECT_EQ(editor.WorkArea.Points.UpperBound(), 3u);
  ChooseType(editor, AreaType::FlightPlan, texts);
  SelectPoint(editor, 3);
  EXPECT_EQ(ResetPoints(editor, texts), Changed::Plots);
  EXPECT_TRUE(editor.WorkArea.Points.Empty());
  EXPECT_EQ(editor.WorkArea.MaxY, 15);
  EXPECT_EQ(editor.SelectedPoint, 0u);
}

TEST_F(EditorTest, IgnoresTheMapWhileSegmentsAreChecked) {
  OpenStored(ThreeLines());
  SelectLine(editor, 1);
  EXPECT_EQ(SetBulkDelete(editor, true), Changed::Plots);
  EXPECT_FALSE(editor.AreaEditMode);
  EXPECT_EQ(Prompt(editor), "");
  EXPECT_TRUE(HighLights(editor).empty()) << "none is checked";
  EXPECT_EQ(Click(1, 2), Changed::Nothing);
  EXPECT_EQ(TakeBack(editor, texts), Changed::Nothing);
  EXPECT_TRUE(editor.FirstPointPending);
  CheckLine(editor, 2, true);
  SetBulkDelete(editor, false);
  EXPECT_TRUE(editor.AreaEditMode);
  EXPECT_EQ(Prompt(editor), AddPoints);
  EXPECT_EQ(HighLights(editor), std::vector<std::size_t>{1});
  SetBulkDelete(editor, true);
  EXPECT_TRUE(HighLights(editor).empty()) << "the check did not last";
}

TEST_F(EditorTest, DeletesTheCheckedSegmentsAndKeepsTheOrder) {
  OpenStored(ThreeLines());
  PointDetails(editor, 0, {4, 0, 4, 10}, texts);
  SetBulkDelete(editor, true);
  EXPECT_EQ(CheckLine(editor, 1, true), Changed::Plots);
  CheckLine(editor, 3, true);
  CheckLine(editor, 4, true);
  CheckLine(editor, 4, false);
  EXPECT_EQ(CheckLine(editor, 5, true), Changed::Nothing);
  EXPECT_EQ(CheckLine(editor, 0, true), Changed::Nothing);
  EXPECT_EQ(HighLights(editor), (std::vector<std::size_t>{1, 3}));
  EXPECT_EQ(DeleteLine(editor, texts), Changed::Plots);
  EXPECT_EQ(Starts(editor), (std::vector<double>{2, 4}));
  EXPECT_EQ(editor.WorkArea.MinX, 2);
  EXPECT_TRUE(HighLights(editor).empty()) << "the rows that are left are unchecked";
  EXPECT_TRUE(editor.BulkDelete);
  DeleteLine(editor, texts);
  EXPECT_EQ(editor.WorkArea.Lines.UpperBound(), 2u);
}

TEST_F(EditorTest, ChecksAllSegmentsAtOnce) {
  OpenStored(ThreeLines());
  SetBulkDelete(editor, true);
  EXPECT_EQ(CheckAllLines(editor, true), Changed::Plots);
  EXPECT_EQ(HighLights(editor), (std::vector<std::size_t>{1, 2, 3}));
  CheckAllLines(editor, false);
  EXPECT_TRUE(HighLights(editor).empty());
  CheckAllLines(editor, true);
  DeleteLine(editor, texts);
  EXPECT_TRUE(editor.WorkArea.Lines.Empty());
}

TEST_F(EditorTest, EndsBulkDeleteWhenATypeIsChosen) {
  OpenStored(ThreeLines());
  SetBulkDelete(editor, true);
  ChooseType(editor, AreaType::Icon, texts);
  EXPECT_FALSE(editor.BulkDelete);
  EXPECT_TRUE(editor.AreaEditMode);
  EXPECT_EQ(Click(1, 2), Changed::Plots);
}

TEST_F(EditorTest, TakesBackAFirstPointThenSegments) {
  Open(AreaType::Region);
  for (const double at : {1., 2., 3., 4., 5.}) Click(at, 0);
  EXPECT_EQ(TakeBack(editor, texts), Changed::Plots) << "the first point of the third segment";
  EXPECT_TRUE(editor.FirstPointPending);
  EXPECT_EQ(Prompt(editor), AddPoints);
  EXPECT_EQ(Starts(editor), (std::vector<double>{1, 3}));
  TakeBack(editor, texts);
  EXPECT_EQ(Starts(editor), std::vector<double>{1});
  EXPECT_EQ(editor.Selected, 1u);
  EXPECT_EQ(editor.WorkArea.MaxX, 2);
  EXPECT_TRUE(editor.FirstPointPending);
  TakeBack(editor, texts);
  EXPECT_TRUE(Starts(editor).empty());
  EXPECT_EQ(editor.Selected, 0u);
  EXPECT_EQ(TakeBack(editor, texts), Changed::Nothing);
}

TEST_F(EditorTest, TakesAChainBackPointByPoint) {
  Open(AreaType::Region);
  SetSingleClick(editor, true);
  for (const double at : {1., 2., 3.}) Click(at, 0);
  TakeBack(editor, texts);
  EXPECT_EQ(Starts(editor), std::vector<double>{1});
  EXPECT_EQ(Prompt(editor), AddPoints);
  Click(7, 0);
  ExpectLine(2, 2, 0, 7, 0);
  TakeBack(editor, texts);
  TakeBack(editor, texts);
  EXPECT_TRUE(Starts(editor).empty());
  EXPECT_EQ(Prompt(editor), SecondPoint) << "the first point still stands";
  EXPECT_EQ(editor.X1, 1);
  TakeBack(editor, texts);
  EXPECT_EQ(Prompt(editor), AddPoints);
  EXPECT_TRUE(editor.FirstPointPending);
  EXPECT_EQ(TakeBack(editor, texts), Changed::Nothing);
}

TEST_F(EditorTest, LeavesTheSegmentsBeforeAChainUntilItIsTakenBack) {
  OpenStored(ThreeLines());
  SetSingleClick(editor, true);
  Click(8, 8);
  Click(9, 9);
  TakeBack(editor, texts);
  EXPECT_EQ(Prompt(editor), SecondPoint);
  TakeBack(editor, texts);
  EXPECT_EQ(editor.WorkArea.Lines.UpperBound(), 3u);
  TakeBack(editor, texts);
  EXPECT_EQ(editor.WorkArea.Lines.UpperBound(), 2u);
}

TEST_F(EditorTest, EndsAChainWhoseLastSegmentIsGone) {
  Open(AreaType::Region);
  SetSingleClick(editor, true);
  for (const double at : {1., 2., 3.}) Click(at, 0);
  DeleteLine(editor, texts);
  TakeBack(editor, texts);
  EXPECT_EQ(Starts(editor), std::vector<double>{1}) << "the end of the chain hung in the air";
  EXPECT_TRUE(editor.FirstPointPending);
}

TEST_F(EditorTest, TakesBackTheLastPointOfAPlan) {
  OpenStored(ThreePoints());
  EXPECT_EQ(TakeBack(editor, texts), Changed::Plots);
  EXPECT_EQ(Starts(editor), (std::vector<double>{1, 2}));
  EXPECT_EQ(editor.SelectedPoint, 2u);
  EXPECT_EQ(editor.WorkArea.MaxX, 17);
  TakeBack(editor, texts);
  TakeBack(editor, texts);
  EXPECT_EQ(TakeBack(editor, texts), Changed::Nothing);
}

TEST_F(EditorTest, HasNothingToTakeBackOfOnePosition) {
  OpenStored(ThreeLines());
  ChooseType(editor, AreaType::Circle, texts);
  Click(4, 5);
  EXPECT_EQ(TakeBack(editor, texts), Changed::Nothing);
  EXPECT_EQ(editor.WorkArea.X, 4);
  EXPECT_EQ(editor.WorkArea.Lines.UpperBound(), 3u);
}

}  // namespace
}  // namespace kestrel::areas
