#include "shell/areas/areas_frm.h"

#include <QTemporaryDir>

#include "shell/areas/area_tables_fixture.h"

namespace kestrel::shell {
namespace {

/// Two folders, the first with the groups One and Three, the second with Two.
class AreaTree : public AreaTables {
 protected:
  void SetUp() override {
    AddFolder("First");
    AddFolder("Second", areas::Off);
    AddGroup("One", 1);
    AddGroup("Two", 2, areas::Off);
    AddGroup("Three", 1);
    tree.RefreshList({});
    Activate(tree);
    QObject::connect(&tree, &AreasFrm::GroupAsked, &tree, [this](std::size_t group) { asked.push_back(group); });
  }

  QTreeView& View() { return In<QTreeView>(tree, "TreeView1"); }
  QLineEdit& Filter() { return In<QLineEdit>(tree, "txtFilter"); }
  QLabel& Refused() { return In<QLabel>(tree, "lblRefused"); }
  std::string Selected() { return SelectedIn(View()); }
  void Stand(const char* key) { tree.RefreshList(QString::fromLatin1(key)); }
  /// Presses a button with that node selected.
  void PressAt(const char* key, const char* button) {
    Stand(key);
    Press(tree, button);
  }
  /// The editor of the selected node's name; null while none is open.
  QLineEdit* Editor() { return qobject_cast<QLineEdit*>(View().indexWidget(View().currentIndex())); }
  /// Types into the open editor of a name, and Enter.
  void TypeName(const QString& name) {
    QLineEdit* editor = Editor();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    Commit(*editor, name);
    QTest::keyClick(editor, Qt::Key_Return);
  }
  bool EditorGone() {
    return QTest::qWaitFor([this] { return Editor() == nullptr; });
  }
  /// Opens the menu at a node and runs `act` with it.
  template <class Act>
  void WithMenu(const char* key, Act act) {
    const QPoint place = PlaceOf(View(), key);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, View().viewport()->mapToGlobal(place));
    QApplication::sendEvent(View().viewport(), &event);
    auto* menu = tree.findChild<QMenu*>(QStringLiteral("PopUpAreas"));
    ASSERT_NE(menu, nullptr);
    act(*menu);
    menu->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  static QAction& Entry(QMenu& menu, const char* name) {
    auto* entry = menu.findChild<QAction*>(QString::fromLatin1(name));
    if (entry == nullptr) throw std::runtime_error(std::string("there is no ") + name);
    return *entry;
  }

