#include "areas/area_list.h"

#include <utility>

namespace kestrel::areas {
namespace {

/// The step of something done in a group, whose node is selected before and after.
class ListStep : public OneStep {
 public:
  ListStep(AreaCatalogue& changed, AreaHistory& recorder, std::size_t group, const std::string& text,
           const std::string& joins = {})
      : OneStep(changed, recorder, text, joins) {
    Select(GroupKey(group), GroupKey(group));
  }
};

bool IsGroup(const AreaCatalogue& catalogue, std::size_t group) {
  return group >= 1 && group <= catalogue.AreaGroups.UpperBound();
}

bool IsArea(const AreaCatalogue& catalogue, std::size_t group, std::size_t index) {
  return IsGroup(catalogue, group) && index >= 1 && index <= catalogue.AreaGroups[group].Areas.UpperBound();
}

std::string Checking(bool checked) { return checked ? "check of " : "uncheck of "; }

}  // namespace

std::string AreaTypeToName(AreaType type) { return type == AreaType::FlightPlan ? "" : ShapeToText(type); }

void RenameGroup(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, const std::string& name) {
  if (!IsGroup(catalogue, group) || catalogue.AreaGroups[group].Name == name) return;
  ListStep step(catalogue, history, group, "rename of " + name, "name of " + GroupKey(group));
  step.Do(Put<&AreaGroup::Name>{0, {{group, name}}});
}

std::size_t AppendArea(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, Area area) {
  if (!IsGroup(catalogue, group)) return 0;
  const std::size_t index = catalogue.AreaGroups[group].Areas.UpperBound() + 1;
  ListStep step(catalogue, history, group, "new area " + area.Name);
  area.Editing = false;
  Insert<Area> insert{group, {}};
  insert.Items.push_back({index, std::move(area)});
  step.Do(std::move(insert));
  return index;
}

void ReplaceArea(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, std::size_t index, Area area) {
  if (!IsArea(catalogue, group, index)) return;
  // The area that may come back one day is not being edited either.
  catalogue.AreaGroups[group].Areas[index].Editing = false;
  area.Editing = false;
  ListStep step(catalogue, history, group, "edit of " + area.Name);
  step.Do(ReplaceOne{group, {index, std::move(area)}});
}

void DeleteArea(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, std::size_t index) {
  if (!IsArea(catalogue, group, index)) return;
  ListStep step(catalogue, history, group, "delete of " + catalogue.AreaGroups[group].Areas[index].Name);
  step.Do(Take<Area>{group, {index}});
}

std::size_t MoveArea(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, std::size_t index, Way way) {
  if (!IsArea(catalogue, group, index)) return 0;
  const base::Table<Area>& areas = catalogue.AreaGroups[group].Areas;
  std::size_t to = index;
  if (way == Way::Up) to = index - 1;
  if (way == Way::Down) to = index + 1;
  if (way == Way::Top) to = 1;
  if (way == Way::Bottom) to = areas.UpperBound();
  if (to == index || to < 1 || to > areas.UpperBound()) return 0;
  ListStep step(catalogue, history, group, "move of " + areas[index].Name);
  step.Do(Move<Area>{group, index, to});
  return to;
}

void CheckArea(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, std::size_t index, bool checked) {
  if (!IsArea(catalogue, group, index)) return;
  const Flag flag = checked ? On : Off;
  const Area& area = catalogue.AreaGroups[group].Areas[index];
  if (area.Visible == flag) return;
  ListStep step(catalogue, history, group, Checking(checked) + area.Name);
  step.Do(Put<&Area::Visible>{group, {{index, flag}}});
}

void CheckAllAreas(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, bool checked) {
  if (!IsGroup(catalogue, group)) return;
  const Flag flag = checked ? On : Off;
  const base::Table<Area>& areas = catalogue.AreaGroups[group].Areas;
  Put<&Area::Visible> put{group, {}};
  for (std::size_t index = 1; index <= areas.UpperBound(); ++index) {
    if (areas[index].Visible != flag) put.Values.push_back({index, flag});
  }
  if (put.Values.empty()) return;
  ListStep step(catalogue, history, group, Checking(checked) + "all in " + catalogue.AreaGroups[group].Name);
  step.Do(std::move(put));
}

std::size_t CopyChecked(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, std::size_t target) {
  if (!IsGroup(catalogue, group) || !IsGroup(catalogue, target)) return 0;
  Insert<Area> insert{target, {}};
  std::size_t at = catalogue.AreaGroups[target].Areas.UpperBound();
  for (const Area& area : catalogue.AreaGroups[group].Areas.Live()) {
    if (area.Visible != On) continue;
    insert.Items.push_back({++at, area});
    insert.Items.back().Item.Editing = false;
  }
  const std::size_t count = insert.Items.size();
  if (count == 0) return 0;
  ListStep step(catalogue, history, group, "copy to " + catalogue.AreaGroups[target].Name);
  step.Do(std::move(insert));
  return count;
}

void ColourChecked(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, base::Colour colour) {
  if (!IsGroup(catalogue, group)) return;
  const base::Table<Area>& areas = catalogue.AreaGroups[group].Areas;
  Put<&Area::Color> put{group, {}};
  for (std::size_t index = 1; index <= areas.UpperBound(); ++index) {
    if (areas[index].Visible == On && areas[index].Color != colour) put.Values.push_back({index, colour});
  }
  if (put.Values.empty()) return;
  ListStep step(catalogue, history, group, "change of colour in " + catalogue.AreaGroups[group].Name);
  step.Do(std::move(put));
}

}  // namespace kestrel::areas
