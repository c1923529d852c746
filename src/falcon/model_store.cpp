#include "falcon/model_store.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "falcon/data_file.h"
#include "falcon/parent_file.h"
#include "falcon/shape_file.h"

namespace kestrel::falcon {
namespace fs = std::filesystem;
namespace {

/// Directories of models, the newer first, and what their shapes are in.
constexpr std::pair<std::string_view, std::string_view> Directories[] = {{"KoreaObj.DXH", "KoreaObj.DXL"},
                                                                         {"KoreaObj.HDR", "KoreaObj.LOD"}};

bool IsFolder(const fs::path& path) {
  std::error_code failure;
  return fs::is_directory(path, failure);
}

/// The file of a model's most detailed shape. RuntimeFailure when it has none, or one outside of its folder.
fs::path MostDetailed(const fs::path& folder, const ParentFile& parent, const std::string& name) {
  const auto least =
      std::min_element(parent.Details.begin(), parent.Details.end(),
                       [](const ParentFile::Detail& a, const ParentFile::Detail& b) { return a.Range < b.Range; });
  if (least == parent.Details.end()) RefuseFile(name, "it names no shape");
  const std::string& file = least->File;
  const bool absolute = file.empty() || file[0] == '/' || file[0] == '\\' || file.find(':') != std::string::npos;
  if (absolute) RefuseFile(name, "its shape \"" + file + "\" is none of its folder");
  return base::FindFile(folder, file);
}

}  // namespace

ModelStore::ModelStore(std::vector<fs::path> where, BmlExpander expander)
    : folders(std::move(where)), expand(std::move(expander)) {}

std::optional<ModelStore::DirectoryFiles> ModelStore::FindDirectory() const {
  // One without its shapes tells boxes still.
  for (const bool whole : {true, false}) {
    for (const fs::path& folder : folders) {
      for (const auto& [directoryName, shapesName] : Directories) {
        DirectoryFiles files{base::FindFile(folder, directoryName), base::FindFile(folder, shapesName)};
        if (base::FileExists(files.Directory) && (!whole || base::FileExists(files.Shapes))) return files;
      }
    }
  }
  return std::nullopt;
}

void ModelStore::Open() {
  if (open) return;
  std::vector<fs::path> found;
  for (const fs::path& folder : folders) {
    fs::path models = base::FindFile(folder, "Models");
    if (IsFolder(models)) found.push_back(std::move(models));
  }
  const std::optional<DirectoryFiles> files = FindDirectory();
  if (!files && found.empty()) throw base::RuntimeFailure("there are neither folders of models nor a KoreaObj.HDR");
  if (files) {
    try {
      directory = ReadModelDirectory(ReadDataFile(files->Directory, MaxModelDirectoryBytes));
      shapes = files->Shapes;
    } catch (const base::RuntimeFailure&) {
      // A leftover of an older edition is not needed.
      if (found.empty()) throw;
    }
  }
  modelFolders = std::move(found);
  open = true;
}

ModelReading ModelStore::Read(std::int32_t number) {
  Open();
  if (number < 1) return {};
  for (const fs::path& models : modelFolders) {
    const fs::path folder = models / std::to_string(number);
    if (IsFolder(folder)) return ReadFolder(folder);
  }
  return ReadOfDirectory(static_cast<std::size_t>(number));
}

ModelReading ModelStore::ReadFolder(const fs::path& folder) const {
  ModelReading reading;
  const std::string name = "model " + base::NameForMessage(folder);
  try {
    const ParentFile parent = ReadParentFile(ReadDataFile(base::FindFile(folder, "Parent.dat"), MaxParentFileBytes));
    reading.Box = parent.Box;
    DataFile shape = ReadDataFile(MostDetailed(folder, parent, "Parent.dat"), MaxBmlBytes);
    reading.Shape = ReadBmlShape(shape, expand);
  } catch (const base::RuntimeFailure& failure) {
    reading.Trouble = name + ", " + failure.what();
  }
  return reading;
}

ModelReading ModelStore::ReadOfDirectory(std::size_t number) const {
  ModelReading reading;
  if (!directory || number >= directory->Models.size() || directory->Models[number].Details.empty()) return reading;
  reading.Box = directory->Models[number].Box;
  try {
    reading.Shape = ReadDirectoryShape(shapes, *directory, number);
  } catch (const base::RuntimeFailure& failure) {
    reading.Trouble = failure.what();
  }
  return reading;
}

}  // namespace kestrel::falcon