  AreasFrm tree{program, &frame};
  std::vector<std::size_t> asked;
};

TEST_F(AreaTree, ShowsGroupsUnderTheirFolders) {
  AddGroup("Nowhere", 3);
  AddGroup("Nowhere else", 0);
  tree.RefreshList({});
  EXPECT_EQ(Keys(View()), "C1 D1 D3 C2 D2 ");
  EXPECT_EQ(Texts(View()), Words({"First", "One", "Three", "Second", "Two"}));
  EXPECT_TRUE(Marked(View(), "C1"));
  EXPECT_FALSE(Marked(View(), "C2"));
  EXPECT_TRUE(Marked(View(), "D1"));
  EXPECT_FALSE(Marked(View(), "D2"));
  const auto image = [this](const char* key) {
    return At(View(), key).data(Qt::DecorationRole).value<QIcon>().pixmap(16).toImage();
  };
  EXPECT_EQ(image("C1"), image("C2"));
  EXPECT_EQ(image("D1"), image("D2"));
  EXPECT_NE(image("C1"), image("D1"));
}

TEST_F(AreaTree, FlagsCountAsTheyAreHeld) {
  Catalogue().AreaFolders[2].Visible = 7;
  Catalogue().AreaGroups[2].Visible = 7;
  tree.RefreshList({});
  EXPECT_TRUE(Marked(View(), "C2")) << "of a folder any but 0 is true";
  EXPECT_FALSE(Marked(View(), "D2")) << "of a group -1 alone";
}

TEST_F(AreaTree, RefreshClosesAllAndOpensToTheNodeAskedFor) {
  View().expandAll();
  tree.RefreshList(QStringLiteral("D2"));
  EXPECT_FALSE(View().isExpanded(At(View(), "C1")));
  EXPECT_TRUE(View().isExpanded(At(View(), "C2")));
  EXPECT_EQ(Selected(), "D2");
  tree.RefreshList({});
  EXPECT_FALSE(View().isExpanded(At(View(), "C2")));
  EXPECT_EQ(Selected(), "");
}

TEST_F(AreaTree, ChangeOfOthersIsShown) {
  AddFolder("Imported");
  tree.Refresh(base::Changed::Areas);
  EXPECT_EQ(Keys(View()), "C1 D1 D3 C2 D2 C3 ");
}

TEST_F(AreaTree, ButtonsNeedTheirKindOfNode) {
  const char* const folder[] = {"cmdEditFolder", "cmdDeleteCategory"};
  const char* const group[] = {"Command2", "Command3"};
  const char* const any[] = {"Command1", "cmdMoveUp", "cmdMoveDown", "cmdMoveAllUp", "cmdMoveAllDown"};
  const auto expect = [&](const char* key, bool folders, bool groups, bool nodes) {
    SCOPED_TRACE(key);
    Stand(key);
    for (const char* button : folder) EXPECT_EQ(Enabled(tree, button), folders) << button;
    for (const char* button : group) EXPECT_EQ(Enabled(tree, button), groups) << button;
    for (const char* button : any) EXPECT_EQ(Enabled(tree, button), nodes) << button;
    EXPECT_TRUE(Enabled(tree, "cmdNewCategory"));
    EXPECT_TRUE(Enabled(tree, "chkSelectAll"));
  };
  expect("", false, false, false);
  expect("C1", true, false, true);
  expect("D1", false, true, true);
}

TEST_F(AreaTree, CaptionsAreWordForWord) {
  const std::pair<const char*, const char*> captions[] = {
      {"cmdNewCategory", "New Folder"},
      {"cmdEditFolder", "Edit Folder"},
      {"cmdDeleteCategory", "Delete Folder"},
      {"Command1", "New Group..."},
      {"Command2", "Edit Group..."},
      {"Command3", "Delete Group..."},
      {"cmdMoveUp", "Move Selected Up"},
      {"cmdMoveDown", "Move Selected Down"},
      {"cmdMoveAllUp", "Move Selected To Top"},
      {"cmdMoveAllDown", "Move Selected To Bottom"},
      {"chkSelectAll", "Select All"},
  };
  QStringList keys;
  for (const auto& [button, caption] : captions) {
    QString text = In<QAbstractButton>(tree, button).text();
    keys << text.mid(text.indexOf(u'&') + 1, 1).toUpper();
    EXPECT_EQ(text.remove(u'&'), QString::fromLatin1(caption));
  }
  const qsizetype all = keys.size();
  keys.removeDuplicates();
  EXPECT_EQ(keys.size(), all) << "no two have the same access key";
}

TEST_F(AreaTree, NewFolderComesLastAndIsSelected) {
  Stand("");
  Press(tree, "cmdNewCategory");
  EXPECT_EQ(Folders(), "First;Second;New Folder;");
  EXPECT_EQ(Catalogue().AreaFolders[3].Visible, areas::On);
  EXPECT_EQ(Selected(), "C3");
  EXPECT_EQ(MapDraws(), 0) << "nothing on the map has changed";
}

TEST_F(AreaTree, EmptyTreeSaysWhatToDoAndTakesTheFirstFolder) {
  Catalogue() = {};
  tree.RefreshList({});
  auto* hint = View().viewport()->findChild<QLabel*>();
  ASSERT_NE(hint, nullptr);
  EXPECT_TRUE(hint->isVisible());
  EXPECT_TRUE(hint->text().contains(QStringLiteral("New Folder")));
  Press(tree, "cmdNewCategory");
  EXPECT_EQ(Folders(), "New Folder;");
  EXPECT_FALSE(hint->isVisible());
}

TEST_F(AreaTree, EditFolderRenamesInPlace) {
  PressAt("C2", "cmdEditFolder");
  TypeName(QStringLiteral("Caf\u00e9 <b>&amp;"));
  ASSERT_TRUE(EditorGone());
  EXPECT_EQ(Folders(), "First;Caf\xe9 <b>&amp;;");
  EXPECT_EQ(TextOf(View(), "C2"), QStringLiteral("Caf\u00e9 <b>&amp;"));
  EXPECT_EQ(MapDraws(), 0);
}

TEST_F(AreaTree, F2RenamesAGroupAndTheTreeStaysOpen) {
  View().expandAll();
  ClickNode(View(), "D3");
  QTest::keyClick(&View(), Qt::Key_F2);
  TypeName(QStringLiteral("Drei"));
  ASSERT_TRUE(EditorGone());
  EXPECT_EQ(Groups(), "One@1;Two@2;Drei@1;");
  EXPECT_TRUE(View().isExpanded(At(View(), "C2")));
  EXPECT_EQ(asked, std::vector<std::size_t>()) << "Enter was for the name";
}

TEST_F(AreaTree, NameThatTheCodePageDoesNotHoldIsRefusedInWords) {
  PressAt("C1", "cmdEditFolder");
  TypeName(QStringLiteral("Base \u2192"));
  ASSERT_TRUE(QTest::qWaitFor([this] { return Refused().isVisible(); }));
  EXPECT_EQ(Folders(), "First;Second;");
  EXPECT_EQ(Refused().text(), QStringLiteral("This character cannot be used here: \u2192."));
  ASSERT_TRUE(QTest::qWaitFor([this] { return Editor() != nullptr; })) << "what was typed can be mended";
  EXPECT_EQ(Editor()->text(), QStringLiteral("Base \u2192"));
  TypeName(QStringLiteral("Base"));
  ASSERT_TRUE(EditorGone());
  EXPECT_EQ(Folders(), "Base;Second;");
  EXPECT_FALSE(Refused().isVisible());
}

TEST_F(AreaTree, NameHasAHundredCharacters) {
  PressAt("C1", "cmdEditFolder");
  TypeName(QString(140, u'x'));
  ASSERT_TRUE(EditorGone());
  EXPECT_EQ(Catalogue().AreaFolders[1].Name, std::string(100, 'x'));
}

TEST_F(AreaTree, LongNameThatIsOnlyLookedAtStays) {
  const std::string name(300, 'y');
  Catalogue().AreaFolders[1].Name = name;
  tree.RefreshList(QStringLiteral("C1"));
  EXPECT_EQ(TextOf(View(), "C1").size(), 300);
  Press(tree, "cmdEditFolder");
  ASSERT_NE(Editor(), nullptr);
  QTest::keyClick(Editor(), Qt::Key_Return);
  ASSERT_TRUE(EditorGone());
  EXPECT_EQ(Catalogue().AreaFolders[1].Name, name);
}

TEST_F(AreaTree, NamelessFolderIsSeenAndCanBeNamed) {
  Catalogue().AreaFolders[1].Name = "";
  tree.RefreshList(QStringLiteral("C1"));
  EXPECT_EQ(TextOf(View(), "C1"), QStringLiteral("(no name)"));
  EXPECT_EQ(Catalogue().AreaFolders[1].Name, "");
  Press(tree, "cmdEditFolder");
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(Editor()->text(), QString());
  TypeName(QStringLiteral("Named"));
  ASSERT_TRUE(EditorGone());
  EXPECT_EQ(Folders(), "Named;Second;");
  EXPECT_EQ(TextOf(View(), "C1"), QStringLiteral("Named"));
}

TEST_F(AreaTree, FolderWithGroupsIsDeletedOnYesAlone) {
  PressAt("C1", "cmdDeleteCategory");
  ExpectQuestion("Folder delete...",
                 "Are you sure you want to delete the First Folder? All Areas under it will be deleted also.");
  EXPECT_EQ(Groups(), "One@1;Two@2;Three@1;");
  desk.Answers = {base::Answer::Yes};
  Press(tree, "cmdDeleteCategory");
  EXPECT_EQ(Folders(), "Second;");
  EXPECT_EQ(Groups(), "Two@1;") << "the folders behind it have moved up by one";
  EXPECT_EQ(Selected(), "");
  EXPECT_EQ(MapDraws(), 1);
}

TEST_F(AreaTree, EmptyFolderGoesWithoutAQuestion) {
  AddFolder("Empty");
  PressAt("C3", "cmdDeleteCategory");
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(Folders(), "First;Second;");
  EXPECT_TRUE(View().hasFocus()) << "the keyboard is not left to a button that was disabled";
}

TEST_F(AreaTree, MarkupInANameIsAskedAboutAsItIsWritten) {
  Catalogue().AreaFolders[1].Name = "<i>A&B</i>";
  PressAt("C1", "cmdDeleteCategory");
  ExpectQuestion("Folder delete...",
                 "Are you sure you want to delete the <i>A&B</i> Folder? All Areas under it will be deleted also.");
  EXPECT_EQ(TextOf(View(), "C1"), QStringLiteral("<i>A&B</i>"));
}

TEST_F(AreaTree, NewGroupGoesIntoTheFolderOfTheSelectionAndIsEdited) {
  PressAt("C2", "Command1");
  EXPECT_EQ(Groups(), "One@1;Two@2;Three@1;New Area Group@2;");
  EXPECT_EQ(asked, std::vector<std::size_t>({4}));
  EXPECT_EQ(Selected(), "D4");
  PressAt("D3", "Command1");
  EXPECT_EQ(Groups(), "One@1;Two@2;Three@1;New Area Group@2;New Area Group@1;");
  EXPECT_EQ(asked, std::vector<std::size_t>({4, 5}));
}

TEST_F(AreaTree, EditGroupDoubleClickAndEnterAskForItsList) {
  PressAt("D3", "Command2");
  EXPECT_EQ(asked, std::vector<std::size_t>({3}));
  const QPoint place = PlaceOf(View(), "D1");
  QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(asked, std::vector<std::size_t>({3, 1}));
  QTest::keyClick(&View(), Qt::Key_Return);
  EXPECT_EQ(asked, std::vector<std::size_t>({3, 1, 1}));
  const QPoint folder = PlaceOf(View(), "C2");
  QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, folder);
  QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, folder);
  QTest::keyClick(&View(), Qt::Key_Return);
  EXPECT_EQ(asked.size(), 3u) << "a folder has no list";
}

