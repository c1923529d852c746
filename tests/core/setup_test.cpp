#include "core/setup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "base/failure.h"
#include "base/files.h"
#include "core/settings.h"
#include "core/setup_files.h"
#include "core/zip_reader.h"
#include "doubles/full_disk.h"
#include "made_zip.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A setup of one theater, "balkans", as it might come from elsewhere.
std::vector<test::ZipFile> OtherSetup() {
  return {
      {"KESTREL.ini", "[MAPS]\r\nTOTALMAPS=1\r\nMAP1=balkans.ini\r\nCURRENTMAP=1\r\n[OPTIONS]\r\nCONNPORT=7000\r\n"},
      {"FriendlyNames.ini", "Viper\r\n"},
      {"Theaters/balkans.ini", "[MAP]\r\nNAME=balkans\r\nPIC=balkans.bmp\r\nSIZE=512\r\nPICSIZE=4\r\n"},
      {"Theaters/balkans.bmp", TinyBmp(4)},
  };
}

class Setups : public testing::Test {
 protected:
  Setups() {
    WriteInstallation(folder);
    folder.Write("Theaters/korea_Areas.dat", "areas of korea");
    folder.Write("Theaters/balkans_Areas.rescue", "rescue of balkans");
    around.Shown.WhenShown = [this] {
      RunSteps(FrameLoadSteps(), around.All);
      RunSteps(MapLoadSteps(), around.All);
    };
    around.Shown.WhenUnloaded = [this] { RunSteps(MapUnloadSteps(), around.All); };
    zip = folder.Path / "a setup.zip";
    around.Desk.FileAnswers = {base::TextOfPath(zip)};
    around.Desk.SaveAnswers = {base::TextOfPath(zip)};
  }
  void PutZip(const std::vector<test::ZipFile>& files) const { folder.Write("a setup.zip", test::MadeZip(files)); }
  /// All files below the folder and what they hold.
  std::map<std::string, std::string> Everything() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Path)) {
      const std::string name = entry.path().lexically_relative(folder.Path).generic_string();
      if (entry.is_regular_file()) files[name] = folder.Read(name);
    }
    return files;
  }
  /// Loads the zip, which is refused with `words`, and nothing changes.
  void ExpectRefused(const std::string& words) {
    const auto before = Everything();
    around.Desk.Boxes.clear();
    around.Desk.FileAnswers = {base::TextOfPath(zip)};
    EXPECT_FALSE(LoadSetup(around.All));
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1)) << words;
    EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("The setup could not be loaded: "));
    EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr(words));
    EXPECT_EQ(Everything(), before);
    EXPECT_FALSE(folder.Has("setup.new"));
    EXPECT_FALSE(folder.Has("setup.part"));
  }

  ProgramFolder folder;
  Around around{folder.Path};
  fs::path zip;
};

TEST_F(Setups, ASetupIsSettingsAndTheatersWithTheirFiles) {
  theaters::Catalogue catalogue;
  theaters::Theater& theater = catalogue.Theaters.Append({});
  theater.TheaterFile = "Sub\\korea.ini";
  theater.Name = "korea";
  theater.Pic = "KOREA.BMP";
  theaters::Theater& odd = catalogue.Theaters.Append({});
  odd.TheaterFile = "../outside.ini";
  odd.Name = "b";
  odd.Pic = "program.exe";
  EXPECT_THAT(SetupFiles(catalogue),
              ElementsAre("KESTREL.ini", "common.ini", "FriendlyNames.ini", "DefFreq.ini", "Callsigns.ini",
                          "Theaters/Sub/korea.ini", "Theaters/KOREA.BMP", "Theaters/korea_Areas.dat",
                          "Theaters/korea_Elevation.dat", "Theaters/korea_ViewShort.dat",
                          "Theaters/korea_Frequencies.dat", "Theaters/b_Areas.dat", "Theaters/b_Elevation.dat",
                          "Theaters/b_ViewShort.dat", "Theaters/b_Frequencies.dat"));
}

