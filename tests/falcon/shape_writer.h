#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/little_endian.h"

// A shape of Falcon 4.0, written from a plan of its tree.
namespace kestrel::test {

using Point = std::array<float, 3>;

struct NodePlan {
  unsigned Tag = 0;
  std::vector<Point> Points{};
  int Dynamic = 0;       ///< points behind those, of the model
  int FirstDynamic = 0;  ///< which of the model's
  std::array<float, 9> Turn = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  Point Shift = {0, 0, 0};
  int Primitive = 2;                              ///< kind: 0 points, 1 line, from 2 polygons
  std::vector<int> Corners{};                     ///< numbers of points
  std::vector<std::vector<NodePlan>> Children{};  ///< lists of siblings
};

inline NodePlan Root(std::vector<Point> points, std::vector<NodePlan> children) {
  return {.Tag = 2, .Points = std::move(points), .Children = {std::move(children)}};
}
inline NodePlan Polygon(std::vector<int> corners, int kind = 2) {
  return {.Tag = 7, .Primitive = kind, .Corners = std::move(corners)};
}

class ShapeWriter {
 public:
  explicit ShapeWriter(const NodePlan& root) { WriteList({root}, 0); }

  std::string Bytes() const {
    std::string bytes = Bytes4(static_cast<std::int64_t>(Tags.size()));
    for (const unsigned tag : Tags) bytes += Bytes4(tag);
    return bytes + Area;
  }

  std::vector<unsigned> Tags;  ///< in the order in which the nodes are read
  std::string Area;

 private:
  static std::int64_t SizeOf(unsigned tag) {
    static const int sizes[] = {8, 36, 48, 60, 88, 20, 32, 12, 16, 12, 24, 36, 72, 84, 108, 24, 44};
    return sizes[tag];
  }
  std::int64_t Put(const std::string& bytes) {
    Area += bytes;
    return static_cast<std::int64_t>(Area.size() - bytes.size());
  }
  void Set(std::int64_t at, const std::string& bytes) {
    Area.replace(static_cast<std::size_t>(at), bytes.size(), bytes);
  }

  /// Writes the nodes of a list from one on; where that one is, -1 behind the last.
  std::int64_t WriteList(const std::vector<NodePlan>& list, std::size_t index) {
    if (index == list.size()) return -1;
    const NodePlan& plan = list[index];
    // A dead pointer, and a filling that would be noticed as an offset.
    const std::int64_t at = Put(std::string(static_cast<std::size_t>(SizeOf(plan.Tag)), '\x7B'));
    Tags.push_back(plan.Tag);
    Set(at + 4, Bytes4(WriteList(list, index + 1)));
    std::vector<std::int64_t> children;
    for (const std::vector<NodePlan>& siblings : plan.Children) children.push_back(WriteList(siblings, 0));
    children.resize(std::max<std::size_t>(children.size(), 2), -1);
    Fill(plan, at, children);
    return at;
  }

  void Fill(const NodePlan& plan, std::int64_t at, const std::vector<std::int64_t>& children) {
    const auto count = static_cast<std::int64_t>(plan.Points.size());
    switch (plan.Tag) {
      case 1:
      case 2:
      case 4:
      case 12:
      case 13:
      case 14:
        Set(at + 8, Bytes4(PutPoints(plan)) + Bytes4(count + plan.Dynamic) + Bytes4(plan.Dynamic) +
                        Bytes4(plan.FirstDynamic) + Bytes4(0) + Bytes4(0) + Bytes4(children[0]));
        if (plan.Tag == 4) Set(at + 40, Moved(plan));
        if (plan.Tag == 14) Set(at + 60, Moved(plan));
        if (plan.Tag == 12) Set(at + 60, Moved(plan).substr(36));
        if (plan.Tag == 13) Set(at + 72, Moved(plan).substr(36));
        break;
      case 5:
      case 15: {
        std::string offsets;
        for (std::size_t n = 0; n < plan.Children.size(); ++n) offsets += Bytes4(children[n]);
        const auto kinds = static_cast<std::int64_t>(plan.Children.size());
        Set(at + (plan.Tag == 5 ? 12 : 16), Bytes4(kinds) + Bytes4(Put(offsets)));
        break;
      }
      case 6:
        Set(at + 24, Bytes4(children[0]) + Bytes4(children[1]));
        break;
      case 7:
      case 8:
      case 9:
        Set(at + 8, Bytes4(PutPrimitive(plan)));
        break;
      case 10:
        Set(at + 8, Bytes4(PutPoints(plan)) + Bytes4(count) + Bytes4(1) + Bytes4(children[0]));
        break;
      default:
        break;
    }
  }
  std::int64_t PutPoints(const NodePlan& plan) {
    std::string bytes;
    for (const Point& point : plan.Points) bytes += BytesF32(point[0]) + BytesF32(point[1]) + BytesF32(point[2]);
    return Put(bytes);
  }
  std::int64_t PutPrimitive(const NodePlan& plan) {
    std::string numbers;
    for (const int corner : plan.Corners) numbers += Bytes4(corner);
    const std::int64_t list = Put(numbers);
    return Put(Bytes4(plan.Primitive) + Bytes4(static_cast<std::int64_t>(plan.Corners.size())) + Bytes4(list) +
               std::string(20, '\x7A'));
  }
  static std::string Moved(const NodePlan& plan) {
    std::string bytes;
    for (const float cell : plan.Turn) bytes += BytesF32(cell);
    for (const float way : plan.Shift) bytes += BytesF32(way);
    return bytes;
  }
};

inline std::string ShapeBytes(const NodePlan& root) { return ShapeWriter(root).Bytes(); }

/// A square of 10 feet on the ground with a triangle 20 feet forward on a joint, and a switch of a line and of nothing.
inline NodePlan SmallShape() {
  return Root(
      {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}},
      {Polygon({0, 1, 2, 3}),
       {.Tag = 4, .Points = {{0, 0, 0}, {5, 0, 0}, {0, 5, 0}}, .Shift = {20, 0, 0}, .Children = {{Polygon({0, 1, 2})}}},
       {.Tag = 5,
        .Children = {{{.Tag = 1, .Points = {{0, 0, -3}, {0, 0, -9}}, .Children = {{Polygon({0, 1}, 1)}}}},
                     {{.Tag = 0}}}}});
}

}  // namespace kestrel::test
