#include "falcon/model_directory.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/failure.h"

namespace kestrel::falcon {
namespace {

constexpr std::uint32_t OfBms435 = 0x03087001;

/// Bytes of the records that differ from edition to edition.
struct Sizes {
  std::size_t Texture;
  std::size_t Place;
  std::size_t ReferenceName;  // before each reference to a shape
};

constexpr Sizes Classic{40, 20, 0};
constexpr Sizes Bms435{48, 28, 0};
constexpr std::size_t NameOfFreeFalcon = 32;

constexpr std::size_t ColourBytes = 16, PaletteBytes = 1032, ParentBytes = 48, PointBytes = 12, ReferenceBytes = 8;
constexpr std::size_t WidePlace = 28;

/// Walks the directory in given sizes; what it meets that cannot be throws RuntimeFailure about that part alone.
class Walk {
 public:
  Walk(std::string_view bytes, const Sizes& recordSizes) : reader(bytes), sizes(recordSizes) {}

  ModelDirectory Read() {
    directory.Version = reader.U32();
    directory.ColourCount = ReadCount();
    reader.Skip(4);  // darkened colours
    SkipRecords("colours", directory.ColourCount, ColourBytes);
    directory.PaletteCount = ReadCount();
    SkipRecords("palettes", directory.PaletteCount, PaletteBytes);
    directory.TextureCount = ReadCount();
    if (directory.TextureCount > 0) reader.Skip(4);  // largest compressed size
    SkipRecords("textures", directory.TextureCount, sizes.Texture);
    reader.Skip(4);  // longest list of tags
    ReadPlaces();
    ReadModels();
    if (reader.Left() > 0) throw base::RuntimeFailure("it goes on behind its last model");
    return std::move(directory);
  }

 private:
  /// What stands before the details of a model.
  struct Parent {
    ModelPoint Least, Most;
    std::size_t DynamicCount = 0;
    std::size_t DetailCount = 0;
    std::size_t SlotCount = 0;
  };

  std::uint32_t ReadCount() { return reader.U32(); }

  void Require(std::string_view what, std::uint64_t count, std::size_t bytes) {
    if (count > reader.Left() / bytes) {
      throw base::RuntimeFailure("it ends within its " + Told(count) + " " + std::string(what));
    }
  }
  void SkipRecords(std::string_view what, std::uint32_t count, std::size_t bytes) {
    Require(what, count, bytes);
    reader.Skip(count * bytes);
  }

  std::uint64_t ReadPlaceNumber() {
    const std::uint64_t low = reader.U32();
    return sizes.Place == WidePlace ? low | std::uint64_t{reader.U32()} << 32 : low;
  }
  void ReadPlaces() {
    const std::uint32_t count = ReadCount();
    Require("shapes", count, sizes.Place);
    directory.Places.resize(count);
    for (DetailPlace& place : directory.Places) {
      reader.Skip(12);
      place.Offset = ReadPlaceNumber();
      place.Size = ReadPlaceNumber();
    }
  }

  Parent ReadParent(DirectoryModel& model, std::size_t number) {
    Parent parent;
    model.Radius = reader.F32();
    for (double ModelPoint::*axis : {&ModelPoint::X, &ModelPoint::Y, &ModelPoint::Z}) {
      parent.Least.*axis = reader.F32();
      parent.Most.*axis = reader.F32();
    }
    reader.Skip(8 + 2);  // signatures, texture sets
    const std::int16_t dynamic = reader.I16();
    if (dynamic < 0) throw base::RuntimeFailure("model " + Told(number) + " has fewer than no points");
    parent.DynamicCount = static_cast<std::size_t>(dynamic);
    parent.DetailCount = reader.U8();
    reader.Skip(2);  // switches and joints, as they were told once
    parent.SlotCount = reader.U8();
    reader.Skip(4);  // and as they are told now
    model.Box = PossibleBox(parent.Least, parent.Most);
    return parent;
  }
  ModelPoint ReadPoint() {
    ModelPoint point;
    point.X = reader.F32();
    point.Y = reader.F32();
    point.Z = reader.F32();
    return point;
  }
  void ReadDetails(const Parent& parent, DirectoryModel& model) {
    if (parent.DetailCount == 0) return;
    const std::size_t referenceBytes = sizes.ReferenceName + ReferenceBytes;
    Require("points of a model", parent.SlotCount + parent.DynamicCount, PointBytes);
    reader.Skip(parent.SlotCount * PointBytes);
    for (std::size_t n = 0; n < parent.DynamicCount; ++n) model.Dynamic.push_back(ReadPoint());
    Require("shapes of a model", parent.DetailCount, referenceBytes);
    for (std::size_t n = 0; n < parent.DetailCount; ++n) {
      reader.Skip(sizes.ReferenceName);
      DetailReference reference;
      const std::uint32_t number = reader.U32();
      if ((number & 1) == 0) throw base::RuntimeFailure("a model's reference to a shape is none");
      reference.Number = number >> 1;
      reference.Range = reader.F32();
      if (reference.Number < directory.Places.size()) model.Details.push_back(reference);
    }
  }
  void ReadModels() {
    const std::uint32_t count = ReadCount();
    Require("models", count, ParentBytes);
    directory.Models.resize(count);
    std::vector<Parent> parents;
    parents.reserve(count);
    for (DirectoryModel& model : directory.Models) parents.push_back(ReadParent(model, parents.size()));
    for (std::size_t n = 0; n < count; ++n) ReadDetails(parents[n], directory.Models[n]);
  }

  base::BinaryReader reader;
  Sizes sizes;
  ModelDirectory directory;
};

}  // namespace

ModelDirectory ReadModelDirectory(const DataFile& file) {
  if (file.Bytes.size() < 4) RefuseFile(file.Name, "it ends within its version");
  const bool new435 = base::BinaryReader(file.Bytes).U32() == OfBms435;
  std::string complaint;
  for (Sizes sizes : {new435 ? Bms435 : Classic, new435 ? Classic : Bms435}) {
    for (const std::size_t name : {std::size_t{0}, NameOfFreeFalcon}) {
      sizes.ReferenceName = name;
      try {
        return Walk(file.Bytes, sizes).Read();
      } catch (const base::RuntimeFailure& failure) {
        // The sizes tried first are the likeliest: what they fail by is told.
        if (complaint.empty()) complaint = failure.what();
      }
    }
  }
  RefuseFile(file.Name, complaint);
}

}  // namespace kestrel::falcon
