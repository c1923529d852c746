// What the lines of objectives cost, by the processor's time: those of 2,000 objectives with 20 buildings each, of 100
// models, against the reading of the 100 models once; and the memory of that import against what it reads and makes.
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "core/objective_import.h"
#include "core/objective_world.h"
#include "doubles/station_around.h"
#include "falcon/ground_lines.h"
#include "timing.h"

namespace {

std::size_t heldBytes = 0;
std::size_t mostBytes = 0;
constexpr std::size_t Head = alignof(std::max_align_t);

}  // namespace

void* operator new(std::size_t size) {
  auto* const place = static_cast<char*>(std::malloc(size + Head));
  if (place == nullptr) throw std::bad_alloc();
  *reinterpret_cast<std::size_t*>(place) = size;
  heldBytes += size;
  mostBytes = std::max(mostBytes, heldBytes);
  return place + Head;
}
void operator delete(void* place) noexcept {
  if (place == nullptr) return;
  char* const whole = static_cast<char*>(place) - Head;
  heldBytes -= *reinterpret_cast<std::size_t*>(whole);
  std::free(whole);
}
void operator delete(void* place, std::size_t) noexcept { operator delete(place); }

namespace {

using namespace kestrel;
using namespace bench;

constexpr int Models = 100;
constexpr int Objectives = 2000;
constexpr int Buildings = 20;
constexpr int Rounds = 9;

/// A tower of 40 storeys of ten corners each: 800 lines, of which ten lie on the ground.
std::string Tower(int number) {
  constexpr int storeys = 40, corners = 10;
  std::vector<test::Point> points;
  std::vector<test::NodePlan> faces;
  for (int storey = 0; storey <= storeys; ++storey) {
    for (int corner = 0; corner < corners; ++corner) {
      points.push_back({static_cast<float>((number + corner * 37) % 97), static_cast<float>(corner * corner),
                        static_cast<float>(-10 * storey)});
      const int next = storey * corners + (corner + 1) % corners, here = storey * corners + corner;
      if (storey < storeys) faces.push_back(test::Polygon({here, next, next + corners, here + corners}));
    }
  }
  return test::ShapeBytes(test::Root(points, faces));
}

core::CampaignData Campaign() {
  core::CampaignData data = test::NoObjectives();
  std::vector<std::int32_t> kinds;
  for (int model = 1; model <= Models; ++model) {
    kinds.push_back(test::AddBuilding(data, {static_cast<std::int16_t>(model), 0, 0, 0, 0, 0, 0}));
  }
  for (int n = 0; n < Objectives; ++n) {
    std::vector<falcon::FeatureEntry> entries;
    for (int building = 0; building < Buildings; ++building) {
      const std::int32_t kind = kinds[static_cast<std::size_t>((n * 7 + building * 13) % Models)];
      entries.push_back({.ClassIndex = kind,
                         .East = 100.0 * building,
                         .North = 50.0 * (n % 40),
                         .Heading = static_cast<double>(n * 11 % 360)});
    }
    falcon::Objective& one = test::AddObjective(data, test::AddObjectiveClass(data, 11, entries), "Factory");
    one.CellX = static_cast<std::int16_t>(n % 1024);
    one.CellY = static_cast<std::int16_t>(n / 2);
  }
  return data;
}

}  // namespace

int main() {
  const test::TempFolder disk;
  std::vector<std::string> shapes;
  std::size_t fileBytes = 0;
  for (int model = 1; model <= Models; ++model) {
    shapes.push_back(Tower(model));
    fileBytes += shapes.back().size();
  }
  test::WriteModels(disk.Path(), shapes);
  const core::CampaignData data = Campaign();
  core::ObjectiveList list(data);
  list.SelectShown(true);

  const double read = MedianMilliseconds(Rounds, [&] {
    falcon::ModelStore models({disk.Path()}, {});
    falcon::ModelLines lines(models, {});
    for (int model = 1; model <= Models; ++model) lines.Of(model);
    if (lines.Boxes() + lines.Missing() > 0) std::exit(1);
  });
  std::size_t lineCount = 0, peak = 0;
  const double imported = MedianMilliseconds(Rounds, [&] {
    doubles::StationAround<> around;
    falcon::ModelStore models({disk.Path()}, {});
    const std::size_t before = heldBytes;
    mostBytes = heldBytes;
    const core::ObjectiveImport how{.Look = core::ObjectiveLook::Lines, .SimplFactor = "0"};
    if (!core::ImportObjectives(around.All, data, models, list, how, [](const auto&) { return true; })) std::exit(1);
    peak = mostBytes - before;
    lineCount = 0;
    for (const areas::Area& area : around.State.Areas.AreaGroups[1].Areas.Live()) lineCount += area.Lines.UpperBound();
  });
  const double made = static_cast<double>(lineCount * sizeof(areas::AreaLine) + Objectives * sizeof(areas::Area));
  std::printf("%d models read: %.2f ms; %d objectives with %d buildings drawn with them (%zu lines): %.2f ms\n", Models,
              read, Objectives, Buildings, lineCount, imported);
  std::printf("a use of a model costs %.4f of the reading of one\n",
              imported / (Objectives * Buildings) / (read / Models));
  std::printf("all uses and the reading together: %.2f times the reading of each model once\n", imported / read);
  std::printf("most memory held: %.1f MB, %.2f times the models' file and the areas made\n",
              static_cast<double>(peak) / 1e6, static_cast<double>(peak) / (static_cast<double>(fileBytes) + made));
  return 0;
}
