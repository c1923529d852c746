#include "shell/radio/edit_freq_frm.h"

#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <memory>
#include <stdexcept>

#include "shell/parts/dialogs.h"
#include "shell/radio/freq_images.h"
#include "shell/station_fixture.h"
#include "shell/word.h"

namespace kestrel::shell {
namespace {

class EditFreq : public StationTest {
 protected:
  void TearDown() override {
    window.reset();
    StationTest::TearDown();
  }
  void Open(int kind, bool isNew, const char* value = "", const char* description = "") {
    window = std::make_unique<EditFreqFrm>(program, nullptr);
    window->Populate(kind, isNew, Word(value), Word(description));
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }
  template <class Control>
  Control& In(const char* name) {
    auto* control = window->findChild<Control*>(Word(name));
    if (control == nullptr) throw std::runtime_error(std::string("there is no ") + name);
    return *control;
  }
  QLineEdit& ValueField() { return In<QLineEdit>("txtFreqValue"); }
  QLineEdit& DescriptionField() { return In<QLineEdit>("txtFreqDescr"); }
  void Type(QLineEdit& field, const QString& text) {
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
  }
  void Paste(QLineEdit& field, const QString& text) {
    field.selectAll();
    QGuiApplication::clipboard()->setText(text);
    QTest::keySequence(&field, QKeySequence::Paste);
  }
  void Press(const char* button) { QTest::mouseClick(&In<QPushButton>(button), Qt::LeftButton); }
  QString Words() { return In<QLabel>("lblFreqWords").text(); }
  /// The image beside the value is that one.
  bool Shows(radio::FreqImage image) {
    const QPixmap shown = In<QLabel>("imgFreq").pixmap();
    const QPixmap wanted = FreqImageOf(image).pixmap(shown.deviceIndependentSize().toSize(), shown.devicePixelRatio());
    return !shown.isNull() && shown.toImage() == wanted.toImage();
  }