TEST_F(AreaTree, GroupIsDeletedOnYesAlone) {
  AddArea(1, "Lost with it");
  PressAt("D1", "Command3");
  ExpectQuestion("Area delete...", "Are you sure you want to delete the One Area?");
  desk.Answers = {base::Answer::Yes};
  Press(tree, "Command3");
  EXPECT_EQ(Groups(), "Two@2;Three@1;");
  EXPECT_EQ(Selected(), "");
  EXPECT_EQ(MapDraws(), 1);
}

TEST_F(AreaTree, DeleteKeyIsTheButtonOfTheNode) {
  Stand("D1");
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Delete);
  ExpectQuestion("Area delete...", "Are you sure you want to delete the One Area?");
  Stand("C1");
  QTest::keyClick(&View(), Qt::Key_Delete);
  ExpectQuestion("Folder delete...",
                 "Are you sure you want to delete the First Folder? All Areas under it will be deleted also.");
}

TEST_F(AreaTree, GroupMovesAmongThoseOfItsFolder) {
  PressAt("D3", "cmdMoveUp");
  EXPECT_EQ(Groups(), "Three@1;Two@2;One@1;") << "Two keeps its place";
  EXPECT_EQ(Selected(), "D1");
  EXPECT_EQ(MapDraws(), 1) << "the order of drawing has changed";
  Press(tree, "cmdMoveUp");
  EXPECT_EQ(Groups(), "Three@1;Two@2;One@1;") << "it is the first of its folder";
  EXPECT_EQ(Selected(), "D1");
  EXPECT_EQ(MapDraws(), 0);
  Press(tree, "cmdMoveDown");
  EXPECT_EQ(Groups(), "One@1;Two@2;Three@1;");
  EXPECT_EQ(Selected(), "D3");
  AddGroup("Four", 1);
  PressAt("D4", "cmdMoveAllUp");
  EXPECT_EQ(Groups(), "Four@1;Two@2;One@1;Three@1;") << "the others keep their order";
  EXPECT_EQ(Selected(), "D1");
  Press(tree, "cmdMoveAllDown");
  EXPECT_EQ(Groups(), "One@1;Two@2;Three@1;Four@1;");
  EXPECT_EQ(Selected(), "D4");
}

