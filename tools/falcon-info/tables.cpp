#include "falcon-info/tables.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "falcon-info/companions.h"
#include "falcon-info/models.h"
#include "falcon-info/records.h"
#include "falcon/class_table.h"
#include "falcon/data_file.h"
#include "falcon/object_table_files.h"
#include "falcon/objective_folders.h"
#include "falcon/xml_object_tables.h"
#include "falcon/xml_records.h"

namespace kestrel::falconinfo {
namespace fs = std::filesystem;
namespace {

using falcon::DataFile;
using falcon::ObjectTables;

/// A form that a table can be kept in.
struct TableForm {
  std::string_view Table;
  std::string_view File;
  std::size_t MaxBytes;
  void (*Read)(const DataFile& file, ObjectTables& into);
};

template <auto Member, auto Reader>
constexpr TableForm Form(std::string_view table, std::string_view file, std::size_t limit = falcon::MaxTableBytes) {
  return {table, file, limit, [](const DataFile& from, ObjectTables& into) { into.*Member = Reader(from); }};
}

// Of a table the newest form first.
constexpr TableForm Forms[] = {
    Form<&ObjectTables::Classes, falcon::ReadXmlClasses>("ct", "Falcon4_CT.xml", falcon::MaxXmlBytes),
    Form<&ObjectTables::Objectives, falcon::ReadXmlObjectiveClasses>("ocd", "Falcon4_OCD.xml", falcon::MaxXmlBytes),
    Form<&ObjectTables::Features, falcon::ReadXmlFeatureEntries>("fed", "Falcon4_FED.xml", falcon::MaxXmlBytes),
    Form<&ObjectTables::FeatureClasses, falcon::ReadXmlFeatureClasses>("fcd", "Falcon4_FCD.xml", falcon::MaxXmlBytes),
    Form<&ObjectTables::Headers, falcon::ReadXmlPointHeaders>("phd", "Falcon4_PHD.xml", falcon::MaxXmlBytes),
    Form<&ObjectTables::Points, falcon::ReadXmlPoints>("pd", "Falcon4_PDX.xml", falcon::MaxXmlBytes),
    Form<&ObjectTables::Points, falcon::ReadXmlPoints>("pd", "Falcon4_PD.xml", falcon::MaxXmlBytes),
    Form<&ObjectTables::Classes, falcon::ReadClassTable>("ct", "Falcon4.ct"),
    Form<&ObjectTables::Objectives, falcon::ReadObjectiveClasses>("ocd", "Falcon4.OCD"),
    Form<&ObjectTables::Features, falcon::ReadFeatureEntries>("fed", "Falcon4.FED"),
    Form<&ObjectTables::FeatureClasses, falcon::ReadFeatureClasses>("fcd", "Falcon4.FCD"),
    Form<&ObjectTables::Headers, falcon::ReadPointHeaders>("phd", "Falcon4.PHD"),
    Form<&ObjectTables::Points, falcon::ReadLargePoints>("pd", "Falcon4.PDX"),
    Form<&ObjectTables::Points, falcon::ReadPoints>("pd", "Falcon4.PD"),
};

/// A table as it is asked for.
struct TableRow {
  std::string_view Table;
  bool InFolders;  ///< newer simulators have a piece of it in the folder of each class of objectives
  std::size_t (*Count)(const ObjectTables& tables);
  Json (*Record)(const ObjectTables& tables, std::size_t index);
};

template <auto Member>
constexpr TableRow Row(std::string_view table, bool inFolders) {
  return {table, inFolders, [](const ObjectTables& tables) { return (tables.*Member).size(); },
          [](const ObjectTables& tables, std::size_t index) { return RecordOf((tables.*Member)[index]); }};
}

constexpr TableRow Rows[] = {
    Row<&ObjectTables::Classes>("ct", false),  Row<&ObjectTables::Objectives>("ocd", true),
    Row<&ObjectTables::Features>("fed", true), Row<&ObjectTables::FeatureClasses>("fcd", false),
    Row<&ObjectTables::Headers>("phd", true),  Row<&ObjectTables::Points>("pd", true),
};

const TableRow* RowOf(std::string_view table) {
  const auto* const row =
      std::find_if(std::begin(Rows), std::end(Rows), [table](const TableRow& one) { return one.Table == table; });
  return row == std::end(Rows) ? nullptr : row;
}

const TableForm* FormNamed(std::string_view name) {
  const auto* const form = std::find_if(std::begin(Forms), std::end(Forms),
                                        [name](const TableForm& one) { return base::SameNoCase(one.File, name); });
  return form == std::end(Forms) ? nullptr : form;
}

/// Files of XML name their table at either end: OCD_00834.XML, AH-1S_Vehicle_CT.xml.
const TableForm* FormOfFile(const fs::path& file) {
  const std::string name = base::NameForMessage(file);
  if (const TableForm* const form = FormNamed(name)) return form;
  if (EndingOf(file) != ".xml") return nullptr;
  const std::vector<std::string_view> parts = base::Split(std::string_view(name).substr(0, name.size() - 4), '_');
  for (const std::string_view part : {parts.back(), parts.front()}) {
    if (const TableForm* const form = FormNamed("Falcon4_" + std::string(part) + ".xml")) return form;
  }
  return nullptr;
}

/// The form of a table in the first folder that has it, and its file; nothing when there is none.
std::pair<const TableForm*, fs::path> FindTable(const std::vector<fs::path>& folders, std::string_view table) {
  for (const fs::path& folder : folders) {
    for (const TableForm& form : Forms) {
      if (form.Table != table) continue;
      fs::path file = base::FindFile(folder, form.File);
      if (base::FileExists(file)) return {&form, std::move(file)};
    }
  }
  return {};
}

/// What reading into a database fails with; empty when it does not.
template <class Read>
std::string FailureOf(const Read& read) {
  try {
    read();
    return {};
  } catch (const std::exception& failure) {
    return failure.what();
  }
}

void ReadTable(const std::vector<fs::path>& folders, std::string_view table, Database& into) {
  auto [form, file] = FindTable(folders, table);
  Database::Source source{table, std::move(file), {}};
  if (form) {
    source.Error =
        FailureOf([&, found = form] { found->Read(falcon::ReadDataFile(source.File, found->MaxBytes), into.Tables); });
  }
  into.Sources.push_back(std::move(source));
}

/// The first folder with classes of objectives, when it has a folder for each of them; else empty.
fs::path FolderOfObjectives(const std::vector<fs::path>& folders) {
  for (const fs::path& folder : folders) {
    if (falcon::HasObjectiveFolders(folder)) return base::FindFile(folder, "ObjectiveRelatedData");
    if (FindTable({folder}, "ocd").first) return {};
  }
  return {};
}

Json RecordReport(const ObjectTables& tables, const RecordName& name) {
  Json json;
  json["table"] = name.Table;
  json["index"] = name.Index;
  const TableRow* const row = RowOf(name.Table);
  const bool isThere = row && name.Index < row->Count(tables);
  json["record"] = isThere ? row->Record(tables, name.Index) : Json();
  return json;
}

Json SourcesReport(Context& context, const Database& database) {
  return ListOf(database.Sources, [&](const Database::Source& source) {
    Json json;
    json["table"] = source.Table;
    json["file"] = Json::OfPath(source.File);
    if (source.Error.empty()) {
      json["records"] = source.File.empty() ? Json() : Json(RowOf(source.Table)->Count(database.Tables));
    } else {
      ++context.Failures;
      json["error"] = source.Error;
    }
    return json;
  });
}

void TellAsked(const Context& context, const ObjectTables& tables, Json& into) {
  if (!context.Asked.Records.empty()) {
    into["records"] =
        ListOf(context.Asked.Records, [&tables](const RecordName& name) { return RecordReport(tables, name); });
  }
  if (!context.Asked.Classes.empty()) {
    into["classes"] =
        ListOf(context.Asked.Classes, [&tables](std::int32_t index) { return ClassReport(tables, index); });
  }
}

}  // namespace

std::optional<std::size_t> Database::FeaturesOf(std::uint16_t classIndex) const {
  const falcon::ObjectiveClass* const known = falcon::ObjectiveClassAt(Tables, classIndex);
  if (!known) return std::nullopt;
  return static_cast<std::size_t>(known->FeatureCount);
}

Database LoadDatabase(const std::vector<fs::path>& folders) {
  Database database;
  const fs::path objectives = FolderOfObjectives(folders);
  std::string failure;
  if (!objectives.empty()) {
    failure = FailureOf([&] { falcon::ReadObjectiveFolders(falcon::FindObjectiveFolders(folders), database.Tables); });
  }
  for (const TableRow& row : Rows) {
    if (row.InFolders && !objectives.empty()) {
      database.Sources.push_back({row.Table, objectives, failure});
    } else {
      ReadTable(folders, row.Table, database);
    }
  }
  return database;
}

void TellDatabase(Context& context, const Database& database, Json& into) {
  into["tables"] = SourcesReport(context, database);
  TellAsked(context, database.Tables, into);
}

bool IsTableName(std::string_view name) { return RowOf(name) != nullptr; }

std::string TableNames() {
  std::string names;
  for (const TableRow& row : Rows) names += (names.empty() ? "" : ", ") + std::string(row.Table);
  return names;
}

bool IsTableFile(const fs::path& file) { return FormOfFile(file) != nullptr; }

Json TableReport(Context& context, const fs::path& file) {
  const TableForm& form = *FormOfFile(file);
  ObjectTables tables;
  form.Read(falcon::ReadDataFile(file, form.MaxBytes), tables);
  Json json = ReportOf(file, "table");
  json["table"] = form.Table;
  json["records"] = RowOf(form.Table)->Count(tables);
  std::vector<RecordName> asked;
  for (const RecordName& name : context.Asked.Records) {
    if (name.Table == form.Table) asked.push_back(name);
  }
  if (!asked.empty()) {
    json["asked"] = ListOf(asked, [&tables](const RecordName& name) { return RecordReport(tables, name); });
  }
  return json;
}

bool IsObjectFolder(const fs::path& folder) {
  const std::vector<fs::path> files = FilesOf(folder);
  return falcon::HasObjectiveFolders(folder) || std::any_of(files.begin(), files.end(), [](const fs::path& file) {
           return FormNamed(base::NameForMessage(file));
         });
}

Json ObjectFolderReport(Context& context, const fs::path& folder) {
  Json json = ReportOf(folder, "objects");
  TellDatabase(context, LoadDatabase({folder}), json);
  TellModels(context, {folder}, json);
  return json;
}

namespace {

/// The number of a folder named "OCD_00834"; nothing for any other.
std::optional<std::int32_t> NumberOfClassFolder(const fs::path& folder) {
  const std::string name = LowerNameOf(folder);
  constexpr std::string_view head = "ocd_";
  std::int32_t number = 0;
  const char* const last = name.data() + name.size();
  if (!name.starts_with(head) || std::from_chars(name.data() + head.size(), last, number).ptr != last)
    return std::nullopt;
  return number;
}

}  // namespace

bool IsClassFolder(const fs::path& folder) { return NumberOfClassFolder(folder).has_value(); }

Json ClassFolderReport(Context& context, const fs::path& folder) {
  std::error_code failure;
  const fs::path objects = fs::absolute(folder, failure).lexically_normal().parent_path().parent_path();
  std::vector<fs::path> folders = {objects};
  for (const fs::path& other : CompanionsOf(context, objects / "tables").Objects) folders.push_back(other);
  const std::int32_t number = *NumberOfClassFolder(folder);
  auto classes = falcon::FindObjectiveFolders(std::span(folders).first(1));
  std::erase_if(classes, [number](const auto& one) { return one.first != number; });
  if (classes.empty()) throw base::RuntimeFailure(base::NameForMessage(folder) + " has no file of its class");
  Database database;
  falcon::ReadObjectiveFolders(classes, database.Tables);
  for (const char* const table : {"ct", "fcd"}) ReadTable(folders, table, database);
  Json json = ReportOf(folder, "objective class");
  json["tables"] = SourcesReport(context, database);
  TellObjectiveClass(database.Tables, database.Tables.Objectives.at(static_cast<std::size_t>(number)), json);
  return json;
}

}  // namespace kestrel::falconinfo
