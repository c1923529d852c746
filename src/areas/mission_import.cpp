#include "areas/mission_import.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "areas/area_bounds.h"
#include "areas/area_tree.h"
#include "base/numbers.h"
#include "base/text.h"

namespace kestrel::areas {
namespace {

constexpr std::string_view Section = "STPT";
constexpr double FeetOfUnit = 3279.98;
constexpr double FeetOfMile = 6076.11549;
constexpr int Steerpoints = 24;
constexpr int Threats = 15;
constexpr int LineCount = 4;
constexpr std::int16_t SamIcon = 3;
constexpr double LastNavAction = 9;

/// A mission brings no texts, so none is measured.
class NoTexts final : public TextMeasure {
 public:
  TextExtent Extent(const std::string&, const AreaFont&) override { return {}; }
};

/// The first four values of a key; those that are missing or beyond all measure are 0.
struct Values {
  std::size_t Count = 0;  ///< how many the file has
  std::array<double, 4> Number = {};

  double X() const { return Number[1] / FeetOfUnit; }
  double Y() const { return Number[0] / FeetOfUnit; }
};

Values Read(const base::ProfileFile& mission, std::string_view key, int number) {
  const std::string text = mission.ReadIniValue(Section, std::string(key) + std::to_string(number), "");
  Values values;
  if (text.empty()) return values;
  for (const std::string_view piece : base::Split(text, ',')) {
    if (values.Count < values.Number.size()) {
      const double value = base::InvariantNumber(base::Trim(piece));
      values.Number[values.Count] = std::isfinite(value) ? value : 0;
    }
    ++values.Count;
  }
  return values;
}

Area AreaOf(AreaType type, std::string name) {
  Area area;
  area.Type = type;
  area.Name = std::move(name);
  return area;
}

void Append(AreaGroup& group, Area area) {
  NoTexts texts;
  AreaBounds(area, texts);
  group.Areas.Append(std::move(area));
}

/// The groups of one mission, in the order in which they are made.
class Groups {
 public:
  Groups(const base::ProfileFile& file, std::int32_t index) : mission(file), title(MissionTitle(file)), folder(index) {
    AddSteerpoints();
    for (int number = 0; number < Threats; ++number) AddThreat(number);
    AddLines();
  }

  std::vector<AreaGroup> Made;

 private:
  AreaGroup& NewGroup(std::string name) {
    Made.push_back({.Name = std::move(name), .FolderIndex = folder});
    return Made.back();
  }

  void AddSteerpoints() {
    Area plan = AreaOf(AreaType::FlightPlan, title + "_STPs");
    for (int number = 0; number < Steerpoints; ++number) {
      const Values values = Read(mission, "target_", number);
      if (values.Count < 4) continue;
      const double action = base::RoundHalfEven(values.Number[3]);
      // The file counts height downward.
      const FlightPlanPoint point{values.X(), values.Y(), 0 - values.Number[2],
                                  action > LastNavAction ? PointType::Target : PointType::Nav};
      if (action != -1 && (point.X != 0 || point.Y != 0 || point.Z != 0)) plan.Points.Append(point);
    }
    if (!plan.Points.Empty()) Append(NewGroup("STPs"), std::move(plan));
  }

  void AddThreat(int number) {
    const Values values = Read(mission, "ppt_", number);
    const double radius = values.Number[3] / FeetOfMile;
    if (values.Count < 4 || values.X() == 0 || values.Y() == 0 || radius == 0) return;
    const std::string name = "PPT_" + std::to_string(number);
    AreaGroup& group = NewGroup(name);
    Area icon = AreaOf(AreaType::Icon, title + "_" + name + " Icon");
    icon.X = values.X();
    icon.Y = values.Y();
    icon.Icon = SamIcon;
    Area circle = icon;
    circle.Type = AreaType::Circle;
    circle.Name = title + "_" + name + " Circle";
    circle.Radius = radius;
    Append(group, std::move(icon));
    Append(group, std::move(circle));
  }

  void AddLines() {
    // Newer editions of the simulator have lines of six points, older ones of five.
    const int length = mission.HasKey(Section, "lineSTPT_20") ? 6 : 5;
    AreaGroup lines{.Name = "STP Lines", .FolderIndex = folder};
    for (int line = 0; line < LineCount; ++line) {
      Area plan = AreaOf(AreaType::FlightPlan, title + "_Line " + std::to_string(line + 1));
      plan.ShowWaypointElevation = Off;
      for (int number = line * length; number < (line + 1) * length; ++number) {
        const Values values = Read(mission, "lineSTPT_", number);
        if (values.Count >= 2 && values.X() != 0 && values.Y() != 0) plan.Points.Append({values.X(), values.Y()});
      }
      if (!plan.Points.Empty()) Append(lines, std::move(plan));
    }
    if (!lines.Areas.Empty()) Made.push_back(std::move(lines));
  }

  const base::ProfileFile& mission;
  std::string title;
  std::int32_t folder;
};

}  // namespace

std::string MissionTitle(const base::ProfileFile& mission) { return mission.ReadIniValue("MISSION", "title", ""); }

void ImportMission(AreaCatalogue& catalogue, AreaHistory& history, const base::ProfileFile& mission) {
  const std::size_t folder = catalogue.AreaFolders.UpperBound() + 1;
  Insert<AreaFolder> folders;
  folders.Items.push_back({folder, {MissionTitle(mission), On}});
  Insert<AreaGroup> groups;
  std::size_t at = catalogue.AreaGroups.UpperBound();
  Groups found(mission, static_cast<std::int32_t>(folder));
  for (AreaGroup& group : found.Made) {
    groups.Items.push_back({++at, std::move(group)});
  }

  OneStep step(catalogue, history, "import of " + folders.Items[0].Item.Name);
  step.Select({}, FolderKey(folder));
  step.Do(std::move(folders));
  if (!groups.Items.empty()) step.Do(std::move(groups));
}

}  // namespace kestrel::areas