TEST_F(AreaTree, FolderMovesWithItsGroups) {
  AddFolder("Third");
  PressAt("C3", "cmdMoveAllUp");
  EXPECT_EQ(Folders(), "Third;First;Second;");
  EXPECT_EQ(Groups(), "One@2;Two@3;Three@2;");
  EXPECT_EQ(Selected(), "C1");
  Press(tree, "cmdMoveDown");
  EXPECT_EQ(Folders(), "First;Third;Second;");
  EXPECT_EQ(Groups(), "One@1;Two@3;Three@1;");
  EXPECT_EQ(Selected(), "C2");
  Press(tree, "cmdMoveAllDown");
  EXPECT_EQ(Folders(), "First;Second;Third;");
  EXPECT_EQ(Selected(), "C3");
  Press(tree, "cmdMoveUp");
  EXPECT_EQ(Folders(), "First;Third;Second;");
  EXPECT_EQ(Selected(), "C2");
}

TEST_F(AreaTree, GroupDroppedOnAnotherFolderGoesThere) {
  QAbstractItemModel& model = *View().model();
  const std::unique_ptr<QMimeData> data(model.mimeData({At(View(), "D1")}));
  EXPECT_FALSE(model.canDropMimeData(data.get(), Qt::MoveAction, -1, -1, At(View(), "C1"))) << "its own";
  EXPECT_FALSE(model.canDropMimeData(data.get(), Qt::MoveAction, -1, -1, At(View(), "D2"))) << "no folder";
  ASSERT_TRUE(model.canDropMimeData(data.get(), Qt::MoveAction, -1, -1, At(View(), "C2")));
  model.dropMimeData(data.get(), Qt::MoveAction, -1, -1, At(View(), "C2"));
  EXPECT_EQ(Groups(), "One@2;Two@2;Three@1;");
  EXPECT_EQ(Keys(View()), "C1 D3 C2 D1 D2 ");
  EXPECT_EQ(Selected(), "D1");
  EXPECT_EQ(MapDraws(), 1);
  EXPECT_FALSE(model.flags(At(View(), "C1")).testFlag(Qt::ItemIsDragEnabled)) << "folders are not dragged";
}

