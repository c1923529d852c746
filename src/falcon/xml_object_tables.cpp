#include "falcon/xml_object_tables.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "base/failure.h"
#include "falcon/xml_fields.h"
#include "falcon/xml_records.h"

namespace kestrel::falcon {
namespace {

constexpr std::uint8_t NoFeature = 255;

template <std::size_t Kind>
void Model(EntityClass& record, const XmlText& text) {
  record.Models[Kind] = text.Whole<std::int16_t>();
}

// In the order of the files, which is soonest gone through.
constexpr XmlField<EntityClass> ClassFields[] = {
    {"Domain", TakeWhole<&EntityClass::Domain>},
    {"Class", TakeWhole<&EntityClass::Class>},
    {"Type", TakeWhole<&EntityClass::Type>},
    {"SubType", TakeWhole<&EntityClass::SubType>},
    {"Specific", TakeWhole<&EntityClass::Specific>},
    {"Owner", TakeWhole<&EntityClass::Owner>},
    {"GraphicsNormal", Model<0>},
    {"GraphicsRepaired", Model<1>},
    {"GraphicsDamaged", Model<2>},
    {"GraphicsDestroyed", Model<3>},
    {"GraphicsLeftDestroyed", Model<4>},
    {"GraphicsRightDestroyed", Model<5>},
    {"GraphicsBothDestroyed", Model<6>},
    {"EntityType", [](EntityClass& to, const XmlText& text) { to.Data = DataKind{text.Whole<std::uint8_t>()}; }},
    {"EntityIdx", TakeWhole<&EntityClass::DataIndex>},
};

constexpr XmlField<ObjectiveClass> ObjectiveClassFields[] = {
    {"CtIdx", TakeWhole<&ObjectiveClass::ClassIndex>},
    {"Name", TakeName<&ObjectiveClass::Name>},
    {"PtDataIdx", TakeWhole<&ObjectiveClass::FirstHeader>},
    {"ObjectiveIcon", TakeWhole<&ObjectiveClass::Icon>},
    {"FeatureCount", TakeWhole<&ObjectiveClass::FeatureCount>},
    {"RadarFeature",
     [](ObjectiveClass& to, const XmlText& text) {
       const auto radar = text.Whole<std::int32_t>();
       if (radar >= 0 && radar != NoFeature) to.RadarFeature = radar;
     }},
    {"FirstFeature", TakeWhole<&ObjectiveClass::FirstFeature>},
};

constexpr XmlField<FeatureEntry> FeatureEntryFields[] = {
    {"FeatureCtIdx", TakeWhole<&FeatureEntry::ClassIndex>},
    {"Flags", TakeBits<&FeatureEntry::Flags>},
    {"Value", TakeWhole<&FeatureEntry::Value>},
    {"OffsetX", TakeNumber<&FeatureEntry::East>},
    {"OffsetY", TakeNumber<&FeatureEntry::North>},
    {"OffsetZ", TakeNumber<&FeatureEntry::Up>},
    {"Heading", TakeNumber<&FeatureEntry::Heading>},
};

constexpr XmlField<FeatureClass> FeatureClassFields[] = {
    {"CtIdx", TakeWhole<&FeatureClass::ClassIndex>},    {"RepairTime", TakeWhole<&FeatureClass::RepairTime>},
    {"Flags", TakeBits<&FeatureClass::Flags>},          {"Name", TakeName<&FeatureClass::Name>},
    {"HitPoints", TakeWhole<&FeatureClass::HitPoints>},
};

void Dependency(PointHeader& header, const XmlText& text) {
  const auto feature = text.Whole<std::int32_t>();
  if (feature >= 0 && feature < NoFeature) header.Features.push_back(static_cast<std::uint8_t>(feature));
}

constexpr XmlField<PointHeader> PointHeaderFields[] = {
    {"ObjIdx", TakeWhole<&PointHeader::Objective>},
    {"Type", TakeWhole<&PointHeader::Kind>},
    {"PointCount", TakeWhole<&PointHeader::PointCount>},
    // The older name of the same, which is not what it says.
    {"FeaturesDependencieCount", TakeWhole<&PointHeader::PointCount>},
    {"FeatureDependencyIdx_", Dependency},
    {"FeaturesDependencieIdx_", Dependency},
    {"Data", TakeNumber<&PointHeader::Data>},
    {"FirstPtIdx", TakeWhole<&PointHeader::FirstPoint>},
    {"RunwayNumber",
     [](PointHeader& to, const XmlText& text) { to.RunwayNumber = static_cast<std::int8_t>(text.Bits()); }},
    {"LandingPattern",
     [](PointHeader& to, const XmlText& text) { to.BaseLeg = static_cast<std::int8_t>(text.Bits()); }},
    {"NextHeaderIdx", TakeWhole<&PointHeader::Next>},
};

constexpr XmlField<ObjectPoint> PointFields[] = {
    {"OffsetX", TakeNumber<&ObjectPoint::East>},
    {"OffsetY", TakeNumber<&ObjectPoint::North>},
    {"OffsetZ", TakeNumber<&ObjectPoint::Up>},
    {"Type",
     [](ObjectPoint& to, const XmlText& text) {
       // Of a kind the low byte counts.
       to.Kind = static_cast<std::uint8_t>(text.Bits());
     }},
    {"Flags", [](ObjectPoint& to, const XmlText& text) { to.Flags = static_cast<std::uint8_t>(text.Bits()); }},
};

/// Puts each record at its number, or all of them, whatever their numbers, behind one another.
template <class Record, std::size_t Count>
class Table : public XmlTaker {
 public:
  enum class Order { ByNumber, AsTheyCome };
  Table(const XmlField<Record> (&which)[Count], Record untold, Order how)
      : fields(which), blank(std::move(untold)), order(how) {}

