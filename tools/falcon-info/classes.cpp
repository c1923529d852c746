#include "falcon-info/records.h"
#include "falcon-info/tables.h"
#include "falcon/objective_types.h"
#include "falcon/runways.h"

namespace kestrel::falconinfo {
namespace {

using falcon::ObjectTables;

Json FeatureReport(const falcon::PlacedFeature& feature) {
  Json json;
  json["number"] = feature.Number;
  json["name"] = feature.Data ? Json(feature.Data->Name) : Json();
  json["entry"] = RecordOf(*feature.Entry);
  Json models = Json::EmptyList();
  for (int status = 0; status < 4; ++status) models.Append(falcon::ModelOf(*feature.Class, status));
  json["models"] = std::move(models);
  return json;
}

Json HeaderReport(const ObjectTables& tables, const falcon::PointHeader& header) {
  Json json;
  json["index"] = &header - tables.Headers.data();
  json["header"] = RecordOf(header);
  json["points"] = ListOf(falcon::PointsOf(tables, header), [](const auto& point) { return RecordOf(point); });
  return json;
}

Json PlaceReport(const std::optional<falcon::RunwayPoint>& place) {
  if (!place) return {};
  Json json;
  json["east"] = place->East;
  json["north"] = place->North;
  return json;
}

Json RunwayReport(const falcon::Runways& runways) {
  Json list = Json::EmptyList();
  for (std::size_t runway = 0; runway < runways.size(); ++runway) {
    for (const std::optional<falcon::RunwayEnd>& end : runways[runway]) {
      if (!end) continue;
      Json json;
      json["runway"] = runway;
      json["name"] = end->Name;
      json["heading"] = end->Heading;
      json["begin"] = PlaceReport(end->Begin);
      json["far_end"] = PlaceReport(end->FarEnd);
      list.Append(std::move(json));
    }
  }
  return list;
}

}  // namespace

void TellObjectiveClass(const ObjectTables& tables, const falcon::ObjectiveClass& objective, Json& into) {
  into["objective"] = RecordOf(objective);
  into["features"] = ListOf(falcon::FeaturesOf(tables, objective), FeatureReport);
  into["headers"] = ListOf(falcon::PointHeadersOf(tables, objective),
                           [&tables](const falcon::PointHeader* header) { return HeaderReport(tables, *header); });
  into["runway_ends"] = RunwayReport(falcon::CollectRunways(tables, objective));
}

Json ClassReport(const ObjectTables& tables, std::int32_t classIndex) {
  Json json;
  json["class_index"] = classIndex;
  const falcon::EntityClass* const thing = falcon::ClassAt(tables, classIndex);
  json["type"] = thing ? Json(thing->Type) : Json();
  const bool isObjective = thing && thing->Class == falcon::ObjectiveClassCode;
  json["type_name"] = isObjective ? Json(falcon::ObjectiveTypeName(thing->Type)) : Json();
  const falcon::ObjectiveClass* const objective = falcon::ObjectiveClassAt(tables, classIndex);
  json["objective"] = nullptr;
  if (objective) TellObjectiveClass(tables, *objective, json);
  return json;
}

}  // namespace kestrel::falconinfo
