#include "falcon/bml_shape.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/failure.h"
#include "falcon/motion.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t BmlHeadBytes = 28;
constexpr std::uint32_t FirstVersion = 1, SecondVersion = 2;
constexpr std::uint32_t TriangleList = 4;
constexpr std::uint32_t LightBytes = 44;  // of a vertex of a light, in the second version
constexpr std::size_t PlaceBytes = 12;    // that every vertex begins with
constexpr std::size_t BmlNodeHeadBytes = 12;

enum class NodeKind : std::uint32_t {
  Primitive = 1,
  Joint,
  EndOfJoint,
  Switch,
  EndOfSwitch,
  Slot,
  EndOfSlot,
  RenderControl,
};

/// Bytes of a node behind its head; nothing for one of no known kind.
std::optional<std::size_t> NodeBytes(NodeKind kind, std::uint32_t version) {
  switch (kind) {
    case NodeKind::Primitive:
      return version == FirstVersion ? 66 : 48;
    case NodeKind::Joint:
      return 84;
    case NodeKind::Switch:
      return 9;
    case NodeKind::Slot:
      return 52;
    case NodeKind::RenderControl:
      return 36;
    case NodeKind::EndOfJoint:
    case NodeKind::EndOfSwitch:
    case NodeKind::EndOfSlot:
      return 0;
  }
  return std::nullopt;
}

/// What hangs below a joint, switch or slot until its end.
struct Level {
  NodeKind End = NodeKind::EndOfJoint;
  Motion Place;
  bool Shown = true;
};

/// Goes over the content of a shape, its head and packing gone.
class Content {
 public:
  Content(std::string_view fileName, std::string_view bytes, std::uint32_t formVersion)
      : name(fileName), content(bytes), version(formVersion) {}

  ModelShape Read() {
    base::BinaryReader reader(content);
    reader.Skip(4);  // script
    SkipMaterials(reader);
    indexBytes = reader.U32() == 1 ? 2 : 4;
    reader.Skip(8);  // numbers of indices and vertices
    const std::uint32_t count = reader.U32();
    if (count > reader.Left() / BmlNodeHeadBytes) RefuseFile(name, "it has no room for " + Told(count) + " nodes");
    // The nodes name what stands behind them.
    const base::BinaryReader nodes = reader;
    for (std::uint32_t n = 0; n < count; ++n) reader.Skip(SizeOf(n, ReadKind(reader)));
    indices = Rest(reader, reader.U32(), "indices");
    vertices = Rest(reader, reader.U32(), "vertices");
    if (reader.Left() > 0) RefuseFile(name, "it goes on behind its vertices");
    DrawNodes(nodes, count);
    return gathered.Take();
  }

 private:
  [[noreturn]] void Refuse(std::uint32_t node, std::string_view complaint) const {
    RefuseFile(name, "node " + Told(node) + " " + std::string(complaint));
  }

  void SkipMaterials(base::BinaryReader& reader) const {
    const std::uint32_t materials = reader.U32();
    if (materials > reader.Left() / 4) RefuseFile(name, "it has no room for " + Told(materials) + " materials");
    for (std::uint32_t n = 0; n < materials; ++n) {
      const std::uint32_t material = reader.U32();
      // The length of a name; in the first version a number alone.
      if (version != FirstVersion) reader.Skip(material);
    }
  }
  static NodeKind ReadKind(base::BinaryReader& reader) {
    const std::uint32_t kind = reader.U32();
    reader.Skip(BmlNodeHeadBytes - 4);
    return static_cast<NodeKind>(kind);
  }
  std::size_t SizeOf(std::uint32_t node, NodeKind kind) const {
    const std::optional<std::size_t> size = NodeBytes(kind, version);
    if (!size) Refuse(node, "is of the kind " + Told(static_cast<std::uint32_t>(kind)));
    return *size;
  }
  /// The next `count` bytes of the content.
  std::string_view Rest(base::BinaryReader& reader, std::uint32_t count, std::string_view what) const {
    if (count > reader.Left()) RefuseFile(name, "it ends within its " + std::string(what));
    const std::string_view bytes = content.substr(content.size() - reader.Left(), count);
    reader.Skip(count);
    return bytes;
  }