TEST_F(Setups, ASavedSetupHoldsThePresentSettings) {
  fs::remove(folder.Path / "Theaters/korea_Areas.dat");  // those are no areas that can be read
  EXPECT_TRUE(Main(around.All));
  around.State.LinkOptions.CONNPORT = 6100;
  SaveSetup(around.All);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  const ZipReader reader(zip);
  std::vector<std::string> names;
  for (const ZipEntry& entry : reader.Entries()) names.push_back(entry.Name);
  EXPECT_THAT(names, testing::IsSupersetOf({"KESTREL.ini", "common.ini", "FriendlyNames.ini", "Theaters/korea.ini",
                                            "Theaters/korea.bmp", "Theaters/balkans.ini", "Theaters/balkans.bmp"}));
  EXPECT_THAT(reader.Text(reader.Entries()[0], 1 << 20), HasSubstr("CONNPORT=6100"));
  Close(around.All);
}

TEST_F(Setups, ASetupMovesToAnotherFolder) {
  fs::remove(folder.Path / "Theaters/korea_Areas.dat");  // those are no areas that can be read
  EXPECT_TRUE(Main(around.All));
  around.State.LinkOptions.CONNPORT = 6100;
  SaveSetup(around.All);
  Close(around.All);
  const ProgramFolder there;
  there.Write("update.txt", "DOCS=http://docs.example\r\n");
  there.Write("KESTREL.ini", "[MAPS]\r\nTOTALMAPS=1\r\nMAP1=own.ini\r\n");
  there.Write("Theaters/own.ini", "[MAP]\r\nNAME=own\r\nPIC=own.bmp\r\nSIZE=512\r\nPICSIZE=2\r\n");
  there.Write("Theaters/own.bmp", TinyBmp(2));
  {
    Around other(there.Path);
    other.Shown.WhenShown = [&other] { RunSteps(MapLoadSteps(), other.All); };
    EXPECT_TRUE(Main(other.All));
    other.Desk.FileAnswers = {base::TextOfPath(zip)};
    other.Desk.Answers = {base::Answer::Yes};
    EXPECT_TRUE(LoadSetup(other.All));
    Close(other.All);
  }
  Around next(there.Path);
  next.Shown.WhenShown = [&next] { RunSteps(MapLoadSteps(), next.All); };
  EXPECT_TRUE(Main(next.All));
  EXPECT_THAT(next.Desk.Boxes, IsEmpty());
  EXPECT_EQ(next.State.LinkOptions.CONNPORT, 6100);
  ASSERT_EQ(next.State.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_EQ(next.State.MapPicture.Width, 2);
  EXPECT_EQ(next.State.LinkOptions.FriendNames.UpperBound(), 3u);
  EXPECT_EQ(there.Read("Theaters/korea.bmp"), folder.Read("Theaters/korea.bmp"));
  EXPECT_EQ(there.Read("setup.old/Theaters/own.bmp"), TinyBmp(2));
  EXPECT_THAT(there.Read("setup.old/KESTREL.ini"), HasSubstr("MAP1=own.ini"));
  EXPECT_FALSE(there.Has("Theaters/own.bmp"));
  EXPECT_FALSE(there.Has("setup.new"));
}

TEST_F(Setups, TheFormerSetupIsKeptWhole) {
  const auto before = Everything();
  PutZip(OtherSetup());
  EXPECT_FALSE(LoadSetup(around.All)) << "answered with No";
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text,
            "The setup will be in use from the next start of the station. The present one is then kept in the folder "
            "setup.old.\n\nClose the station now?");
  EXPECT_EQ(folder.Read("KESTREL.ini"), before.at("KESTREL.ini")) << "until then nothing changes";
  folder.Write("setup.old.txt", "not of ours");
  TakeSetup(around.All);
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=7000"));
  EXPECT_EQ(folder.Read("Theaters/balkans.bmp"), TinyBmp(4));
  for (const auto& [name, bytes] : before) {
    if (name == "update.txt" || name == "a setup.zip") continue;
    EXPECT_EQ(folder.Read("setup.old/" + name), bytes) << name;
  }
  EXPECT_FALSE(folder.Has("Theaters/balkans_Areas.rescue")) << "it would be offered to the new theater";
  EXPECT_FALSE(folder.Has("common.ini")) << "the new setup has none";
  EXPECT_TRUE(folder.Has("update.txt")) << "it is the program's";
  TakeSetup(around.All);
  EXPECT_TRUE(folder.Has("setup.old")) << "there is nothing more to take";
}

