#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "falcon/data_file.h"
#include "falcon/model.h"

namespace kestrel::falcon {

inline constexpr std::size_t MaxParentFileBytes = 1 << 20;

/// The description of a model in a folder of its own (Models/<number>/Parent.dat).
struct ParentFile {
  /// A file with a shape of the model, for a range of distances.
  struct Detail {
    std::string File{};
    double Range = 0;  ///< feet up to which it is seen
  };

  double Radius = 0;
  std::optional<ModelBox> Box{};  ///< nothing where the file tells none, or one of zeros
  std::vector<Detail> Details{};  ///< in the order of the file
};

/// RuntimeFailure, naming the file, when it tells neither dimensions nor a shape.
ParentFile ReadParentFile(const DataFile& file);

}  // namespace kestrel::falcon
