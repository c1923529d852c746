#pragma once

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolButton>
#include <QTreeView>
#include <functional>

#include "link/feed_text.h"
#include "shell/link/clients_frm.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {

using test::AIRecord;
using test::ClientData;
using test::Message;
using Texts = std::vector<std::string>;

/// The window Clients of a station without a session.
class ClientsWindow : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    if (HasFatalFailure()) return;
    Start();
    SetAutoFriends(false);
    if (!Window().Expanded()) Window().MaxFrm();
    Frame().Strip().Check(core::ToolWindow::Clients).setChecked(true);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&Window()));
  }

  /// Connects, and three players join: 10 Adams, 20 Baker, 30 Clark.
  void Join() {
    Connect();
    socket.Arrive(Message("NEWCLT", ClientData("10", "Adams", "i", "O")) +
                  Message("NEWCLT", ClientData("20", "Baker", "i", "X")) +
                  Message("NEWCLT", ClientData("30", "Clark", "i", "-")));
  }
  void SetAutoFriends(bool on) {
    station.LinkOptions.AUTOFRIENDS = on;
    windows.Refresh(base::Changed::Options);
  }
  void Snapshot(const std::vector<std::string>& names) {
    std::string data;
    for (const std::string& name : names) data += AIRecord(name, "090", "10", "20");
    socket.Arrive(Message("AILOCA", data));
  }

  ClientsFrm& Window() { return Frame().Tools().The<ClientsFrm>(); }
  template <class Widget>
  Widget& Part(const char* name) {
    auto* part = Window().findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(part, nullptr) << name;
    return *part;
  }
  QTreeView& Tree() { return Part<QTreeView>("TreeView1"); }
  QListView& List() { return Part<QListView>("List1"); }
  QLineEdit& Callsign() { return Part<QLineEdit>("Text1"); }
  QCheckBox& Check(const char* name) { return Part<QCheckBox>(name); }
  QString User() { return Part<QLabel>("Label10").text(); }
  link::PlotRecord& Client(std::size_t index) { return station.Plots.Clients[index]; }
  std::size_t SelectedPlot() { return station.Session.SelectedPlot; }

  Texts Names() { return TextsOf(*Tree().model()); }
  Texts Items() { return TextsOf(*List().model()); }
  static Texts TextsOf(const QAbstractItemModel& model, int role = Qt::DisplayRole) {
    Texts texts;
    for (int row = 0; row < model.rowCount(); ++row)
      texts.push_back(model.index(row, 0).data(role).toString().toStdString());
    return texts;
  }
  QModelIndex Node(int row) { return Tree().model()->index(row, 0); }
  QVariant NodeData(int row, int role) { return Node(row).data(role); }
  bool Checked(int row) { return List().model()->index(row, 0).data(Qt::CheckStateRole) == Qt::Checked; }
  Texts Friends() {
    const auto live = station.Plots.FriendlyList.Live();
    return {live.begin(), live.end()};
  }

  void Click(int row, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(Tree().viewport(), button, {}, Tree().visualRect(Node(row)).center());
  }
  void ClickEmptyPlace() {
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, QPoint(20, Tree().viewport()->height() - 3));
  }
  static void Press(QCheckBox& box) { QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2)); }
  /// Presses the check of an item of List1.
  void PressCheck(int row) {
    const QRect item = List().visualRect(List().model()->index(row, 0));
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, QPoint(item.left() + 10, item.center().y()));
  }

  void ExpectReset() {
    EXPECT_EQ(User(), QStringLiteral("USER:"));
    EXPECT_EQ(Callsign().text(), QString());
    EXPECT_FALSE(Check("Check1").isChecked());
    EXPECT_FALSE(Check("chkHide").isChecked());
    for (const char* name : {"Text1", "cmdPlotColor", "Check1", "chkHide"}) {
      EXPECT_FALSE(Part<QWidget>(name).isEnabled()) << name;
    }
    EXPECT_FALSE(Tree().selectionModel()->hasSelection());
  }
};

}  // namespace kestrel::shell