  void DrawNodes(base::BinaryReader reader, std::uint32_t count) {
    std::vector<Level> levels(1);
    for (std::uint32_t n = 0; n < count; ++n) {
      const NodeKind kind = ReadKind(reader);
      const Level above = levels.back();
      switch (kind) {
        case NodeKind::Primitive:
          AddPrimitive(reader, n, above);
          break;
        case NodeKind::Joint:
          levels.push_back({NodeKind::EndOfJoint, above.Place.After(ReadJoint(reader)), above.Shown});
          break;
        case NodeKind::Switch: {
          reader.Skip(8);
          const bool on = reader.U8() != 0;
          levels.push_back({NodeKind::EndOfSwitch, above.Place, above.Shown && on});
          break;
        }
        case NodeKind::Slot:
          reader.Skip(SizeOf(n, kind));
          levels.push_back({NodeKind::EndOfSlot, above.Place, false});
          break;
        case NodeKind::EndOfJoint:
        case NodeKind::EndOfSwitch:
        case NodeKind::EndOfSlot:
          if (levels.size() < 2 || above.End != kind) Refuse(n, "ends what has not begun");
          levels.pop_back();
          break;
        case NodeKind::RenderControl:
          reader.Skip(SizeOf(n, kind));
          break;
      }
    }
    if (levels.size() > 1) RefuseFile(name, "a node of it is left open");
  }

  static Motion ReadJoint(base::BinaryReader& reader) {
    enum : std::uint32_t { Turns = 0, Shifts = 1, Scales = 2 };
    reader.Skip(4);
    const std::uint32_t kind = reader.U32();
    reader.Skip(12 + 4 + 12);  // range, flags, scale
    Motion motion;
    const ModelPoint shift = ReadModelPoint(reader);
    std::array<double, 9> turn{};
    for (double& cell : turn) cell = reader.F32();
    if (kind == Turns) motion.Turn = turn;
    if (kind != Shifts) motion.Shift = shift;
    return motion;
  }

  void AddPrimitive(base::BinaryReader& reader, std::uint32_t node, const Level& level) {
    const std::uint32_t topology = reader.U32();
    reader.Skip(4);  // bias of depth
    const std::uint64_t indexCount = reader.U32(), firstIndex = reader.U32();
    reader.Skip(4);  // first vertex by number
    const std::uint64_t offset = reader.U32(), count = reader.U32();
    const std::uint32_t stride = reader.U32();
    reader.Skip(*NodeBytes(NodeKind::Primitive, version) - 32);
    if (stride < PlaceBytes || offset > vertices.size() || count > (vertices.size() - offset) / stride) {
      Refuse(node, "has vertices outside of the file");
    }
    const bool light = version != FirstVersion && stride == LightBytes;
    if (topology != TriangleList || light || !level.Shown) return;
    const std::string_view own =
        vertices.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(count * stride));
    std::vector<std::uint32_t> order;
    if (version == FirstVersion && indexCount > 0) {
      order = Indices(node, firstIndex, indexCount, count);
    }
    const std::uint64_t corners = order.empty() ? count : order.size();
    cornersRead += corners;
    // Triangles that share their bytes with others would let a small file grow large.
    if (cornersRead > content.size() / 2) Refuse(node, "has triangles that have been told often");
    std::vector<ModelPoint> triangle;
    for (std::uint64_t corner = 0; corner < corners; ++corner) {
      const std::uint64_t vertex = order.empty() ? corner : order[static_cast<std::size_t>(corner)];
      triangle.push_back(PlaceOf(own.substr(static_cast<std::size_t>(vertex * stride), PlaceBytes), level.Place));
      if (triangle.size() < 3) continue;
      gathered.AddPolygon(triangle);
      triangle.clear();
    }
  }
  std::vector<std::uint32_t> Indices(std::uint32_t node, std::uint64_t first, std::uint64_t count,
                                     std::uint64_t vertexCount) const {
    const std::uint64_t held = indices.size() / indexBytes;
    if (first > held || count > held - first) Refuse(node, "has indices outside of the file");
    base::BinaryReader reader(indices.substr(static_cast<std::size_t>(first) * indexBytes));
    std::vector<std::uint32_t> order(static_cast<std::size_t>(count));
    for (std::uint32_t& index : order) {
      index = indexBytes == 2 ? reader.U16() : reader.U32();
      if (index >= vertexCount) Refuse(node, "has an index that is none of its vertices");
    }
    return order;
  }
  /// The place of a vertex: in the file x is right, y up and z forward.
  static ModelPoint PlaceOf(std::string_view vertex, const Motion& motion) {
    base::BinaryReader reader(vertex);
    const ModelPoint place = motion.Of(ReadModelPoint(reader));
    return {place.Z, place.X, -place.Y};
  }

  std::string_view name;
  std::string_view content;
  std::uint32_t version;
  std::size_t indexBytes = 2;
  std::string_view indices;
  std::string_view vertices;
  std::uint64_t cornersRead = 0;
  ShapeGatherer gathered;
};