TEST_F(AreaTree, MarkIsOfItsNodeAlone) {
  View().expandAll();
  ClickMark(View(), "C1");
  EXPECT_EQ(Catalogue().AreaFolders[1].Visible, areas::Off);
  EXPECT_EQ(Catalogue().AreaGroups[1].Visible, areas::On);
  EXPECT_EQ(Selected(), "C1");
  EXPECT_EQ(MapDraws(), 1);
  ClickMark(View(), "D2");
  EXPECT_EQ(Catalogue().AreaGroups[2].Visible, areas::On);
  EXPECT_EQ(Catalogue().AreaFolders[2].Visible, areas::Off);
  QTest::keyClick(&View(), Qt::Key_Space);
  EXPECT_EQ(Catalogue().AreaGroups[2].Visible, areas::Off);
  EXPECT_TRUE(View().isExpanded(At(View(), "C1"))) << "a mark closes nothing";
}

TEST_F(AreaTree, SelectAllGivesAllNodesItsState) {
  View().expandAll();
  Press(tree, "chkSelectAll");
  for (const char* key : {"C1", "C2", "D1", "D2", "D3"}) EXPECT_TRUE(Marked(View(), key)) << key;
  EXPECT_EQ(Catalogue().AreaFolders[2].Visible, areas::On);
  EXPECT_EQ(MapDraws(), 1);
  EXPECT_TRUE(View().isExpanded(At(View(), "C1")));
  Press(tree, "chkSelectAll");
  for (const char* key : {"C1", "C2", "D1", "D2", "D3"}) EXPECT_FALSE(Marked(View(), key)) << key;
  EXPECT_EQ(Catalogue().AreaGroups[3].Visible, areas::Off);
}

