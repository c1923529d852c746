#include "core/objective_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "core/objective_world.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// "bravo" airbase of 1, "Alpha" SAM site of 2, "charlie" airbase of 2, one without a class of 7, and one without a
/// name of a type that there is not of 0.
CampaignData FiveObjectives() {
  CampaignData data = test::NoObjectives();
  data.World.Teams[0].Name = "Neutral";
  data.World.Teams[1].Name = "Red";
  data.World.Teams[2].Name = "blue";
  const std::uint16_t airbase = test::AddObjectiveClass(data, 1, {{}, {}, {}});
  const std::uint16_t site = test::AddObjectiveClass(data, 31, {{}});
  const std::uint16_t strange = test::AddObjectiveClass(data, 32);
  test::AddObjective(data, airbase, "bravo", 1);
  test::AddObjective(data, site, "Alpha", 2);
  test::AddObjective(data, airbase, "charlie", 2);
  test::AddObjective(data, 9999, "delta", 7);
  test::AddObjective(data, strange, "", 0);
  return data;
}

class ObjectiveLists : public testing::Test {
 protected:
  /// The names that are shown, by the letter they begin with.
  std::string Letters() const {
    std::string letters;
    for (const std::uint32_t row : list.Shown()) letters += list.Row(row).Name[0];
    return letters;
  }
  static std::size_t Choice(std::string_view caption) {
    std::size_t place = 0;
    while (ObjectiveTypeChoices()[place].Caption != caption) ++place;
    return place;
  }

  CampaignData data = FiveObjectives();
  ObjectiveList list{data};
};

TEST_F(ObjectiveLists, RowsTellNameTypeTeamAndBuildings) {
  const ImportedObjective& base = list.Row(0);
  EXPECT_EQ(base.Name, "bravo");
  EXPECT_EQ(base.Type, 1);
  EXPECT_EQ(base.TypeName, "Airbase");
  EXPECT_EQ(list.TeamOf(base), "Red");
  EXPECT_EQ(base.Features, 3);
  EXPECT_FALSE(base.Selected);
  EXPECT_EQ(list.Row(1).TypeName, "SAM Site");
  EXPECT_EQ(list.Row(3).TypeName, "Unknown 0") << "its class is none of the table";
  EXPECT_EQ(list.Row(3).Features, 0);
  EXPECT_EQ(list.Row(4).TypeName, "Unknown 32");
  EXPECT_EQ(list.Row(4).Name, "**Not found in Theater Strings!");
  EXPECT_THAT(list.Teams(),
              ElementsAre("Neutral", "Red", "blue", "Team #3", "Team #4", "Team #5", "Team #6", "Team #7"));
  EXPECT_EQ(Letters(), "bAcd*");
}

TEST_F(ObjectiveLists, NameIsOfTheStringsOrOfParentAndType) {
  data.World.Objectives[0].OwnName = "";
  data.World.Objectives[0].Parent = data.World.Objectives[1].Id;
  EXPECT_EQ(ObjectiveList(data).Row(0).Name, "Alpha Airbase");
}

TEST_F(ObjectiveLists, TypesAreOfferedInTheirOrder) {
  std::vector<std::string> captions;
  for (const ObjectiveTypeChoice& choice : ObjectiveTypeChoices()) captions.emplace_back(choice.Caption);
  EXPECT_THAT(captions,
              ElementsAre("All Types", "Airbase", "Airstrip", "Army Base", "Beach", "Border", "Bridge",
                          "Chemical Plant", "City", "Headquarters", "HART Site", "Highway", "Hill Top", "Depot",
                          "Factory", "Ford", "Fortification", "Junction", "Nav Beacon", "Nuclear Plant", "TYPE_PASS",
                          "Port", "Power Plant", "Radar Site", "Radio Tower", "Rail Terminal", "Railroad", "Refinery",
                          "Sea", "Town", "Village", "SAM Site", "Unknown"));
}

