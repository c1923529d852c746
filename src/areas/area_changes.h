#pragma once

#include <cstddef>
#include <string>
#include <variant>

#include "areas/area.h"
#include "base/history.h"
#include "base/table_changes.h"

// Changes of the catalogue as data, and the steps made of them. `Group` of a change is that of areas.
namespace kestrel::areas {

using base::Insert;
using base::Move;
using base::Placed;
using base::Put;
using base::Take;
using ReplaceOne = base::Replace<Area>;

/// Two groups change places.
struct SwapGroups {
  std::size_t One = 0;
  std::size_t Other = 0;
};

using Change = std::variant<Insert<AreaFolder>, Insert<AreaGroup>, Insert<Area>, Take<AreaFolder>, Take<AreaGroup>,
                            Take<Area>, Move<AreaFolder>, Move<Area>, SwapGroups, Put<&AreaFolder::Name>,
                            Put<&AreaFolder::Visible>, Put<&AreaGroup::Name>, Put<&AreaGroup::Visible>,
                            Put<&AreaGroup::FolderIndex>, Put<&Area::Visible>, Put<&Area::Color>, ReplaceOne>;

/// Makes the change; gives the one that takes it back.
Change Apply(AreaCatalogue& catalogue, Change change);

// Bytes of memory, about, that a record holds elsewhere.
std::size_t Held(const AreaFolder& folder);
std::size_t Held(const AreaGroup& group);
std::size_t Held(const Area& area);

/// What the windows are to do after an Undo or Redo.
struct Moved {
  bool Done = false;           ///< false: there was nothing to undo or redo
  std::string Select;          ///< key of the node to be selected ("C3", "D7"), or empty
  bool GroupsChanged = false;  ///< groups came, went or changed their order: what holds the index of one is stale

  void Note(const Change& change);
};

using AreaHistory = base::History<AreaCatalogue, Change, Moved>;
using OneStep = AreaHistory::OneStep;

}  // namespace kestrel::areas

extern template class kestrel::base::History<kestrel::areas::AreaCatalogue, kestrel::areas::Change,
                                             kestrel::areas::Moved>;
