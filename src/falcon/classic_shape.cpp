#include "falcon/classic_shape.h"

#include <cstdint>
#include <string>
#include <vector>

#include "falcon/classic_tree.h"
#include "falcon/motion.h"

namespace kestrel::falcon {
namespace {

using Node = ClassicTree::Node;

constexpr int DeepestNode = 256;
constexpr std::int32_t MostCorners = 1024;
constexpr std::size_t PointBytes = 12;

/// Goes down the tree as a drawing does, with the list of points that the polygons name by number.
class Drawing {
 public:
  Drawing(const DataFile& file, std::span<const ModelPoint> modelPoints)
      : source(file), tree(file), dynamic(modelPoints), most(file.Bytes.size() / 4 + modelPoints.size()) {}

  ModelShape Draw() {
    DrawNode(0, {}, 0);
    return gathered.Take();
  }

 private:
  [[noreturn]] void Refuse(std::size_t number, std::string_view complaint) const {
    RefuseFile(source.Name, "node " + Told(number) + " " + std::string(complaint));
  }

  void DrawList(std::int32_t first, const Motion& motion, int depth) {
    for (std::int32_t number = first; number != ClassicTree::None;) {
      const auto at = static_cast<std::size_t>(number);
      DrawNode(at, motion, depth);
      number = tree.Nodes()[at].Sibling;
    }
  }

  void DrawNode(std::size_t number, const Motion& motion, int depth) {
    if (depth > DeepestNode) Refuse(number, "lies too deep");
    const Node& node = tree.Nodes()[number];
    switch (node.Tag) {
      case NodeTag::Subtree:
      case NodeTag::Root:
        AddPoints(number, motion);
        DrawList(node.Children[0], motion, depth + 1);
        break;
      case NodeTag::Joint:
        Within([&] { DrawTurned(number, motion.After(MotionAt(node, 40)), depth); });
        break;
      case NodeTag::ExtendedJoint:
        Within([&] { DrawTurned(number, motion.After(MotionAt(node, 60)), depth); });
        break;
      case NodeTag::Translator:
      case NodeTag::Scaler:
        // At rest they move nothing.
        Within([&] { DrawTurned(number, motion, depth); });
        break;
      case NodeTag::SpecialTransform:
        Within([&] {
          AddCoordinates(number, tree.Field(node, 8), tree.Field(node, 12), motion);
          DrawList(node.Children[0], motion, depth + 1);
        });
        break;
      case NodeTag::Switch:
      case NodeTag::ExtendedSwitch:
        if (!node.Children.empty()) Within([&] { DrawList(node.Children[0], motion, depth + 1); });
        break;
      case NodeTag::Splitter:
        for (const std::int32_t child : node.Children) DrawList(child, motion, depth + 1);
        break;
      case NodeTag::Primitive:
      case NodeTag::CulledPrimitive:
      case NodeTag::LitPrimitive:
        // Of a lit one the front, which has the same corners as its back.
        AddPrimitive(number, tree.Field(node, 8));
        break;
      case NodeTag::Plain:
      case NodeTag::Slot:
      case NodeTag::LightString:
      case NodeTag::RenderControl:
        break;
    }
  }

  void DrawTurned(std::size_t number, const Motion& motion, int depth) {
    AddPoints(number, motion);
    DrawList(tree.Nodes()[number].Children[0], motion, depth + 1);
  }

  /// Lets the numbers of points begin anew within `draw`.
  template <class Work>
  void Within(const Work& draw) {
    const std::size_t outerBase = base, outerCount = points.size();
    base = outerCount;
    draw();
    points.resize(outerCount);
    base = outerBase;
  }

  Motion MotionAt(const Node& node, std::uint32_t offset) const {
    base::BinaryReader reader = tree.At(std::int64_t{node.At} + offset, 48);
    Motion motion;
    for (double& cell : motion.Turn) cell = reader.F32();
    motion.Shift = ReadModelPoint(reader);
    return motion;
  }

  /// The points of a node that has them of its own and, behind those, of the model.
  void AddPoints(std::size_t number, const Motion& motion) {
    const Node& node = tree.Nodes()[number];
    const std::int32_t count = tree.Field(node, 12), fromModel = tree.Field(node, 16), first = tree.Field(node, 20);
    if (fromModel < 0 || fromModel > count) Refuse(number, "has an impossible number of points");
    AddCoordinates(number, tree.Field(node, 8), count - fromModel, motion);
    if (fromModel == 0) return;
    const auto held = static_cast<std::int64_t>(dynamic.size());
    if (first < 0 || first > held || fromModel > held - first) Refuse(number, "has points that its model lacks");
    for (std::int32_t n = 0; n < fromModel; ++n) {
      AddPoint(number, motion.Of(dynamic[static_cast<std::size_t>(first + n)]));
    }
  }
  void AddCoordinates(std::size_t number, std::int32_t offset, std::int32_t count, const Motion& motion) {
    if (count < 0) Refuse(number, "has an impossible number of points");
    if (count == 0) return;
    base::BinaryReader reader = tree.At(offset, static_cast<std::uint64_t>(count) * PointBytes);
    for (std::int32_t n = 0; n < count; ++n) AddPoint(number, motion.Of(ReadModelPoint(reader)));
  }
  void AddPoint(std::size_t number, const ModelPoint& point) {
    if (++pointsAdded > most) Refuse(number, "has points that have been told often");
    points.push_back(point);
  }

  void AddPrimitive(std::size_t number, std::int32_t offset) {
    base::BinaryReader head = tree.At(offset, 12);
    const std::int32_t type = head.I32(), count = head.I32(), list = head.I32();
    if (count < 0 || count > MostCorners) Refuse(number, "has an impossible number of corners");
    if (type == 0) return;  // points
    base::BinaryReader numbers = tree.At(list, static_cast<std::uint64_t>(count) * 4);
    corners.clear();
    for (std::int32_t n = 0; n < count; ++n) {
      const std::uint64_t index = base + std::uint64_t{numbers.U32()};
      if (index >= points.size()) Refuse(number, "has a corner that is none of its points");
      corners.push_back(points[static_cast<std::size_t>(index)]);
    }
    if (gathered.Added() + corners.size() > most) Refuse(number, "has lines that have been told often");
    if (type == 1) {
      gathered.AddLine(corners);
    } else {
      gathered.AddPolygon(corners);
    }
  }

  const DataFile& source;
  ClassicTree tree;
  std::span<const ModelPoint> dynamic;
  std::size_t most;
  std::size_t pointsAdded = 0;
  std::size_t base = 0;  // of the numbers of points
  std::vector<ModelPoint> points;
  std::vector<ModelPoint> corners;
  ShapeGatherer gathered;
};

}  // namespace

ModelShape ReadClassicShape(const DataFile& file, std::span<const ModelPoint> dynamic) {
  return Drawing(file, dynamic).Draw();
}

}  // namespace kestrel::falcon
