#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "falcon/bml_shape.h"
#include "falcon/model.h"
#include "falcon/model_directory.h"
#include "falcon/model_shape.h"

namespace kestrel::falcon {

/// What is known of a model. Without a shape and a trouble there is no such model, or nothing of it is ever drawn.
struct ModelReading {
  std::optional<ModelShape> Shape{};
  std::optional<ModelBox> Box{};  ///< where the shape cannot be read, when it is told
  std::string Trouble{};          ///< why the shape cannot be read; empty otherwise
};

/// The models of an installation, of whichever generation: folders Models/<number>, else a directory KoreaObj.DXH with
/// its shapes in KoreaObj.DXL, else KoreaObj.HDR with KoreaObj.LOD. The directory alone is held; a shape is read from
/// its place when it is asked for.
class ModelStore {
 public:
  /// `folders` may hold models: those of 3D data and of objects, in the order in which they count. Nothing is looked
  /// for before Open. `expand` is for shapes that are packed.
  ModelStore(std::vector<std::filesystem::path> folders, BmlExpander expand);

  /// Looks for the models, once. RuntimeFailure when there are none, or their directory cannot be read.
  void Open();
  /// Reads the most detailed shape of a model; opens the store. A shape that cannot be read is no failure, but told.
  ModelReading Read(std::int32_t number);

 private:
  struct DirectoryFiles {
    std::filesystem::path Directory;
    std::filesystem::path Shapes;
  };
  std::optional<DirectoryFiles> FindDirectory() const;
  ModelReading ReadFolder(const std::filesystem::path& folder) const;
  ModelReading ReadOfDirectory(std::size_t number) const;

  std::vector<std::filesystem::path> folders;
  BmlExpander expand;
  bool open = false;
  std::vector<std::filesystem::path> modelFolders;  ///< those named Models
  std::optional<ModelDirectory> directory;
  std::filesystem::path shapes;
};

}  // namespace kestrel::falcon
