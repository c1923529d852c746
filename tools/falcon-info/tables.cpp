#include "falcon-info/tables.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "falcon-info/companions.h"
#include "falcon-info/records.h"
#include "falcon/class_table.h"
#include "falcon/data_file.h"
#include "falcon/object_table_files.h"

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
  std::size_t (*Count)(const ObjectTables& tables);
  Json (*Record)(const ObjectTables& tables, std::size_t index);
};

template <auto Member>
constexpr TableRow Row(std::string_view table) {
  return {table, [](const ObjectTables& tables) { return (tables.*Member).size(); },
          [](const ObjectTables& tables, std::size_t index) { return RecordOf((tables.*Member)[index]); }};
}

constexpr TableRow Rows[] = {
    Row<&ObjectTables::Classes>("ct"),   Row<&ObjectTables::Objectives>("ocd"),
    Row<&ObjectTables::Features>("fed"), Row<&ObjectTables::FeatureClasses>("fcd"),
    Row<&ObjectTables::Headers>("phd"),  Row<&ObjectTables::Points>("pd"),
};

const TableRow* RowOf(std::string_view table) {
  const auto* const row =
      std::find_if(std::begin(Rows), std::end(Rows), [table](const TableRow& one) { return one.Table == table; });
  return row == std::end(Rows) ? nullptr : row;
}

const TableForm* FormOfFile(const fs::path& file) {
  const std::string name = base::NameForMessage(file);
  const auto* const form = std::find_if(std::begin(Forms), std::end(Forms),
                                        [&name](const TableForm& one) { return base::SameNoCase(one.File, name); });
  return form == std::end(Forms) ? nullptr : form;
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

Database::Source ReadTable(const std::vector<fs::path>& folders, std::string_view table, ObjectTables& into) {
  auto [form, file] = FindTable(folders, table);
  Database::Source source{table, std::move(file), {}};
  if (!form) return source;
  try {
    form->Read(falcon::ReadDataFile(source.File, form->MaxBytes), into);
  } catch (const std::exception& failure) {
    source.Error = failure.what();
  }
  return source;
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
  for (const TableRow& row : Rows) database.Sources.push_back(ReadTable(folders, row.Table, database.Tables));
  return database;
}

void TellDatabase(Context& context, const Database& database, Json& into) {
  into["tables"] = ListOf(database.Sources, [&](const Database::Source& source) {
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
  return std::any_of(files.begin(), files.end(), IsTableFile);
}

Json ObjectFolderReport(Context& context, const fs::path& folder) {
  Json json = ReportOf(folder, "objects");
  TellDatabase(context, LoadDatabase({folder}), json);
  return json;
}

}  // namespace kestrel::falconinfo
