#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "falcon/model.h"
#include "falcon/model_shape.h"
#include "falcon/model_store.h"

// What of a model is seen on a map: its lines near the ground.
namespace kestrel::falcon {

/// A line of a model on the ground: feet forward (X) and to the right (Y) of where the model stands.
struct GroundLine {
  float X1 = 0, Y1 = 0;
  float X2 = 0, Y2 = 0;
};

/// Which lines of a model are taken.
struct GroundRule {
  double Nearest = 0;     ///< feet: a line is longer than that on the ground
  double MostHeight = 0;  ///< feet: neither end stands higher, but for half a hundredth of a foot
};

/// The lines of a shape, each once, whichever way round and however high its twins stand; ends less than a hundredth of
/// a foot apart are one.
std::vector<GroundLine> LinesOnGround(const ModelShape& shape, const GroundRule& rule);
/// The four sides of a box on the ground, however high it stands; those that are long enough.
std::vector<GroundLine> LinesOnGround(const ModelBox& box, const GroundRule& rule);

/// A direction on the map as how far forward and to the right of it lie east and north.
class Heading {
 public:
  /// Degrees clockwise from north. A multiple of 90 is exact.
  explicit Heading(double degrees);
  double East(double forward, double right) const { return forward * sine + right * cosine; }
  double North(double forward, double right) const { return forward * cosine - right * sine; }

 private:
  double sine = 0;
  double cosine = 1;
};

/// The lines of models by their numbers. Each model is read once, as long as the lines of all fit in the memory that
/// is given to them; else all are forgotten, and read anew when they are asked for.
class ModelLines {
 public:
  static constexpr std::size_t MostBytes = std::size_t{64} << 20;

  /// `source` must outlast it.
  ModelLines(ModelStore& source, const GroundRule& which, std::size_t mostBytes = MostBytes)
      : models(source), rule(which), limit(mostBytes) {}

  /// The lines of a model; those of its box when its shape cannot be read. Good until the next call.
  std::span<const GroundLine> Of(std::int32_t model);

  std::size_t Reads() const { return reads; }             ///< models that have been read, repeated ones too
  std::size_t Boxes() const { return boxes.size(); }      ///< models whose box stands for what cannot be read
  std::size_t Missing() const { return missing.size(); }  ///< models that cannot be read and tell no box
  /// Why, a line for each of the first of them; what is the same one after the other is told once.
  const std::vector<std::string>& Troubles() const { return troubles; }

 private:
  std::vector<GroundLine> Read(std::int32_t model);

  ModelStore& models;
  GroundRule rule;
  std::size_t limit;
  std::size_t held = 0;  ///< bytes
  std::unordered_map<std::int32_t, std::vector<GroundLine>> lines;
  std::size_t reads = 0;
  std::set<std::int32_t> boxes;
  std::set<std::int32_t> missing;
  std::vector<std::string> troubles;
};

}  // namespace kestrel::falcon
