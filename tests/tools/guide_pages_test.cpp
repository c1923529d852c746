#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "project_paths.h"

namespace {

namespace fs = std::filesystem;

class GuidePages : public testing::Test {
 protected:
  GuidePages() { fs::create_directories(folder); }
  ~GuidePages() override { fs::remove_all(folder); }
  void Write(const std::string& name, const std::string& text) const { std::ofstream(folder / name) << text; }
  std::string Read(const std::string& name) const {
    std::stringstream text;
    text << std::ifstream(folder / name).rdbuf();
    return text.str();
  }
  /// Runs the program for pages of the folder; what it exits with.
  int Run(const std::string& pages) const {
    const std::string words = "cd '" + folder.string() + "' && '" KESTREL_BINARY_DIR "/tools/guide-pages' out " + pages;
    return std::system((words + " > /dev/null 2>&1").c_str());
  }
  static bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

  const fs::path folder = fs::temp_directory_path() / ("guide-pages-" + std::to_string(getpid()));
};

TEST_F(GuidePages, LeadFromLinksToHeadingsAndToEachOther) {
  Write("a.md", "# First\n\nSee [below](#two-words), [b](b.md#there), [others](c.md).\n\n## Two words\n\nText\n");
  Write("b.md", "## There\n");
  ASSERT_EQ(Run("a.md b.md"), 0);
  const std::string page = Read("out/a.html");
  EXPECT_TRUE(Has(page, "<h1 id=\"first\">")) << page;
  EXPECT_TRUE(Has(page, "<h2 id=\"two-words\">"));
  EXPECT_TRUE(Has(page, "href=\"#two-words\""));
  EXPECT_TRUE(Has(page, "href=\"b.html#there\""));
  EXPECT_FALSE(Has(page, "c.md")) << "it is not there";
  EXPECT_TRUE(Has(page, "others"));
  EXPECT_TRUE(Has(Read("out/b.html"), "<h2 id=\"there\">"));
}

TEST_F(GuidePages, LeaveThePicturesOutAndKeepTheTables) {
  Write("a.md",
        "Before\n\n| light | dark |\n|---|---|\n| ![W](w.png) | ![W](v.png) |\n\n![One](one.gif)\n\n"
        "| key | meaning |\n|---|---|\n| Home | center |\n\nAfter\n");
  ASSERT_EQ(Run("a.md"), 0);
  const std::string page = Read("out/a.html");
  EXPECT_FALSE(Has(page, ".png"));
  EXPECT_FALSE(Has(page, ".gif"));
  EXPECT_FALSE(Has(page, "light"));
  EXPECT_TRUE(Has(page, "<table"));
  for (const char* text : {"Before", "Home", "center", "After"}) EXPECT_TRUE(Has(page, text)) << text;
}

TEST_F(GuidePages, SayThatAPageIsMissing) {
  EXPECT_NE(Run("none.md"), 0);
  EXPECT_NE(Run(""), 0);
}

TEST_F(GuidePages, AreMadeOfTheGuideWithEveryLinkLeadingSomewhere) {
  const std::string docs = KESTREL_SOURCE_DIR "/docs/";
  std::string pages;
  for (const char* name : {"guide", "settings", "falcon-data", "area-format", "tape-format"}) {
    pages += " '" + docs + name + ".md'";
  }
  ASSERT_EQ(Run(pages), 0);
  const std::string guide = Read("out/guide.html");
  EXPECT_TRUE(Has(guide, "BRAA 284/38"));
  std::size_t links = 0;
  for (std::size_t at = guide.find("href=\"#"); at != std::string::npos; at = guide.find("href=\"#", at + 1)) {
    const std::size_t begin = at + 7;
    const std::string anchor = guide.substr(begin, guide.find('"', begin) - begin);
    EXPECT_TRUE(Has(guide, "id=\"" + anchor + "\"")) << anchor;
    ++links;
  }
  EXPECT_GE(links, 5U);
  EXPECT_TRUE(Has(guide, "href=\"settings.html\""));
  for (const char* end : {".md\"", ".md#"}) EXPECT_FALSE(Has(guide, end)) << "a link to what is not there";
}

}  // namespace
