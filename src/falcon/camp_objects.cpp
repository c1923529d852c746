#include "falcon/camp_objects.h"

#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "falcon/xml_fields.h"
#include "falcon/xml_records.h"

namespace kestrel::falcon {
namespace {

constexpr std::string_view FileName = "CampObjData.XML";

constexpr XmlField<CampObject> Fields[] = {{"CampName", TakeName<&CampObject::Name>},
                                           {"Heading", TakeNumber<&CampObject::Heading>},
                                           {"PositionX", TakeNumber<&CampObject::North>},
                                           {"PositionY", TakeNumber<&CampObject::East>},
                                           {"PositionZ", TakeNumber<&CampObject::Height>}};

class Objects : public XmlTaker {
 public:
  void Begin(std::int32_t number) override {
    const auto [place, isNew] = Read.try_emplace(number);
    if (!isNew) throw base::RuntimeFailure("another object has this number");
    current = &place->second;
  }
  void Take(std::size_t field, const XmlText& text) override { Fields[field].Take(*current, text); }

  std::map<std::int32_t, CampObject> Read;

 private:
  CampObject* current = nullptr;
};

/// Whether it can be the objective, whose cell may be the one beside its place's.
bool IsAt(const CampObject& object, const Objective& objective) {
  const double north = MapUnitsOfFeet(object.North) - objective.Y(), east = MapUnitsOfFeet(object.East) - objective.X();
  return std::abs(north) <= 1 && std::abs(east) <= 1;
}

void TakeObject(const CampObject& object, Objective& objective) {
  if (objective.OwnName.empty()) objective.OwnName = object.Name;
  if (!std::isfinite(object.Heading) || !std::isfinite(object.Height)) return;
  if (!objective.Exact) objective.Exact = ExactPlace{object.North, object.East, object.Height, 0};
  if (objective.Exact->Heading == 0) objective.Exact->Heading = static_cast<float>(std::fmod(object.Heading, 360));
}

}  // namespace

std::map<std::int32_t, CampObject> ReadCampObjects(const DataFile& file) {
  Objects objects;
  constexpr auto names = XmlFieldNames(Fields);
  ReadXmlRecords(file, {.Record = "CampObj", .Number = "CampId", .Fields = names}, objects);
  return std::move(objects.Read);
}

void TakeCampObjects(const std::filesystem::path& campaignFolder, World& world) {
  const std::filesystem::path file = base::FindFile(campaignFolder, FileName);
  if (!base::FileExists(file)) return;
  try {
    const std::map<std::int32_t, CampObject> objects = ReadCampObjects(ReadDataFile(file, MaxXmlBytes));
    std::size_t elsewhere = 0;
    for (Objective& objective : world.Objectives) {
      const auto object = objects.find(objective.CampId);
      if (object == objects.end()) continue;
      if (IsAt(object->second, objective)) {
        TakeObject(object->second, objective);
      } else {
        ++elsewhere;
      }
    }
    if (elsewhere > 0)
      world.Notes.push_back(std::to_string(elsewhere) + " objectives stand elsewhere than CampObjData.XML tells");
  } catch (const base::RuntimeFailure& failure) {
    world.Notes.emplace_back(failure.what());
  }
}

}  // namespace kestrel::falcon
