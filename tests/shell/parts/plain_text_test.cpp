#include "shell/parts/plain_text.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QHelpEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTextEdit>
#include <QToolTip>
#include <QTreeView>
#include <QWindow>
#include <set>

#include "link/feed_text.h"
#include "shell/core/font_dialog.h"
#include "shell/core/qt_desktop.h"
#include "shell/core/saving_message.h"
#include "shell/frame/about_frm.h"
#include "shell/link/clients_frm.h"
#include "shell/link/frm_conn_port.h"
#include "shell/link/prefer_form.h"
#include "shell/link/select_channel_dialog.h"
#include "shell/link/vld_from2.h"
#include "shell/station_fixture.h"
#include "shell/tape/rec_frm.h"
#include "shell/theaters/bulls_details_frm.h"
#include "shell/theaters/mdf_bulls_frm.h"
#include "shell/theaters/mdf_theaters_frm.h"
#include "shell/theaters/theate_details_frm.h"
#include "tape/golden_tape.h"

namespace kestrel::shell {
namespace {

using test::ClientData;
using test::Message;

/// The tool tip that is on the screen, null when there is none.
QLabel* ShownTip() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->inherits("QTipLabel") && window->isVisible()) return qobject_cast<QLabel*>(window);
  }
  return nullptr;
}

/// Asks for the tip of a place as a pointer that rests there does.
void Rest(QWidget& widget, const QPoint& place) {
  QHelpEvent event(QEvent::ToolTip, place, widget.mapToGlobal(place));
  QCoreApplication::sendEvent(&widget, &event);
}

/// Takes away the tip on the screen, at once and not after a moment.
void CloseTip() {
  delete ShownTip();
  ASSERT_EQ(ShownTip(), nullptr);
}

