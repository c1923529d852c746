// What campaign files cost, by the processor's time, so that others on the machine do not count: unpacking a list of
// objectives against a bare copy of as many bytes, and reading a campaign of 4,000 objectives with names whole.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "../tests/falcon/lzss_packer.h"
#include "base/bytes.h"
#include "base/failure.h"
#include "base/files.h"
#include "falcon/campaign.h"
#include "falcon/lzss.h"
#include "timing.h"

namespace {

namespace fs = std::filesystem;
using namespace kestrel;
using namespace bench;

constexpr int Objectives = 4000;
constexpr int Version = 108;
constexpr int Rounds = 25;

std::size_t sink = 0;

void Zeros(base::BinaryWriter& out, std::size_t count) { out.Text(std::string(count, '\0')); }

void NulPadded(base::BinaryWriter& out, std::string_view text, std::size_t width) {
  out.Text(text);
  Zeros(out, width - text.size());
}

/// The list as it is unpacked: some 300 bytes for each, as in the simulator's own files.
std::string ObjectiveBytes() {
  base::BinaryWriter out;
  unsigned random = 1;
  const auto next = [&random](unsigned below) {
    random = random * 1664525u + 1013904223u;
    return (random >> 8u) % below;
  };
  for (unsigned n = 0; n < Objectives; ++n) {
    const auto type = static_cast<std::uint16_t>(100 + next(800));
    const auto x = static_cast<std::int16_t>(next(1024));
    const auto y = static_cast<std::int16_t>(next(1024));
    out.U16(type);
    out.U32(n + 1);
    out.U32(0);
    out.U16(type);
    out.I16(x);
    out.I16(y);
    Zeros(out, 4 + 4 + 2 + 2);
    out.U8(static_cast<std::uint8_t>(next(8)));
    out.I16(static_cast<std::int16_t>(n));
    Zeros(out, 4 + 4 + 3);
    const unsigned features = next(40);
    out.U8(static_cast<std::uint8_t>(features));
    Zeros(out, features);
    Zeros(out, 1 + 2 + 8 + 1);
    out.U8(3);
    for (int link = 0; link < 3; ++link) {
      for (int cost = 0; cost < 8; ++cost) out.U8(static_cast<std::uint8_t>(next(50)));
      out.U32(next(Objectives) + 1);
      out.U32(0);
    }
    out.U8(0);
    out.F64((y + 0.5) * 3279.98);
    out.F64((x + 0.5) * 3279.98);
    Zeros(out, 8 + 4);
    NulPadded(out, "Objective " + std::to_string(next(100000)) + (n % 3 == 0 ? " Bridge" : " Town"), 80);
  }
  return std::string(out.Bytes());
}

std::string DescriptionBytes() {
  base::BinaryWriter out;
  Zeros(out, 1934);
  out.I16(1024);
  out.I16(1024);
  Zeros(out, 8);
  out.I16(390);
  out.I16(464);
  for (const char* const name : {"korea", "save1", "save1", "Campaign"}) NulPadded(out, name, 40);
  Zeros(out, 8 + 2 + 2 + 2 + 2 + 2 + 13);
  return std::string(out.Bytes());
}

std::string CampaignBytes(const std::string& objectives, const std::string& packed) {
  const std::string description = DescriptionBytes();
  base::BinaryWriter head, list;
  head.U32(0);
  head.I32(static_cast<std::int32_t>(description.size()));
  head.Text(test::Packed(description));
  list.I16(Objectives);
  list.I32(static_cast<std::int32_t>(objectives.size()));
  list.I32(static_cast<std::int32_t>(packed.size()));
  list.Text(packed);
  const std::pair<std::string, std::string> pieces[] = {
      {"a.cmp", std::string(head.Bytes())}, {"a.obj", std::string(list.Bytes())}, {"a.ver", std::to_string(Version)}};
  base::BinaryWriter file, directory;
  std::size_t position = 4;
  directory.U32(static_cast<std::uint32_t>(std::size(pieces)));
  for (const auto& [name, content] : pieces) {
    directory.U8(static_cast<std::uint8_t>(name.size()));
    directory.Text(name);
    directory.U32(static_cast<std::uint32_t>(position));
    directory.U32(static_cast<std::uint32_t>(content.size()));
    position += content.size();
  }
  file.U32(static_cast<std::uint32_t>(position));
  for (const auto& [name, content] : pieces) file.Text(content);
  file.Text(directory.Bytes());
  return std::string(file.Bytes());
}

void MeasureUnpacking(const std::string& plain, const std::string& packed) {
  // Both make a text of their own, as many times that the clock can tell.
  constexpr int times = 20;
  const double unpacked = MedianMilliseconds(Rounds, [&] {
    for (int n = 0; n < times; ++n) sink += falcon::ExpandLzss(packed, plain.size()).size();
  });
  const double copied = MedianMilliseconds(Rounds, [&] {
    for (int n = 0; n < times; ++n) {
      const std::string copy(plain);
      sink += static_cast<unsigned char>(copy[sink % copy.size()]);
    }
  });
  const double megabytes = static_cast<double>(plain.size()) * times / 1e6;
  std::printf("unpacking: %.0f MB/s of output, %.1f times a bare copy (packed to %.0f %%)\n",
              megabytes / unpacked * 1e3, unpacked / copied,
              100.0 * static_cast<double>(packed.size()) / static_cast<double>(plain.size()));
}

void MeasureCampaign(const std::string& bytes) {
  const fs::path folder = fs::temp_directory_path() / ("kestrel-bench-falcon-" + std::to_string(std::time(nullptr)));
  base::MakeFolder(folder);
  const fs::path file = folder / "save1.cam";
  base::WriteWholeFile(file, bytes);
  const double milliseconds = MedianMilliseconds(Rounds, [&] {
    const falcon::World world = falcon::LoadCampaign(file, folder);
    if (world.Objectives.size() != Objectives) throw base::RuntimeFailure("not all objectives were read");
    sink += world.Objectives.size();
  });
  fs::remove_all(folder);
  std::printf("campaign of %d objectives with names, read whole: %.2f ms\n", Objectives, milliseconds);
}

}  // namespace

int main() {
  try {
    const std::string plain = ObjectiveBytes();
    const std::string packed = test::Packed(plain);
    MeasureUnpacking(plain, packed);
    MeasureCampaign(CampaignBytes(plain, packed));
  } catch (const std::exception& failure) {
    std::printf("%s\n", failure.what());
    return 1;
  }
  return sink == 0 ? 1 : 0;
}