/// The content, and how the head names its form.
struct Opened {
  std::uint32_t Version = 0;
  std::string Content;
};

Opened Open(const DataFile& file, const BmlExpander& expand) {
  constexpr std::string_view word("BML\0", 4);
  if (file.Bytes.size() < BmlHeadBytes || !file.Bytes.starts_with(word)) RefuseFile(file.Name, "it is no shape");
  base::BinaryReader head(std::string_view(file.Bytes).substr(word.size()));
  Opened opened;
  opened.Version = head.U32();
  const auto packing = static_cast<BmlPacking>(head.U32());
  const auto size = [&head] {
    const std::uint64_t low = head.U32();
    return low | std::uint64_t{head.U32()} << 32;
  };
  const std::uint64_t rawSize = size(), packedSize = size();
  const std::string_view packed = std::string_view(file.Bytes).substr(BmlHeadBytes);
  if (opened.Version != FirstVersion && opened.Version != SecondVersion) {
    RefuseFile(file.Name, "its version is " + Told(opened.Version));
  }
  if (packedSize != packed.size()) {
    RefuseFile(file.Name, "it has " + Told(packed.size()) + " bytes and tells of " + Told(packedSize));
  }
  if (rawSize > MaxBmlBytes) RefuseFile(file.Name, "its content would have " + Told(rawSize) + " bytes");
  if (packing == BmlPacking::None) {
    opened.Content = packed;
  } else if ((packing == BmlPacking::Lz4 || packing == BmlPacking::Lzma) && expand) {
    opened.Content = expand(packing, packed, static_cast<std::size_t>(rawSize));
  } else {
    RefuseFile(file.Name, "its packing, " + Told(static_cast<std::uint32_t>(packing)) + ", is not known");
  }
  if (opened.Content.size() != rawSize) {
    RefuseFile(file.Name, "its content has " + Told(opened.Content.size()) + " bytes and not " + Told(rawSize));
  }
  return opened;
}

}  // namespace

ModelShape ReadBmlShape(const DataFile& file, const BmlExpander& expand) {
  try {
    const Opened opened = Open(file, expand);
    return Content(file.Name, opened.Content, opened.Version).Read();
  } catch (const base::RuntimeFailure& failure) {
    const std::string_view told = failure.what();
    if (told.starts_with(file.Name)) throw;
    RefuseFile(file.Name, told);
  }
}

}  // namespace kestrel::falcon
