#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "falcon/data_file.h"
#include "falcon/model.h"

namespace kestrel::falcon {

inline constexpr std::size_t MaxModelDirectoryBytes = std::size_t{64} << 20;

/// A shape of a model, for a range of distances.
struct DetailReference {
  std::uint32_t Number = 0;  ///< index of a DetailPlace
  double Range = 0;          ///< feet up to which it is seen
};

/// Where the file of shapes (KoreaObj.LOD) holds one.
struct DetailPlace {
  std::uint64_t Offset = 0;
  std::uint64_t Size = 0;
};

/// A model of the directory; its index is the number that a class of things names.
struct DirectoryModel {
  double Radius = 0;
  std::optional<ModelBox> Box{};
  std::vector<ModelPoint> Dynamic{};       ///< points that shapes without points of their own end in
  std::vector<DetailReference> Details{};  ///< the most detailed first; without those that no place is told of
};

/// The directory of models (KoreaObj.HDR, KoreaObj.DXH).
struct ModelDirectory {
  std::uint32_t Version = 0;
  std::uint32_t ColourCount = 0;
  std::uint32_t PaletteCount = 0;
  std::uint32_t TextureCount = 0;
  std::vector<DetailPlace> Places{};
  std::vector<DirectoryModel> Models{};
};

/// RuntimeFailure, naming the file and where it fails, when it does not end exactly where its last model does in any of
/// the record sizes known: those of the file's version are tried first.
ModelDirectory ReadModelDirectory(const DataFile& file);

}  // namespace kestrel::falcon
