#include "falcon-info/objectives.h"

#include <algorithm>
#include <string>

#include "base/failure.h"
#include "base/files.h"
#include "falcon/campaign.h"
#include "falcon/campaign_info.h"
#include "falcon/foreign_text.h"
#include "falcon/objective_names.h"
#include "falcon/objective_types.h"
#include "falcon/objectives.h"

namespace kestrel::falconinfo {
namespace fs = std::filesystem;
namespace {

using falcon::Objective;
using falcon::World;

Json ExactReport(const std::optional<falcon::ExactPlace>& place) {
  if (!place) return {};
  Json json;
  json["north"] = place->North;
  json["east"] = place->East;
  json["height"] = place->Height;
  json["heading"] = place->Heading;
  return json;
}

/// What changes of a mission replace.
void TellChangeable(const Objective& one, Json& into) {
  into["owner"] = one.Owner;
  into["supply"] = one.Supply;
  into["fuel"] = one.Fuel;
  into["losses"] = one.Losses;
  into["states"] = ListOf(one.States);
}

bool IsChanged(const Objective& a, const Objective& b) {
  return a.Owner != b.Owner || a.Supply != b.Supply || a.Fuel != b.Fuel || a.Losses != b.Losses || a.States != b.States;
}

class Teller {
 public:
  Teller(const World& which, const Database& tables) : world(which), database(tables), names(which) {}

  Json Tell(const Objective& one, const Objective& before) const {
    const falcon::EntityClass* const thing = falcon::ClassAt(database.Tables, one.ClassIndex);
    const falcon::ObjectiveClass* const known = falcon::ObjectiveClassAt(database.Tables, one.ClassIndex);
    const std::string type = thing ? falcon::ObjectiveTypeName(thing->Type) : "";
    Json json;
    json["id"] = one.Id.Number;
    json["creator"] = one.Id.Creator;
    json["camp_id"] = one.CampId;
    json["name"] = names.Of(one, type);
    json["class_index"] = one.ClassIndex;
    json["type"] = thing ? Json(thing->Type) : Json();
    json["type_name"] = thing ? Json(type) : Json();
    json["class_name"] = known ? Json(known->Name) : Json();
    json["features"] = database.FeaturesOf(one.ClassIndex);
    json["x"] = one.X();
    json["y"] = one.Y();
    json["exact"] = ExactReport(one.Exact);
    TellChangeable(one, json);
    json["first_owner"] = one.FirstOwner;
    json["flags"] = one.Flags;
    json["priority"] = one.Priority;
    json["name_id"] = one.NameId;
    json["own_name"] = one.OwnName;
    json["parent"] = one.Parent.Number;
    json["radar"] = one.HasRadar;
    json["links"] = ListOf(one.Links, [](const falcon::EntityId& link) { return Json(link.Number); });
    json["before"] = nullptr;
    if (IsChanged(one, before)) TellChangeable(before, json["before"]);
    return json;
  }

 private:
  const World& world;
  const Database& database;
  falcon::ObjectiveNames names;
};

bool IsAsked(const Context& context, const Objective& one) {
  const std::vector<std::int32_t>& asked = context.Asked.Objectives;
  return asked.empty() || std::find(asked.begin(), asked.end(), one.CampId) != asked.end();
}

}  // namespace

falcon::CampaignFile OpenContainer(const fs::path& file) {
  std::string bytes = base::ReadWholeFile(file, falcon::MaxCampaignFileBytes);
  return falcon::Within(base::NameForMessage(file), [&bytes] { return falcon::CampaignFile(std::move(bytes)); });
}

std::vector<Objective> ObjectivesOfFile(const fs::path& file, const Database& database) {
  const falcon::CampaignFile container = OpenContainer(file);
  const falcon::CampaignInfo info = falcon::ReadCampaignInfo(container);
  const std::optional<std::string_view> piece = container.Piece("obj");
  if (!piece) throw base::RuntimeFailure(base::NameForMessage(file) + " holds no objectives");
  const auto features = [&database](std::uint16_t index) { return database.FeaturesOf(index); };
  return falcon::ReadObjectives(*piece, info.DataVersion, info.Place, features).Objectives;
}

Json ObjectivesReport(const Context& context, const World& world, const std::vector<Objective>& before,
                      const Database& database) {
  const Teller teller(world, database);
  const bool isAlone = !context.Asked.Objectives.empty();
  Json list = Json::EmptyList();
  for (std::size_t at = 0; at < world.Objectives.size() && at < before.size(); ++at) {
    const Objective& one = world.Objectives[at];
    if (!IsAsked(context, one)) continue;
    Json json = teller.Tell(one, before[at]);
    if (isAlone) json["class"] = ClassReport(database.Tables, one.ClassIndex);
    list.Append(std::move(json));
  }
  return list;
}

}  // namespace kestrel::falconinfo
