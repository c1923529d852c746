#include "falcon/object_database.h"

#include <array>
#include <exception>
#include <string_view>
#include <utility>

#include "base/files.h"
#include "falcon/class_table.h"
#include "falcon/data_file.h"
#include "falcon/object_table_files.h"
#include "falcon/objective_folders.h"
#include "falcon/xml_object_tables.h"
#include "falcon/xml_records.h"

namespace kestrel::falcon {
namespace fs = std::filesystem;
namespace {

/// A file that holds a whole table.
template <class Record>
struct Form {
  std::string_view File;
  std::size_t MaxBytes;
  std::vector<Record> (*Read)(const DataFile& file);
};

// The newest first.
constexpr std::array<Form<EntityClass>, 2> ClassForms = {
    {{"Falcon4_CT.xml", MaxXmlBytes, ReadXmlClasses}, {"Falcon4.ct", MaxTableBytes, ReadClassTable}}};
constexpr std::array<Form<ObjectiveClass>, 2> ObjectiveForms = {
    {{"Falcon4_OCD.xml", MaxXmlBytes, ReadXmlObjectiveClasses}, {"Falcon4.OCD", MaxTableBytes, ReadObjectiveClasses}}};
constexpr std::array<Form<FeatureEntry>, 2> FeatureForms = {
    {{"Falcon4_FED.xml", MaxXmlBytes, ReadXmlFeatureEntries}, {"Falcon4.FED", MaxTableBytes, ReadFeatureEntries}}};
constexpr std::array<Form<FeatureClass>, 2> FeatureClassForms = {
    {{"Falcon4_FCD.xml", MaxXmlBytes, ReadXmlFeatureClasses}, {"Falcon4.FCD", MaxTableBytes, ReadFeatureClasses}}};
constexpr std::array<Form<PointHeader>, 2> HeaderForms = {
    {{"Falcon4_PHD.xml", MaxXmlBytes, ReadXmlPointHeaders}, {"Falcon4.PHD", MaxTableBytes, ReadPointHeaders}}};
constexpr std::array<Form<ObjectPoint>, 4> PointForms = {{{"Falcon4_PDX.xml", MaxXmlBytes, ReadXmlPoints},
                                                          {"Falcon4_PD.xml", MaxXmlBytes, ReadXmlPoints},
                                                          {"Falcon4.PDX", MaxTableBytes, ReadLargePoints},
                                                          {"Falcon4.PD", MaxTableBytes, ReadPoints}}};

using Folders = std::span<const fs::path>;

template <class Record, std::size_t Count>
std::vector<Record> ReadFirst(Folders folders, const std::array<Form<Record>, Count>& forms) {
  for (const fs::path& folder : folders) {
    for (const Form<Record>& form : forms) {
      const fs::path path = base::FindFile(folder, form.File);
      if (!base::FileExists(path)) continue;
      const DataFile file = ReadDataFile(path, form.MaxBytes);
      std::vector<Record> records = form.Read(file);
      if (records.empty()) RefuseFile(file.Name, "it tells of no records");
      return records;
    }
  }
  throw base::RuntimeFailure(std::string(forms.back().File) + " is in no folder of objects, nor is a newer form of it");
}

template <class Record, std::size_t Count>
std::vector<Record> ReadNeeded(const char* kind, Folders folders, const std::array<Form<Record>, Count>& forms) {
  try {
    return ReadFirst(folders, forms);
  } catch (const std::exception& failure) {
    throw TableFailure(kind, failure.what());
  }
}

/// Whether the first folder that has classes of objectives at all has a folder for each of them.
bool AreInFolders(Folders folders) {
  for (const fs::path& folder : folders) {
    if (HasObjectiveFolders(folder)) return true;
    for (const Form<ObjectiveClass>& form : ObjectiveForms) {
      if (base::FileExists(base::FindFile(folder, form.File))) return false;
    }
  }
  return false;
}

}  // namespace

ObjectDatabase LoadObjectDatabase(Folders folders) {
  ObjectDatabase database;
  ObjectTables& tables = database.Tables;
  tables.Classes = ReadNeeded("CT", folders, ClassForms);
  const bool inFolders = AreInFolders(folders);
  if (inFolders) {
    ReadObjectiveFolders(FindObjectiveFolders(folders), tables);
  } else {
    tables.Objectives = ReadNeeded("OCD", folders, ObjectiveForms);
    tables.Features = ReadNeeded("FED", folders, FeatureForms);
  }
  try {
    tables.FeatureClasses = ReadFirst(folders, FeatureClassForms);
  } catch (const std::exception& failure) {
    database.Notes.emplace_back(failure.what());
  }
  if (!inFolders) {
    tables.Headers = ReadNeeded("PHD", folders, HeaderForms);
    tables.Points = ReadNeeded("PD", folders, PointForms);
  }
  return database;
}

}  // namespace kestrel::falcon
