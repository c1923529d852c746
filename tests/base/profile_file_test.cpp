#include "base/profile_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "temp_folder.h"

namespace kestrel::base {
namespace {

using namespace std::string_literals;

struct Reading {
  std::string Text;
  std::string Value;  ///< of KEY in S, "default" being the default
};

TEST(ProfileFile, ValuesAreReadAsTheProfileInterfaceDoes) {
  const Reading cases[] = {
      {"", "default"},
      {"[S]\r\nKEY=value\r\n", "value"},
      {"[S]\nKEY=value", "value"},
      {"[s]\nkey=value\n", "value"},
      {"[ S ]\n \tKey\t = \t a value \t\n", "a value"},
      {"  [S] ; comment\nKEY=value\n", "value"},
      {"[S]rest]\nKEY=value\n", "value"},
      {"[S\nKEY=value\n", "value"},
      {"[S]\nKEY=\n", "default"},
      {"[S]\nKEY= \t \n", "default"},
      {"[S]\nKEY=\"\"\n", "default"},
      {"[S]\nKEY=''\n", "default"},
      {"[S]\nKEY\n", "default"},
      {"[S]\n=value\n", "default"},
      {"[S]\n;KEY=comment\nKEY=value\n", "value"},
      {"[S]\n  ;KEY=comment\n", "default"},
      {"[S]\nKEY=value;no comment\n", "value;no comment"},
      {"[S]\nKEY=a=b=c\n", "a=b=c"},
      {"[S]\nKEY=\"quoted\"\n", "quoted"},
      {"[S]\nKEY='quoted'\n", "quoted"},
      {"[S]\nKEY=\"  kept  \"\n", "  kept  "},
      {"[S]\nKEY=\"\"twice\"\"\n", "\"twice\""},
      {"[S]\nKEY=\"open\n", "\"open"},
      {"[S]\nKEY=\"mixed'\n", "\"mixed'"},
      {"[S]\nKEY=\"\n", "\""},
      {"[S]\nKEY=first\nKEY=second\n", "first"},
      {"[S]\nKEY=first\n[T]\nKEY=other\n[S]\nKEY=second\n", "first"},
      {"[S]\nA=1\n[S]\nKEY=second\n", "default"},
      {"KEY=nowhere\n[T]\nKEY=other\n", "default"},
      {"\"banner [S] KEY=value\"\r\n[S]\r\nKEY=value\r\n", "value"},
      {"[S]\n\"KEY=banner\"\nKEY=value\n", "value"},
      {"\n\n[S]\n\n\nunknown\n\nKEY=value\n", "value"},
      {"[S]\nKEY=a\rb\n", "a\rb"},
      {"[S]\nKEY=\xE4\xFF\x80\n", "\xE4\xFF\x80"},
      {"[S]\n\0\0\nKEY=value\n\0"s, "value"},
  };
  for (const Reading& reading : cases) {
    EXPECT_EQ(ProfileFile(reading.Text).ReadIniValue("S", "KEY", "default"), reading.Value) << reading.Text;
  }
}

TEST(ProfileFile, NamesAreMatchedWithoutCase) {
  ProfileFile file;
  file.WriteIniValue("Options", "Foo", "1");
  EXPECT_EQ(file.ReadIniValue("OPTIONS", "FOO", ""), "1");
  EXPECT_EQ(file.ReadIniValue("options", "foo", ""), "1");
  EXPECT_TRUE(file.HasSection("oPTIONS"));
  EXPECT_FALSE(file.HasSection("OPTION"));
  file.WriteIniValue("OPTIONS", "FOO", "2");
  EXPECT_EQ(file.Text(), "[Options]\r\nFoo=2\r\n");
}

TEST(ProfileFile, AKeyIsThereWithoutAValueToo) {
  const ProfileFile file("[S]\nFull=1\nEmpty=\n;Off=1\nno key\n[S]\nSecond=1\n");
  EXPECT_TRUE(file.HasKey("s", " FULL "));
  EXPECT_TRUE(file.HasKey("S", "empty"));
  for (const char* key : {"", "Off", ";Off", "no key", "Second", "Other"}) EXPECT_FALSE(file.HasKey("S", key)) << key;
  EXPECT_FALSE(file.HasKey("T", "Full"));
}

TEST(ProfileFile, ValuesAreCutAt749Characters) {
  for (const std::size_t length : {748u, 749u, 750u, 751u, 5000u}) {
    const ProfileFile file("[S]\nKEY=" + std::string(length, 'x') + "\n");
    EXPECT_EQ(file.ReadIniValue("S", "KEY", "").size(), std::min<std::size_t>(length, 749)) << length;
  }
  const ProfileFile quoted("[S]\nKEY=\"" + std::string(749, 'x') + "\"\n");
  EXPECT_EQ(quoted.ReadIniValue("S", "KEY", ""), std::string(749, 'x'));
}

TEST(ProfileFile, ALongValueIsKeptWholeInTheFile) {
  const std::string text = "[S]\r\nKEY=" + std::string(2000, 'x') + "\r\n";
  EXPECT_EQ(ProfileFile(text).Text(), text);
}

TEST(ProfileFile, WritingReplacesInPlaceAndKeepsTheRest) {
  ProfileFile file(
      "\"KESTREL v1.0.0 Main INI File\"\r\n; note\r\n[A]\r\nONE=1\r\n; of two\r\nTwo = "
      "2\r\nunknown\r\n\r\n[B]\r\nONE=b\r\n");
  file.WriteIniValue("a", "TWO", "22");
  file.WriteIniValue("A", "THREE", "3");
  file.WriteIniValue("C", "NEW", "4");
  EXPECT_EQ(
      file.Text(),
      "\"KESTREL v1.0.0 Main INI File\"\r\n; note\r\n[A]\r\nONE=1\r\n; of two\r\nTwo=22\r\nunknown\r\nTHREE=3\r\n\r\n"
      "[B]\r\nONE=b\r\n[C]\r\nNEW=4\r\n");
}

TEST(ProfileFile, WritingMeetsTheFirstSectionAndTheFirstKey) {
  ProfileFile file("[S]\nK=1\nK=2\n[S]\nK=3\n");
  file.WriteIniValue("S", "K", "9");
  file.WriteIniValue("S", "L", "8");
  EXPECT_EQ(file.Text(), "[S]\r\nK=9\r\nK=2\r\nL=8\r\n[S]\r\nK=3\r\n");
}

TEST(ProfileFile, TheBannerIsLine1AndIgnored) {
  ProfileFile file;
  file.AppendLine("\"KESTREL v1.0.0 Main INI File\"");
  file.WriteIniValue("LOG", "DEBUG", "0");
  EXPECT_EQ(file.Text(), "\"KESTREL v1.0.0 Main INI File\"\r\n[LOG]\r\nDEBUG=0\r\n");
  EXPECT_EQ(ProfileFile(file.Text()).ReadIniValue("LOG", "DEBUG", ""), "0");
}

TEST(ProfileFile, ABannerWithAnEqualsSignIsNoKey) {
  const std::string text = "\"KEY=1, [S]\"\r\n[S]\r\n\"KEY=2\"\r\n";
  ProfileFile file(text);
  // The text before "=" would be the key.
  EXPECT_EQ(file.ReadIniValue("S", "\"KEY", "default"), "default");
  EXPECT_EQ(file.ReadIniValue("", "\"KEY", "default"), "default");
  EXPECT_EQ(file.ReadIniValue("S", "KEY", "default"), "default");
  file.WriteIniValue("S", "KEY", "3");
  EXPECT_EQ(file.Text(), text + "KEY=3\r\n");
}

TEST(ProfileFile, BlankLinesStayAtTheEndOfTheirSection) {
  ProfileFile file("[A]\nONE=1\n\n \t\nTWO=2\n\n  \n[B]\n\n\n");
  file.WriteIniValue("A", "THREE", "3");
  file.WriteIniValue("B", "FOUR", "4");
  file.WriteIniValue("B", "FIVE", "5");
  EXPECT_EQ(file.Text(),
            "[A]\r\nONE=1\r\n\r\n \t\r\nTWO=2\r\nTHREE=3\r\n\r\n  \r\n[B]\r\nFOUR=4\r\nFIVE=5\r\n\r\n\r\n");
  file.AppendLine("SIX=6");
  EXPECT_TRUE(file.Text().ends_with("FIVE=5\r\n\r\n\r\nSIX=6\r\n"));
  EXPECT_EQ(file.ReadIniValue("B", "SIX", ""), "6");
}

TEST(ProfileFile, ALineWrittenIsFoundAsIfItHadBeenRead) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  ProfileFile file("[S]\nK3=a\nk3=b\n\n[T]\nK1=c\n[s]\nK1=d\n");
  for (int step = 0; step < 300; ++step) {
    const std::string section(1, "SsTtU"[random() % 5]);
    const std::string key = (random() % 2 ? "k" : "K") + std::to_string(random() % 40);
    file.WriteIniValue(section, key, std::to_string(step));
    ASSERT_EQ(file.ReadIniValue(section, key, ""), std::to_string(step));
    const ProfileFile again(file.Text());
    for (const char* each : {"S", "T", "U"}) {
      for (int n = 0; n < 40; ++n) {
        const std::string asked = "K" + std::to_string(n);
        ASSERT_EQ(file.ReadIniValue(each, asked, "none"), again.ReadIniValue(each, asked, "none"));
      }
    }
  }
}

TEST(ProfileFile, NoKeyIsLookedForLineByLine) {
  // A walk over the lines for each key would not end within the test's limit: 10^11 lines.
  constexpr int Keys = 300'000;
  std::string text = "[S]\n";
  for (int n = 0; n < Keys; ++n) text += "KEY" + std::to_string(n) + "=1\n";
  text.append(Keys, '\n');
  ProfileFile file(text);
  for (int n = 0; n < Keys; ++n) {
    const std::string number = std::to_string(n);
    ASSERT_EQ(file.ReadIniValue("S", "KEY" + number, ""), "1");
    ASSERT_EQ(file.ReadIniValue("S", "MISSING" + number, "none"), "none");
    file.WriteIniValue("S", "KEY" + number, "2");
    file.WriteIniValue("S", "NEW" + number, "3");
  }
  EXPECT_EQ(file.ReadIniValue("S", "NEW299999", ""), "3");
}

/// `text` in units of two bytes behind their byte order mark.
std::string Wide(std::u16string_view text, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : u"\uFEFF" + std::u16string(text)) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

TEST(ProfileFile, ASectionIsReadInAnyOrderOfItsKeys) {
  const ProfileFile file("[A]\nX=1\n;X=9\n y = 2 \nZ=\n[B]\nX=3\n");
  auto section = file.Open("a");
  EXPECT_TRUE(section.IsThere());
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(section.Value("x"), "1");
    EXPECT_EQ(section.Value("Y"), "2");
    EXPECT_EQ(section.Value("Z", "none"), "none") << "empty";
    EXPECT_EQ(section.Value("W", "none"), "none") << "missing";
    EXPECT_EQ(section.Value(" Y "), "2");
    EXPECT_EQ(section.Value("X"), "1");
  }
  EXPECT_TRUE(section.HasKey("z"));
  EXPECT_FALSE(section.HasKey("W"));
  EXPECT_FALSE(section.HasKey(";X"));
  EXPECT_EQ(file.SectionCount(), 2u);
}

