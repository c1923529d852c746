#include "core/guide.h"

#include <gmock/gmock.h>

#include "base/files.h"
#include "core/default_files.h"
#include "core/station_folder.h"

namespace kestrel::core {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Guide : public testing::Test {
 protected:
  Guide() { around.State.ProgramPath = folder.Path; }
  void Put(const char* name) {
    std::filesystem::create_directories((folder.Path / name).parent_path());
    folder.Write(name, "guide");
  }

  ProgramFolder folder;
  Around around{folder.Path};
};

TEST_F(Guide, OpensFromTheProgramFolder) {
  Put("docs/guide.html");
  Put("defaults/docs/guide.html");
  OpenGuide(around.All);
  ASSERT_THAT(around.Desk.Files, SizeIs(1));
  EXPECT_EQ(around.Desk.Files[0].File, base::TextOfPath(folder.Path / "docs/guide.html"));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(Guide, OpensFromTheDefaultsOfAPackedProgram) {
  Put("defaults/docs/guide.html");
  OpenGuide(around.All);
  ASSERT_THAT(around.Desk.Files, SizeIs(1));
  EXPECT_EQ(around.Desk.Files[0].File, base::TextOfPath(folder.Path / "defaults/docs/guide.html"));
}

TEST_F(Guide, ThatIsMissingIsToldWithItsFolder) {
  OpenGuide(around.All);
  EXPECT_THAT(around.Desk.Files, IsEmpty());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("docs/guide.html was not found"));
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr(base::PathForMessage(folder.Path)));
}

TEST_F(Guide, IsNoFileOfThePersons) {
  Put("defaults/docs/guide.html");
  folder.Write("defaults/KESTREL.ini", "");
  folder.Write("defaults/DefFreq.ini", "");
  ProgramFolder own;
  BringFiles(folder.Path, own.Path);
  EXPECT_TRUE(std::filesystem::exists(own.Path / "DefFreq.ini"));
  EXPECT_FALSE(std::filesystem::exists(own.Path / "docs")) << "a newer program brings a newer one";
}

}  // namespace
}  // namespace kestrel::core
