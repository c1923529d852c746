#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/little_endian.h"

// Campaign files put together byte by byte, by a writer of its own.
namespace kestrel::test {

/// Packed without a match: one byte of flags before every eight.
inline std::string Literals(std::string_view plain) {
  std::string packed;
  for (std::size_t at = 0; at < plain.size(); at += 8) packed += '\xFF' + std::string(plain.substr(at, 8));
  return packed;
}

struct CampaignPlan {
  int Version = 63;
  int Width = 1024;
  int Height = 1024;
  int X = 390;
  int Y = 464;
};

/// The description of a campaign up to the end of the bullseye, the other fields filled with what would be noticed.
inline std::string CampaignBlock(const CampaignPlan& plan) {
  std::string block(4, '\x11');
  if (plan.Version >= 48) block.append(8, '\x22');
  if (plan.Version >= 50) block.append(4, '\x33');
  if (plan.Version >= 52) {
    block.append(4 + 4 + 32 + 32 + 4 + 32 + 4, '\x44');
    block.append(std::size_t{8} * 222, '\x55');
  }
  if (plan.Version >= 19) block.append(4, '\x66');
  block.append(12, '\x77');             // resupply, repair, reinforcement
  block.append(2 + 2 + 8 + 2, '\x7F');  // time stamp, group, ratios, brief
  block += Bytes2(plan.Width) + Bytes2(plan.Height);
  block.append(8, '\x7E');
  return block + Bytes2(plan.X) + Bytes2(plan.Y);
}

/// The piece as it stands in the file. `packedSize` is what its head says, which no reader may trust.
inline std::string CampaignPiece(std::string_view block, std::uint32_t packedSize = 0x7FFFFFFF) {
  return Bytes4(packedSize) + Bytes4(static_cast<std::uint32_t>(block.size())) + Literals(block);
}

using Pieces = std::vector<std::pair<std::string, std::string>>;

inline std::string Container(const Pieces& pieces, std::string_view behind = "") {
  std::string bytes(4, '\0'), directory = Bytes4(static_cast<std::uint32_t>(pieces.size()));
  for (const auto& [name, content] : pieces) {
    directory += static_cast<char>(name.size()) + name + Bytes4(static_cast<std::uint32_t>(bytes.size())) +
                 Bytes4(static_cast<std::uint32_t>(content.size()));
    bytes += content;
  }
  bytes.replace(0, 4, Bytes4(static_cast<std::uint32_t>(bytes.size())));
  return bytes + directory + std::string(behind);
}

inline std::string CampaignBytes(const CampaignPlan& plan) {
  return Container({{"save0.obj", "objectives"},
                    {"save0.cmp", CampaignPiece(CampaignBlock(plan))},
                    {"save0.ver", std::to_string(plan.Version)}});
}

}  // namespace kestrel::test