TEST_F(AreaTree, FilterShowsWhatMatchesByName) {
  QTest::keyClicks(&Filter(), QStringLiteral("TH"));
  EXPECT_EQ(Keys(View()), "C1 D3 ");
  EXPECT_TRUE(View().isExpanded(At(View(), "C1")));
  Filter().setText(QStringLiteral("first"));
  EXPECT_EQ(Keys(View()), "C1 D1 D3 ") << "a folder comes with all its groups";
  Filter().setText(QStringLiteral("zebra"));
  EXPECT_EQ(Keys(View()), "");
  EXPECT_TRUE(View().viewport()->findChild<QLabel*>()->isVisible());
  Filter().clear();
  EXPECT_EQ(Keys(View()), "C1 D1 D3 C2 D2 ");
}

TEST_F(AreaTree, NothingIsOrderedWhileAFilterHidesNeighbours) {
  Filter().setText(QStringLiteral("three"));
  ClickNode(View(), "D3");
  for (const char* button : {"cmdMoveUp", "cmdMoveDown", "cmdMoveAllUp", "cmdMoveAllDown"}) {
    EXPECT_FALSE(Enabled(tree, button)) << button;
  }
  EXPECT_TRUE(Enabled(tree, "Command2"));
  Filter().clear();
  EXPECT_EQ(Selected(), "D3");
  EXPECT_TRUE(Enabled(tree, "cmdMoveUp"));
}

TEST_F(AreaTree, SelectAllIsOfThoseThatAFilterShows) {
  Filter().setText(QStringLiteral("two"));
  Press(tree, "chkSelectAll");
  Press(tree, "chkSelectAll");
  EXPECT_EQ(Catalogue().AreaFolders[2].Visible, areas::Off);
  EXPECT_EQ(Catalogue().AreaGroups[1].Visible, areas::On) << "it is not in the tree";
  EXPECT_EQ(Catalogue().AreaFolders[1].Visible, areas::On);
}

TEST_F(AreaTree, NewFolderUnderAFilterIsSeen) {
  Filter().setText(QStringLiteral("three"));
  Press(tree, "cmdNewCategory");
  EXPECT_EQ(Selected(), "C3");
  EXPECT_EQ(Filter().text(), QString());
}

TEST_F(AreaTree, UndoAndRedoByKeysShowTheNode) {
  desk.Answers = {base::Answer::Yes};
  PressAt("C1", "cmdDeleteCategory");
  MapDraws();
  QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Folders(), "First;Second;");
  EXPECT_EQ(Groups(), "One@1;Two@2;Three@1;");
  EXPECT_EQ(Keys(View()), "C1 D1 D3 C2 D2 ");
  EXPECT_EQ(Selected(), "C1");
  EXPECT_EQ(MapDraws(), 1);
  QTest::keyClick(&View(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(Folders(), "Second;");
  EXPECT_EQ(Keys(View()), "C1 D1 ");
  QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Folders(), "Second;");
}

TEST_F(AreaTree, UndoOfAMarkClosesNothing) {
  View().expandAll();
  ClickMark(View(), "D1");
  QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(Marked(View(), "D1"));
  EXPECT_EQ(Catalogue().AreaGroups[1].Visible, areas::On);
  EXPECT_TRUE(View().isExpanded(At(View(), "C2")));
}