TEST_F(ObjectiveLists, EachChoiceShowsItsType) {
  // An objective of each code from 0 to 32, named by the caption that its type is offered as.
  const char* const captions[] = {
      "Unknown",        "Airbase",     "Airstrip",      "Army Base",     "Beach",     "Border",  "Bridge",
      "Chemical Plant", "City",        "Headquarters",  "Depot",         "Factory",   "Ford",    "Fortification",
      "Hill Top",       "Junction",    "Nav Beacon",    "Nuclear Plant", "TYPE_PASS", "Port",    "Power Plant",
      "Radar Site",     "Radio Tower", "Rail Terminal", "Railroad",      "Refinery",  "Highway", "Sea",
      "Town",           "Village",     "HART Site",     "SAM Site",      "Unknown"};
  CampaignData all = test::NoObjectives();
  for (unsigned code = 0; code < std::size(captions); ++code) {
    test::AddObjective(all, test::AddObjectiveClass(all, static_cast<std::uint8_t>(code)), captions[code]);
  }
  ObjectiveList types(all);
  for (std::size_t choice = 1; choice < ObjectiveTypeChoices().size(); ++choice) {
    const std::string caption(ObjectiveTypeChoices()[choice].Caption);
    SCOPED_TRACE(caption);
    types.ShowTypes(choice);
    EXPECT_EQ(types.Shown().size(), caption == "Unknown" ? 2U : 1U);
    for (const std::uint32_t row : types.Shown()) EXPECT_EQ(types.Row(row).Name, caption);
  }
}

TEST_F(ObjectiveLists, FiltersOfTeamAndTypeBothHold) {
  list.ShowTeam(2);
  EXPECT_EQ(Letters(), "Ac");
  list.ShowTypes(Choice("Airbase"));
  EXPECT_EQ(Letters(), "c");
  list.ShowTeam(std::nullopt);
  EXPECT_EQ(Letters(), "bc");
  list.ShowTypes(Choice("Unknown"));
  EXPECT_EQ(Letters(), "d*");
  list.ShowTeam(1);
  EXPECT_THAT(list.Shown(), IsEmpty());
  list.ShowTeam(std::nullopt);
  list.ShowTypes(Choice("All Types"));
  EXPECT_EQ(Letters(), "bAcd*");
}

TEST_F(ObjectiveLists, AreSortedByAnyColumn) {
  list.Sort(ObjectiveColumn::Name, false);
  EXPECT_EQ(Letters(), "*Abcd");
  list.Sort(ObjectiveColumn::Name, true);
  EXPECT_EQ(Letters(), "dcbA*");
  // "Airbase", "SAM Site", "Unknown 0", "Unknown 32"; the airbases as they stood.
  list.Sort(ObjectiveColumn::Type, false);
  EXPECT_EQ(Letters(), "cbAd*");
  // "blue", "Neutral", "Red", "Team #7".
  list.Sort(ObjectiveColumn::Team, false);
  EXPECT_EQ(Letters(), "cA*bd");
  // 3, 3, 1, 0, 0; equal ones as they stood, whichever way.
  list.Sort(ObjectiveColumn::Features, true);
  EXPECT_EQ(Letters(), "cbA*d");
  list.Sort(ObjectiveColumn::Features, false);
  EXPECT_EQ(Letters(), "*dAcb");
}

TEST_F(ObjectiveLists, FilterKeepsTheOrder) {
  list.ShowTypes(Choice("Airbase"));
  list.Sort(ObjectiveColumn::Name, true);
  EXPECT_EQ(Letters(), "cb");
  list.ShowTypes(0);
  EXPECT_EQ(Letters(), "dcbA*");
}

TEST_F(ObjectiveLists, SelectAllIsOfTheRowsShown) {
  list.Select(3, true);
  EXPECT_FALSE(list.AllShownSelected());
  list.ShowTypes(Choice("Airbase"));
  list.SelectShown(true);
  EXPECT_TRUE(list.AllShownSelected());
  EXPECT_EQ(list.SelectedCount(), 3U);
  EXPECT_THAT(list.Selected(), ElementsAre(0, 2, 3));
  list.ShowTeam(2);
  list.SelectShown(false);
  EXPECT_THAT(list.Selected(), ElementsAre(0, 3));
  list.Select(0, true);
  EXPECT_EQ(list.SelectedCount(), 2U) << "it was selected already";
  list.Sort(ObjectiveColumn::Name, true);
  EXPECT_THAT(list.Selected(), ElementsAre(3, 0)) << "in the order of the list, shown or not";
}

TEST_F(ObjectiveLists, WithoutObjectivesIsEmpty) {
  ObjectiveList none(test::NoObjectives());
  none.Sort(ObjectiveColumn::Team, true);
  none.SelectShown(true);
  EXPECT_THAT(none.Shown(), IsEmpty());
  EXPECT_EQ(none.SelectedCount(), 0U);
  EXPECT_FALSE(none.AllShownSelected());
}

}  // namespace
}  // namespace kestrel::core
