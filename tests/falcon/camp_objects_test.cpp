#include "falcon/camp_objects.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "base/temp_folder.h"
#include "failure_text.h"
#include "falcon/xml_writer.h"

namespace kestrel::falcon {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

std::string Document(const std::vector<test::CampObjectPlan>& plans) {
  std::vector<std::string> records;
  for (const test::CampObjectPlan& plan : plans) records.push_back(test::XmlCampObject(plan));
  return test::XmlTable("CampObjData", "CampObj", records, 7, "CampId");
}

/// Objectives 7 and 8 in cells 398, 236 and 10, 20; the file's campaign folder.
class CampObjects : public testing::Test {
 protected:
  CampObjects() {
    world.Objectives.resize(2);
    world.Objectives[0].CampId = 7;
    world.Objectives[0].CellX = 398;
    world.Objectives[0].CellY = 236;
    world.Objectives[1].CampId = 8;
    world.Objectives[1].CellX = 10;
    world.Objectives[1].CellY = 20;
  }
  const Objective& Take(const std::string& text) {
    test::WriteBytes(disk / "CampObjData.xml", text);
    TakeCampObjects(disk.Path(), world);
    return world.Objectives[0];
  }

  /// The middle of cell 398, 236: 398.5 and 236.5 times 3279.98.
  static constexpr double East = 1307072.03, North = 775715.27;
  const test::TempFolder disk;
  World world;
};

TEST_F(CampObjects, AreReadByTheirNumbers) {
  const auto objects =
      ReadCampObjects({"C", Document({{"648Bridge NK", 1127, 41.999, 2758922.409, 2271658.4}, {.Heading = 0}})});
  ASSERT_THAT(objects, SizeIs(2));
  const CampObject& bridge = objects.at(7);
  EXPECT_EQ(bridge.Name, "648Bridge NK");
  EXPECT_EQ(bridge.Heading, 41.999);
  EXPECT_EQ(bridge.North, 2758922.409);
  EXPECT_EQ(bridge.East, 2271658.4);
  EXPECT_EQ(objects.at(8).Name, "");
}

TEST_F(CampObjects, AddWhatIsNotTold) {
  const Objective& objective = Take(Document({{"Kunsan", 1, 90, North + 1000, East - 1000}}));
  EXPECT_EQ(objective.OwnName, "Kunsan");
  ASSERT_TRUE(objective.Exact);
  EXPECT_NEAR(objective.Exact->North, North + 1000, 0.001);
  EXPECT_NEAR(objective.Exact->East, East - 1000, 0.001);
  EXPECT_EQ(objective.Exact->Heading, 90);
  EXPECT_FALSE(world.Objectives[1].Exact) << "the file does not tell it";
  EXPECT_THAT(world.Notes, IsEmpty());
}

TEST_F(CampObjects, LeaveWhatTheCampaignTells) {
  world.Objectives[0].OwnName = "Own";
  world.Objectives[0].Exact = ExactPlace{North, East, 0, 45};
  const Objective& objective = Take(Document({{"Kunsan", 1, 90, North + 1000, East}}));
  EXPECT_EQ(objective.OwnName, "Own");
  EXPECT_EQ(objective.Exact->North, North);
  EXPECT_EQ(objective.Exact->Heading, 45);
}

TEST_F(CampObjects, HeadingIsAddedToAPlaceWithoutOne) {
  world.Objectives[0].Exact = ExactPlace{North, East, 0, 0};
  EXPECT_EQ(Take(Document({{"", 1, 306.97, North + 1000, East}})).Exact->Heading, 306.97F);
  EXPECT_EQ(world.Objectives[0].Exact->North, North);
}

TEST_F(CampObjects, OneThatStandsElsewhereIsAnotherOne) {
  // A cell is 3279.98 feet.
  for (const auto& [north, east] : {std::pair{North + 3300, East},
                                    {North - 3300, East},
                                    {North, East + 3300},
                                    {North, East - 3300},
                                    {1e300, East}}) {
    world.Notes.clear();
    const Objective& objective = Take(Document({{"Other", 1, 90, north, east}}));
    EXPECT_EQ(objective.OwnName, "");
    EXPECT_FALSE(objective.Exact);
    EXPECT_THAT(world.Notes, ElementsAre("1 objectives stand elsewhere than CampObjData.XML tells"));
  }
  EXPECT_EQ(Take(Document({{"Same", 1, 90, North + 3270, East - 3270}})).OwnName, "Same");
}

TEST_F(CampObjects, PlaceThatIsNoNumberIsNone) {
  const std::string heading = test::XmlField("CampName", "Kunsan") + test::XmlField("Heading", "nan") +
                              test::XmlField("PositionX", test::XmlNumber(North)) +
                              test::XmlField("PositionY", test::XmlNumber(East));
  EXPECT_EQ(Take(test::XmlTable("CampObjData", "CampObj", {heading}, 7, "CampId")).OwnName, "Kunsan");
  EXPECT_FALSE(world.Objectives[0].Exact);
  const ExactPlace far = *Take(Document({{"Kunsan", 1, 1e30, North, East}})).Exact;
  EXPECT_LT(std::abs(far.Heading), 360);
}

TEST_F(CampObjects, FileThatCannotBeReadAddsNothing) {
  const std::string text = Document({{"Kunsan", 1, 90, North, East}});
  EXPECT_EQ(Take(text.substr(0, text.size() / 2)).OwnName, "");
  EXPECT_THAT(world.Notes, ElementsAre(HasSubstr("CampObjData.xml: record 7")));
  EXPECT_THAT(test::FailureOf([] {
                ReadCampObjects({"C", "<C><CampObj CampId=\"7\"/><CampObj CampId=\"7\"/></C>"});
              }),
              HasSubstr("C: record 7, another object has this number"));
}

TEST_F(CampObjects, NoFileIsNoTrouble) {
  TakeCampObjects(disk.Path(), world);
  EXPECT_THAT(world.Notes, IsEmpty());
}

}  // namespace
}  // namespace kestrel::falcon