  void Begin(std::int32_t number) override {
    current = order == Order::ByNumber ? static_cast<std::size_t>(number) : Records.size();
    if (current >= Records.size()) {
      Records.resize(current + 1, blank);
      there.resize(current + 1);
    }
    if (there[current]) throw base::RuntimeFailure("another record has this number");
    there[current] = true;
  }
  void Take(std::size_t field, const XmlText& text) override { fields[field].Take(Records[current], text); }

  std::vector<Record> Records;

 private:
  const XmlField<Record> (&fields)[Count];
  Record blank;
  Order order;
  std::vector<bool> there;
  std::size_t current = 0;
};

template <class Record, std::size_t Count>
std::vector<Record> ReadTable(const DataFile& file, std::string_view record, const XmlField<Record> (&fields)[Count],
                              Record blank = {},
                              typename Table<Record, Count>::Order order = Table<Record, Count>::Order::ByNumber) {
  const std::array<std::string_view, Count> names = XmlFieldNames(fields);
  Table<Record, Count> table(fields, std::move(blank), order);
  ReadXmlRecords(file, {.Record = record, .Number = "Num", .Fields = names}, table);
  return std::move(table.Records);
}

}  // namespace

std::vector<EntityClass> ReadXmlClasses(const DataFile& file) { return ReadTable(file, "CT", ClassFields); }

std::vector<ObjectiveClass> ReadXmlObjectiveClasses(const DataFile& file) {
  return ReadTable(file, "OCD", ObjectiveClassFields);
}

std::vector<FeatureEntry> ReadXmlFeatureEntries(const DataFile& file) {
  return ReadTable(file, "FED", FeatureEntryFields);
}

std::vector<FeatureClass> ReadXmlFeatureClasses(const DataFile& file) {
  return ReadTable(file, "FCD", FeatureClassFields);
}

std::vector<PointHeader> ReadXmlPointHeaders(const DataFile& file) {
  // A runway that is not told is the first.
  return ReadTable(file, "PHD", PointHeaderFields, PointHeader{.RunwayNumber = 0});
}

std::vector<ObjectPoint> ReadXmlPoints(const DataFile& file) { return ReadTable(file, "PD", PointFields); }

ObjectiveClass ReadXmlObjectiveClass(const DataFile& file) {
  using Order = Table<ObjectiveClass, std::size(ObjectiveClassFields)>::Order;
  std::vector<ObjectiveClass> records = ReadTable(file, "OCD", ObjectiveClassFields, {}, Order::AsTheyCome);
  if (records.size() != 1) RefuseFile(file.Name, "it has " + Told(records.size()) + " records and not one");
  ObjectiveClass objective = std::move(records.front());
  // These lead into a table that is not there.
  objective.FirstHeader = objective.FirstFeature = objective.FeatureCount = 0;
  return objective;
}

}  // namespace kestrel::falcon