  std::unique_ptr<EditFreqFrm> window;
};

TEST_F(EditFreq, NewEntryBeginsWithTextsOfItsOwn) {
  Open(EditFreqFrm::Entry, true, "given", "given");
  EXPECT_EQ(window->windowTitle(), Word("New Frequency"));
  EXPECT_EQ(DescriptionField().text(), Word("New Frequency"));
  EXPECT_EQ(ValueField().text(), Word("243000"));
  EXPECT_TRUE(DescriptionField().hasFocus());
  EXPECT_EQ(DescriptionField().selectedText(), Word("New Frequency"));
  EXPECT_EQ(In<QLabel>("lblFrequencyValue").text(), Word("Frequency Value"));
}

TEST_F(EditFreq, EntryIsShownWithItsTexts) {
  Open(EditFreqFrm::Entry, false, "297500", "Tanker");
  EXPECT_EQ(window->windowTitle(), Word("Edit Frequency"));
  EXPECT_TRUE(DescriptionField().isVisible());
  EXPECT_TRUE(In<QLabel>("lblFrequencyDescription").isVisible());
  EXPECT_EQ(DescriptionField().text(), Word("Tanker"));
  EXPECT_EQ(ValueField().text(), Word("297500"));
  EXPECT_TRUE(ValueField().hasFocus());
  EXPECT_EQ(ValueField().selectedText(), Word("297500"));
}

TEST_F(EditFreq, ChannelHasItsValueAlone) {
  Open(EditFreqFrm::Channel, false, "138050");
  EXPECT_EQ(window->windowTitle(), Word("Edit Channel"));
  EXPECT_FALSE(DescriptionField().isVisible());
  EXPECT_FALSE(In<QLabel>("lblFrequencyDescription").isVisible());
  EXPECT_TRUE(In<QLabel>("lblFrequencyValue").isVisible());
  EXPECT_EQ(ValueField().text(), Word("138050"));
  EXPECT_TRUE(ValueField().hasFocus());
  Press("cmdOK");
  EXPECT_EQ(window->Value(), "138050");
  EXPECT_EQ(window->Description(), "");
}

TEST_F(EditFreq, OKGivesWhatWasTypedAsItStands) {
  Open(EditFreqFrm::Entry, false, "297500", "Tanker");
  Type(DescriptionField(), Word(" a=\"b\" "));
  Type(ValueField(), Word(" no frequency "));
  Press("cmdOK");
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->Description(), " a=\"b\" ");
  EXPECT_EQ(window->Value(), " no frequency ");
}

TEST_F(EditFreq, EnterIsOKAndEscapeIsCancel) {
  Open(EditFreqFrm::Entry, false, "297500", "Tanker");
  QTest::keyClick(&ValueField(), Qt::Key_Return);
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_EQ(window->Value(), "297500");
  Open(EditFreqFrm::Entry, false, "297500", "Tanker");
  QTest::keyClick(&ValueField(), Qt::Key_Escape);
  EXPECT_EQ(window->result(), QDialog::Rejected);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(EditFreq, CancelGivesNothing) {
  Open(EditFreqFrm::Channel, false, "138050");
  Type(ValueField(), Word("297500"));
  Press("cmdCancel");
  EXPECT_EQ(window->result(), QDialog::Rejected);
  EXPECT_EQ(window->Value(), "");
}

TEST_F(EditFreq, IsModalAndCounted) {
  window = std::make_unique<EditFreqFrm>(program, nullptr);
  window->Populate(EditFreqFrm::Entry, true, {}, {});
  bool open = false;
  InNextDialog([&](QWidget& dialog) {
    open = dialogs.Open();
    EXPECT_EQ(&dialog, window.get());
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  EXPECT_EQ(RunDialog(*window, dialogs), QDialog::Accepted);
  EXPECT_TRUE(open);
  EXPECT_EQ(window->Description(), "New Frequency");
  EXPECT_EQ(window->Value(), "243000");
}

TEST_F(EditFreq, SaysWhatIsTypedWithImageAndWords) {
  Open(EditFreqFrm::Channel, false, "138050");
  EXPECT_EQ(Words(), Word("VHF 138.050 MHz"));
  EXPECT_TRUE(Shows(radio::FreqImage::VHF));
  const struct {
    const char* Typed;
    const char* Words;
    radio::FreqImage Image;
  } cases[] = {{"297500", "UHF 297.500 MHz", radio::FreqImage::UHF},
               {"29750", "no frequency that the radios know", radio::FreqImage::Unknown},
               {"10810", "ILS 108.10 MHz", radio::FreqImage::ILS},
               {"0", "none: tunes both radios", radio::FreqImage::ILS}};
  for (const auto& [typed, words, image] : cases) {
    Type(ValueField(), Word(typed));
    EXPECT_EQ(Words(), Word(words));
    EXPECT_TRUE(Shows(image)) << typed;
    EXPECT_EQ(ValueField().text(), Word(typed)) << "it changes nothing";
  }
}

TEST_F(EditFreq, CharactersThatCannotBeKeptAreNamed) {
  Open(EditFreqFrm::Entry, false, "297500", "Tanker");
  Paste(DescriptionField(), QStringLiteral("K\u4e2d"));
  Press("cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(In<QLabel>("lblRefused").isVisible());
  EXPECT_EQ(In<QLabel>("lblRefused").text(), QStringLiteral("This character cannot be used here: \u4e2d."));
  EXPECT_TRUE(DescriptionField().hasFocus());
  Paste(DescriptionField(), QStringLiteral("K\u00e9"));
  Paste(ValueField(), QStringLiteral("\u4e2d"));
  Press("cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(ValueField().hasFocus());
  Type(ValueField(), Word("0"));
  Press("cmdOK");
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->Description(), "K\xe9");
}

TEST_F(EditFreq, PastedLineEndsAreBlanks) {
  Open(EditFreqFrm::Entry, false, "297500", "Tanker");
  Paste(ValueField(), Word("243\r\n000\n"));
  Press("cmdOK");
  EXPECT_EQ(window->Value(), "243  000 ");
}

TEST_F(EditFreq, TakesNoMoreThanTheFileGivesBack) {
  Open(EditFreqFrm::Entry, false, "297500", "Tanker");
  for (QLineEdit* field : {&ValueField(), &DescriptionField()}) {
    Paste(*field, QString(800, u'7'));
    EXPECT_EQ(field->text().size(), 749);
  }
}

}  // namespace
}  // namespace kestrel::shell