TEST_F(AreaTree, MenuHoldsWhatCanBeDoneToItsNode) {
  WithMenu("C1", [](QMenu& menu) {
    for (const char* name : {"cmdNewCategory", "cmdEditFolder", "cmdDeleteCategory", "Command1", "cmdMoveDown"}) {
      EXPECT_TRUE(Entry(menu, name).isEnabled()) << name;
    }
    EXPECT_EQ(menu.findChild<QAction*>(QStringLiteral("Command2")), nullptr);
    EXPECT_FALSE(Entry(menu, "mnuUndoAreas").isEnabled());
    EXPECT_FALSE(Entry(menu, "mnuShowOnMap").isEnabled()) << "it holds no area";
    Entry(menu, "cmdMoveDown").trigger();
  });
  EXPECT_EQ(Folders(), "Second;First;");
  WithMenu("C2", [](QMenu& menu) {
    EXPECT_EQ(Entry(menu, "mnuUndoAreas").text(), QStringLiteral("Undo move of First\tCtrl+Z"));
    Entry(menu, "mnuUndoAreas").trigger();
  });
  EXPECT_EQ(Folders(), "First;Second;");
  View().expandAll();
  WithMenu("D1", [](QMenu& menu) {
    EXPECT_EQ(menu.findChild<QAction*>(QStringLiteral("cmdEditFolder")), nullptr);
    EXPECT_TRUE(Entry(menu, "mnuRedoAreas").isEnabled());
    Entry(menu, "Command2").trigger();
  });
  EXPECT_EQ(asked, std::vector<std::size_t>({1}));
}

TEST_F(AreaTree, ShowOnMapBringsTheAreasIntoView) {
  station.View.SurfaceWidth = 1000 * 15;
  station.View.SurfaceHeight = 1000 * 15;
  areas::Area& circle = AddArea(1, "Ring", areas::AreaType::Circle);
  circle.MinX = 100, circle.MaxX = 300, circle.MinY = 600, circle.MaxY = 800;
  View().expandAll();
  WithMenu("D1", [](QMenu& menu) { Entry(menu, "mnuShowOnMap").trigger(); });
  // The middle, 200 and 700, in view units: 15 to the map unit, Y from the upper edge of 1024.
  EXPECT_EQ(station.View.ViewCenterX, 200 * 15);
  EXPECT_EQ(station.View.ViewCenterY, (1024 - 700) * 15);
  EXPECT_EQ(station.View.Resolution, 1);
  EXPECT_EQ(MapDraws(), 1);
}

TEST_F(AreaTree, GeoJsonGoesOutAndComesBackByTheMenu) {
  const QTemporaryDir folder;
  const std::string file = folder.filePath(QStringLiteral("one.geojson")).toStdString();
  AddArea(1, "Point", areas::AreaType::Icon);
  desk.SaveAnswers = {file};
  desk.FileAnswers = {file};
  View().expandAll();
  WithMenu("D1", [](QMenu& menu) { Entry(menu, "mnuExportGeoJson").trigger(); });
  WithMenu("C2", [](QMenu& menu) { Entry(menu, "mnuImportGeoJson").trigger(); });
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(Folders(), "First;Second;First;");
  EXPECT_EQ(Groups(), "One@1;Two@2;Three@1;One@3;");
  EXPECT_EQ(Areas(4), "Point;");
  EXPECT_EQ(Selected(), "C3");
  EXPECT_EQ(MapDraws(), 1);
}

TEST_F(AreaTree, EverythingIsReachedByTab) {
  Stand("C1");
  Filter().setFocus();
  QStringList reached;
  for (int step = 0; step < 30; ++step) {
    reached << QApplication::focusWidget()->objectName();
    Key(Qt::Key_Tab);
  }
  for (const char* name : {"txtFilter", "TreeView1", "chkSelectAll", "cmdNewCategory", "cmdEditFolder",
                           "cmdDeleteCategory", "Command1", "cmdMoveUp", "cmdMoveAllDown"}) {
    EXPECT_TRUE(reached.contains(QString::fromLatin1(name))) << name;
  }
}

}  // namespace
}  // namespace kestrel::shell