TEST_F(Setups, AStartThatWasCutWhileItTookASetupGoesOn) {
  PutZip(OtherSetup());
  LoadSetup(around.All);
  // As a kill leaves it: all is moved away, two files are in place, the rest waits.
  fs::create_directories(folder.Path / "setup.new/old/Theaters");
  for (const char* name : {"KESTREL.ini", "common.ini", "FriendlyNames.ini", "Theaters/korea.ini", "Theaters/korea.bmp",
                           "Theaters/balkans.ini", "Theaters/balkans.bmp", "Theaters/korea_Areas.dat"}) {
    fs::rename(folder.Path / name, folder.Path / "setup.new/old" / name);
  }
  folder.Write("setup.new/moved", "");
  fs::rename(folder.Path / "setup.new/new/KESTREL.ini", folder.Path / "KESTREL.ini");
  fs::rename(folder.Path / "setup.new/new/FriendlyNames.ini", folder.Path / "FriendlyNames.ini");
  TakeSetup(around.All);
  EXPECT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=7000"));
  EXPECT_EQ(folder.Read("FriendlyNames.ini"), "Viper\r\n");
  EXPECT_EQ(folder.Read("Theaters/balkans.bmp"), TinyBmp(4));
  EXPECT_EQ(folder.Read("setup.old/Theaters/korea.bmp"), TinyBmp(2));
  EXPECT_EQ(folder.Read("setup.old/FriendlyNames.ini"), "Cowboy\r\n\r\n Falcon \r\n");
  EXPECT_FALSE(folder.Has("setup.new"));
}

TEST_F(Setups, WhatCannotBePutInPlaceLeavesTheFormerSetupInUse) {
  std::vector<test::ZipFile> files = OtherSetup();
  files.push_back({"Theaters/balkans_Areas.dat", "new areas"});
  PutZip(files);
  LoadSetup(around.All);
  const auto before = Everything();
  around.Desk.Boxes.clear();
  // A folder that is not empty takes the name of one of its files.
  fs::remove(folder.Path / "FriendlyNames.ini");
  fs::create_directories(folder.Path / "FriendlyNames.ini/in the way");
  TakeSetup(around.All);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text,
            "The setup could not be put in place: FriendlyNames.ini cannot be moved.\n\nThe former one stays in use.");
  for (const auto& [name, bytes] : before) {
    if (name == "FriendlyNames.ini" || name.starts_with("setup.new/")) continue;
    EXPECT_EQ(folder.Read(name), bytes) << name;
  }
  EXPECT_FALSE(folder.Has("Theaters/balkans_Areas.dat"));
  EXPECT_FALSE(folder.Has("setup.new"));
}

TEST_F(Setups, ForeignFilesStayInTheZip) {
  std::vector<test::ZipFile> files = OtherSetup();
  files.push_back({"ravenfix.exe", "foreign"});
  files.push_back({"update.txt", "MAIL=elsewhere"});
  files.push_back({"Theaters/other.bmp", "foreign"});
  files.push_back({"Theaters/balkans.exe", "foreign"});
  files.push_back({"inner.zip", test::MadeZip({{"KESTREL.ini", "[MAPS]"}})});
  files.push_back({"setup.old/KESTREL.ini", "foreign"});
  PutZip(files);
  LoadSetup(around.All);
  std::vector<std::string> unpacked;
  for (const auto& [name, bytes] : Everything()) {
    if (name.starts_with("setup.new/")) unpacked.push_back(name);
  }
  EXPECT_THAT(unpacked, ElementsAre("setup.new/new/FriendlyNames.ini", "setup.new/new/KESTREL.ini",
                                    "setup.new/new/Theaters/balkans.bmp", "setup.new/new/Theaters/balkans.ini"));
}

