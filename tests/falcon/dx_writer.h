#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/little_endian.h"

// Shapes of FreeFalcon, written node by node.
namespace kestrel::test {

class DxWriter {
 public:
  using Place = std::array<float, 3>;
  static constexpr std::uint32_t Version = 0xFFFE0001;  ///< 1, and 1 turned over

  /// `primitive`: 1 points, 2 lines, 3 strip of them, 4 triangles, 5 strip, 6 fan.
  DxWriter& Surface(unsigned primitive, const std::vector<int>& corners) {
    std::string body = std::string(4, '\x41') + Bytes4(static_cast<std::int64_t>(corners.size())) + Bytes4(40) +
                       Bytes4(primitive) + std::string(28, '\x42');
    for (const int corner : corners) body += Bytes2(corner);
    return Node(1, body);
  }
  /// `kind`: 1 and 2 turn, 3 shifts, 4 scales, 5 and 6 switch to a branch. Points are rows before the turn.
  DxWriter& Joint(unsigned kind, const Place& shift, const std::array<float, 9>& turn = {1, 0, 0, 0, 1, 0, 0, 0, 1},
                  int branch = 0, const Place& lastRow = {0, 0, 0}) {
    std::string body =
        Bytes4(999) + Bytes4(kind) + Bytes4(3) + std::string(16, '\x43') + Bytes4(branch) + std::string(12, '\x44');
    for (std::size_t row = 0; row < 3; ++row) {
      for (std::size_t column = 0; column < 3; ++column) body += BytesF32(turn[3 * row + column]);
      body += BytesF32(0);
    }
    for (const float way : lastRow) body += BytesF32(way);
    body += BytesF32(1);
    for (const float way : shift) body += BytesF32(way);
    return Node(4, body);
  }
  DxWriter& EndJoint() { return Node(5, ""); }
  /// Any other node.
  DxWriter& Node(unsigned kind, const std::string& body) {
    Nodes += Bytes4(static_cast<std::int64_t>(12 + body.size())) + Bytes4(count++) + Bytes4(kind) + body;
    return *this;
  }

  std::string File() const {
    std::string pool;
    for (const Place& place : Points) {
      pool += BytesF32(place[0]) + BytesF32(place[1]) + BytesF32(place[2]) + std::string(28, '\x45');
    }
    const std::string textures = Bytes4(2) + Bytes4(17) + Bytes4(18);
    const std::string head = Bytes4(Version) + Bytes4(5) + Bytes4(0) + Bytes4(0) +
                             Bytes4(static_cast<std::int64_t>(Points.size())) +
                             Bytes4(static_cast<std::int64_t>(pool.size())) +
                             Bytes4(static_cast<std::int64_t>(72 + textures.size() + Nodes.size())) + Bytes4(count);
    return head + std::string(32 + 8, '\x46') + textures + Nodes + pool;
  }

  std::vector<Place> Points;
  std::string Nodes;

 private:
  int count = 0;
};

/// A triangle on the ground and, on a joint, the same 10 feet forward.
inline DxWriter SmallDx() {
  DxWriter dx;
  dx.Points = {{0, 0, 0}, {5, 0, 0}, {0, 5, 0}};
  dx.Node(0, "").Surface(4, {0, 1, 2}).Joint(1, {10, 0, 0}).Surface(4, {0, 1, 2}).EndJoint().Node(9, "");
  return dx;
}

}  // namespace kestrel::test
