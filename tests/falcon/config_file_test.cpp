#include "falcon/config_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "base/temp_folder.h"
#include "falcon/failure_text.h"

namespace kestrel::falcon {
namespace {

namespace fs = std::filesystem;
using test::FailureOf;
using test::ReadBytes;
using test::TempFolder;
using test::WriteBytes;

/// What ParseSetLine makes of a line: "name|value", "none" when it is no statement.
std::string Parsed(std::string_view line) {
  std::string name, value;
  return ParseSetLine(line, name, value) ? name + "|" + value : "none";
}

class ConfigFile : public testing::Test {
 protected:
  /// The file after team 1 has got `value` in a file of `bytes`.
  std::string After(std::string_view bytes, std::string_view value, bool isF1 = true) {
    WriteBytes(file, bytes);
    WriteCfgValue(file, isF1, value);
    return ReadBytes(file);
  }
  std::string Read(std::string_view bytes, bool isF1 = true) {
    WriteBytes(file, bytes);
    return ReadCfgValue(file, isF1);
  }
  std::size_t Files() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()));
  }

  TempFolder folder;
  fs::path file = folder / "Falcon BMS.cfg";
  fs::path backup = folder / "Falcon BMS.cfg_backup";
};

TEST_F(ConfigFile, StatementIsSetNameAndValue) {
  EXPECT_EQ(Parsed("set g_nF1TeamUiFreq 339750      // Frequency"), "g_nF1TeamUiFreq|339750");
  EXPECT_EQ(Parsed("SeT name 1 2"), "name|1 2") << "the value is the rest";
  EXPECT_EQ(Parsed("set name \t 1\t\t // tabs"), "name|1");
  EXPECT_EQ(Parsed("set name \"a//b\""), "name|\"a") << "a comment begins in quotes as well";
  EXPECT_EQ(Parsed("set name "), "name|");
  EXPECT_EQ(Parsed("set name// x"), "none");
  EXPECT_EQ(Parsed("set name"), "none");
  EXPECT_EQ(Parsed("set"), "none");
  EXPECT_EQ(Parsed("set "), "none");
  EXPECT_EQ(Parsed(""), "none");
  EXPECT_EQ(Parsed("    "), "none");
  EXPECT_EQ(Parsed("// set name 1"), "none");
  EXPECT_EQ(Parsed("/ set name 1"), "none");
  EXPECT_EQ(Parsed(" set name 1"), "none") << "an indented statement is none";
  EXPECT_EQ(Parsed("set\tname 1"), "none");
  EXPECT_EQ(Parsed("set  name"), "none") << "the blank that ends the name is the next one behind its first character";
  EXPECT_EQ(Parsed("set  name 1"), " name|1");
  EXPECT_EQ(Parsed("settle name 1"), "none");
  EXPECT_EQ(Parsed("set name\t1"), "none") << "only a blank ends the name";
}

TEST_F(ConfigFile, LastStatementOfTheNameWins) {
  EXPECT_EQ(Read("set g_nF1TeamUiFreq 1\nset g_nF2TeamUiFreq 2\r\nset g_nF1TeamUiFreq 3\n"), "3");
  EXPECT_EQ(Read("set g_nF1TeamUiFreq 1\nset g_nF2TeamUiFreq 2", false), "2") << "the last line has no end";
  EXPECT_EQ(Read("set g_nF1TeamUiFreq 1\nset g_nF1TeamUiFreq \n"), "") << "an empty one wins as well";
  EXPECT_EQ(Read("set g_nf1teamuifreq 1\nset g_nF1TeamUiFreqs 2\n// set g_nF1TeamUiFreq 3\n"), "");
  EXPECT_EQ(Read("set g_nF1TeamUiFreq 1\rset g_nF2TeamUiFreq 2\r"), "1") << "a CR alone ends a line";
  EXPECT_EQ(Read(""), "");
}

TEST_F(ConfigFile, FileWithoutEndsIsReadAsFarAsItGoes) {
  const std::string whole = "set g_nF1TeamUiFreq 123 // 9";
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    // "set g_nF1TeamUiFreq " has 20 characters, the value three.
    const std::string wanted = length <= 20 ? "" : std::string("123").substr(0, length - 20);
    // A comment of one "/" alone is none yet.
    EXPECT_EQ(Read(whole.substr(0, length)), length == 25 ? "123 /" : wanted) << length;
  }
}

TEST_F(ConfigFile, ValueIsReplacedInTheWholeLine) {
  EXPECT_EQ(After("set g_nF1TeamUiFreq 123 // old 123\r\n", "456"), "set g_nF1TeamUiFreq 456 // old 456\r\n");
  EXPECT_EQ(ReadCfgValue(file, true), "456");
}

TEST_F(ConfigFile, NameOfTheStatementIsNeverTouched) {
  EXPECT_EQ(After("set g_nF1TeamUiFreq 1 // F1, 11\n", "27"), "set g_nF1TeamUiFreq 27 // F27, 2727\n");
  EXPECT_EQ(After("set g_nF2TeamUiFreq e // e\n", "", false), "set g_nF2TeamUiFreq  // \n");
}

TEST_F(ConfigFile, EveryOtherByteStays) {
  const std::string before =
      "\xEF\xBB\xBF// head\r\n\r\nset a 1\t\n\xE9\x81 set g_nF1TeamUiFreq 5\n\r"
      "SET g_nF1TeamUiFreq \t5\t// tab\rset g_nF2TeamUiFreq 5\n  ";
  const std::string after =
      "\xEF\xBB\xBF// head\r\n\r\nset a 1\t\n\xE9\x81 set g_nF1TeamUiFreq 5\n\r"
      "SET g_nF1TeamUiFreq \t66\t// tab\rset g_nF2TeamUiFreq 5\n  ";
  EXPECT_EQ(After(before, "66"), after);
}