TEST_F(Setups, WhatIsNoSetupIsRefused) {
  folder.Write("a setup.zip", "no zip");
  ExpectRefused("is no zip");
  std::vector<test::ZipFile> files = OtherSetup();
  files.erase(files.begin());
  PutZip(files);
  ExpectRefused("it holds no KESTREL.ini");
  PutZip({{"inner.zip", test::MadeZip(OtherSetup())}});
  ExpectRefused("it holds no KESTREL.ini");
  PutZip({OtherSetup()[0]});
  ExpectRefused("it holds no theater");
  PutZip({{"KESTREL.ini", "[OPTIONS]\r\n"}, OtherSetup()[2], OtherSetup()[3]});
  ExpectRefused("it holds no theater");
  PutZip({OtherSetup()[0], OtherSetup()[2]});
  ExpectRefused("it lacks the picture balkans.bmp");
  files = OtherSetup();
  files[3].Bytes = "no picture";
  PutZip(files);
  ExpectRefused("");
}

TEST_F(Setups, NamesOutsideAndLiesRefuseTheSetup) {
  for (const char* name : {"../evil.ini", "/evil.ini", "C:\\evil.ini", "Theaters/../../evil.ini"}) {
    std::vector<test::ZipFile> files = OtherSetup();
    files.push_back({name, "evil"});
    PutZip(files);
    ExpectRefused("would leave its folder");
  }
  std::vector<test::ZipFile> files = OtherSetup();
  files[0].Bytes = "[MAPS]\r\nTOTALMAPS=2\r\nMAP1=../outside.ini\r\nMAP2=/etc/outside.ini\r\n";
  files.push_back({"outside.ini", "x"});
  PutZip(files);
  ExpectRefused("it holds no theater");
}

TEST_F(Setups, ABombIsRefused) {
  // A text of 17 MB that is packed into a few kilobytes.
  std::vector<test::ZipFile> files = OtherSetup();
  files[0].Bytes += std::string(17 << 20, ' ');
  PutZip(files);
  ExpectRefused("KESTREL.ini in the zip is too large");
  // One that unpacks to more than it declares.
  files = OtherSetup();
  files[3].Bytes = std::string(1 << 20, '\0');
  files[3].Plain = 1000;
  PutZip(files);
  ExpectRefused("Theaters/balkans.bmp in the zip is damaged");
}

TEST_F(Setups, ADamagedSetupChangesNothing) {
  std::vector<test::ZipFile> files = OtherSetup();
  files[3].SumLie = 1;
  PutZip(files);
  ExpectRefused("Theaters/balkans.bmp in the zip is damaged");
  const std::string whole = test::MadeZip(OtherSetup());
  for (std::size_t size = 0; size < whole.size(); size += 97) {
    folder.Write("a setup.zip", whole.substr(0, size));
    ExpectRefused("");
  }
}

#ifndef _WIN32
TEST_F(Setups, AFullDiskChangesNothing) {
  std::vector<test::ZipFile> files = OtherSetup();
  files[3].Bytes = TinyBmp(100);
  PutZip(files);
  const auto before = Everything();
  {
    const doubles::FullDisk full(2000);
    EXPECT_FALSE(LoadSetup(around.All));
  }
  EXPECT_EQ(Everything(), before);
  EXPECT_FALSE(folder.Has("setup.part"));

  LoadSavedVars(around.State);
  const std::string former = folder.Read("a setup.zip");
  {
    const doubles::FullDisk full(100);
    EXPECT_THROW(PackSetup(around.State, zip), base::RuntimeFailure);
  }
  EXPECT_EQ(folder.Read("a setup.zip"), former);
}
#endif

TEST_F(Setups, TheZipNeverTakesThePlaceOfAFileOfTheSetup) {
  LoadSavedVars(around.State);
  EXPECT_THROW(PackSetup(around.State, folder.Path / "Theaters/korea.bmp"), base::RuntimeFailure);
  EXPECT_EQ(folder.Read("Theaters/korea.bmp"), TinyBmp(2));
}

TEST_F(Setups, ACancelledChoiceDoesNothing) {
  LoadSavedVars(around.State);
  around.Desk.FileAnswers.clear();
  EXPECT_FALSE(LoadSetup(around.All));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

}  // namespace
}  // namespace kestrel::core
