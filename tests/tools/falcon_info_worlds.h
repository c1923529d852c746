#pragma once

#include <string>
#include <vector>

#include "falcon/campaign_writer.h"
#include "falcon/table_writer.h"

// What falcon-info is shown: an airbase in tables and campaigns.
namespace kestrel::test {

/// Class 1 is an airbase of two features, class 2 a hangar, class 3 a feature that is virtual.
inline std::string SmallClassTable() {
  return TableOf(std::vector<ClassPlan>{{.Domain = 0, .Class = 0, .Type = 0, .Data = 2},
                                        {.Type = 1, .Models = {0, 0, 0, 0, 0, 0, 0}, .Index = 1},
                                        {.Class = 2, .Models = {701, 0, 0, 703, 0, 0, 0}, .Data = 1, .Index = 1},
                                        {.Class = 2, .Models = {702, 0, 0, 0, 0, 0, 0}, .Data = 1, .Index = 2}},
                 ClassRecord);
}
inline std::string SmallObjectiveClasses() {
  return TableOf(
      std::vector<ObjectiveClassPlan>{
          {}, {.Class = 1, .Name = "Airbase A", .Header = 1, .Features = 2, .Radar = 1, .First = 1}},
      ObjectiveClassRecord);
}
inline std::string SmallFeatures() {
  return TableOf(
      std::vector<FeatureEntryPlan>{
          {}, {.Class = 2, .Flags = 4, .Value = 20, .East = 100.5, .North = -50, .Heading = 90}, {.Class = 3}},
      FeatureEntryRecord);
}
inline std::string SmallFeatureClasses() {
  return TableOf(std::vector<FeatureClassPlan>{{},
                                               {.Class = 2, .Repair = 7, .Name = "Hangar", .HitPoints = 300},
                                               {.Class = 3, .Flags = 2, .Name = "Nothing"}},
                 FeatureClassRecord);
}
/// The outline of the runway comes first.
inline std::string SmallHeaders() {
  return TableOf(std::vector<HeaderPlan>{{},
                                         {.Objective = 1, .Kind = 8, .Runway = 0, .Next = 2},
                                         {.Objective = 1, .Count = 2, .Data = 90, .First = 1, .Runway = 0, .Next = 3},
                                         {.Objective = 1, .Count = 2, .Data = 270, .First = 3, .Runway = 0}},
                 HeaderRecord);
}
inline std::vector<PointPlan> SmallPoints() {
  return {{},
          {.East = 4000, .North = 10, .Kind = 1},
          {.East = -4000, .North = 10, .Kind = 2},
          {.East = -4000, .North = 10, .Kind = 1},
          {.East = 4000, .North = 10, .Kind = 2}};
}

/// A campaign of version 103 with the airbase of the small tables and a bridge of no known class, which is its child.
inline WorldPlan SmallWorld() {
  WorldPlan plan;
  plan.Place = {.Version = 103, .Width = 512, .Height = 512, .X = 390, .Y = 464};
  plan.Theater = "sample";
  plan.Scenario = "save0";
  plan.SaveName = "save0";
  plan.ShownName = "A caf\xE9";
  plan.Teams = {{.Number = 0, .Side = 0, .Name = "Neutral"},
                {.Number = 2, .Side = 2, .Name = "Blue", .Motto = "Onward", .Stance = {3, 3, 1, 3, 3, 3, 5, 3}}};
  plan.Objectives = {{.Id = 501,
                      .Type = 101,
                      .X = 398,
                      .Y = 236,
                      .Owner = 2,
                      .CampId = 766,
                      .Status = std::string("\0\3", 2),
                      .NameId = 3,
                      .FirstOwner = 6,
                      .Links = {502},
                      .Radar = 1,
                      .North = 775715.27,
                      .East = 1307072.03,
                      .Heading = 41.5F},
                     {.Id = 502,
                      .Type = 1000,
                      .X = 0,
                      .Y = 1,
                      .Owner = 6,
                      .CampId = 12,
                      .Status = std::string(1, '\0'),
                      .Parent = 501,
                      .Links = {501}}};
  return plan;
}

/// A mission made from "te_new", in which the airbase has changed hands and lost its first feature.
inline WorldPlan SmallMission() {
  WorldPlan plan = SmallWorld();
  plan.Scenario = "te_new";
  plan.SaveName = "mission";
  plan.Objectives = {};
  plan.Deltas = {{.Id = 501, .Owner = 6, .Supply = 1, .Fuel = 2, .Losses = 3, .Status = std::string("\x03", 1)},
                 {.Id = 999}};
  return plan;
}

/// Names of the theater: number 3 is "K\xF6ln".
inline std::string SmallNameIndex() { return Bytes2(5) + Bytes2(0) + Bytes2(1) + Bytes2(2) + Bytes2(3) + Bytes2(7); }
inline std::string SmallNameTexts() { return "abcK\xF6ln"; }

}  // namespace kestrel::test
