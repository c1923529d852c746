#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "falcon/data_file.h"

// The nodes of a shape of Falcon 4.0. They are the memory of a program of 32 bits as it was written to the disk: each
// begins with a dead pointer, and the others are offsets from the first node. What kind each is stands before them all,
// in the order in which they are read: a node, then its sibling with all under it, then its own children.
namespace kestrel::falcon {

enum class NodeTag : std::uint32_t {
  Plain,
  Subtree,
  Root,
  Slot,
  Joint,
  Switch,
  Splitter,
  Primitive,
  LitPrimitive,
  CulledPrimitive,
  SpecialTransform,
  LightString,
  Translator,
  Scaler,
  ExtendedJoint,
  ExtendedSwitch,
  RenderControl,
};

class ClassicTree {
 public:
  static constexpr std::int32_t None = -1;

  struct Node {
    NodeTag Tag = NodeTag::Plain;
    std::uint32_t At = 0;  ///< offset of its bytes
    std::int32_t Sibling = None;
    std::vector<std::int32_t> Children{};  ///< each the first of a list of siblings; None where there is none
  };

  /// RuntimeFailure, naming the file and the node, when the nodes do not use up their tags, lie outside of the file, or
  /// the first is no root. `file` is to outlive the tree.
  explicit ClassicTree(const DataFile& file);

  /// The first is the root.
  const std::vector<Node>& Nodes() const { return nodes; }
  /// A reader of `size` bytes at an offset; RuntimeFailure when they are not there.
  base::BinaryReader At(std::int64_t offset, std::uint64_t size) const;
  /// A number of a node's own bytes, 32 bits.
  std::int32_t Field(const Node& node, std::uint32_t offset) const;

 private:
  /// A node to be read and where its number goes.
  struct Pending {
    std::int32_t Offset = None;
    std::size_t Of = 0;     ///< the node that it hangs on
    std::int32_t Slot = 0;  ///< its place among the children, or None for the sibling
  };

  void ReadNodes(base::BinaryReader tags, std::size_t count);
  /// Puts what hangs on a node onto the pile, so that its sibling is read next and its children behind that.
  void Hang(std::size_t number, std::vector<Pending>& pending);

  const DataFile& source;
  std::string_view area;
  std::vector<Node> nodes;
  std::size_t children = 0;  // of all nodes
};

}  // namespace kestrel::falcon
