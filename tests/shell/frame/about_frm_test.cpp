#include "shell/frame/about_frm.h"

#include <QPushButton>

#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class About : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
  }
  /// Opens it by its menu entry, runs `act` on it, and counts it as left open if nothing closed it.
  template <class Act>
  void Open(Act act) {
    InNextDialog([act](QWidget& dialog) {
      EXPECT_EQ(dialog.objectName(), QStringLiteral("AboutFrm"));
      act(dialog);
      EXPECT_FALSE(dialog.isVisible());
      dialog.close();
    });
    Action("mnuAbout").trigger();
  }
};

TEST_F(About, SaysNameVersionAndPurpose) {
  Open([](QWidget& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("lblTitle"))->text(), QStringLiteral("KESTREL v1.0.0"));
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("lblDescription"))->text(),
              QStringLiteral("Displays airplanes from a Falcon 4 session."));
    EXPECT_EQ(dialog.findChild<QPushButton*>(QStringLiteral("lblMail"))->text(),
              QStringLiteral("mail:someone@mail.invalid"));
    EXPECT_TRUE(dialog.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
}

TEST_F(About, ClickAnywhereClosesIt) {
  Open([](QWidget& dialog) { QTest::mouseClick(&dialog, Qt::LeftButton, {}, QPoint(3, 3)); });
  for (const char* part : {"picIcon", "lblTitle", "lblDescription", "cmdClose"}) {
    SCOPED_TRACE(part);
    Open([part](QWidget& dialog) {
      auto* widget = dialog.findChild<QWidget*>(QString::fromLatin1(part));
      // Through the window, as a real click comes.
      QTest::mouseClick(dialog.windowHandle(), Qt::LeftButton, {}, widget->mapTo(&dialog, widget->rect().center()));
    });
  }
  EXPECT_TRUE(desk.Files.empty());
}

TEST_F(About, ClickOnTheMailAddressOpensIt) {
  Open([](QWidget& dialog) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("lblMail")), Qt::LeftButton);
  });
  ASSERT_EQ(desk.Files.size(), 1u);
  EXPECT_EQ(desk.Files[0].File, "mailto:someone@mail.invalid");
}

}  // namespace
}  // namespace kestrel::shell
