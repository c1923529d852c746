// The object tables, as records that each generation then writes in its way.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <utility>
#include <vector>

#include "falcon/made_files.h"
#include "falcon/made_world.h"
#include "falcon/table_writer.h"

namespace kestrel::made {
namespace {

constexpr int ClassCount = 24;

struct ListOfPoints {
  int Kind;  ///< number in Kinds
  int Type;
  double Data;
  int Runway;
  std::vector<test::PointPlan> Points;
};

/// What runs along a runway: the far end first, the threshold, and where aircraft roll on.
std::vector<test::PointPlan> PointsOf(const RunwayEnd& end) {
  return {{end.FarEnd.East, end.FarEnd.North, 1, 1},
          {end.Begin.East, end.Begin.North, 2, 0},
          {end.Begin.East, end.Begin.North + 400, 3, 2}};
}
/// Its corners, 150 feet apart, those of one end first.
std::vector<test::PointPlan> CornersOf(const RunwayEnd& end) {
  return {{end.Begin.East, end.Begin.North - 75, 8, 1},
          {end.Begin.East, end.Begin.North + 75, 8, 0},
          {end.FarEnd.East, end.FarEnd.North - 75, 8, 0},
          {end.FarEnd.East, end.FarEnd.North + 75, 8, 2}};
}

/// The lists of points of a class of objectives. The outline of a runway comes behind its ends in 4.0, with a heading
/// that is none of theirs; later it comes before them.
std::vector<ListOfPoints> ListsOf(int kind, bool outlineFirst) {
  std::vector<ListOfPoints> lists;
  const std::vector<RunwayEnd>& ends = Kinds[static_cast<std::size_t>(kind)].Ends;
  for (std::size_t n = 0; n < ends.size(); n += 2) {
    const ListOfPoints outline{kind, 8, outlineFirst ? ends[n + 1].Heading : 236, ends[n].Runway, CornersOf(ends[n])};
    if (outlineFirst) lists.push_back(outline);
    for (const RunwayEnd& end : {ends[n], ends[n + 1]}) {
      lists.push_back({kind, 1, end.Heading, end.Runway, PointsOf(end)});
    }
    if (!outlineFirst) lists.push_back(outline);
  }
  if (!ends.empty()) lists.push_back({kind, 11, 0, -1, {{100, 900, 11, 1}, {200, 900, 12, 2}}});
  return lists;
}

test::ClassPlan ClassOf(int number) {
  for (std::size_t n = 0; n < Kinds.size(); ++n) {
    if (Kinds[n].Class == number) {
      return {.Type = static_cast<unsigned>(Kinds[n].Type), .Index = static_cast<int>(n) + 1};
    }
  }
  for (std::size_t n = 0; n < Buildings.size(); ++n) {
    const Building& one = Buildings[n];
    if (one.Class != number) continue;
    return {.Class = 2,
            .Type = 5,
            .Models = {one.Model, 0, 0, one.Destroyed, 0, 0, 0},
            .Data = 1,
            .Index = BuildingRecord(static_cast<int>(n))};
  }
  // Aircraft and the like between them.
  if (number == 0) return {.Domain = 0, .Class = 0, .Type = 0, .Data = 2};
  return {.Domain = 2, .Class = 7, .Models = {2, 2, 2, 2, 2, 2, 2}, .Data = 5, .Index = number};
}

int ClassOfFeature(const Feature& one) {
  return one.Building == EmptySlot ? 0 : Buildings[static_cast<std::size_t>(one.Building)].Class;
}

// ---- XML

using Children = std::vector<std::pair<std::string, std::string>>;

std::string Whole(int number) { return std::to_string(number); }
std::string Fraction(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.3f", number);
  return text;
}

std::string Record(const std::string& name, const std::string& number, const Children& children,
                   const std::string& key = "Num") {
  std::string text = "    <" + name + " " + key + "=\"" + number + "\">\n";
  for (const auto& [child, value] : children) {
    text += "        <" + child + ">" + XmlText(value) + "</" + child + ">\n";
  }
  return text + "    </" + name + ">\n";
}
std::string Document(const std::string& root, const std::string& records) {
  return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<" + root + ">\n" + records + "</" + root + ">\n";
}
std::string WithCarriageReturns(const std::string& text) {
  std::string with;
  for (const char letter : text) {
    if (letter == '\n') with += '\r';
    with += letter;
  }
  return with;
}

/// Those that say nothing of interest, in their order.
void AddZeros(Children& children, std::initializer_list<const char*> names) {
  for (const char* const name : names) children.emplace_back(name, "0");
}
void AddSenses(Children& children) {
  AddZeros(children, {"Det_NoMove", "Det_Foot", "Det_Wheeled", "Det_Tracked", "Det_LowAir", "Det_Air", "Det_Naval",
                      "Det_Rail", "Dam_None", "Dam_Penetration", "Dam_HighExplosive", "Dam_Heave", "Dam_Incendairy",
                      "Dam_Proximity", "Dam_Kinetic", "Dam_Hydrostatic", "Dam_Chemical", "Dam_Nuclear", "Dam_Other"});
}

std::string ClassXml(int number) {
  const test::ClassPlan one = ClassOf(number);
  Children children = {{"Id", "60395"},
                       {"CollisionType", "0"},
                       {"CollisionRadius", "0.000"},
                       {"Domain", Whole(static_cast<int>(one.Domain))},
                       {"Class", Whole(static_cast<int>(one.Class))},
                       {"Type", Whole(static_cast<int>(one.Type))},
                       {"SubType", Whole(static_cast<int>(one.SubType))},
                       {"Specific", Whole(static_cast<int>(one.Specific))},
                       {"Owner", "0"},
                       {"Class_6", "255"},
                       {"Class_7", "255"}};
  AddZeros(children, {"UpdateRate", "UpdateTolerance", "FineUpdateRange", "FineUpdateForceRange",
                      "FineUpdateMultiplier", "DamageSeed", "HitPoints", "MajorRev", "MinRev", "CreatePriority",
                      "ManagementDomain", "Transferable", "Private", "Tangible", "Collidable", "Global", "Persistent"});
  const char* const states[] = {"Normal",        "Repaired",       "Damaged",      "Destroyed",
                                "LeftDestroyed", "RightDestroyed", "BothDestroyed"};
  for (std::size_t n = 0; n < one.Models.size(); ++n) {
    children.emplace_back(std::string("Graphics") + states[n], Whole(one.Models[n]));
  }
  children.insert(children.end(), {{"MoverDefinitionData", "190"},
                                   {"EntityType", Whole(static_cast<int>(one.Data))},
                                   {"EntityIdx", Whole(one.Index)}});
  return Record("CT", Whole(number), children);
}
std::string ClassesXml() {
  std::string records;
  for (int n = 0; n < ClassCount; ++n) records += ClassXml(n);
  return Document("CTRecords", records);
}

/// `features`, `firstFeature` and `firstList` where the table has them; else -1.
std::string KindXml(int kind, int features, int firstFeature, int firstList) {
  const Kind& one = Kinds[static_cast<std::size_t>(kind)];
  Children children = {{"CtIdx", Whole(one.Class)}, {"Name", one.Name}, {"DataRate", "1"}, {"DeaggDistance", "0"}};
  if (firstList >= 0) children.emplace_back("PtDataIdx", Whole(firstList));
  AddSenses(children);
  children.emplace_back("ObjectiveIcon", "10006");
  if (features >= 0) children.emplace_back("FeatureCount", Whole(features));
  children.emplace_back("RadarFeature", Whole(one.RadarFeature));
  if (firstFeature >= 0) children.emplace_back("FirstFeature", Whole(firstFeature));
  return Record("OCD", Whole(kind + 1), children);
}

std::string FeatureXml(int number, const Feature& one) {
  Children children = {{"FeatureCtIdx", Whole(ClassOfFeature(one))}};
  if (number % 2 == 1) children.emplace_back("Value", "20");  // left out where it is 0
  children.insert(children.end(), {{"OffsetX", Fraction(one.East)},
                                   {"OffsetY", Fraction(one.North)},
                                   {"OffsetZ", Fraction(0)},
                                   {"Heading", Fraction(one.Heading)}});
  return Record("FED", Whole(number), children);
}

std::string PointXml(int number, const test::PointPlan& one) {
  Children children = {{"OffsetX", Fraction(one.East)},
                       {"OffsetY", Fraction(one.North)},
                       {"OffsetZ", Fraction(0)},
                       {"Type", Whole(static_cast<int>(one.Kind))}};
  if (one.Flags != 0) children.emplace_back("Flags", Whole(static_cast<int>(one.Flags)));
  return Record("PD", Whole(number), children);
}

std::string ListXml(int number, const ListOfPoints& one, int firstPoint, int next) {
  return Record("PHD", Whole(number),
                {{"ObjIdx", Whole(one.Kind + 1)},
                 {"Type", Whole(one.Type)},
                 {"FeaturesDependencieCount", Whole(static_cast<int>(one.Points.size()))},
                 {"FeaturesDependencieIdx_0", "0"},
                 {"FeaturesDependencieIdx_1", "255"},
                 {"FeaturesDependencieIdx_2", "255"},
                 {"FeaturesDependencieIdx_3", "255"},
                 {"FeaturesDependencieIdx_4", "255"},
                 {"Data", Whole(static_cast<int>(std::lround(one.Data)))},
                 {"FirstPtIdx", Whole(firstPoint)},
                 {"RunwayTexture", "0"},
                 {"RunwayNumber", Whole(one.Runway)},
                 {"LandingPattern", "0"},
                 {"NextHeaderIdx", Whole(next)}});
}
/// As it stands in the folder of a class: seven features that it depends on, or none.
std::string FolderListXml(int number, const ListOfPoints& one, int firstPoint) {
  Children children = {{"ObjIdx", Whole(one.Kind + 1)},
                       {"Type", Whole(one.Type)},
                       {"PointCount", Whole(static_cast<int>(one.Points.size()))}};
  for (int n = 0; one.Type == 1 && n < 7; ++n) {
    children.emplace_back("FeatureDependencyIdx_" + Whole(n), Whole(n % 3));
  }
  children.insert(children.end(), {{"Data", Fraction(one.Data)},
                                   {"FirstPtIdx", Whole(firstPoint)},
                                   {"RunwayTexture", "3"},
                                   {"RunwayNumber", Whole(one.Runway)},
                                   {"LandingPattern", "0"}});
  return Record("PHD", Whole(number), children);
}

/// "00007".
std::string FiveDigits(int number) {
  char text[16];
  std::snprintf(text, sizeof text, "%05d", number);
  return text;
}

}  // namespace

int BuildingRecord(int building) { return static_cast<int>(Buildings.size()) - building; }

std::string XmlText(std::string_view bytes) {
  std::string text;
  for (const char letter : bytes) {
    const auto code = static_cast<unsigned char>(letter);
    if (letter == '&') {
      text += "&amp;";
    } else if (letter == '<') {
      text += "&lt;";
    } else if (code < 0x80) {
      text += letter;
    } else {
      text += static_cast<char>(0xC0 | code >> 6);
      text += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return text;
}

void AddBinaryTables(Files& files, const std::string& folder, Generation which) {
  std::vector<test::ClassPlan> classes;
  for (int n = 0; n < ClassCount; ++n) classes.push_back(ClassOf(n));
  std::vector<test::ObjectiveClassPlan> kinds = {{.Radar = 0}};
  std::vector<test::FeatureEntryPlan> features = {{}};
  std::vector<test::HeaderPlan> lists = {{}};
  std::vector<test::PointPlan> points = {{}};
  for (int kind = 0; kind < static_cast<int>(Kinds.size()); ++kind) {
    const Kind& one = Kinds[static_cast<std::size_t>(kind)];
    const std::vector<ListOfPoints> own = ListsOf(kind, which != Generation::Falcon40);
    kinds.push_back({.Class = one.Class,
                     .Name = one.Name,
                     .Header = own.empty() ? 0 : static_cast<int>(lists.size()),
                     .Features = static_cast<unsigned>(one.Features.size()),
                     .Radar = static_cast<unsigned>(one.RadarFeature),
                     .First = static_cast<int>(features.size())});
    for (const Feature& feature : one.Features) {
      features.push_back({.Class = ClassOfFeature(feature),
                          .Value = 20,
                          .East = feature.East,
                          .North = feature.North,
                          .Heading = feature.Heading});
    }
    for (std::size_t n = 0; n < own.size(); ++n) {
      lists.push_back({.Objective = kind + 1,
                       .Kind = static_cast<unsigned>(own[n].Type),
                       .Count = static_cast<unsigned>(own[n].Points.size()),
                       .Data = static_cast<int>(std::lround(own[n].Data)),
                       .First = static_cast<int>(points.size()),
                       .Runway = own[n].Runway,
                       .Next = n + 1 < own.size() ? static_cast<int>(lists.size()) + 1 : 0});
      points.insert(points.end(), own[n].Points.begin(), own[n].Points.end());
    }
  }
  std::vector<test::FeatureClassPlan> buildings(Buildings.size() + 1);
  for (std::size_t n = 0; n < Buildings.size(); ++n) {
    buildings[static_cast<std::size_t>(BuildingRecord(static_cast<int>(n)))] = {.Class = Buildings[n].Class,
                                                                                .Repair = 10,
                                                                                .Flags = Buildings[n].Virtual ? 2 : 0,
                                                                                .Name = Buildings[n].Name,
                                                                                .HitPoints = 500};
  }
  files[folder + "/FALCON4.ct"] = test::TableOf(classes, test::ClassRecord);
  files[folder + "/Falcon4.OCD"] = test::TableOf(kinds, test::ObjectiveClassRecord);
  files[folder + "/Falcon4.FED"] = test::TableOf(features, test::FeatureEntryRecord);
  files[folder + "/Falcon4.FCD"] = test::TableOf(buildings, test::FeatureClassRecord);
  files[folder + "/Falcon4.PHD"] = test::TableOf(lists, test::HeaderRecord);
  files[folder + "/Falcon4.PD"] = test::TableOf(points, test::PointRecord);
  if (which == Generation::Bms433) files[folder + "/Falcon4.PDX"] = test::TableOf(points, test::LargePointRecord);
}

std::string BuildingsXml() {
  std::string records;
  for (int record = 0; record <= static_cast<int>(Buildings.size()); ++record) {
    const Building one =
        record == 0 ? Building{0, " ", 0, 0, false} : Buildings[Buildings.size() - static_cast<std::size_t>(record)];
    Children children = {{"CtIdx", Whole(one.Class)}, {"RepairTime", "10"}, {"DisplayPriority", "0"}};
    if (one.Virtual) children.emplace_back("Flags", "2");  // left out where it is 0
    children.insert(
        children.end(),
        {{"Name", one.Name}, {"HitPoints", "500"}, {"RampHeight", "0"}, {"RampAngle", "0.000"}, {"RadarIdx", "0"}});
    AddSenses(children);
    records += Record("FCD", Whole(record), children);
  }
  return Document("FCDRecords", records);
}

void AddXmlTables(Files& files, const std::string& folder) {
  // Each table has a first record that means nothing.
  std::string kinds = Record("OCD", "0", {{"CtIdx", "0"}, {"Name", " "}, {"FeatureCount", "0"}, {"FirstFeature", "0"}});
  std::string features = FeatureXml(0, {EmptySlot, 0, 0, 0});
  std::string lists = ListXml(0, {-1, 0, 0, 0, {}}, 0, 0);
  std::string points = PointXml(0, {});
  int featureCount = 1, listCount = 1, pointCount = 1;
  for (int kind = 0; kind < static_cast<int>(Kinds.size()); ++kind) {
    const Kind& one = Kinds[static_cast<std::size_t>(kind)];
    const std::vector<ListOfPoints> own = ListsOf(kind, true);
    kinds += KindXml(kind, static_cast<int>(one.Features.size()), featureCount, own.empty() ? 0 : listCount);
    for (const Feature& feature : one.Features) features += FeatureXml(featureCount++, feature);
    for (std::size_t n = 0; n < own.size(); ++n) {
      lists += ListXml(listCount, own[n], pointCount, n + 1 < own.size() ? listCount + 1 : 0);
      ++listCount;
      for (const test::PointPlan& point : own[n].Points) points += PointXml(pointCount++, point);
    }
  }
  files[folder + "/FALCON4_CT.XML"] = WithCarriageReturns(ClassesXml());
  files[folder + "/FALCON4_OCD.XML"] = Document("OCDRecords", kinds);
  files[folder + "/FALCON4_FED.XML"] = WithCarriageReturns(Document("FEDRecords", features));
  files[folder + "/FALCON4_FCD.XML"] = BuildingsXml();
  files[folder + "/FALCON4_PHD.XML"] = Document("PHDRecords", lists);
  files[folder + "/FALCON4_PDX.XML"] = Document("PDRecords", points);
}

void AddXmlFolders(Files& files, const std::string& folder) {
  files[folder + "/Falcon4_CT.xml"] = "\xEF\xBB\xBF" + ClassesXml();
  files[folder + "/Falcon4_FCD.xml"] = BuildingsXml();
  for (int kind = 0; kind < static_cast<int>(Kinds.size()); ++kind) {
    const std::string number = FiveDigits(kind + 1);
    const std::string own = folder + "/ObjectiveRelatedData/OCD_" + number;
    files[own + "/OCD_" + number + ".XML"] = Document("OCDRecords", KindXml(kind, -1, -1, -1));
    // Records and points begin at 0 in each folder; what would be empty is not there.
    std::string features, lists, points;
    int featureCount = 0, listCount = 0, pointCount = 0;
    for (const Feature& feature : Kinds[static_cast<std::size_t>(kind)].Features) {
      features += FeatureXml(featureCount++, feature);
    }
    for (const ListOfPoints& list : ListsOf(kind, true)) {
      lists += FolderListXml(listCount++, list, pointCount);
      for (const test::PointPlan& point : list.Points) points += PointXml(pointCount++, point);
    }
    if (!features.empty()) files[own + "/FED_" + number + ".XML"] = Document("FEDRecords", features);
    if (!lists.empty()) files[own + "/PHD_" + number + ".XML"] = Document("PHDRecords", lists);
    if (!points.empty()) files[own + "/PDX_" + number + ".XML"] = Document("PDRecords", points);
  }
}

std::string CampaignObjectsXml(Generation which) {
  std::string records;
  for (const Objective& one : Objectives) {
    const bool turned = one.Kind == Bridge && which == Generation::Bms438;
    Children children;
    if (which == Generation::Bms438) children.emplace_back("CampName", one.Name);
    children.insert(children.end(), {{"OcdIndex", Whole(one.Kind + 1)},
                                     {"Heading", Fraction(turned ? BridgeHeading : 0)},
                                     {"PositionX", Fraction((one.Y + 0.5) * FeetPerUnit + (turned ? BridgeNorth : 0))},
                                     {"PositionY", Fraction((one.X + 0.5) * FeetPerUnit + (turned ? BridgeEast : 0))},
                                     {"PositionZ", "0.000"}});
    records += Record("CampObj", Whole(one.CampId), children, "CampId");
  }
  return Document("CampObjData", records);
}

}  // namespace kestrel::made
