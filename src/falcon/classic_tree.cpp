#include "falcon/classic_tree.h"

#include <array>
#include <string>

namespace kestrel::falcon {
namespace {

constexpr std::uint32_t MostTags = 200'000;

/// Bytes of a node, and where the offsets of its children stand.
struct NodeForm {
  std::uint32_t Size;
  std::array<std::uint32_t, 2> Children;  // 0: none
};

constexpr std::array<NodeForm, 17> Forms = {{
    {8, {}},         // plain
    {36, {32}},      // subtree
    {48, {32}},      // root
    {60, {}},        // slot
    {88, {32}},      // joint
    {20, {}},        // switch: a list of children
    {32, {24, 28}},  // splitter
    {12, {}},        // primitive
    {16, {}},        // lit primitive
    {12, {}},        // culled primitive
    {24, {20}},      // special transform
    {36, {}},        // light string
    {72, {32}},      // translator
    {84, {32}},      // scaler
    {108, {32}},     // extended joint
    {24, {}},        // extended switch: a list of children
    {44, {}},        // render control
}};

}  // namespace

ClassicTree::ClassicTree(const DataFile& file) : source(file) {
  if (file.Bytes.size() < 4) RefuseFile(file.Name, "it ends within its number of nodes");
  base::BinaryReader reader(file.Bytes);
  const std::uint32_t tags = reader.U32();
  if (tags < 1 || tags > MostTags || tags > reader.Left() / 4) {
    RefuseFile(file.Name, "it has no room for " + Told(tags) + " nodes");
  }
  area = std::string_view(file.Bytes).substr(4 + std::size_t{tags} * 4);
  ReadNodes(reader, tags);
}

base::BinaryReader ClassicTree::At(std::int64_t offset, std::uint64_t size) const {
  if (offset < 0 || static_cast<std::uint64_t>(offset) > area.size() ||
      size > area.size() - static_cast<std::uint64_t>(offset)) {
    RefuseFile(source.Name, "it leads outside, to " + std::to_string(offset));
  }
  return base::BinaryReader(area.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(size)));
}

std::int32_t ClassicTree::Field(const Node& node, std::uint32_t offset) const {
  return At(std::int64_t{node.At} + offset, 4).I32();
}

void ClassicTree::ReadNodes(base::BinaryReader tags, std::size_t count) {
  std::vector<Pending> pending = {{.Offset = 0}};
  while (!pending.empty()) {
    const Pending next = pending.back();
    pending.pop_back();
    const std::size_t number = nodes.size();
    if (number == count) RefuseFile(source.Name, "it has more nodes than its " + Told(count) + " tags");
    const std::uint32_t tag = tags.U32();
    if (tag >= Forms.size()) RefuseFile(source.Name, "node " + Told(number) + " has the tag " + Told(tag));
    At(next.Offset, Forms[tag].Size);
    nodes.push_back({.Tag = static_cast<NodeTag>(tag), .At = static_cast<std::uint32_t>(next.Offset)});
    if (number == 0) {
      if (nodes[0].Tag != NodeTag::Root) RefuseFile(source.Name, "its first node is no root");
    } else {
      Node& parent = nodes[next.Of];
      std::int32_t& link = next.Slot == None ? parent.Sibling : parent.Children[static_cast<std::size_t>(next.Slot)];
      link = static_cast<std::int32_t>(number);
    }
    Hang(number, pending);
    // Each of them takes a tag.
    if (pending.size() > count - nodes.size())
      RefuseFile(source.Name, "node " + Told(number) + " has too many children");
  }
  if (nodes.size() != count) RefuseFile(source.Name, "its nodes leave tags over");
}

void ClassicTree::Hang(std::size_t number, std::vector<Pending>& pending) {
  Node& node = nodes[number];
  std::vector<std::int32_t> offsets;
  for (const std::uint32_t at : Forms[static_cast<std::size_t>(node.Tag)].Children) {
    if (at > 0) offsets.push_back(Field(node, at));
  }
  if (node.Tag == NodeTag::Switch || node.Tag == NodeTag::ExtendedSwitch) {
    const std::uint32_t countAt = node.Tag == NodeTag::Switch ? 12 : 16;
    const std::int32_t count = Field(node, countAt);
    if (count < 0) RefuseFile(source.Name, "node " + Told(number) + " has fewer than no children");
    base::BinaryReader list = At(Field(node, countAt + 4), static_cast<std::uint64_t>(count) * 4);
    for (std::int32_t n = 0; n < count; ++n) offsets.push_back(list.I32());
  }
  // Lists may be shared, but not so that they take more than the file.
  children += offsets.size();
  if (children > source.Bytes.size() / 4) RefuseFile(source.Name, "node " + Told(number) + " has too many children");
  node.Children.assign(offsets.size(), None);
  for (std::size_t n = offsets.size(); n-- > 0;) {
    if (offsets[n] >= 0) pending.push_back({offsets[n], number, static_cast<std::int32_t>(n)});
  }
  const std::int32_t sibling = Field(node, 4);
  if (sibling >= 0) pending.push_back({sibling, number, None});
}

}  // namespace kestrel::falcon
