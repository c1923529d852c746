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

}  // namespace
}  // namespace kestrel::shell
