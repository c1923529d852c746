#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "falcon/model.h"

namespace kestrel::falcon {

struct ModelEdge {
  ModelPoint From;
  ModelPoint To;
};

/// The lines that a model is drawn with.
struct ModelShape {
  std::vector<ModelEdge> Edges{};  ///< each once, whichever way round
  std::size_t Triangles = 0;       ///< a polygon counts as those that it can be cut into
};

/// Gathers the lines of a shape, each once. Ends less than a hundredth of a foot apart are one; what has an end that is
/// no number or beyond reason (100,000 feet) is left out.
class ShapeGatherer {
 public:
  /// A line through all points in order.
  void AddLine(const std::vector<ModelPoint>& points);
  /// A closed polygon, and its triangles.
  void AddPolygon(const std::vector<ModelPoint>& points);
  /// Lines handed in so far, repeated ones too.
  std::size_t Added() const { return edges.size(); }
  /// The shape; the gatherer is empty then.
  ModelShape Take();

 private:
  void AddEdge(const ModelPoint& from, const ModelPoint& to);

  std::vector<ModelEdge> edges;
  std::size_t triangles = 0;
};

}  // namespace kestrel::falcon
