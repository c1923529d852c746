#include "areas/area_box.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "areas/small_catalogue.h"

namespace kestrel::areas {
namespace {

Area Boxed(double minX, double minY, double maxX, double maxY) {
  Area area;
  area.Type = AreaType::Icon;
  area.MinX = minX;
  area.MinY = minY;
  area.MaxX = maxX;
  area.MaxY = maxY;
  return area;
}

std::string Told(const std::optional<AreaBox>& box) {
  if (!box) return "none";
  std::ostringstream out;
  out << box->MinX << ' ' << box->MinY << ' ' << box->MaxX << ' ' << box->MaxY;
  return out.str();
}

/// Two folders; groups 1 and 3 in the first, 2 in the second.
class Boxes : public testing::Test {
 protected:
  Boxes() {
    for (const char* name : {"A", "B"}) catalogue.AreaFolders.Append({name, On});
    for (const std::int32_t folder : {1, 2, 1}) {
      AreaGroup group;
      group.FolderIndex = folder;
      catalogue.AreaGroups.Append(std::move(group));
    }
  }
  void Add(std::size_t group, Area area) { catalogue.AreaGroups[group].Areas.Append(std::move(area)); }

  AreaCatalogue catalogue;
};

TEST_F(Boxes, JoinTheAreasOfAGroupAndTheGroupsOfAFolder) {
  Add(1, Boxed(10, 20, 30, 40));
  Add(1, Boxed(-5, 25, 20, 60));
  Add(2, Boxed(900, 900, 950, 950));
  Add(3, Boxed(100, 0, 110, 5));
  EXPECT_EQ(Told(BoxOf(catalogue, "D1")), "-5 20 30 60");
  EXPECT_EQ(Told(BoxOf(catalogue, "C1")), "-5 0 110 60");
  EXPECT_EQ(Told(BoxOf(catalogue, "C2")), "900 900 950 950");
}

TEST_F(Boxes, AreOfTheMarkedAreasUnlessThereAreNone) {
  Add(1, Boxed(0, 0, 1, 1));
  Add(1, Boxed(5, 5, 6, 6));
  catalogue.AreaGroups[1].Areas[1].Visible = Off;
  EXPECT_EQ(Told(BoxOf(catalogue, "D1")), "5 5 6 6");
  catalogue.AreaGroups[1].Visible = Off;
  EXPECT_EQ(Told(BoxOf(catalogue, "D1")), "0 0 6 6");
}

TEST_F(Boxes, PassOverWhatHasNoPlace) {
  Area line = Boxed(7, 7, 9, 9);
  line.Type = AreaType::Region;
  Area plan = Boxed(-15, -15, 15, 15);
  plan.Type = AreaType::FlightPlan;
  Add(1, line);
  Add(1, plan);
  Add(1, Boxed(0, 0, std::numeric_limits<double>::infinity(), 1));
  Add(1, Boxed(0, std::numeric_limits<double>::quiet_NaN(), 1, 1));
  EXPECT_EQ(Told(BoxOf(catalogue, "D1")), "none");
  line.Lines.Append({7, 7, 9, 9});
  Add(1, line);
  EXPECT_EQ(Told(BoxOf(catalogue, "D1")), "7 7 9 9");
}

TEST_F(Boxes, KeyOfNothingHasNone) {
  for (const char* key : {"", "C0", "C3", "D4", "X1"}) EXPECT_EQ(Told(BoxOf(catalogue, key)), "none") << key;
}

}  // namespace
}  // namespace kestrel::areas
