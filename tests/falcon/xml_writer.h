#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "falcon/table_writer.h"

// The tables of the simulator's database as XML, field by field as its own tools write them, from the plans of the
// binary ones.
namespace kestrel::test {

enum class XmlAge {
  OneFile,  ///< a file for a table
  Folders,  ///< a folder for a class of objectives
};

inline std::string XmlNumber(double value) {
  std::string text = std::to_string(value);  // six digits behind the point, as the C locale has it
  return text.substr(0, text.size() - 3);
}
inline std::string XmlField(std::string_view name, const std::string& text) {
  const std::string mark(name);
  return "        <" + mark + ">" + text + "</" + mark + ">\r\n";
}
inline std::string XmlField(std::string_view name, int value) { return XmlField(name, std::to_string(value)); }

inline std::string XmlHead() { return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"; }
inline std::string XmlRecord(const std::string& element, std::size_t number, const std::string& fields,
                             const std::string& key = "Num") {
  return "    <" + element + " " + key + "=\"" + std::to_string(number) + "\">\r\n" + fields + "    </" + element +
         ">\r\n";
}
/// Records with the numbers from `first` on.
inline std::string XmlTable(const std::string& root, const std::string& element,
                            const std::vector<std::string>& records, std::size_t first = 0,
                            const std::string& key = "Num") {
  std::string text = XmlHead() + "<" + root + ">\r\n";
  for (std::size_t n = 0; n < records.size(); ++n) text += XmlRecord(element, first + n, records[n], key);
  return text + "</" + root + ">\r\n";
}

inline std::string XmlFields(const std::vector<std::string_view>& names, int value) {
  std::string text;
  for (const std::string_view name : names) text += XmlField(name, value);
  return text;
}

inline std::string XmlClass(const ClassPlan& plan) {
  const auto number = [](unsigned value) { return static_cast<int>(value); };
  std::string text = XmlField("Id", 60395) + XmlField("CollisionType", 7) + XmlField("CollisionRadius", "2.500") +
                     XmlField("Domain", number(plan.Domain)) + XmlField("Class", number(plan.Class)) +
                     XmlField("Type", number(plan.Type)) + XmlField("SubType", number(plan.SubType)) +
                     XmlField("Specific", number(plan.Specific)) + XmlField("Owner", number(plan.Owner)) +
                     XmlFields({"Class_6", "Class_7"}, 255) + XmlFields({"UpdateRate", "UpdateTolerance"}, 5000) +
                     XmlField("FineUpdateRange", "60761.000") + XmlField("FineUpdateForceRange", "200.000") +
                     XmlField("FineUpdateMultiplier", "1.000") +
                     XmlFields({"DamageSeed", "HitPoints", "MajorRev", "MinRev", "CreatePriority", "ManagementDomain",
                                "Transferable", "Private", "Tangible", "Collidable", "Global", "Persistent"},
                               1);
  const std::string_view models[] = {"Normal",        "Repaired",       "Damaged",      "Destroyed",
                                     "LeftDestroyed", "RightDestroyed", "BothDestroyed"};
  for (std::size_t n = 0; n < plan.Models.size(); ++n) {
    text += XmlField("Graphics" + std::string(models[n]), plan.Models[n]);
  }
  return text + XmlField("MoverDefinitionData", 190) + XmlField("EntityType", number(plan.Data)) +
         XmlField("EntityIdx", plan.Index);
}

inline std::string XmlDetectionAndDamage() {
  return XmlFields({"Det_NoMove", "Det_Foot", "Det_Wheeled", "Det_Tracked", "Det_LowAir", "Det_Air", "Det_Naval",
                    "Det_Rail", "Dam_None", "Dam_Penetration", "Dam_HighExplosive", "Dam_Heave", "Dam_Incendairy",
                    "Dam_Proximity", "Dam_Kinetic", "Dam_Hydrostatic", "Dam_Chemical", "Dam_Nuclear", "Dam_Other"},
                   40);
}

inline std::string XmlObjectiveClass(const ObjectiveClassPlan& plan, XmlAge age = XmlAge::OneFile) {
  const bool whole = age == XmlAge::OneFile;
  return XmlField("CtIdx", plan.Class) + XmlField("Name", plan.Name) + XmlFields({"DataRate", "DeaggDistance"}, 1) +
         (whole ? XmlField("PtDataIdx", plan.Header) : "") + XmlDetectionAndDamage() +
         XmlField("ObjectiveIcon", plan.Icon) +
         (whole ? XmlField("FeatureCount", static_cast<int>(plan.Features)) : "") +
         XmlField("RadarFeature", static_cast<int>(plan.Radar)) + (whole ? XmlField("FirstFeature", plan.First) : "");
}

/// Flags and value stand only where they are not 0.
inline std::string XmlFeatureEntry(const FeatureEntryPlan& plan) {
  return XmlField("FeatureCtIdx", plan.Class) + (plan.Flags != 0 ? XmlField("Flags", plan.Flags) : "") +
         (plan.Value != 0 ? XmlField("Value", static_cast<int>(plan.Value)) : "") +
         XmlField("OffsetX", XmlNumber(plan.East)) + XmlField("OffsetY", XmlNumber(plan.North)) +
         XmlField("OffsetZ", XmlNumber(plan.Up)) + XmlField("Heading", XmlNumber(plan.Heading));
}

inline std::string XmlFeatureClass(const FeatureClassPlan& plan) {
  return XmlField("CtIdx", plan.Class) + XmlField("RepairTime", plan.Repair) + XmlField("DisplayPriority", 0) +
         XmlField("Flags", plan.Flags) + XmlField("Name", plan.Name) + XmlField("HitPoints", plan.HitPoints) +
         XmlField("RampHeight", 0) + XmlField("RampAngle", "0.000") + XmlField("RadarIdx", 0) + XmlDetectionAndDamage();
}

/// `data` stands for the plan's, which has no fractions.
inline std::string XmlHeader(const HeaderPlan& plan, const std::string& data, XmlAge age = XmlAge::OneFile) {
  const bool whole = age == XmlAge::OneFile;
  std::string text = XmlField("ObjIdx", plan.Objective) + XmlField("Type", static_cast<int>(plan.Kind)) +
                     XmlField(whole ? "FeaturesDependencieCount" : "PointCount", static_cast<int>(plan.Count));
  for (std::size_t n = 0; n < plan.Features.size(); ++n) {
    const int feature = static_cast<int>(plan.Features[n]);
    const std::string mark = whole ? "FeaturesDependencieIdx_" : "FeatureDependencyIdx_";
    if (whole || feature != 255) text += XmlField(mark + std::to_string(n), feature);
  }
  return text + XmlField("Data", data) + XmlField("FirstPtIdx", plan.First) + XmlField("RunwayTexture", 3) +
         XmlField("RunwayNumber", plan.Runway) + XmlField("LandingPattern", plan.Side) +
         (whole ? XmlField("NextHeaderIdx", plan.Next) : "");
}
inline std::string XmlHeader(const HeaderPlan& plan) { return XmlHeader(plan, std::to_string(plan.Data)); }

inline std::string XmlPoint(const PointPlan& plan) {
  return XmlField("OffsetX", XmlNumber(plan.East)) + XmlField("OffsetY", XmlNumber(plan.North)) +
         XmlField("OffsetZ", XmlNumber(plan.Up)) + XmlField("Type", static_cast<int>(plan.Kind)) +
         (plan.Flags != 0 ? XmlField("Flags", static_cast<int>(plan.Flags)) : "");
}

struct CampObjectPlan {
  std::string Name{};  ///< empty: none is told, as before 4.38
  int Class = 0;
  double Heading = 0, North = 0, East = 0;
};
inline std::string XmlCampObject(const CampObjectPlan& plan) {
  return (plan.Name.empty() ? "" : XmlField("CampName", plan.Name)) + XmlField("OcdIndex", plan.Class) +
         XmlField("Heading", XmlNumber(plan.Heading)) + XmlField("PositionX", XmlNumber(plan.North)) +
         XmlField("PositionY", XmlNumber(plan.East)) + XmlField("PositionZ", "0.000");
}

}  // namespace kestrel::test
