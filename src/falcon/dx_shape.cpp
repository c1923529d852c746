#include "falcon/dx_shape.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "falcon/motion.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t HeadBytes = 76;
constexpr std::size_t PointStride = 40;
constexpr std::size_t NodeHeadBytes = 12;
constexpr std::size_t SurfaceBytes = 56;
constexpr std::size_t JointBytes = 132;

enum class DxNode : std::uint32_t { Root, Surface, Material, Texture, Joint, EndOfJoint, Slot, Switch, Light, End };
enum class DxJoint : std::uint32_t { Turns = 1, TurnsExtended, Shifts, Scales, Switches, SwitchesExtended };
enum class DxPrimitive : std::uint32_t { Points = 1, Lines, LineStrip, Triangles, TriangleStrip, TriangleFan };

class DxReader {
 public:
  explicit DxReader(const DataFile& file) : source(file), content(file.Bytes) {}

  ModelShape Read() {
    if (content.size() < HeadBytes) RefuseFile(source.Name, "it ends within its head");
    const std::uint64_t pointCount = NumberAt(16), pool = NumberAt(24), nodeCount = NumberAt(28);
    const std::uint64_t nodes = HeadBytes + std::uint64_t{NumberAt(72)} * 4;
    if (nodes > pool || pool > content.size() || pointCount > (content.size() - pool) / PointStride) {
      RefuseFile(source.Name, "its points or nodes lie outside");
    }
    if (nodeCount > (pool - nodes) / NodeHeadBytes) {
      RefuseFile(source.Name, "it has no room for " + Told(nodeCount) + " nodes");
    }
    points = content.substr(static_cast<std::size_t>(pool), static_cast<std::size_t>(pointCount) * PointStride);
    DrawNodes(content.substr(static_cast<std::size_t>(nodes), static_cast<std::size_t>(pool - nodes)),
              static_cast<std::size_t>(nodeCount));
    return gathered.Take();
  }

 private:
  /// What hangs below a joint until its end.
  struct Level {
    Motion Place;
    bool Shown = true;
  };

  [[noreturn]] void Refuse(std::size_t node, std::string_view complaint) const {
    RefuseFile(source.Name, "node " + Told(node) + " " + std::string(complaint));
  }
  std::uint32_t NumberAt(std::size_t offset) const { return base::BinaryReader(content.substr(offset, 4)).U32(); }

  void DrawNodes(std::string_view bytes, std::size_t count) {
    std::vector<Level> levels(1);
    for (std::size_t n = 0; n < count; ++n) {
      if (bytes.size() < NodeHeadBytes) Refuse(n, "is cut");
      base::BinaryReader head(bytes);
      const std::uint32_t size = head.U32();
      head.Skip(4);
      const std::uint32_t kind = head.U32();
      if (size < NodeHeadBytes || size > bytes.size()) Refuse(n, "has " + Told(size) + " bytes");
      const std::string_view node = bytes.substr(0, size);
      bytes.remove_prefix(size);
      switch (static_cast<DxNode>(kind)) {
        case DxNode::Surface:
          AddSurface(node, n, levels.back());
          break;
        case DxNode::Joint:
          levels.push_back(Below(node, n, levels.back()));
          break;
        case DxNode::EndOfJoint:
          if (levels.size() < 2) Refuse(n, "ends what has not begun");
          levels.pop_back();
          break;
        case DxNode::End:
          n = count - 1;
          break;
        default:
          break;
      }
    }
    if (levels.size() > 1) RefuseFile(source.Name, "a node of it is left open");
  }

  Level Below(std::string_view node, std::size_t number, const Level& above) const {
    if (node.size() < JointBytes) Refuse(number, "is too short for a joint");
    base::BinaryReader reader(node);
    reader.Skip(16);
    const auto kind = static_cast<DxJoint>(reader.U32());
    reader.Skip(4 + 16);  // its number, its range
    const std::uint32_t branch = reader.U32();
    reader.Skip(12);  // scale
    if (kind == DxJoint::Switches || kind == DxJoint::SwitchesExtended)
      return {above.Place, above.Shown && branch == 0};
    if (kind != DxJoint::Turns && kind != DxJoint::TurnsExtended) return above;
    // Points are rows there, so that the turn stands column by column.
    Motion turned;
    for (std::size_t row = 0; row < 3; ++row) {
      for (std::size_t column = 0; column < 3; ++column) turned.Turn[3 * column + row] = reader.F32();
      reader.Skip(4);
    }
    const ModelPoint lastRow = ReadModelPoint(reader);
    reader.Skip(4);
    const ModelPoint shift = ReadModelPoint(reader);
    // The shift stands behind the matrix; what the matrix holds itself counts where there is none.
    turned.Shift = shift.X != 0 || shift.Y != 0 || shift.Z != 0 ? shift : lastRow;
    return {above.Place.After(turned), above.Shown};
  }

  void AddSurface(std::string_view node, std::size_t number, const Level& level) {
    if (node.size() < SurfaceBytes) Refuse(number, "is too short for a surface");
    base::BinaryReader reader(node);
    reader.Skip(16);
    const std::uint32_t count = reader.U32();
    reader.Skip(4);
    const auto primitive = static_cast<DxPrimitive>(reader.U32());
    // Of points the first alone is named.
    if (primitive == DxPrimitive::Points || !level.Shown) return;
    if (count > (node.size() - SurfaceBytes) / 2) Refuse(number, "is too short for its " + Told(count) + " corners");
    reader.Skip(SurfaceBytes - 28);
    std::vector<ModelPoint> corners;
    corners.reserve(count);
    for (std::uint32_t n = 0; n < count; ++n) corners.push_back(PointAt(reader.U16(), number, level.Place));
    Gather(primitive, corners);
  }
  ModelPoint PointAt(std::size_t index, std::size_t node, const Motion& motion) const {
    if (index >= points.size() / PointStride) Refuse(node, "has a corner that is none of its points");
    base::BinaryReader reader(points.substr(index * PointStride));
    return motion.Of(ReadModelPoint(reader));
  }
  void Gather(DxPrimitive primitive, const std::vector<ModelPoint>& corners) {
    const std::size_t count = corners.size();
    switch (primitive) {
      case DxPrimitive::Lines:
        for (std::size_t n = 1; n < count; n += 2) gathered.AddLine({corners[n - 1], corners[n]});
        break;
      case DxPrimitive::LineStrip:
        gathered.AddLine(corners);
        break;
      case DxPrimitive::Triangles:
        for (std::size_t n = 2; n < count; n += 3) gathered.AddPolygon({corners[n - 2], corners[n - 1], corners[n]});
        break;
      case DxPrimitive::TriangleStrip:
        for (std::size_t n = 2; n < count; ++n) gathered.AddPolygon({corners[n - 2], corners[n - 1], corners[n]});
        break;
      case DxPrimitive::TriangleFan:
        for (std::size_t n = 2; n < count; ++n) gathered.AddPolygon({corners[0], corners[n - 1], corners[n]});
        break;
      default:
        break;
    }
  }

  const DataFile& source;
  std::string_view content;
  std::string_view points;
  ShapeGatherer gathered;
};

}  // namespace

bool IsDxShape(std::string_view bytes) {
  if (bytes.size() < 4) return false;
  const std::uint32_t version = base::BinaryReader(bytes).U32();
  return (version & 0xFFFF) == (~version >> 16 & 0xFFFF);
}

ModelShape ReadDxShape(const DataFile& file) { return DxReader(file).Read(); }

}  // namespace kestrel::falcon
