#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/little_endian.h"

// Shapes of folders of their own, written from plans of them.
namespace kestrel::test {

/// Piece by piece, as the nodes stand in the file.
class BmlWriter {
 public:
  explicit BmlWriter(unsigned formVersion = 2) : version(formVersion) {}

  using Place = std::array<float, 3>;  ///< right, up, forward

  struct Options {
    unsigned Stride = 48;
    unsigned Topology = 4;
    std::vector<unsigned> Indices{};
  };

  /// Vertices three by three, or as the indices name them.
  BmlWriter& Triangles(const std::vector<Place>& places, const Options& options) {
    const auto count = static_cast<std::int64_t>(places.size());
    Begin(1);
    Nodes += Bytes4(options.Topology) + BytesF32(0.5F) + Bytes4(static_cast<std::int64_t>(options.Indices.size())) +
             Bytes4(static_cast<std::int64_t>(Indices.size() / 2)) + Bytes4(0) +
             Bytes4(static_cast<std::int64_t>(Vertices.size())) + Bytes4(count) + Bytes4(options.Stride) +
             std::string(12, '\x31') + std::string(version == 1 ? 22 : 4, '\x32');
    for (const unsigned index : options.Indices) Indices += Bytes2(static_cast<int>(index));
    for (const Place& place : places) {
      Vertices +=
          BytesF32(place[0]) + BytesF32(place[1]) + BytesF32(place[2]) + std::string(options.Stride - 12, '\x33');
    }
    return *this;
  }
  BmlWriter& Triangles(const std::vector<Place>& places) { return Triangles(places, Options{}); }
  /// `kind`: 0 turns, 1 shifts, 2 scales.
  BmlWriter& Joint(unsigned kind, const Place& shift, const std::array<float, 9>& turn = {1, 0, 0, 0, 1, 0, 0, 0, 1}) {
    Begin(2);
    Nodes += Bytes4(7) + Bytes4(kind) + std::string(16, '\x34') + std::string(12, '\x35');
    for (const float way : shift) Nodes += BytesF32(way);
    for (const float cell : turn) Nodes += BytesF32(cell);
    return *this;
  }
  BmlWriter& EndJoint() { return Begin(3); }
  BmlWriter& Switch(unsigned branch, bool on) {
    Begin(4);
    Nodes += Bytes4(9) + Bytes4(branch) + Bytes1(on ? 1 : 0);
    return *this;
  }
  BmlWriter& EndSwitch() { return Begin(5); }
  BmlWriter& Slot() {
    Begin(6);
    Nodes += std::string(52, '\x36');
    return *this;
  }
  BmlWriter& EndSlot() { return Begin(7); }
  BmlWriter& RenderControl() {
    Begin(8);
    Nodes += std::string(36, '\x37');
    return *this;
  }

  std::string Content() const {
    const auto size = [](const std::string& text) { return Bytes4(static_cast<std::int64_t>(text.size())); };
    const std::string material = "Concrete";
    return Bytes4(77) + Bytes4(2) + (version == 1 ? Bytes4(11) + Bytes4(12) : size(material) + material + Bytes4(0)) +
           Bytes4(1) + Bytes4(0) + Bytes4(0) + Bytes4(nodeCount) + Nodes + size(Indices) + Indices + size(Vertices) +
           Vertices;
  }
  std::string File() const { return Packed(0, Content(), Content().size()); }
  /// `packed`, told to be packed so and to have that many bytes when it is expanded.
  std::string Packed(unsigned packing, const std::string& packed, std::uint64_t size) const {
    return std::string("BML\0", 4) + Bytes4(version) + Bytes4(packing) + Bytes8(size) + Bytes8(packed.size()) + packed;
  }

  std::string Nodes, Indices, Vertices;

 private:
  BmlWriter& Begin(unsigned kind) {
    Nodes += Bytes4(kind) + Bytes4(nodeCount++) + Bytes4(version);
    return *this;
  }

  unsigned version;
  int nodeCount = 0;
};

/// A triangle, one on a joint, one of a switch that is on and one of a branch that is off, and a light.
inline BmlWriter SmallBml(unsigned version = 2) {
  const std::vector<BmlWriter::Place> triangle = {{0, 0, 0}, {1, 0, 0}, {0, 0, 2}};
  BmlWriter bml(version);
  bml.Triangles(triangle).Joint(0, {10, 0, 0}).Triangles(triangle).EndJoint();
  bml.Switch(0, false).Triangles({{8, 8, 8}, {9, 8, 8}, {8, 8, 9}}).EndSwitch();
  bml.Switch(1, true).Triangles({{4, 4, 4}, {5, 4, 4}, {4, 4, 5}}).EndSwitch();
  if (version == 2) bml.Triangles({{3, 3, 3}, {3, 3, 3}, {3, 3, 3}}, {.Stride = 44});
  return bml;
}

}  // namespace kestrel::test
