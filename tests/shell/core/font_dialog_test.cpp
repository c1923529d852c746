#include "shell/core/font_dialog.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QListView>

#include "shell/core/font_file.h"

namespace kestrel::shell {
namespace {

bool SameFont(const base::FontRecord& a, const base::FontRecord& b) {
  return a.FontName == b.FontName && a.FontSize == b.FontSize && a.FontBold == b.FontBold &&
         a.FontItalic == b.FontItalic && a.FontStrike == b.FontStrike && a.FontUnder == b.FontUnder &&
         a.Color == b.Color;
}

TEST(FontChanges, NothingIsStoredOfADialogThatWasLeftAsItWas) {
  const base::FontRecord before{.FontName = "Not There", .FontSize = 8.25F, .FontBold = true, .Color = 77};
  // What a dialog may make of it: another family, a whole size, the first style.
  QFont shown(QStringLiteral("Another"), 8);
  shown.setItalic(true);
  shown.setStrikeOut(true);
  shown.setUnderline(true);
  EXPECT_TRUE(SameFont(WithChanges(before, shown, shown), before));
}

TEST(FontChanges, EachThingThatIsTouchedIsStoredAndNothingElse) {
  const base::FontRecord before{.FontName = "Not There", .FontSize = 8.25F, .Color = 77};
  QFont shown(QStringLiteral("Another"), 8);
  shown.setItalic(true);
  struct Case {
    const char* What;
    void (*Touch)(QFont&);
    void (*Store)(base::FontRecord&);
  };
  const Case cases[] = {
      {"family", [](QFont& font) { font.setFamily(QStringLiteral("Third")); },
       [](base::FontRecord& record) { record.FontName = "Third"; }},
      {"size", [](QFont& font) { font.setPointSize(20); }, [](base::FontRecord& record) { record.FontSize = 20; }},
      {"bold", [](QFont& font) { font.setBold(true); }, [](base::FontRecord& record) { record.FontBold = true; }},
      {"italic", [](QFont& font) { font.setItalic(false); },
       [](base::FontRecord& record) { record.FontItalic = false; }},
      {"strikeout", [](QFont& font) { font.setStrikeOut(true); },
       [](base::FontRecord& record) { record.FontStrike = true; }},
      {"underline", [](QFont& font) { font.setUnderline(true); },
       [](base::FontRecord& record) { record.FontUnder = true; }},
  };
  for (const Case& each : cases) {
    QFont chosen = shown;
    each.Touch(chosen);
    base::FontRecord expected = before;
    each.Store(expected);
    EXPECT_TRUE(SameFont(WithChanges(before, shown, chosen), expected)) << each.What;
  }
}

/// A family of the test's own, for as long as it stands.
class OwnFamily {
 public:
  void Add(const char* style, bool italic) {
    const QByteArray file = FontFile(QString::fromLatin1(Name), QString::fromLatin1(style), italic);
    ids << (file.isEmpty() ? -1 : QFontDatabase::addApplicationFontFromData(file));
  }
  ~OwnFamily() {
    for (const int id : ids) QFontDatabase::removeApplicationFont(id);
  }
  bool There() const { return !ids.contains(-1) && QFontDatabase::hasFamily(QString::fromLatin1(Name)); }
  static constexpr const char* Name = "Test Family";

 private:
  QList<int> ids;
};

TEST(FontDialogOfAFamily, WhoseOnlyStyleIsObliqueDoesNotTurnItalicOn) {
  OwnFamily family;
  family.Add("Oblique", true);
  if (!family.There()) GTEST_SKIP() << "the fonts of this system have no outlines to build from";
  const base::FontRecord before{.FontName = OwnFamily::Name, .FontSize = 10};
  FontDialog dialog(before, false, nullptr);
  dialog.show();
  EXPECT_TRUE(dialog.findChild<QFontDialog*>()->currentFont().italic()) << "the dialog shows the style that there is";
  EXPECT_TRUE(SameFont(dialog.Chosen(), before));
}

TEST(FontDialogOfAFamily, WhoseRegularStyleHasAnotherNameShowsThatStyle) {
  OwnFamily family;
  // In the order of the real ones, the slanted one first.
  family.Add("Oblique", true);
  family.Add("Book", false);
  if (!family.There()) GTEST_SKIP() << "the fonts of this system have no outlines to build from";
  for (const bool italic : {false, true}) {
    const base::FontRecord before{.FontName = OwnFamily::Name, .FontSize = 10, .FontItalic = italic};
    FontDialog dialog(before, false, nullptr);
    dialog.show();
    auto* fonts = dialog.findChild<QFontDialog*>();
    EXPECT_EQ(fonts->currentFont().italic(), italic);
    EXPECT_TRUE(SameFont(dialog.Chosen(), before));
    // The other style by hand.
    QFont other = fonts->currentFont();
    other.setStyleName(italic ? QStringLiteral("Book") : QStringLiteral("Oblique"));
    fonts->setCurrentFont(other);
    EXPECT_EQ(dialog.Chosen().FontItalic, !italic);
  }
}

}  // namespace
}  // namespace kestrel::shell
