#pragma once

#include <string>
#include <string_view>

#include "falcon/made_installation.h"

// The parts of an installation's files, each below the folder that it is told.
namespace kestrel::made {

/// The six tables in the form of their generation, and the models beside them.
void AddBinaryTables(Files& files, const std::string& folder, Generation which);
void AddXmlTables(Files& files, const std::string& folder);
void AddXmlFolders(Files& files, const std::string& folder);
/// The classes of buildings alone, which is what an add-on brings.
std::string BuildingsXml();
/// "CampObjData.XML".
std::string CampaignObjectsXml(Generation which);

/// Models in one file with a directory beside it, or in a folder each.
void AddModels(Files& files, const std::string& folder, Generation which);

/// What stands in "terrain", "texture" and the like.
void AddTerrain(Files& files, const std::string& folder, Generation which);

/// Campaigns, names and stations.
void AddCampaign(Files& files, const std::string& folder, Generation which);

/// Pilots and configuration.
void AddConfig(Files& files, const std::string& folder);

/// The record of the table of buildings that a building has.
int BuildingRecord(int building);
/// UTF-8 of bytes of the code page below 0x80 and from 0xA0 on, with the signs of XML told by their names.
std::string XmlText(std::string_view bytes);

}  // namespace kestrel::made