/// What the station is told by others stands in all its tables, each text with markup that names a file, and a "&".
class ForeignText : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Write("update.txt", "DOCS=https://docs.invalid/kestrel\r\nMAIL=<img src=x>&mail[*]\r\n");
    Write("KESTREL.ini",
          "[MAPS]\r\nTOTALMAPS=2\r\nMAP1=one.ini\r\nMAP2=two.ini\r\nCURRENTMAP=1\r\n"
          "[OPTIONS]\r\nCONNPORT=5556\r\nCURSOR_FONT_NAME=<img src=x>&font[*]\r\n[CONNLIST]\r\nNUM=1\r\n"
          "[CONNLIST1]\r\nNAME=<img src=x>&entry[*]\r\nIP=<img src=x>&host[*]\r\n");
    for (const char* name : {"one", "two"}) {
      const QByteArray file = QByteArray("Theaters/") + name + ".ini";
      WriteTheater(name, "<img src=x>&theater[*]", "1024");
      Write(file.constData(),
            Read(file.constData()).replace("Alpha", "<img src=x>&alpha[*]").replace("Bravo", "<img src=x>&bravo[*]"));
    }
    Start();
    if (HasFatalFailure()) return;
    station.LinkOptions.AUTOFRIENDS = false;
    for (const core::ToolWindow which :
         {core::ToolWindow::Bulls, core::ToolWindow::Curs, core::ToolWindow::View, core::ToolWindow::Clients,
          core::ToolWindow::Areas, core::ToolWindow::Rec, core::ToolWindow::MiniMap, core::ToolWindow::Freq}) {
      Frame().Tools().Window(which).MaxFrm();
      Frame().Strip().Check(which).setChecked(true);
    }
  }

  void Fly() {
    Connect();
    socket.Arrive(Message("NEWCLT", ClientData("1", "<img src=x>&player[*]", "<img src=x>&info", "<img src=x>&st")) +
                  Message("AILOCA", test::AIRecord("<b>&AI[*]1", "090", "10", "20")));
    auto& tree = *Frame().Tools().The<ClientsFrm>().findChild<QTreeView*>(QStringLiteral("TreeView1"));
    tree.setCurrentIndex(tree.model()->index(0, 0));
  }

  static bool IsForeign(const QString& text) {
    return text.contains(QStringLiteral("<img")) || text.contains(QStringLiteral("<b>")) ||
           text.contains(QStringLiteral("&lt;"));
  }
  void Found(const QObject& where) { found.insert(where.objectName().toStdString()); }

  void ExpectPlainTip(const QString& text, const QWidget& where) {
    ASSERT_NE(ShownTip(), nullptr) << where.objectName().toStdString();
    EXPECT_EQ(ShownTip()->text(), text);
    EXPECT_EQ(ShownTip()->textFormat(), Qt::PlainText) << where.objectName().toStdString();
  }
  void LookAtTip(QWidget& widget) {
    if (!IsForeign(widget.toolTip())) return;
    found.insert("tip of " + widget.objectName().toStdString());
    Rest(widget, widget.rect().center());
    ExpectPlainTip(widget.toolTip(), widget);
    CloseTip();
  }
  void LookAtRows(QAbstractItemView& view) {
    const QAbstractItemModel* model = view.model();
    for (int row = 0; model != nullptr && row < model->rowCount(view.rootIndex()); ++row) {
      for (int column = 0; column < model->columnCount(view.rootIndex()); ++column) {
        const QModelIndex place = model->index(row, column, view.rootIndex());
        if (IsForeign(place.data().toString())) Found(view);
        const QString tip = place.data(Qt::ToolTipRole).toString();
        if (!IsForeign(tip) || !view.isVisible()) continue;
        found.insert("tip in " + view.objectName().toStdString());
        Rest(*view.viewport(), view.visualRect(place).center());
        ExpectPlainTip(tip, view);
        CloseTip();
      }
    }
  }
  /// Where "&" marks the access key it must be doubled to be read.
  void LookAtCaption(const QObject& owner, QString caption) {
    if (!IsForeign(caption)) return;
    Found(owner);
    EXPECT_FALSE(caption.replace(QStringLiteral("&&"), QString()).contains(u'&')) << owner.objectName().toStdString();
  }
  /// Looks at every widget there is.
  void Look() {
    for (QWidget* widget : QApplication::allWidgets()) {
      SCOPED_TRACE(widget->metaObject()->className() + std::string(" ") + widget->objectName().toStdString());
      if (auto* label = qobject_cast<QLabel*>(widget); label != nullptr && IsForeign(label->text())) {
        Found(*label);
        label->ensurePolished();
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        if (label->buddy() != nullptr) LookAtCaption(*label, label->text());
      }
      const auto* text = qobject_cast<QTextEdit*>(widget);
      EXPECT_FALSE(text != nullptr && IsForeign(text->toPlainText()));
      if (auto* view = qobject_cast<QAbstractItemView*>(widget)) LookAtRows(*view);
      if (auto* button = qobject_cast<QAbstractButton*>(widget)) LookAtCaption(*button, button->text());
      if (auto* group = qobject_cast<QGroupBox*>(widget)) LookAtCaption(*group, group->title());
      if (auto* menu = qobject_cast<QMenu*>(widget)) {
        for (const QAction* action : menu->actions()) LookAtCaption(*action, action->text());
      }
      if (widget->isWindow() && IsForeign(widget->windowTitle())) {
        found.insert("title of " + widget->objectName().toStdString());
        EXPECT_TRUE(widget->windowHandle()->title().contains(QStringLiteral("[*]")))
            << "it has lost a piece: " << widget->windowHandle()->title().toStdString();
      }
      EXPECT_FALSE(IsForeign(widget->whatsThis()) || IsForeign(widget->statusTip()));
      LookAtTip(*widget);
    }
  }
  template <class Dialog, class... Parts>
  void LookAt(Parts&&... parts) {
    Dialog dialog(std::forward<Parts>(parts)...);
    dialog.show();
    Look();
  }

  /// Where foreign text was met, so that the look at it has not looked past it.
  std::set<std::string> found;
};

TEST_F(ForeignText, IsShownAsItIsWrittenInEveryWindow) {
  Fly();
  Look();
  LookAt<VldFrom2>(program, &Frame());
  LookAt<PreferForm>(program, &Frame());
  LookAt<frmConnPort>(program, &Frame());
  LookAt<frmSelectChannel>(std::uint8_t{1}, &Frame());
  LookAt<MdfTheatersFrm>(program, dialogs, &Frame());
  LookAt<TheateDetailsFrm>(program, 1U, &Frame());
  LookAt<MdfBullsFrm>(program, &Frame());
  LookAt<BullsDetailsFrm>(program, 1U, BullsDetailsFrm::Start::Zero, &Frame());
  LookAt<AboutFrm>(program, &Frame());
  LookAt<frmSavingMessage>(&Frame());
  LookAt<FontDialog>(base::FontRecord{.FontName = "<img src=x>&font", .FontSize = 10}, true, &Frame());
  for (const char* where : {"TreeView1", "List1", "Label10", "tip of Label10", "tip in TreeView1", "mnuConnList_1",
                            "mnuTheatername_1", "mnuBullseyesName_1", "mnuBullseyesName_2", "ListView1", "lblMail",
                            "title of TheateDetailsFrm", "title of BullsDetailsFrm"}) {
    EXPECT_TRUE(found.count(where)) << "no foreign text in " << where;
  }
}

