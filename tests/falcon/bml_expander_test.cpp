#include "falcon/bml_expander.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <lz4.h>
#include <lzma.h>

#include <cstdint>
#include <string>

#include "bml_writer.h"
#include "failure_text.h"

namespace kestrel::falcon {
namespace {

using testing::HasSubstr;

constexpr BmlPacking Packings[] = {BmlPacking::Lz4, BmlPacking::Lzma};

std::string Lz4Packed(const std::string& plain) {
  std::string packed(static_cast<std::size_t>(LZ4_compressBound(static_cast<int>(plain.size()))), '\0');
  const int size = LZ4_compress_default(plain.data(), packed.data(), static_cast<int>(plain.size()),
                                        static_cast<int>(packed.size()));
  packed.resize(static_cast<std::size_t>(size));
  return packed;
}

/// Five bytes of properties and the stream; a mark behind its end only when asked for.
std::string LzmaPacked(const std::string& plain, bool withEnd = false, std::uint32_t lookBack = 1u << 23u) {
  lzma_options_lzma options{};
  EXPECT_FALSE(lzma_lzma_preset(&options, 6));
  options.dict_size = lookBack;
  options.ext_flags = withEnd ? LZMA_LZMA1EXT_ALLOW_EOPM : 0;
  lzma_set_ext_size(options, withEnd ? UINT64_MAX : plain.size());
  const lzma_filter filters[] = {{LZMA_FILTER_LZMA1EXT, &options}, {LZMA_VLI_UNKNOWN, nullptr}};
  const std::string properties = test::Bytes1(options.lc + 9 * (options.lp + 5 * options.pb)) +
                                 test::Bytes4(static_cast<std::int64_t>(options.dict_size));
  std::string stream(plain.size() * 2 + 1000, '\0');
  std::size_t size = 0;
  EXPECT_EQ(lzma_raw_buffer_encode(filters, nullptr, reinterpret_cast<const std::uint8_t*>(plain.data()), plain.size(),
                                   reinterpret_cast<std::uint8_t*>(stream.data()), &size, stream.size()),
            LZMA_OK);
  return properties + stream.substr(0, size);
}

std::string Packed(BmlPacking packing, const std::string& plain) {
  return packing == BmlPacking::Lz4 ? Lz4Packed(plain) : LzmaPacked(plain);
}

std::string Expanded(BmlPacking packing, const std::string& packed, std::size_t size) {
  return SystemBmlExpander()(packing, packed, size);
}

/// A text that can be packed, but not to nothing.
std::string Plain() {
  std::string plain;
  for (unsigned n = 0; n < 500; ++n) plain += "vertex " + std::to_string(n * n % 977) + "\n";
  return plain;
}

TEST(BmlExpander, BlockWrittenByHandIsExpanded) {
  // One letter, then four and four more from one back; then five letters.
  const std::string block = "\x14" + std::string("a\x01\0", 3) + "\x50" + "bcdef";
  EXPECT_EQ(Expanded(BmlPacking::Lz4, block, 14), "aaaaaaaaabcdef");
}

TEST(BmlExpander, ShapeIsReadHoweverItIsPacked) {
  const test::BmlWriter bml = test::SmallBml();
  const std::string content = bml.Content();
  for (const BmlPacking packing : Packings) {
    const std::string file = bml.Packed(static_cast<unsigned>(packing), Packed(packing, content), content.size());
    EXPECT_EQ(ReadBmlShape({"Model_0.bml", file}, SystemBmlExpander()).Triangles, 3U);
  }
}

TEST(BmlExpander, StreamMayHaveAnEndOfItsOwn) {
  EXPECT_EQ(Expanded(BmlPacking::Lzma, LzmaPacked(Plain(), true), Plain().size()), Plain());
  EXPECT_EQ(Expanded(BmlPacking::Lzma, LzmaPacked(Plain(), false), Plain().size()), Plain());
}

TEST(BmlExpander, PropertiesThatTellOfMuchMemoryDoNotTakeIt) {
  std::string packed = LzmaPacked(Plain());
  packed.replace(1, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_EQ(Expanded(BmlPacking::Lzma, packed, Plain().size()), Plain());
}

TEST(BmlExpander, AnotherSizeThanThereIsIsRefused) {
  const std::string plain = Plain();
  for (const BmlPacking packing : Packings) {
    const std::string packed = Packed(packing, plain);
    for (const std::size_t size : {std::size_t{0}, plain.size() - 1, plain.size() + 1, plain.size() * 100}) {
      EXPECT_NE(test::FailureOf([&] { Expanded(packing, packed, size); }), "") << size;
    }
    EXPECT_NE(test::FailureOf([&] { Expanded(packing, packed + "x", plain.size()); }), "");
  }
}

TEST(BmlExpander, OneThatIsCutAnywhereIsRefused) {
  const std::string plain = Plain();
  for (const BmlPacking packing : Packings) {
    const std::string packed = Packed(packing, plain);
    for (std::size_t length = 0; length < packed.size(); ++length) {
      EXPECT_NE(test::FailureOf([&] { Expanded(packing, packed.substr(0, length), plain.size()); }), "") << length;
    }
  }
}

TEST(BmlExpander, FailureNamesTheFile) {
  const test::BmlWriter bml = test::SmallBml();
  for (const unsigned packing : {1U, 2U}) {
    const std::string file = bml.Packed(packing, "damaged", 5000);
    EXPECT_THAT(test::FailureOf([&] {
                  ReadBmlShape({"Model_0.bml", file}, SystemBmlExpander());
                }),
                testing::StartsWith("Model_0.bml: its LZ"));
  }
}

TEST(BmlExpander, SizesOfGigabytesAreRefusedBeforeMemoryIsTaken) {
  for (const BmlPacking packing : Packings) {
    for (const std::size_t size : {MaxBmlBytes + 1, std::size_t{1} << 33u, SIZE_MAX}) {
      EXPECT_THAT(test::FailureOf([&] { Expanded(packing, Packed(packing, "plain"), size); }),
                  HasSubstr("its content would have " + std::to_string(size) + " bytes"));
    }
  }
}

TEST(BmlExpander, OtherPackingsAreNotKnown) {
  EXPECT_EQ(test::FailureOf([] { Expanded(BmlPacking::None, "x", 1); }), "its packing is not known");
}

}  // namespace
}  // namespace kestrel::falcon