TEST(ProfileFile, OfKeysThatRepeatASectionGivesTheFirstAlsoInTheirOrder) {
  const ProfileFile file("[A]\nX=1\nX=2\nY=3\nx=4\n");
  auto section = file.Open("A");
  EXPECT_EQ(section.Value("X"), "1");
  EXPECT_EQ(section.Value("X"), "1");
  EXPECT_EQ(section.Value("Y"), "3");
  EXPECT_EQ(section.Value("x"), "1");
}

TEST(ProfileFile, AMissingSectionHasNoKeys) {
  const ProfileFile file("X=1\n[A]\n");
  auto section = file.Open("B");
  EXPECT_FALSE(section.IsThere());
  EXPECT_FALSE(section.HasKey("X"));
  EXPECT_EQ(section.Value("X", "none"), "none");
  EXPECT_FALSE(file.HasSection("")) << "what stands before the first header is no section";
}

TEST(ProfileFile, ASectionWithoutANameIsOne) {
  ProfileFile file("[]\nX=1\n");
  EXPECT_EQ(file.ReadIniValue("", "X", ""), "1");
  file.WriteIniValue("", "X", "2");
  EXPECT_EQ(file.Text(), "[]\r\nX=2\r\n");
}

TEST(ProfileFile, ASectionOfAnotherFileIsCopiedAsItStands) {
  ProfileFile file("[A]\r\nX=1\r\n");
  {
    const ProfileFile other("[B]\r\nX=0\r\n [ two ] rest\r\n; said\r\n KEY = v \r\nodd\r\n\r\n\r\n[Two]\r\nKEY=w\r\n");
    file.CopySection(other, "TWO");
    file.CopySection(other, "missing");
  }
  EXPECT_EQ(file.Text(), "[A]\r\nX=1\r\n [ two ] rest\r\n; said\r\n KEY = v \r\nodd\r\n\r\n\r\n");
  EXPECT_EQ(file.ReadIniValue("two", "key", ""), "v");
  file.WriteIniValue("Two", "KEY", "x");
  EXPECT_EQ(file.ReadIniValue("two", "key", ""), "x");
}