TEST_F(ForeignText, NameOfATapeIsShownAsItIsWritten) {
  // What no file system refuses.
  const QString name = QStringLiteral("&lt;img src=x&gt; &tape.tap");
  ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("TAPES")));
  const link::Tables tables = test::SampleTables(0, 2, 2);
  const std::string bytes = test::GoldenHeader(1, 1000, 46347.25, 512.5, 300.25) + test::GoldenRecord(46347.25, tables);
  Write(("TAPES/" + name.toUtf8()).constData(), QByteArray::fromStdString(bytes));
  desk.FileAnswers = {folder.filePath(QStringLiteral("TAPES/") + name).toStdString()};
  RecFrm& player = Frame().Tools().The<RecFrm>();
  QTest::mouseClick(player.findChild<QAbstractButton*>(QStringLiteral("Command1")), Qt::LeftButton);
  ASSERT_TRUE(station.Tapes.Player.State().Loaded());
  Look();
  EXPECT_TRUE(found.count("tip of Label2"));
}

TEST_F(ForeignText, IsShownAsItIsWrittenInBoxes) {
  QtDesktop desktop(dialogs);
  desktop.SetOwner(&Frame());
  InNextDialog([this](QWidget& box) {
    EXPECT_EQ(static_cast<QMessageBox&>(box).textFormat(), Qt::PlainText);
    Look();
    box.close();
  });
  desktop.Message("<img src=x>&[*]", "<img src=x>&server", base::MessageIcon::Critical);
  EXPECT_TRUE(found.count("title of MessageBox"));
  EXPECT_TRUE(found.count("qt_msgbox_label"));
}

TEST_F(ForeignText, IsShownAsItIsWrittenInTheToolkitsOwnBoxes) {
  // The file dialog says in a box of its own which name it has not found.
  QMessageBox box(&Frame());
  box.setText(QStringLiteral("<img src=x>&file"));
  box.show();
  Look();
  EXPECT_TRUE(found.count("qt_msgbox_label"));
}

TEST(PlainText, CaptionKeepsWhatWouldMarkAnAccessKeyOrAShortcut) {
  EXPECT_EQ(AsCaption(QStringLiteral("A && B&")), QStringLiteral("A &&&& B&&"));
  EXPECT_EQ(AsCaption(QStringLiteral("A\tCtrl+Q")), QStringLiteral("A Ctrl+Q"));
}

TEST(PlainText, TitleKeepsWhatWouldMarkAChange) {
  QWidget window;
  window.setWindowTitle(AsTitle(QStringLiteral("[*]A[*][*]B")));
  window.show();
  EXPECT_TRUE(window.windowHandle()->title().startsWith(QStringLiteral("[*]A[*][*]B")))
      << window.windowHandle()->title().toStdString();
}

TEST(ToolTip, LetsThePointerThrough) {
  QWidget window;
  window.setToolTip(QStringLiteral("What it is"));
  window.resize(200, 100);
  window.show();
  Rest(window, QPoint(20, 20));
  ASSERT_NE(ShownTip(), nullptr);
  ASSERT_NE(ShownTip()->windowHandle(), nullptr);
  EXPECT_TRUE(ShownTip()->windowHandle()->flags().testFlag(Qt::WindowTransparentForInput));
  EXPECT_EQ(ShownTip()->windowType(), Qt::ToolTip);
  // Another text in the same window.
  window.setToolTip(QStringLiteral("What it is now"));
  Rest(window, QPoint(40, 40));
  ASSERT_NE(ShownTip(), nullptr);
  EXPECT_TRUE(ShownTip()->windowHandle()->flags().testFlag(Qt::WindowTransparentForInput));
  CloseTip();
}

}  // namespace
}  // namespace kestrel::shell
