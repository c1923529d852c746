#include "shell/options/options_panel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include "core/view_options.h"
#include "shell/map/mini_map_frm.h"
#include "shell/options/options_fixture.h"

namespace kestrel::shell {
namespace {

class OptionsPage : public OptionsTest {
 protected:
  QLineEdit& Field(const char* name) { return Part<QLineEdit>(name); }
  /// Types over what stands in the field.
  void Type(const char* name, const char* text) {
    QLineEdit& field = Field(name);
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, QString::fromLatin1(text));
  }
  void Choose(const char* name, int number) {
    auto& list = Part<QComboBox>(name);
    const int place = list.findData(number);
    ASSERT_GE(place, 0) << number;
    list.setFocus();
    while (list.currentIndex() != place)
      QTest::keyClick(&list, list.currentIndex() < place ? Qt::Key_Down : Qt::Key_Up);
  }
  std::vector<int> Numbers(const char* name) {
    std::vector<int> numbers;
    auto& list = Part<QComboBox>(name);
    for (int place = 0; place < list.count(); ++place) numbers.push_back(list.itemText(place).toInt());
    return numbers;
  }
};

TEST_F(OptionsPage, MiniMapTakesItsScaleAtOnce) {
  QWidget& small = Frame().Tools().The<MiniMapFrm>().Picture();
  EXPECT_EQ(Part<QComboBox>("Combo1").currentText(), QStringLiteral("5"));
  EXPECT_EQ(Part<QLabel>("lblMiniMapScale").text(), QStringLiteral("MiniMap Scale 1\\"));
  EXPECT_EQ(small.width(), 204);
  EXPECT_EQ(Drawn([this] { Choose("Combo1", 8); }), None);
  EXPECT_EQ(small.width(), 128);
  EXPECT_EQ(Saved("MINIMAPSCALE"), "8");
}

TEST_F(OptionsPage, AScaleThatIsNotOfferedHasAPlaceInTheList) {
  EXPECT_EQ(Numbers("Combo1"), (std::vector<int>{2, 3, 4, 5, 6, 8, 10, 12, 16, 20}));
  station.MapOptions.MINIMAPSCALE = 7;
  windows.Refresh(base::Changed::Options);
  EXPECT_EQ(Part<QComboBox>("Combo1").currentText(), QStringLiteral("7"));
  EXPECT_EQ(Numbers("Combo1"), (std::vector<int>{2, 3, 4, 5, 6, 7, 8, 10, 12, 16, 20}));
  EXPECT_EQ(station.MapOptions.MINIMAPSCALE, 7);
}

TEST_F(OptionsPage, IconsAreThoseThatHaveAShape) {
  std::vector<int> shapes;
  for (int icon = 1; icon <= 29; ++icon) {
    if (icon != 23) shapes.push_back(icon);
  }
  EXPECT_EQ(Numbers("cmbSelectIcon"), shapes);
  EXPECT_EQ(Part<QComboBox>("cmbSelectIcon").currentText(), QStringLiteral("20"));
  EXPECT_EQ(Drawn([this] { Choose("cmbSelectIcon", 21); }), DrawMap);
  EXPECT_EQ(Saved("AIRF_TACAN_ICO"), "21");
}

TEST_F(OptionsPage, LabelPositionIsTheIndexOfItsButton) {
  for (const int index : {3, 2, 1, 0}) {
    const std::string name = "OptTACANLabelPos_" + std::to_string(index);
    EXPECT_EQ(Drawn([&] { Press(name); }), DrawMap) << index;
    EXPECT_EQ(Saved("TACAN_LABEL_POSITION"), std::to_string(index));
    EXPECT_TRUE(Part<QRadioButton>(name).isChecked());
  }
  EXPECT_EQ(Drawn([&] { Press("OptTACANLabelPos_0"); }), None) << "no change";
}

TEST_F(OptionsPage, APositionOfFourAndAboveSelectsNoButton) {
  for (const int beyond : {4, 99, -1, -2}) {
    station.MapOptions.TACAN_LABEL_POSITION = beyond;
    windows.Refresh(base::Changed::Options);
    for (int index = 0; index < 4; ++index) {
      EXPECT_FALSE(Part<QRadioButton>("OptTACANLabelPos_" + std::to_string(index)).isChecked()) << beyond;
    }
    EXPECT_EQ(station.MapOptions.TACAN_LABEL_POSITION, beyond);
  }
  Press("OptTACANLabelPos_2");
  EXPECT_EQ(station.MapOptions.TACAN_LABEL_POSITION, 2);
}

TEST_F(OptionsPage, NumericFieldsShowTwoPlacesAndTheirUnits) {
  EXPECT_EQ(Field("txtILSDrawDist").text(), QStringLiteral("10.00"));
  EXPECT_EQ(Field("txtILSAngle").text(), QStringLiteral("5.00"));
  EXPECT_EQ(Field("txtTailAngle").text(), QStringLiteral("60.00"));
  EXPECT_EQ(Part<QLabel>("lblNm").text(), QStringLiteral("NM"));
  EXPECT_EQ(Part<QLabel>("lblDegrees").text(), QStringLiteral("\u00b0"));
  EXPECT_EQ(Part<QLabel>("lblDeg2").text(), QStringLiteral("\u00b0"));
}

TEST_F(OptionsPage, EachNumericFieldStoresWhatIsTypedAndDraws) {
  const std::tuple<const char*, const char*, const char*, double*> fields[] = {
      {"txtILSDrawDist", "AIRF_ILS_DIST", "12.50000", &station.MapOptions.AIRF_ILS_DIST},
      {"txtILSAngle", "AIRF_ILS_ANGLE", "12.50", &station.MapOptions.AIRF_ILS_ANGLE},
      {"txtTailAngle", "AIRF_ILS_TAIL_ANGLE", "12.50", &station.MapOptions.AIRF_ILS_TAIL_ANGLE},
  };
  for (const auto& [name, key, saved, setting] : fields) {
    SCOPED_TRACE(name);
    // Each character is a change: "1", "12", "12.", "12.5".
    EXPECT_EQ(Drawn([this, field = name] { Type(field, "12,5"); }), (Draws{4, 0}));
    EXPECT_EQ(Field(name).text(), QStringLiteral("12.5")) << "a comma is a point";
    EXPECT_EQ(*setting, 12.5);
    EXPECT_EQ(Saved(key), saved);
  }
}

TEST_F(OptionsPage, OnlyDigitsCommaAndPointCanBeTyped) {
  for (const char* name : {"txtILSDrawDist", "txtILSAngle", "txtTailAngle"}) {
    Type(name, "a-1e+ 7x");
    EXPECT_EQ(Field(name).text(), QStringLiteral("17")) << name;
  }
}

TEST_F(OptionsPage, AnAngleOutOfRangeTurnsToZeroInFieldAndSetting) {
  const std::pair<const char*, const char*> angles[] = {{"txtILSAngle", "AIRF_ILS_ANGLE"},
                                                        {"txtTailAngle", "AIRF_ILS_TAIL_ANGLE"}};
  for (const auto& [name, key] : angles) {
    SCOPED_TRACE(name);
    Type(name, "180");
    EXPECT_EQ(Field(name).text(), QStringLiteral("180"));
    EXPECT_EQ(Saved(key), "180.00");
    EXPECT_EQ(Drawn([this, field = name] {
                QTest::keyClick(&Field(field), Qt::Key_End);
                QTest::keyClick(&Field(field), Qt::Key_1);
              }),
              DrawMap);
    EXPECT_EQ(Field(name).text(), QStringLiteral("0.00"));
    EXPECT_EQ(Saved(key), "0.00");
    Type(name, "180.1");
    EXPECT_EQ(Field(name).text(), QStringLiteral("0.00"));
    EXPECT_EQ(Saved(key), "0.00");
    Type(name, "0");
    EXPECT_EQ(Field(name).text(), QStringLiteral("0"));
  }
  Type("txtILSDrawDist", "181");
  EXPECT_EQ(station.MapOptions.AIRF_ILS_DIST, 181) << "a distance has no such limit";
}

TEST_F(OptionsPage, AnEmptyFieldIsZeroAndSaysSoWhenItIsLeft) {
  QLineEdit& field = Field("txtILSDrawDist");
  field.setFocus();
  field.selectAll();
  QTest::keyClick(&field, Qt::Key_Delete);
  EXPECT_EQ(field.text(), QString());
  EXPECT_EQ(station.MapOptions.AIRF_ILS_DIST, 0);
  const Draws leaving = Drawn([&] { QTest::keyClick(&field, Qt::Key_Return); });
  EXPECT_EQ(leaving, None);
  EXPECT_EQ(field.text(), QStringLiteral("0.00"));
}

TEST_F(OptionsPage, ATailAngleOfHalfTheAngleIsTakenAndTheMapIsDrawn) {
  Type("txtILSAngle", "60");
  Type("txtTailAngle", "30");
  EXPECT_EQ(station.MapOptions.AIRF_ILS_TAIL_ANGLE, 30);
  EXPECT_EQ(Drawn([this] { Picture().DrawMap(); }), DrawMap);
}

}  // namespace
}  // namespace kestrel::shell
