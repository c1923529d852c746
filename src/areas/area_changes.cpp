#include "areas/area_changes.h"

#include <type_traits>
#include <utility>

namespace kestrel::areas {
namespace {

template <class T>
base::Table<T>& TableOf(AreaCatalogue& catalogue, std::size_t group) {
  if constexpr (std::is_same_v<T, AreaFolder>) {
    return catalogue.AreaFolders;
  } else if constexpr (std::is_same_v<T, AreaGroup>) {
    return catalogue.AreaGroups;
  } else {
    return catalogue.AreaGroups[group].Areas;
  }
}

template <class Made>
Change Run(AreaCatalogue& catalogue, Made& made) {
  auto& table = TableOf<typename Made::Record>(catalogue, made.Group);
  return base::Apply(table, std::move(made));
}

Change Run(AreaCatalogue& catalogue, SwapGroups& swap) {
  std::swap(catalogue.AreaGroups[swap.One], catalogue.AreaGroups[swap.Other]);
  return swap;
}

}  // namespace

Change Apply(AreaCatalogue& catalogue, Change change) {
  return std::visit([&catalogue](auto& made) { return Run(catalogue, made); }, change);
}

std::size_t Held(const AreaFolder& folder) { return base::Held(folder.Name); }

std::size_t Held(const AreaGroup& group) { return base::Held(group.Name) + base::Held(group.Areas); }

std::size_t Held(const Area& area) {
  return base::Held(area.Name) + base::Held(area.Text) + base::Held(area.AltFont.Name) +
         base::Held(area.TextFont.Name) + base::Held(area.Lines) + base::Held(area.Points);
}

void Moved::Note(const Change& change) {
  GroupsChanged = GroupsChanged || std::holds_alternative<Insert<AreaGroup>>(change) ||
                  std::holds_alternative<Take<AreaGroup>>(change) || std::holds_alternative<SwapGroups>(change);
}

}  // namespace kestrel::areas

template class kestrel::base::History<kestrel::areas::AreaCatalogue, kestrel::areas::Change, kestrel::areas::Moved>;
