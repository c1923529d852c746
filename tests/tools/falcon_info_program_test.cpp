// What the program prints and ends with, whatever it is given.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "falcon-info/fields.h"
#include "falcon-info/json.h"
#include "falcon-info/options.h"
#include "falcon/bml_writer.h"
#include "falcon/model_writer.h"
#include "falcon/terrain_writer.h"
#include "falcon_info_run.h"
#include "falcon_info_worlds.h"
#include "project_paths.h"

namespace kestrel::test {
namespace {

namespace fs = std::filesystem;
using falconinfo::HelpText;
using falconinfo::Json;
using falconinfo::Options;
using falconinfo::ParseOptions;
using testing::HasSubstr;

TEST(FalconInfoJson, ValuesAreWrittenAsJson) {
  EXPECT_EQ(Json().Text(), "null");
  EXPECT_EQ(Json(true).Text(), "true");
  EXPECT_EQ(Json(-7).Text(), "-7");
  EXPECT_EQ(Json(std::uint8_t{200}).Text(), "200");
  EXPECT_EQ(Json(0.1).Text(), "0.1");
  EXPECT_EQ(Json(600000.0).Text(), "600000");
  EXPECT_EQ(Json(-1e300).Text(), "-1e+300");
  EXPECT_EQ(Json(1e-300).Text(), "1e-300");
  EXPECT_EQ(Json(0.0).Text(), "0");
  EXPECT_EQ(Json(41.3F).Text(), "41.3") << "as short as it may be";
  EXPECT_EQ(Json(std::nan("")).Text(), "null");
  EXPECT_EQ(Json(-std::numeric_limits<double>::infinity()).Text(), "null");
  EXPECT_EQ(Json(std::numeric_limits<float>::infinity()).Text(), "null");
  EXPECT_EQ(Json(std::optional<int>()).Text(), "null");
  EXPECT_EQ(Json(std::optional<int>(3)).Text(), "3");
  EXPECT_EQ(Json::EmptyList().Text(), "[]");
  EXPECT_EQ(Json::EmptyObject().Text(), "{}");
}

TEST(FalconInfoJson, MembersKeepTheirOrder) {
  Json json;
  json["b"] = 1;
  json["a"] = falconinfo::ListOf(std::vector<int>{1, 2});
  json["c"].Append(Json::EmptyObject());
  json["b"] = 2;
  EXPECT_EQ(json.Text(), "{\n  \"b\": 2,\n  \"a\": [1, 2],\n  \"c\": [\n    {}\n  ]\n}");
}

TEST(FalconInfoJson, TextIsUtf8WhateverItHolds) {
  EXPECT_EQ(Json("a\"b\\c").Text(), "\"a\\\"b\\\\c\"");
  EXPECT_EQ(Json("caf\xE9 \x80").Text(), "\"caf\xC3\xA9 \xE2\x82\xAC\"");
  // 0x81 has no letter in the code page and stands for a control character.
  EXPECT_EQ(Json(std::string_view("\x1B[2J\n\x7F\x81\0", 8)).Text(), "\"\\u001b[2J\\u000a\\u007f\\u0081\\u0000\"");
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  const Report report("{\"all\": " + Json(all).Text() + "}");
  EXPECT_EQ(report.At("all").toString().size(), 256);
}

#ifndef _WIN32
TEST(FalconInfoJson, PathsAreTakenAsTheyAreNamed) {
  EXPECT_EQ(Json::OfPath("K\xC3\xB6ln \xE2\x82\xAC").Text(), "\"K\xC3\xB6ln \xE2\x82\xAC\"");
  EXPECT_EQ(Json::OfPath("K\xF6ln").Text(), "\"K\xC3\xB6ln\"") << "no UTF-8: the code page's";
  for (const char* const wrong : {"\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82", "\xF8"}) {
    Report("{\"path\": " + Json::OfPath(wrong).Text() + "}");
  }
  EXPECT_EQ(Json::OfPath("").Text(), "null");
}
#endif

TEST(FalconInfoOptions, AreRead) {
  const Options options =
      ParseOptions({"a.cam",      "--objects", "x",         "--record", "CT:12",       "b.cam", "--record", "pd:0",
                    "--at",       "1.5,-2",    "--class",   "3",        "--objective", "766",   "--model",  "9",
                    "--campaign", "y",         "--strings", "z"});
  EXPECT_EQ(options.Paths, (std::vector<fs::path>{"a.cam", "b.cam"}));
  EXPECT_EQ(options.Objects, std::vector<fs::path>{"x"});
  ASSERT_EQ(options.Records.size(), 2u);
  EXPECT_EQ(options.Records[0].Table, "ct");
  EXPECT_EQ(options.Records[0].Index, 12u);
  ASSERT_EQ(options.At.size(), 1u);
  EXPECT_EQ(options.At[0].X, 1.5);
  EXPECT_EQ(options.At[0].Y, -2);
  EXPECT_EQ(options.Classes, std::vector<std::int32_t>{3});
  EXPECT_EQ(options.Objectives, std::vector<std::int32_t>{766});
  EXPECT_EQ(options.Models, std::vector<std::size_t>{9});
  EXPECT_EQ(options.Campaign, "y");
  EXPECT_EQ(options.Strings, "z");
  EXPECT_TRUE(ParseOptions({"--help"}).Help);
}

TEST(FalconInfoOptions, WrongWordsAreRefused) {
  const std::vector<std::vector<std::string>> cases = {
      {},
      {"--other", "a"},
      {"a", "--record", "ct"},
      {"a", "--record", "xx:1"},
      {"a", "--record", "ct:-1"},
      {"a", "--record", "ct:1x"},
      {"a", "--class", "1.5"},
      {"a", "--model", "99999999999999999999"},
      {"a", "--at", "7"},
      {"a", "--at", "1,2,3"},
  };
  for (const auto& words : cases) {
    EXPECT_THROW(ParseOptions(words), std::invalid_argument) << (words.empty() ? "" : words.back());
  }
}

TEST(FalconInfoOptions, HelpAndDocumentationNameEachFieldAlike) {
  EXPECT_THAT(HelpText(), HasSubstr(std::string(falconinfo::FieldsText())));
  const std::string page = ReadBytes(fs::path(KESTREL_SOURCE_DIR) / "docs/falcon-data.md");
  EXPECT_THAT(page, HasSubstr("```\n" + std::string(falconinfo::FieldsText()) + "```"));
}

class FalconInfoProgram : public FalconInfo {};

TEST_F(FalconInfoProgram, EndsWithWhatItFound) {
  const std::string good = Write("a.cfg", "set g_nF1TeamUiFreq 1\n").string();
  const std::string bad = Write("b.cam", "broken").string();
  EXPECT_EQ(RunFalconInfo("--help").Exit, 0);
  EXPECT_EQ(RunFalconInfo("").Exit, 2);
  EXPECT_EQ(RunFalconInfo("--record x " + good).Exit, 2);
  EXPECT_EQ(RunFalconInfo(good).Exit, 0);
  EXPECT_EQ(RunFalconInfo(bad).Exit, 1);
  EXPECT_EQ(RunFalconInfo(good + " > /dev/full").Exit, 1);
}

TEST_F(FalconInfoProgram, FailureStopsNoOtherPath) {
  const std::string good = Write("a.cfg", "set g_nF1TeamUiFreq 1\n").string();
  const std::string bad = Write("b.cam", "broken").string();
  const std::string missing = (folder / "missing").string();
  const Ran ran = RunFalconInfo(bad + " " + missing + " " + good + " " + folder.Path().string());
  EXPECT_EQ(ran.Exit, 1);
  const Report report(ran.Out);
  ASSERT_EQ(report.Size(""), 4u);
  EXPECT_EQ(report.Text("0/file"), bad);
  EXPECT_THAT(report.Text("0/error"), HasSubstr("b.cam"));
  EXPECT_EQ(report.Text("1/file"), missing);
  EXPECT_TRUE(report.Has("1/error"));
  EXPECT_EQ(report.Text("2/f1"), "1");
  EXPECT_EQ(report.Text("3/kind"), "campaigns");
  EXPECT_EQ(report.Text("3/campaigns/0/file"), bad);
}

TEST_F(FalconInfoProgram, WhatIsNothingKnownIsTold) {
  Write("folder/letter.txt", "hello");
  EXPECT_THAT(Tell("folder").Text("error"), HasSubstr("nothing"));
  EXPECT_THAT(Tell("folder/letter.txt").Text("error"), HasSubstr("letter.txt is no file"));
  EXPECT_EQ(failures, 1u);
  Write("folder/empty.bml", "");
  EXPECT_TRUE(Tell("folder/empty.bml").Has("error"));
}

TEST_F(FalconInfoProgram, FolderOfNoKindTellsTheFilesThatAreKnown) {
  Write("mixed/letter.txt", "hello");
  Write("mixed/a.cfg", "set g_nF1TeamUiFreq 1\n");
  Write("mixed/theater.lst", "gone.tdf\n");
  const Report report = Tell("mixed");
  EXPECT_EQ(report.Text("kind"), "folder");
  ASSERT_EQ(report.Size("files"), 2u);
  EXPECT_EQ(report.Text("files/0/f1"), "1");
  EXPECT_EQ(report.Text("files/1/kind"), "theater list");
  EXPECT_EQ(failures, 0u);
}

TEST_F(FalconInfoProgram, FilesCutAnywhereAreErrors) {
  const auto [table, posts] = BlockFiles({});
  Write("theater.O2", table);
  Write("Theater.map", TerrainMapBytes({}));
  const std::vector<std::pair<std::string, std::string>> files = {
      {"a.cam", WorldBytes(SmallWorld())},
      {"Falcon4.ct", SmallClassTable()},
      {"Falcon4.OCD", SmallObjectiveClasses()},
      {"Falcon4.FED", SmallFeatures()},
      {"Falcon4.FCD", SmallFeatureClasses()},
      {"Falcon4.PHD", SmallHeaders()},
      {"Falcon4.PD", TableOf(SmallPoints(), PointRecord)},
      {"theater.L2", posts},
      {"a.thr", GroundCoverBytes(5, 7, [](int x, int y) { return static_cast<unsigned>(x + y); })},
      {"texture.bin", TileSetsBytes({{.Kind = 1, .Tiles = {{1, 1}}}})},
      {"KoreaObj.HDR", DirectoryBytes(TwoModels())},
      {"a.bml", SmallBml().File()},
  };
  for (const auto& [name, bytes] : files) {
    Write(name, bytes);
    EXPECT_FALSE(Tell(name).Has("error")) << name << Tell(name).Printed();
    const std::size_t step = bytes.size() / 60 + 1;
    for (std::size_t length = 0; length < bytes.size(); length += step) {
      Write(name, bytes.substr(0, length));
      const Report report = Tell(name);
      EXPECT_TRUE(report.Has("error")) << name << " cut to " << length;
      EXPECT_EQ(failures, 1u);
    }
    fs::remove(folder / name);
  }
}

}  // namespace
}  // namespace kestrel::test