TEST(ProfileFile, ACopyKeepsItsTextsWhenTheOtherIsGone) {
  ProfileFile copy;
  {
    ProfileFile file("[A]\nX=1\n");
    file.WriteIniValue("A", "A long name of a key", std::string(100, 'v'));
    copy = file;
    file.WriteIniValue("A", "X", "2");
    file = {};
  }
  copy.WriteIniValue("B", "Y", "3");
  EXPECT_EQ(copy.Text(), "[A]\r\nX=1\r\nA long name of a key=" + std::string(100, 'v') + "\r\n[B]\r\nY=3\r\n");
}

TEST(ProfileFile, WideTextIsReadByItsByteOrderMark) {
  for (const bool bigEndian : {false, true}) {
    // A Cyrillic letter and a character of two units are not in the code page.
    const std::string bytes = Wide(u"\"Banner\"\r\n[S]\r\nKEY=caf\u00E9 \u0416 \U0001F600!\r\n", bigEndian);
    EXPECT_EQ(ProfileFile(bytes).ReadIniValue("S", "KEY", ""), "caf\xE9 ? ?!");
    EXPECT_EQ(ProfileFile(bytes).Text(), "\"Banner\"\r\n[S]\r\nKEY=caf\xE9 ? ?!\r\n");
    EXPECT_EQ(ProfileFile(bytes + "\n").ReadIniValue("S", "KEY", ""), "caf\xE9 ? ?!") << "half a character";
  }
  EXPECT_EQ(ProfileFile("\xFF\xFE"s).Text(), "");
  EXPECT_EQ(ProfileFile("\xFE\xFF"s).Text(), "");
  EXPECT_EQ(ProfileFile("\xFF\n[S]\nKEY=1\n"s).ReadIniValue("S", "KEY", ""), "1") << "no mark";
}

