#include "base/program_title.h"

#include <gtest/gtest.h>

#include "version.h"

namespace kestrel::base {
namespace {

// The version changes with each release, so it is put together here in another way.
TEST(ProgramTitle, TellsTheVersion) {
  const std::string two = std::to_string(VersionMajor) + "." + std::to_string(VersionMinor);
  const std::string three = two + "." + std::to_string(VersionRevision);
  EXPECT_EQ(ProgramTitle(), "KESTREL v" + three);
  EXPECT_EQ(MapTitle(), "KESTREL v" + three + "b");
  EXPECT_EQ(NoTheatersTitle(), "KESTRELS v" + two);
  EXPECT_EQ(Banner("Main"), "\"KESTREL v" + three + " Main INI File\"");
  EXPECT_EQ(Banner("Theater"), "\"KESTREL v" + three + " Theater INI File\"");
}

TEST(ProgramTitle, HeadsTheBannerOfEachFile) {
  for (const char* kind : {"Main", "Theater"}) EXPECT_TRUE(Banner(kind).starts_with(BannerHead())) << kind;
  EXPECT_TRUE(BannerHead().ends_with(' ')) << "1.0.1 is not 1.0.10";
}

}  // namespace
}  // namespace kestrel::base
