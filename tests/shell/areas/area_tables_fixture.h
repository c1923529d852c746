#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>

#include "areas/area_tree.h"
#include "core/program.h"
#include "doubles/fake_clock.h"
#include "doubles/fake_global_keys.h"
#include "doubles/fake_socket.h"
#include "doubles/fake_voice.h"
#include "doubles/recording_host.h"
#include "doubles/recording_windows.h"
#include "doubles/scripted_desktop.h"
#include "shell/commit_text.h"
#include "shell/parts/modal_count.h"

namespace kestrel::shell {

/// A station with folders and groups of areas whose refreshes are kept, and hands for the windows over them.
class AreaTables : public testing::Test {
 protected:
  areas::AreaCatalogue& Catalogue() { return station.Areas; }
  void AddFolder(const std::string& name, areas::Flag visible = areas::On) {
    Catalogue().AreaFolders.Append({name, visible});
  }
  void AddGroup(const std::string& name, std::int32_t folder, areas::Flag visible = areas::On) {
    areas::AreaGroup group;
    group.Name = name;
    group.FolderIndex = folder;
    group.Visible = visible;
    Catalogue().AreaGroups.Append(std::move(group));
  }
  areas::Area& AddArea(std::size_t group, const std::string& name, areas::AreaType type = areas::AreaType::Region,
                       areas::Flag visible = areas::On) {
    areas::Area area;
    area.Name = name;
    area.Type = type;
    area.Visible = visible;
    return Catalogue().AreaGroups[group].Areas.Append(std::move(area));
  }
  /// The names of the folders, of the groups each with its folder, of the areas of a group.
  std::string Folders() {
    std::string names;
    for (const areas::AreaFolder& folder : Catalogue().AreaFolders.Live()) names += folder.Name + ";";
    return names;
  }
  std::string Groups() {
    std::string names;
    for (const areas::AreaGroup& group : Catalogue().AreaGroups.Live()) {
      names += group.Name + "@" + std::to_string(group.FolderIndex) + ";";
    }
    return names;
  }
  std::string Areas(std::size_t group) {
    std::string names;
    for (const areas::Area& area : Catalogue().AreaGroups[group].Areas.Live()) names += area.Name + ";";
    return names;
  }

  template <class Control>
  static Control& In(QWidget& window, const char* name) {
    auto* control = window.findChild<Control*>(QString::fromLatin1(name));
    if (control == nullptr) throw std::runtime_error(std::string("there is no ") + name);
    return *control;
  }
  static void Press(QWidget& window, const char* button) {
    QTest::mouseClick(&In<QAbstractButton>(window, button), Qt::LeftButton, {}, QPoint(8, 8));
  }
  static bool Enabled(QWidget& window, const char* button) { return In<QAbstractButton>(window, button).isEnabled(); }

  /// The node of that key, an index that is not valid when there is none.
  static QModelIndex At(QTreeView& view, const char* key) {
    if (view.model()->rowCount() == 0) return {};
    const QModelIndexList found = view.model()->match(view.model()->index(0, 0), Qt::UserRole, QString::fromLatin1(key),
                                                      1, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? QModelIndex() : found.front();
  }
  /// Its middle, once it is in view.
  static QPoint PlaceOf(QTreeView& view, const char* key) {
    const QModelIndex at = At(view, key);
    if (!at.isValid()) throw std::runtime_error(std::string("there is no node ") + key);
    view.scrollTo(at);
    return view.visualRect(at).center();
  }
  static void ClickNode(QTreeView& view, const char* key) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, PlaceOf(view, key));
  }
  static void ClickMark(QTreeView& view, const char* key) {
    PlaceOf(view, key);
    QStyleOptionViewItem option;
    option.initFrom(&view);
    option.rect = view.visualRect(At(view, key));
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    const QRect mark = view.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &view);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, mark.center());
  }
  static bool Marked(QTreeView& view, const char* key) {
    return At(view, key).data(Qt::CheckStateRole).toInt() == Qt::Checked;
  }
  static QString TextOf(QTreeView& view, const char* key) { return At(view, key).data().toString(); }
  static std::string SelectedIn(QTreeView& view) {
    const QModelIndexList rows = view.selectionModel()->selectedRows();
    return rows.isEmpty() ? "" : rows.front().data(Qt::UserRole).toString().toStdString();
  }
  /// The keys of all nodes in their order, a blank behind each.
  static std::string Keys(QTreeView& view, const QModelIndex& above = {}) {
    std::string keys;
    for (int row = 0; row < view.model()->rowCount(above); ++row) {
      const QModelIndex at = view.model()->index(row, 0, above);
      keys += at.data(Qt::UserRole).toString().toStdString() + " " + Keys(view, at);
    }
    return keys;
  }
  /// The texts of all nodes in their order.
  static QStringList Texts(QTreeView& view, const QModelIndex& above = {}) {
    QStringList texts;
    for (int row = 0; row < view.model()->rowCount(above); ++row) {
      const QModelIndex at = view.model()->index(row, 0, above);
      texts << at.data().toString();
      texts += Texts(view, at);
    }
    return texts;
  }

  static QStringList Words(std::initializer_list<const char*> words) {
    QStringList list;
    for (const char* word : words) list << QString::fromLatin1(word);
    return list;
  }

  void ExpectQuestion(const char* title, const std::string& text) {
    ASSERT_EQ(desk.Boxes.size(), 1u);
    EXPECT_EQ(desk.Boxes[0].Title, title);
    EXPECT_EQ(desk.Boxes[0].Text, text);
    EXPECT_EQ(desk.Boxes[0].Buttons, base::MessageButtons::YesNo);
    EXPECT_EQ(desk.Boxes[0].Enter, base::Answer::No);
    desk.Boxes.clear();
  }
  /// How often the map has been drawn since this was asked last.
  int MapDraws() {
    int draws = 0;
    for (const base::Changed what : windows.Refreshes) draws += Has(what, base::Changed::Map) ? 1 : 0;
    windows.Refreshes.clear();
    return draws;
  }
  static void Activate(QWidget& window) {
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  /// A key for whatever has the keyboard.
  static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }

  doubles::FakeClock clock;
  base::DebugLog log{clock};
  link::Capture capture{clock};
  core::Station station;
  doubles::ScriptedDesktop desk;
  doubles::RecordingWindows windows;
  doubles::FakeSocket socket;
  doubles::RecordingHost host;
  link::Session session{socket, desk, host, log, capture, station.Session, station.Plots, station.LinkOptions};
  doubles::FakeGlobalKeys globalKeys;
  doubles::FakeVoice voiceWindows;
  radio::VoiceBridge voice{voiceWindows, station.VoiceWindowName};
  core::Program program{station, desk, windows, log, capture, session, globalKeys, voice};
  ModalCount dialogs;
  QWidget frame;
};

}  // namespace kestrel::shell
