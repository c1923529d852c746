#include <QCheckBox>
#include <QLineEdit>

#include "shell/options/options_fixture.h"

namespace kestrel::shell {
namespace {

class LabelOptions : public OptionsTest {
 protected:
  /// Two AI aircraft on one spot.
  void FlyTogether() {
    socket.Arrive(test::Message(
        "AILOCA", test::AIRecord("Bandit1", "080", "100", "20") + test::AIRecord("Bandit3", "080", "100", "25")));
  }
};

TEST_F(LabelOptions, LabelsAreKeptApartAndStandAgainWhereTheyStood) {
  FlyTogether();
  const QImage before = Map();
  EXPECT_EQ(Drawn([this] { Press("chkLabelsApart"); }), Redraw);
  EXPECT_EQ(Saved("LABELSAPART", "KESTREL"), "1");
  const QImage apart = Map();
  EXPECT_NE(apart, before);
  EXPECT_EQ(Drawn([this] { Picture().RedrawPlots(); }), Redraw);
  EXPECT_EQ(Map(), apart) << "the places hold";
  EXPECT_EQ(Drawn([this] { Press("chkLabelsApart"); }), Redraw);
  EXPECT_EQ(Saved("LABELSAPART", "KESTREL"), "missing") << "as it ships";
  EXPECT_EQ(Map(), before);
}

TEST_F(LabelOptions, EachLineOfAPlayersLabelCanBeLeftOut) {
  const std::pair<const char*, const char*> lines[] = {{"chkLabelId", "LABELID"},
                                                       {"chkLabelName", "LABELNAME"},
                                                       {"chkLabelAltitude", "LABELALTITUDE"},
                                                       {"chkLabelSpeed", "LABELSPEED"}};
  const QImage all = Map();
  for (const auto& [control, key] : lines) {
    EXPECT_EQ(Saved(key, "KESTREL"), "missing");
    EXPECT_EQ(Drawn([this, name = control] { Press(name); }), Redraw) << control;
    EXPECT_EQ(Saved(key, "KESTREL"), "0");
    EXPECT_NE(Map(), all) << control;
    EXPECT_EQ(Drawn([this, name = control] { Press(name); }), Redraw) << control;
    EXPECT_EQ(Map(), all) << control;
  }
  // The players have no callsign, so that its line is empty; without it the others stand closer.
  Press("chkLabelCallsign");
  EXPECT_EQ(Saved("LABELCALLSIGN", "KESTREL"), "0");
  EXPECT_NE(Map(), all);
}

TEST_F(LabelOptions, LabelsHaveTheSizeThatIsTyped) {
  const QImage before = Map();
  auto& size = Part<QLineEdit>("txtLabelSize");
  EXPECT_EQ(size.text(), QStringLiteral("100.00"));
  const auto type = [&size](const char* text) {
    size.setFocus();
    size.selectAll();
    QTest::keyClicks(&size, QString::fromLatin1(text));
  };
  type("150");
  EXPECT_EQ(Saved("LABELSIZE", "KESTREL"), "150.00");
  EXPECT_NE(Map(), before);
  type("100");
  EXPECT_EQ(Saved("LABELSIZE", "KESTREL"), "missing");
  EXPECT_EQ(Map(), before);
}

}  // namespace
}  // namespace kestrel::shell
