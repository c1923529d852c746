#include "falcon/theater_definition.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

namespace kestrel::falcon {
namespace {

using testing::ElementsAre;

TEST(TheaterDefinition, KeysOfAnyCaseAndIndentAreRead) {
  const TheaterDefinition read = ReadTheaterDefinition(
      "# Korean TDF file\r\n"
      " \r\n"
      "NAME Korea 80s (UOAF) [2]\r\n"
      " simdatadir   Add-On\\Sim  \r\n"
      "CampaignDir\tAdd-On/Campaign\r\n"
      "# terraindir Add-On\r\n"
      "mintacan 70\r\n"
      "doubleres2dmap 1\r\n"
      "3ddatadir Terrdata\\objects");
  EXPECT_EQ(read.Name, "Korea 80s (UOAF) [2]");
  EXPECT_EQ(read.SimDataDir, "Add-On\\Sim");
  EXPECT_EQ(read.CampaignDir, "Add-On/Campaign");
  EXPECT_EQ(read.TerrainDir, "") << "what is not told is empty";
  EXPECT_EQ(read.MinTacan, 70);
  EXPECT_EQ(read.ThreeDDataDir, "Terrdata\\objects") << "the last line has no end";
}

TEST(TheaterDefinition, EveryKeyHasAPlaceOfItsOwn) {
  std::string text;
  for (const DefinitionKey& key : DefinitionKeys())
    text += std::string(key.Word) + " of " + std::string(key.Word) + "\n";
  const TheaterDefinition read = ReadTheaterDefinition(text);
  for (const DefinitionKey& key : DefinitionKeys()) EXPECT_EQ(read.*key.Text, "of " + std::string(key.Word));
  EXPECT_EQ(DefinitionKeys().size(), 15U);
}

TEST(TheaterDefinition, KeyWithoutAValueIsEmpty) {
  EXPECT_EQ(ReadTheaterDefinition("name Korea\nname\n").Name, "");
  EXPECT_EQ(ReadTheaterDefinition("name").Name, "");
}

TEST(TheaterDefinition, WordsThatOnlyBeginLikeAKeyAreNone) {
  EXPECT_EQ(ReadTheaterDefinition("names Korea\nnam Korea").Name, "");
}

TEST(TheaterDefinition, NumberThatIsNoneIsZero) {
  for (const char* const value : {"", "x", "40000", "-40000", "1e300"}) {
    EXPECT_EQ(ReadTheaterDefinition("mintacan " + std::string(value)).MinTacan, 0) << value;
  }
}

TEST(TheaterDefinition, EitherEncodingGivesTheSame) {
  EXPECT_EQ(ReadTheaterDefinition("name Malm\xC3\xB6").Name, "Malm\xF6");
  EXPECT_EQ(ReadTheaterDefinition("name Malm\xF6").Name, "Malm\xF6");
  EXPECT_EQ(ReadTheaterDefinition("\xEF\xBB\xBFname Malm\xC3\xB6").Name, "Malm\xF6");
}

TEST(TheaterDefinition, CutAnywhereItIsReadAsFar) {
  const std::string whole = "name Korea\r\ncampaigndir Campaign\r\n";
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const TheaterDefinition read = ReadTheaterDefinition(whole.substr(0, length));
    EXPECT_EQ(std::string("Korea").rfind(read.Name, 0), 0U) << length;
    EXPECT_EQ(std::string("Campaign").rfind(read.CampaignDir, 0), 0U) << length;
  }
}

TEST(TheaterList, NamesItsDefinitions) {
  EXPECT_THAT(ReadTheaterList("# LIST OF ALL KNOWN THEATERS\r\n"
                              "Terrdata\\theaterdefinition\\Korea KTO.tdf\r\n"
                              "\r\n"
                              "  Add-On/Malm\xC3\xB6.tdf \r\n"
                              "Add-On HeliPack\\HeliPack.tdf"),
              ElementsAre("Terrdata\\theaterdefinition\\Korea KTO.tdf", "Add-On/Malm\xF6.tdf",
                          "Add-On HeliPack\\HeliPack.tdf"));
  EXPECT_THAT(ReadTheaterList(""), ElementsAre());
}

TEST(TheaterList, ListThatNamesItselfIsOneEmptyDefinition) {
  const std::string list = "theater.lst\nKorea.tdf\n";
  EXPECT_THAT(ReadTheaterList(list), ElementsAre("theater.lst", "Korea.tdf"));
  const TheaterDefinition read = ReadTheaterDefinition(list);
  for (const DefinitionKey& key : DefinitionKeys()) EXPECT_EQ(read.*key.Text, "") << key.Word;
}

}  // namespace
}  // namespace kestrel::falcon