TEST(ProfileFile, ValuesComeBackAsHeld) {
  for (const std::string& value :
       {""s, "plain"s, "\""s, "'"s, "'\""s, "a \"b\" c"s, "a=b"s, ";c"s, "[d]"s, "\xFF\x80"s, std::string(749, 'z')}) {
    ProfileFile file;
    file.WriteIniValue("S", "BEFORE", "1");
    file.WriteIniValue("S", "KEY", value);
    file.WriteIniValue("S", "AFTER", "2");
    const ProfileFile again(file.Text());
    EXPECT_EQ(again.ReadIniValue("S", "KEY", ""), value);
    EXPECT_EQ(file.ReadIniValue("S", "KEY", ""), value);
    EXPECT_EQ(again.ReadIniValue("S", "AFTER", ""), "2");
    EXPECT_EQ(again.Text(), file.Text());
  }
}

TEST(ProfileFile, ValuesAreWrittenAsTheyStandAndLoseWhatReadingDrops) {
  const std::pair<std::string, std::string> cases[] = {
      {" led", "led"},        {"trailed ", "trailed"}, {"\ttab\t", "tab"}, {"\"quoted\"", "quoted"},
      {"'quoted'", "quoted"}, {" \" x \" ", " x "},    {" ", ""},          {"\"\"", ""},
  };
  for (const auto& [value, read] : cases) {
    ProfileFile file;
    file.WriteIniValue("S", "KEY", value);
    EXPECT_EQ(file.Text(), "[S]\r\nKEY=" + value + "\r\n");
    EXPECT_EQ(file.ReadIniValue("S", "KEY", ""), read);
    EXPECT_EQ(ProfileFile(file.Text()).ReadIniValue("S", "KEY", ""), read);
  }
}