TEST_F(ConfigFile, EachStatementLosesItsOwnValue) {
  EXPECT_EQ(After("set g_nF1TeamUiFreq 1\nset g_nF1TeamUiFreq 22\n", "22000"),
            "set g_nF1TeamUiFreq 22000\nset g_nF1TeamUiFreq 22000\n");
}

TEST_F(ConfigFile, EmptyValueLeavesTheLine) {
  EXPECT_EQ(After("set g_nF1TeamUiFreq  // none\n", "456"), "set g_nF1TeamUiFreq  // none\n");
}

TEST_F(ConfigFile, MissingStatementIsAddedOnce) {
  const std::string added =
      "set g_nF1TeamUiFreq 339750 //Added by KESTREL - Frequency for F1 UI voice comms (for Force on Force type "
      "missions).";
  EXPECT_EQ(After("// set g_nF1TeamUiFreq 1\r\n", "339750"), "// set g_nF1TeamUiFreq 1\r\n" + added + "\r\n");
  WriteCfgValue(file, true, "1234");
  // The value does not occur in the comment.
  EXPECT_EQ(ReadBytes(file),
            "// set g_nF1TeamUiFreq 1\r\n"
            "set g_nF1TeamUiFreq 1234 //Added by KESTREL - Frequency for F1 UI voice comms (for Force on Force type "
            "missions).\r\n");
  EXPECT_EQ(After("", "339750"), added + "\r\n");
  EXPECT_EQ(After("set a 1", "339750"), "set a 1\r\n" + added + "\r\n");
  EXPECT_EQ(After("set a 1\nset b 2", "339750"), "set a 1\nset b 2\n" + added + "\n");
  EXPECT_EQ(After("\n", "1", false),
            "\nset g_nF2TeamUiFreq 1 //Added by KESTREL - Frequency for F2 UI voice comms (for Force on Force type "
            "missions).\n");
}

TEST_F(ConfigFile, ValueStaysOnItsLine) {
  EXPECT_EQ(After("set g_nF1TeamUiFreq 1\n", std::string_view("2\r\n3\0", 5)), "set g_nF1TeamUiFreq 2  3 \n");
}

TEST_F(ConfigFile, BackupKeepsTheStateBeforeTheFirstSave) {
  const std::string before = "set g_nF1TeamUiFreq 1\n";
  After(before, "2");
  EXPECT_EQ(ReadBytes(backup), before);
  WriteCfgValue(file, true, "3");
  EXPECT_EQ(ReadBytes(file), "set g_nF1TeamUiFreq 3\n");
  EXPECT_EQ(ReadBytes(backup), before);
  EXPECT_EQ(Files(), 2U) << "no neighbour is left";
}

TEST_F(ConfigFile, WhatCannotBeWrittenStays) {
  const std::string before = "set g_nF1TeamUiFreq 1\n";
  WriteBytes(file, before);
  fs::permissions(file, fs::perms::owner_read);
  EXPECT_EQ(FailureOf([&] { WriteCfgValue(file, true, "2"); }), "Falcon BMS.cfg: it is write-protected");
  EXPECT_EQ(ReadBytes(file), before);
  EXPECT_EQ(Files(), 1U) << "nor is a backup left";
  fs::permissions(file, fs::perms::owner_all);

  fs::create_directory(folder / "Falcon BMS.cfg.new");  // where the neighbour would stand
  EXPECT_EQ(FailureOf([&] { WriteCfgValue(file, true, "2"); }), "Falcon BMS.cfg cannot be written");
  EXPECT_EQ(ReadBytes(file), before);
  EXPECT_EQ(Files(), 2U);
  fs::remove(folder / "Falcon BMS.cfg.new");

  fs::create_directory(folder / "Falcon BMS.cfg_backup.new");
  EXPECT_EQ(FailureOf([&] { WriteCfgValue(file, true, "2"); }), "Falcon BMS.cfg_backup cannot be written");
  EXPECT_EQ(ReadBytes(file), before) << "without a backup nothing is written";
  EXPECT_EQ(Files(), 2U);
}

#ifndef _WIN32
TEST_F(ConfigFile, BackupOfASaveThatFailsGoesAgain) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser can own a file that another one may not replace";
  const std::string before = "set g_nF1TeamUiFreq 1\n";
  WriteBytes(file, before);
  fs::permissions(file, fs::perms(0666));
  fs::permissions(folder.Path(), fs::perms(01777));  // files are replaced by their owner alone
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t nobody = 65534;
    if (setuid(nobody) != 0) _exit(2);
    _exit(FailureOf([&] { WriteCfgValue(file, true, "2"); }) == "Falcon BMS.cfg cannot be written" ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(ReadBytes(file), before);
  EXPECT_EQ(Files(), 1U);
}
#endif

TEST_F(ConfigFile, MissingFileIsAFailure) {
  EXPECT_EQ(FailureOf([&] { ReadCfgValue(file, true); }), "Falcon BMS.cfg is no file");
  EXPECT_EQ(FailureOf([&] { WriteCfgValue(file, true, "1"); }), "Falcon BMS.cfg is no file");
  EXPECT_EQ(Files(), 0U);
}

TEST_F(ConfigFile, OwnLinesOfThePersonAreFound) {
  EXPECT_FALSE(SetsCfgValue(file, true)) << "a missing file";
  WriteBytes(file, "set g_nF1TeamUiFreq \n// set g_nF2TeamUiFreq 2\n");
  EXPECT_TRUE(SetsCfgValue(file, true));
  EXPECT_FALSE(SetsCfgValue(file, false));
}

}  // namespace
}  // namespace kestrel::falcon
