#include "areas/area_editor.h"

#include "areas/editor_fixture.h"

namespace kestrel::areas {
namespace {

using base::Changed;

void ExpectNumbers(const EditorFields& fields, const std::string& x, const std::string& y, const std::string& radius) {
  EXPECT_EQ(fields.Text3, x);
  EXPECT_EQ(fields.Text8, x);
  EXPECT_EQ(fields.Text6, x);
  EXPECT_EQ(fields.Text4, y);
  EXPECT_EQ(fields.Text7, y);
  EXPECT_EQ(fields.Text2, y);
  EXPECT_EQ(fields.Text5, radius);
}

TEST_F(EditorTest, OpensForANewAreaWithEmptyFields) {
  EXPECT_EQ(OpenNew(editor, catalogue, 1, texts), Changed::Plots) << "the catalogue stands as it was";
  EXPECT_TRUE(editor.Open && editor.AreaEditMode && editor.IsNew && editor.FirstPointPending);
  EXPECT_EQ(editor.Title, "New Area in Ranges");
  EXPECT_EQ(editor.Fields.Text13, "New Area");
  EXPECT_EQ(editor.Fields.Text1, "");
  ExpectNumbers(editor.Fields, "", "", "");
  EXPECT_EQ(editor.WorkArea.Type, AreaType::Region);
}

TEST_F(EditorTest, OpensNewWithNothingLeftOfTheAreaBefore) {
  Open(AreaType::Region);
  SetSingleClick(editor, true);
  Click(1, 2);
  Cancel(editor, catalogue);
  OpenNew(editor, catalogue, 1, texts);
  EXPECT_TRUE(editor.FirstPointPending);
  EXPECT_FALSE(editor.SingleClick);
  EXPECT_EQ(Prompt(editor), "Click on the map to add points...");
}

TEST_F(EditorTest, OpensAnAreaOfTheCatalogueAsAFullCopyThatIsTakenFromTheMap) {
  Area circle{.Name = "Lake", .Type = AreaType::Circle, .Radius = 2.5, .X = 10.126, .Y = 20, .Text = "Blue"};
  circle.Lines.Append({1, 2, 3, 4});
  EXPECT_EQ(OpenStored(circle), MapAndPlots);
  EXPECT_TRUE(Stored(1).Editing);
  EXPECT_FALSE(editor.WorkArea.Editing);
  EXPECT_FALSE(editor.IsNew);
  EXPECT_EQ(editor.Title, "Circle in Ranges");
  EXPECT_EQ(editor.Fields.Text13, "Lake");
  EXPECT_EQ(editor.Fields.Text1, "Blue");
  ExpectNumbers(editor.Fields, "10.13", "20.00", "2.50");
  ExpectLine(1, 1, 2, 3, 4);
  EXPECT_DOUBLE_EQ(editor.WorkArea.MaxY, 24.63) << "2.5 miles of 1.852 units";
}

TEST_F(EditorTest, TitlesAFlightPlanInOneWord) {
  OpenStored({.Type = AreaType::FlightPlan});
  EXPECT_EQ(editor.Title, "FlightPlan in Ranges");
}

TEST_F(EditorTest, OpensForAnIconWhereTheMenuCameUp) {
  EXPECT_EQ(PopulateFromNewIconMenu(editor, catalogue, 1, 3.456, 7, texts), Changed::Plots);
  EXPECT_EQ(editor.Title, "New Area in Ranges");
  EXPECT_TRUE(editor.FromIconMenu && editor.IsNew);
  EXPECT_EQ(editor.WorkArea.Type, AreaType::Icon);
  EXPECT_EQ(editor.WorkArea.X, 3.456);
  EXPECT_EQ(editor.Fields.Text8, "3.46");
  EXPECT_EQ(editor.Fields.Text7, "7.00");
  EXPECT_EQ(editor.Fields.Text3, "") << "of another panel";
  EXPECT_DOUBLE_EQ(editor.WorkArea.MinY, -13);
}

TEST_F(EditorTest, RefusesWhatIsNotInTheCatalogue) {
  Store({});
  for (const std::int32_t none : {0, -1, 2, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(OpenNew(editor, catalogue, none, texts), Changed::Nothing);
    EXPECT_EQ(PopulateFromNewIconMenu(editor, catalogue, none, 1, 2, texts), Changed::Nothing);
    EXPECT_EQ(OpenExisting(editor, catalogue, none, 1, texts), Changed::Nothing);
    EXPECT_EQ(OpenExisting(editor, catalogue, 1, none, texts), Changed::Nothing);
    EXPECT_FALSE(editor.Open);
  }
  EXPECT_FALSE(Stored(1).Editing);
}

TEST_F(EditorTest, HoldsOneAreaAtATime) {
  Store({.Name = "Second"});
  OpenStored({.Name = "First"});
  EXPECT_EQ(OpenNew(editor, catalogue, 1, texts), Changed::Nothing);
  EXPECT_EQ(OpenExisting(editor, catalogue, 1, 1, texts), Changed::Nothing);
  EXPECT_EQ(editor.WorkArea.Name, "First");
  EXPECT_FALSE(Stored(1).Editing);
}

TEST_F(EditorTest, KeepsAnUnknownTypeAndIconUntilOneIsChosen) {
  OpenStored({.Type = static_cast<AreaType>(77), .X = 5, .Icon = 99});
  EXPECT_EQ(editor.Title, " in Ranges");
  EXPECT_EQ(Prompt(editor), "");
  Click(8, 9);
  EXPECT_EQ(editor.WorkArea.X, 5);
  Accept(editor, catalogue, history, texts);
  EXPECT_EQ(Stored(1).Type, static_cast<AreaType>(77));
  EXPECT_EQ(Stored(1).Icon, 99);
}

TEST_F(EditorTest, FillsThePanelOfTheTypeThatIsChosen) {
  Open(AreaType::Region);
  EXPECT_EQ(ChooseType(editor, AreaType::Circle, texts), Changed::Plots);
  Click(10, 20.5);
  ChooseType(editor, AreaType::Text, texts);
  EXPECT_EQ(editor.Fields.Text6, "10.00") << "one position serves all types";
  EXPECT_EQ(editor.Fields.Text2, "20.50");
  EXPECT_EQ(editor.Fields.Text5, "0.00");
  EXPECT_EQ(editor.Fields.Text8, "") << "Icon was not chosen";
  // 30 wide, 4 high, 5 around.
  EXPECT_DOUBLE_EQ(editor.WorkArea.MaxX, 45);
  EXPECT_DOUBLE_EQ(editor.WorkArea.MinY, 11.5);
}

TEST_F(EditorTest, KeepsTheRadiusOfACircleThatBecomesAnIcon) {
  OpenStored({.Type = AreaType::Circle, .Radius = 4});
  ChooseType(editor, AreaType::Icon, texts);
  EXPECT_EQ(editor.WorkArea.Radius, 4);
  Accept(editor, catalogue, history, texts);
  EXPECT_EQ(Stored(1).Radius, 4);
  EXPECT_EQ(Stored(1).Type, AreaType::Icon);
}

TEST_F(EditorTest, ReadsNumbersAsTheyAreTyped) {
  Open(AreaType::Circle);
  EXPECT_EQ(FieldEdited(editor, &EditorFields::Text3, "12,5", texts), Changed::Plots);
  FieldEdited(editor, &EditorFields::Text4, "1.234,5", texts);
  FieldEdited(editor, &EditorFields::Text5, "10", texts);
  EXPECT_EQ(editor.WorkArea.X, 12.5);
  EXPECT_EQ(editor.WorkArea.Y, 1.234) << "the second point ends the number";
  EXPECT_DOUBLE_EQ(editor.WorkArea.MaxX, 31.02) << "12.5 and ten miles of 1.852 units";
  FieldLeft(editor, &EditorFields::Text4);
  EXPECT_EQ(editor.Fields.Text4, "1.23");
  EXPECT_EQ(editor.Fields.Text3, "12,5") << "was not left";
  FieldEdited(editor, &EditorFields::Text3, ",", texts);
  EXPECT_EQ(editor.WorkArea.X, 0);
}

TEST_F(EditorTest, ShowsATextAsItIsTypedAndTakesTheNameAtTheEnd) {
  Open(AreaType::Text);
  EXPECT_EQ(FieldEdited(editor, &EditorFields::Text1, "FLOT", texts), Changed::Plots);
  EXPECT_EQ(editor.WorkArea.Text, "FLOT");
  EXPECT_EQ(FieldEdited(editor, &EditorFields::Text13, "Front", texts), Changed::Nothing);
  EXPECT_EQ(editor.WorkArea.Name, "New Area");
  Accept(editor, catalogue, history, texts);
  EXPECT_EQ(Stored(1).Name, "Front");
  EXPECT_EQ(Stored(1).Text, "FLOT");
}

TEST_F(EditorTest, TakesLooksAtOnce) {
  Open(AreaType::FlightPlan);
  EXPECT_EQ(ChooseIcon(editor, 7, texts), Changed::Plots);
  EXPECT_EQ(SetColor(editor, 0x112233, texts), Changed::Plots);
  EXPECT_EQ(editor.WorkArea.Color, 0x112233);
  EXPECT_EQ(SetTextFont(editor, {.Name = "Serif", .Size = 12}, 0xFF, texts), Changed::Plots);
  EXPECT_EQ(editor.WorkArea.Color, 0xFF);
  EXPECT_EQ(SetAltFont(editor, {.Name = "Mono", .Size = 9}, 0xFF00, texts), Changed::Plots);
  EXPECT_EQ(ShowElevation(editor, false, texts), Changed::Plots);
  const Area& work = editor.WorkArea;
  EXPECT_EQ(work.Icon, 7);
  EXPECT_EQ(work.TextFont.Name, "Serif");
  EXPECT_EQ(work.AltFont.Name, "Mono");
  EXPECT_EQ(work.Color, 0xFF00);
  EXPECT_EQ(work.ShowWaypointElevation, Off);
  ShowElevation(editor, true, texts);
  EXPECT_EQ(work.ShowWaypointElevation, On);
}

TEST_F(EditorTest, AppendsANewAreaAtOK) {
  Store({});
  Open(AreaType::Region);
  EXPECT_EQ(Accept(editor, catalogue, history, texts), MapAndLists);
  EXPECT_FALSE(editor.Open || editor.AreaEditMode);
  ASSERT_EQ(StoredCount(), 2u);
  EXPECT_EQ(Stored(2).Name, "New Area");
  EXPECT_EQ(Stored(2).Radius, 0) << "of the empty field";
  EXPECT_EQ(catalogue.Revision, 1u);
  EXPECT_TRUE(history.Undo(catalogue).Done);
}

TEST_F(EditorTest, AcceptsAnAreaWithoutNameOrSegments) {
  Open(AreaType::Region);
  FieldEdited(editor, &EditorFields::Text13, "", texts);
  Accept(editor, catalogue, history, texts);
  ASSERT_EQ(StoredCount(), 1u);
  EXPECT_EQ(Stored(1).Name, "");
}

TEST_F(EditorTest, ReplacesTheAreaAtOKAndShowsIt) {
  Store({.Name = "First"});
  OpenStored({.Name = "Second", .Visible = Off});
  Store({.Name = "Third"});
  FieldEdited(editor, &EditorFields::Text13, "Changed", texts);
  EXPECT_EQ(Accept(editor, catalogue, history, texts), MapAndLists);
  ASSERT_EQ(StoredCount(), 3u);
  EXPECT_EQ(Stored(1).Name, "First");
  EXPECT_EQ(Stored(2).Name, "Changed");
  EXPECT_EQ(Stored(2).Visible, On);
  EXPECT_FALSE(Stored(2).Editing);
  EXPECT_EQ(catalogue.Revision, 1u);
}

TEST_F(EditorTest, ShowsAnAreaAgainThatWasMarkedBeforeItWasOpened) {
  OpenStored({.Editing = true});
  EXPECT_FALSE(editor.WorkArea.Editing);
  Accept(editor, catalogue, history, texts);
  EXPECT_FALSE(Stored(1).Editing);
}

TEST_F(EditorTest, ReadsThePositionOfEachTypeBackWithTwoDecimals) {
  for (const AreaType type : {AreaType::Circle, AreaType::Icon, AreaType::Text}) {
    Open(type);
    Click(1.236, 2.344);
    EXPECT_EQ(editor.WorkArea.X, 1.236) << "until OK";
    Accept(editor, catalogue, history, texts);
    EXPECT_EQ(Stored(StoredCount()).X, 1.24);
    EXPECT_EQ(Stored(StoredCount()).Y, 2.34);
  }
  EXPECT_DOUBLE_EQ(Stored(2).MaxX, 21.24) << "the icon's box goes with it";
}

TEST_F(EditorTest, ReadsTheRadiusBackWithTwoDecimalsWhateverTheType) {
  OpenStored({.Type = AreaType::Region, .Radius = 3.14159, .X = 7.777});
  Accept(editor, catalogue, history, texts);
  EXPECT_EQ(Stored(1).Radius, 3.14);
  EXPECT_EQ(Stored(1).X, 7.777) << "a region has no position";
}

TEST_F(EditorTest, GivesTheAreaBackAtCancel) {
  OpenStored({.Name = "Kept", .Type = AreaType::Icon});
  Click(5, 6);
  FieldEdited(editor, &EditorFields::Text13, "Lost", texts);
  EXPECT_EQ(Cancel(editor, catalogue), MapAndLists);
  EXPECT_FALSE(editor.Open || editor.AreaEditMode);
  EXPECT_FALSE(Stored(1).Editing);
  EXPECT_EQ(Stored(1).Name, "Kept");
  EXPECT_EQ(Stored(1).X, 0);
  EXPECT_EQ(catalogue.Revision, 0u);
}

TEST_F(EditorTest, AddsNothingWhenANewAreaIsCancelled) {
  Store({.Editing = true});
  OpenNew(editor, catalogue, 1, texts);
  editor.AreaIndex = 1;  // not used for a new area
  Cancel(editor, catalogue);
  EXPECT_EQ(StoredCount(), 1u);
  EXPECT_TRUE(Stored(1).Editing) << "not this editor's";
}

TEST_F(EditorTest, LeavesTheListsAloneWhenItCameFromTheMenu) {
  PopulateFromNewIconMenu(editor, catalogue, 1, 1, 2, texts);
  EXPECT_EQ(Cancel(editor, catalogue), Changed::Map);
  EXPECT_EQ(StoredCount(), 0u);
  PopulateFromNewIconMenu(editor, catalogue, 1, 1, 2, texts);
  EXPECT_EQ(Accept(editor, catalogue, history, texts), Changed::Map);
  EXPECT_EQ(StoredCount(), 1u);
}

TEST_F(EditorTest, EndsInPeaceWhenItsAreaOrGroupIsGone) {
  Store({.Name = "Other"});
  OpenStored({});
  catalogue.AreaGroups[1].Areas.Remove(2);
  Cancel(editor, catalogue);
  EXPECT_FALSE(editor.Open);
  OpenStored({});
  catalogue.AreaGroups[1].Areas.Remove(2);
  Accept(editor, catalogue, history, texts);
  ASSERT_EQ(StoredCount(), 1u);
  EXPECT_EQ(Stored(1).Name, "Other");
  OpenStored({});
  catalogue.AreaGroups.Clear();
  Accept(editor, catalogue, history, texts);
  EXPECT_FALSE(editor.Open);
  EXPECT_EQ(catalogue.Revision, 0u);
}

TEST_F(EditorTest, DoesNothingWhileItIsNotOpen) {
  EXPECT_EQ(ChooseType(editor, AreaType::Icon, texts), Changed::Nothing);
  EXPECT_EQ(FieldEdited(editor, &EditorFields::Text3, "5", texts), Changed::Nothing);
  EXPECT_EQ(Click(1, 2), Changed::Nothing);
  EXPECT_EQ(GetXYFromMap(editor, texts), Changed::Nothing);
  EXPECT_EQ(TakeBack(editor, texts), Changed::Nothing);
  EXPECT_EQ(SetBulkDelete(editor, true), Changed::Nothing);
  EXPECT_EQ(Accept(editor, catalogue, history, texts), Changed::Nothing);
  EXPECT_EQ(Cancel(editor, catalogue), Changed::Nothing);
  EXPECT_EQ(StoredCount(), 0u);
  EXPECT_EQ(editor.WorkArea.X, 0);
  EXPECT_EQ(editor.WorkArea.Type, AreaType::Region);
}

}  // namespace
}  // namespace kestrel::areas