TEST(ProfileFile, APlainValueIsWrittenAsHeld) {
  ProfileFile file;
  file.WriteIniValue("MAP", "PIC", "My \"big\" map.gif");
  EXPECT_EQ(file.Text(), "[MAP]\r\nPIC=My \"big\" map.gif\r\n");
}

TEST(ProfileFile, LineEndsAndNulsInAValueBecomeBlanks) {
  ProfileFile file;
  file.WriteIniValue("S", "KEY", "a\r\n[T]\nEVIL=1\0b"s);
  EXPECT_EQ(file.Text(), "[S]\r\nKEY=a  [T] EVIL=1 b\r\n");
}

TEST(ProfileFile, NamesThatTheFileCannotHoldAreRefused) {
  ProfileFile file;
  for (const char* key : {"", " ", ";K", "[K", "\"K", "K=L", "K\nL", "K\rL"}) {
    EXPECT_THROW(file.WriteIniValue("S", key, "1"), RuntimeFailure) << key;
  }
  for (const char* section : {"S]", "S\nT"}) {
    EXPECT_THROW(file.WriteIniValue(section, "K", "1"), RuntimeFailure) << section;
  }
  EXPECT_EQ(file.Text(), "");
}

TEST(ProfileFile, LoadingAMissingFileGivesAnEmptyProfile) {
  const test::TempFolder folder;
  const ProfileFile file = ProfileFile::Load(folder / "missing.ini");
  EXPECT_EQ(file.ReadIniValue("OPTIONS", "connport", "5556"), "5556");
  EXPECT_EQ(ProfileFile::Load(folder / "missing/missing.ini").Text(), "");
}

TEST(ProfileFile, LoadingTakesEmptyAndBinaryFiles) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "empty.ini", "");
  EXPECT_EQ(ProfileFile::Load(folder / "empty.ini").Text(), "");
  std::mt19937 random(1);
  std::string binary;
  for (int i = 0; i < 100000; ++i) binary += static_cast<char>(random());
  test::WriteBytes(folder / "binary.ini", binary + "\n[S]\nKEY=found\n");
  EXPECT_EQ(ProfileFile::Load(folder / "binary.ini").ReadIniValue("S", "KEY", ""), "found");
}

TEST(ProfileFile, LoadingRefusesHugeFilesAndFolders) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "huge.ini", std::string(MaxTextFileBytes + 1, '\n'));
  EXPECT_THROW(ProfileFile::Load(folder / "huge.ini"), RuntimeFailure);
  EXPECT_THROW(ProfileFile::Load(folder.Path()), RuntimeFailure);
}

TEST(ProfileFile, SavedFilesAreLoadedAgain) {
  const test::TempFolder folder;
  ProfileFile file;
  file.WriteIniValue("S", "KEY", "value");
  file.Save(folder / "a.ini");
  EXPECT_EQ(test::ReadBytes(folder / "a.ini"), "[S]\r\nKEY=value\r\n");
  EXPECT_EQ(ProfileFile::Load(folder / "a.ini").Text(), file.Text());
}

TEST(ProfileFile, ManySectionsAreAllFoundAgain) {
  constexpr int sections = 20000;
  ProfileFile file;
  for (int n = 1; n <= sections; ++n) file.WriteIniValue("BULLS" + std::to_string(n), "Y", std::to_string(n));
  const ProfileFile again(file.Text());
  for (int n = 1; n <= sections; ++n) {
    ASSERT_EQ(again.ReadIniValue("BULLS" + std::to_string(n), "Y", ""), std::to_string(n));
  }
}

}  // namespace
}  // namespace kestrel::base
