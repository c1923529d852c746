#include "shell/areas/areas_details_list_frm.h"

#include <QComboBox>

#include "shell/areas/area_tables_fixture.h"
#include "shell/areas/select_area_group_frm.h"

namespace kestrel::shell {
namespace {

using areas::AreaType;

/// The list of the group Strikes: Alpha, Bravo, Charlie, of which Bravo is not marked; behind it the group Other.
class AreaList : public AreaTables {
 protected:
  void SetUp() override {
    AddFolder("Folder");
    AddGroup("Strikes", 1);
    AddGroup("Other", 1);
    AddArea(1, "Alpha", AreaType::Circle);
    AddArea(1, "Bravo", AreaType::Icon, areas::Off);
    AddArea(1, "Charlie", AreaType::FlightPlan);
    QObject::connect(&list, &AreasDetailsListFrm::AreaAsked, &list, [this](std::size_t area) { asked << area; });
    QObject::connect(&list, &AreasDetailsListFrm::Exited, &list, [this] { ++exits; });
    list.ShowGroup(1);
    Activate(list);
  }

  QTreeView& View() { return In<QTreeView>(list, "ListView1"); }
  QLineEdit& Name() { return In<QLineEdit>(list, "Text1"); }
  std::string Selected() { return SelectedIn(View()); }
  /// Runs `act` on the dialog that the next call opens.
  template <class Act>
  void InNextDialog(Act act) {
    QTimer::singleShot(0, qApp, [act] {
      QWidget* dialog = QApplication::activeModalWidget();
      ASSERT_NE(dialog, nullptr);
      act(*dialog);
    });
  }

  AreasDetailsListFrm list{program, dialogs, &frame};
  QList<std::size_t> asked;
  int exits = 0;
};

TEST_F(AreaList, ShowsTheAreasOfItsGroup) {
  EXPECT_EQ(list.windowTitle(), QStringLiteral("Strikes"));
  EXPECT_EQ(Name().text(), QStringLiteral("Strikes"));
  EXPECT_EQ(In<QLabel>(list, "lblName").text().remove(u'&'), QStringLiteral("Area Group Name:"));
  EXPECT_EQ(Keys(View()), "D1 D2 D3 ");
  EXPECT_EQ(Texts(View()), Words({"Alpha", "Bravo", "Charlie"}));
  EXPECT_TRUE(Marked(View(), "D1"));
  EXPECT_FALSE(Marked(View(), "D2"));
  EXPECT_EQ(list.GroupIndex(), 1u);
  EXPECT_EQ(Selected(), "D1");
  list.ShowGroup(2);
  EXPECT_EQ(list.windowTitle(), QStringLiteral("Other"));
  EXPECT_EQ(Keys(View()), "");
}

TEST_F(AreaList, EachTypeHasAnImageAndOthersNone) {
  areas::AreaCatalogue& catalogue = Catalogue();
  catalogue.AreaGroups[1].Areas.Clear();
  for (int type = 0; type <= 6; ++type) AddArea(1, "Any", static_cast<AreaType>(type));
  list.RefreshList();
  const auto image = [this](int type) {
    return View().model()->index(type, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(16).toImage();
  };
  EXPECT_TRUE(image(0).isNull());
  EXPECT_TRUE(image(6).isNull());
  for (int type = 1; type <= 5; ++type) {
    EXPECT_FALSE(image(type).isNull()) << type;
    for (int other = type + 1; other <= 5; ++other) EXPECT_NE(image(type), image(other)) << type << ' ' << other;
  }
}

TEST_F(AreaList, CaptionsAndTipsAreWordForWord) {
  const std::pair<const char*, const char*> captions[] = {
      {"Command1", "New Area..."},
      {"Command2", "Edit Area..."},
      {"Command3", "Delete Area..."},
      {"Command4", "Exit"},
      {"chkSelectAll", "Select All"},
      {"cmdCopySelected", "Copy Checked Areas"},
      {"cmdChangeSelected", "Change Color of Checked Areas"},
  };
  QStringList keys{QStringLiteral("G")};  // of "Area Group Name:"
  for (const auto& [button, caption] : captions) {
    QString text = In<QAbstractButton>(list, button).text();
    keys << text.mid(text.indexOf(u'&') + 1, 1).toUpper();
    EXPECT_EQ(text.remove(u'&'), QString::fromLatin1(caption));
  }
  const qsizetype all = keys.size();
  keys.removeDuplicates();
  EXPECT_EQ(keys.size(), all) << "no two have the same access key";
  const std::pair<const char*, const char*> tips[] = {{"cmdMoveUp", "Move Selected Up"},
                                                      {"cmdMoveDown", "Move Selected Down"},
                                                      {"cmdMoveAllUp", "Move Selected to Top"},
                                                      {"cmdMoveAllDown", "Move Selected To Bottom"}};
  for (const auto& [button, tip] : tips) {
    EXPECT_EQ(In<QAbstractButton>(list, button).toolTip(), QString::fromLatin1(tip));
    EXPECT_EQ(In<QAbstractButton>(list, button).accessibleName(), QString::fromLatin1(tip));
  }
}

TEST_F(AreaList, ForeignNamesAreShownAsTheyAreWritten) {
  Catalogue().AreaGroups[1].Name = "<b>A[*]&B</b>";
  AddArea(1, "<i>&x</i>");
  AddArea(1, "");
  AddArea(1, std::string(300, 'z'));
  list.RefreshList();
  EXPECT_EQ(list.windowTitle(), QStringLiteral("<b>A[*][*]&B</b>"));
  EXPECT_EQ(TextOf(View(), "D4"), QStringLiteral("<i>&x</i>"));
  EXPECT_EQ(TextOf(View(), "D5"), QStringLiteral("(no name)"));
  EXPECT_EQ(TextOf(View(), "D6").size(), 300);
  EXPECT_LE(View().columnWidth(0), View().viewport()->width()) << "a long name ends in an ellipsis";
}

TEST_F(AreaList, TypedNameIsWrittenAtOnceAndUndoneAsOne) {
  Name().setFocus();
  Name().selectAll();
  QTest::keyClicks(&Name(), QStringLiteral("CAP"));
  EXPECT_EQ(Catalogue().AreaGroups[1].Name, "CAP");
  EXPECT_EQ(list.windowTitle(), QStringLiteral("CAP"));
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Catalogue().AreaGroups[1].Name, "Strikes");
  EXPECT_EQ(Name().text(), QStringLiteral("Strikes"));
  EXPECT_EQ(list.windowTitle(), QStringLiteral("Strikes"));
  EXPECT_EQ(exits, 0);
}

TEST_F(AreaList, EnterEndsTheTypingOfTheName) {
  Name().setFocus();
  QTest::keyClicks(&Name(), QStringLiteral("x"));
  QTest::keyClick(&Name(), Qt::Key_Return);
  EXPECT_TRUE(asked.isEmpty()) << "it opens no area";
  EXPECT_TRUE(View().hasFocus());
  Name().setFocus();
  QTest::keyClicks(&Name(), QStringLiteral("y"));
  EXPECT_EQ(station.AreaSteps.UndoText(), "rename of " + Catalogue().AreaGroups[1].Name);
  station.AreaSteps.Undo(Catalogue());
  EXPECT_EQ(Catalogue().AreaGroups[1].Name, "Strikesx") << "what is typed after it is a step of its own";
}

TEST_F(AreaList, NameThatTheCodePageDoesNotHoldIsRefusedInWords) {
  Name().selectAll();
  Commit(Name(), QStringLiteral("\u2192"));
  EXPECT_EQ(Catalogue().AreaGroups[1].Name, "Strikes");
  auto& refused = In<QLabel>(list, "lblRefused");
  EXPECT_TRUE(refused.isVisible());
  EXPECT_EQ(refused.text(), QStringLiteral("This character cannot be used here: \u2192."));
  Name().selectAll();
  Commit(Name(), QStringLiteral("Z\u00fcrich"));
  EXPECT_EQ(Catalogue().AreaGroups[1].Name, "Z\xfcrich");
  EXPECT_FALSE(refused.isVisible());
}

TEST_F(AreaList, NameHasAHundredCharacters) {
  Name().selectAll();
  Commit(Name(), QString(140, u'n'));
  EXPECT_EQ(Catalogue().AreaGroups[1].Name, std::string(100, 'n'));
}

TEST_F(AreaList, NewAndEditAskForTheEditor) {
  Press(list, "Command1");
  EXPECT_EQ(asked, QList<std::size_t>({0}));
  ClickNode(View(), "D2");
  Press(list, "Command2");
  EXPECT_EQ(asked, QList<std::size_t>({0, 2}));
  QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, PlaceOf(View(), "D2"));
  EXPECT_EQ(asked, QList<std::size_t>({0, 2, 2}));
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Down);
  QTest::keyClick(&View(), Qt::Key_Return);
  EXPECT_EQ(asked, QList<std::size_t>({0, 2, 2, 3}));
}

TEST_F(AreaList, EmptyListHasNothingToEditAndSaysWhatToDo) {
  list.ShowGroup(2);
  EXPECT_TRUE(Enabled(list, "Command1"));
  for (const char* button : {"Command2", "Command3", "cmdMoveUp", "cmdMoveDown", "cmdMoveAllUp", "cmdMoveAllDown",
                             "cmdCopySelected", "cmdChangeSelected"}) {
    EXPECT_FALSE(Enabled(list, button)) << button;
  }
  QTest::keyClick(&View(), Qt::Key_Return);
  QTest::keyClick(&View(), Qt::Key_Delete);
  EXPECT_TRUE(asked.isEmpty());
  EXPECT_TRUE(desk.Boxes.empty());
  auto* hint = View().viewport()->findChild<QLabel*>();
  ASSERT_NE(hint, nullptr);
  EXPECT_TRUE(hint->isVisible());
}

TEST_F(AreaList, AreaIsDeletedOnYesAlone) {
  ClickNode(View(), "D2");
  Press(list, "Command3");
  ExpectQuestion(" Confirm...", "Are you sure you want to delete this Bravo?");
  EXPECT_EQ(Areas(1), "Alpha;Bravo;Charlie;");
  desk.Answers = {base::Answer::Yes, base::Answer::Yes};
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Delete);
  EXPECT_EQ(Areas(1), "Alpha;Charlie;");
  EXPECT_EQ(Keys(View()), "D1 D2 ");
  EXPECT_EQ(Selected(), "D2") << "the next one";
  EXPECT_EQ(MapDraws(), 1);
  Press(list, "Command3");
  EXPECT_EQ(Areas(1), "Alpha;");
  EXPECT_EQ(Selected(), "D1");
  QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Areas(1), "Alpha;Charlie;");
  QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Areas(1), "Alpha;Bravo;Charlie;");
  QTest::keyClick(&View(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(Areas(1), "Alpha;Charlie;");
  EXPECT_EQ(exits, 0);
}

TEST_F(AreaList, MovedRowStaysSelectedAndSeen) {
  for (int n = 4; n <= 60; ++n) AddArea(1, std::to_string(n));
  list.RefreshList();
  ClickNode(View(), "D2");
  MapDraws();
  Press(list, "cmdMoveUp");
  EXPECT_EQ(Areas(1).substr(0, 20), "Bravo;Alpha;Charlie;");
  EXPECT_EQ(Selected(), "D1");
  EXPECT_EQ(MapDraws(), 1);
  Press(list, "cmdMoveUp");
  EXPECT_EQ(Areas(1).substr(0, 20), "Bravo;Alpha;Charlie;") << "it is the first";
  EXPECT_EQ(MapDraws(), 0);
  Press(list, "cmdMoveAllDown");
  EXPECT_EQ(Catalogue().AreaGroups[1].Areas[60].Name, "Bravo");
  EXPECT_EQ(Selected(), "D60");
  EXPECT_TRUE(View().viewport()->rect().contains(View().visualRect(At(View(), "D60")).center()));
  Press(list, "cmdMoveDown");
  EXPECT_EQ(Selected(), "D60");
  Press(list, "cmdMoveAllUp");
  EXPECT_EQ(Areas(1).substr(0, 20), "Bravo;Alpha;Charlie;");
  EXPECT_TRUE(View().viewport()->rect().contains(View().visualRect(At(View(), "D1")).center()));
  Press(list, "cmdMoveDown");
  EXPECT_EQ(Areas(1).substr(0, 20), "Alpha;Bravo;Charlie;");
  EXPECT_EQ(Selected(), "D2");
}

TEST_F(AreaList, MarkDecidesWhatIsOnTheMap) {
  ClickMark(View(), "D2");
  EXPECT_EQ(Catalogue().AreaGroups[1].Areas[2].Visible, areas::On);
  EXPECT_EQ(Selected(), "D2");
  EXPECT_EQ(MapDraws(), 1);
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Space);
  EXPECT_EQ(Catalogue().AreaGroups[1].Areas[2].Visible, areas::Off);
}

TEST_F(AreaList, SelectAllDrawsOnce) {
  Press(list, "chkSelectAll");
  for (const char* key : {"D1", "D2", "D3"}) EXPECT_TRUE(Marked(View(), key)) << key;
  EXPECT_EQ(MapDraws(), 1);
  Press(list, "chkSelectAll");
  for (const areas::Area& area : Catalogue().AreaGroups[1].Areas.Live()) EXPECT_EQ(area.Visible, areas::Off);
  EXPECT_FALSE(Enabled(list, "cmdCopySelected")) << "nothing is checked";
  EXPECT_FALSE(Enabled(list, "cmdChangeSelected"));
}

TEST_F(AreaList, CheckedAreasAreCopiedToTheGroupThatIsChosen) {
  Catalogue().AreaGroups[2].Name = "<u>Other</u>";
  InNextDialog([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), QStringLiteral("SelectAreaGroupfrm"));
    EXPECT_EQ(In<QLabel>(dialog, "lblPrompt").text().remove(u'&'),
              QStringLiteral("Select the Area Group that these Areas will be copied to:"));
    auto& groups = In<QComboBox>(dialog, "Combo1");
    ASSERT_EQ(groups.count(), 2);
    EXPECT_EQ(groups.currentIndex(), -1);
    EXPECT_EQ(groups.itemText(1), QStringLiteral("<u>Other</u>"));
    groups.setFocus();
    QTest::keyClick(&groups, Qt::Key_End);
    Press(dialog, "cmdOK");
  });
  Press(list, "cmdCopySelected");
  EXPECT_EQ(Areas(2), "Alpha;Charlie;");
  EXPECT_EQ(Areas(1), "Alpha;Bravo;Charlie;");
  EXPECT_EQ(Catalogue().AreaGroups[2].Areas[1].Type, AreaType::Circle);
  EXPECT_EQ(MapDraws(), 1);
}

TEST_F(AreaList, CopyToItsOwnGroupDoublesTheCheckedAreas) {
  InNextDialog([](QWidget& dialog) {
    In<QComboBox>(dialog, "Combo1").setCurrentIndex(0);
    Press(dialog, "cmdOK");
  });
  Press(list, "cmdCopySelected");
  EXPECT_EQ(Areas(1), "Alpha;Bravo;Charlie;Alpha;Charlie;");
  EXPECT_EQ(Keys(View()), "D1 D2 D3 D4 D5 ");
}

TEST_F(AreaList, CopyWithoutATargetDoesNothing) {
  InNextDialog([](QWidget& dialog) {
    EXPECT_FALSE(In<QPushButton>(dialog, "cmdCancel").isDefault());
    Press(dialog, "cmdOK");
  });
  Press(list, "cmdCopySelected");
  InNextDialog([](QWidget& dialog) {
    In<QComboBox>(dialog, "Combo1").setCurrentIndex(1);
    Press(dialog, "cmdCancel");
  });
  Press(list, "cmdCopySelected");
  EXPECT_EQ(Areas(1), "Alpha;Bravo;Charlie;");
  EXPECT_EQ(Areas(2), "");
  EXPECT_EQ(MapDraws(), 0);
}

TEST_F(AreaList, CheckedAreasGetTheColourThatIsChosen) {
  Catalogue().AreaGroups[1].Areas[1].Color = 0x112233;
  desk.ColourAnswers = {std::nullopt, 0x0000ff};
  Press(list, "cmdChangeSelected");
  EXPECT_EQ(desk.ColourQuestions, std::vector<base::Colour>({0x112233}));
  EXPECT_EQ(Catalogue().AreaGroups[1].Areas[1].Color, 0x112233);
  EXPECT_EQ(MapDraws(), 0) << "it was cancelled";
  Press(list, "cmdChangeSelected");
  EXPECT_EQ(Catalogue().AreaGroups[1].Areas[1].Color, 0x0000ff);
  EXPECT_EQ(Catalogue().AreaGroups[1].Areas[2].Color, 0);
  EXPECT_EQ(Catalogue().AreaGroups[1].Areas[3].Color, 0x0000ff);
  EXPECT_EQ(MapDraws(), 1);
  EXPECT_TRUE(list.isVisible());
}

TEST_F(AreaList, ExitEscAndClosingAreOneExitEach) {
  Press(list, "Command4");
  EXPECT_FALSE(list.isVisible());
  EXPECT_EQ(exits, 1);
  Activate(list);
  QTest::keyClick(&View(), Qt::Key_Escape);
  EXPECT_FALSE(list.isVisible());
  EXPECT_EQ(exits, 2);
  Activate(list);
  list.close();
  EXPECT_FALSE(list.isVisible());
  EXPECT_EQ(exits, 3);
  list.close();
  EXPECT_EQ(exits, 3) << "it is closed already";
  Activate(list);
  list.hide();
  EXPECT_EQ(exits, 3) << "hidden for the editor";
}

TEST_F(AreaList, UndoThatMovesGroupsClosesIt) {
  areas::NewFolder(Catalogue(), station.AreaSteps);
  areas::DeleteGroup(Catalogue(), station.AreaSteps, "D2");
  QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Groups(), "Strikes@1;Other@1;");
  EXPECT_EQ(exits, 1);
  EXPECT_FALSE(list.isVisible());
  EXPECT_EQ(MapDraws(), 1);
}

TEST_F(AreaList, EverythingIsReachedByTab) {
  View().setFocus();
  QStringList reached;
  for (int step = 0; step < 20; ++step) {
    reached << QApplication::focusWidget()->objectName();
    Key(Qt::Key_Tab);
  }
  for (const char* name :
       {"ListView1", "chkSelectAll", "cmdMoveUp", "cmdMoveDown", "cmdMoveAllUp", "cmdMoveAllDown", "Command1",
        "Command2", "Command3", "cmdCopySelected", "cmdChangeSelected", "Command4", "Text1"}) {
    EXPECT_TRUE(reached.contains(QString::fromLatin1(name))) << name;
  }
}

}  // namespace
}  // namespace kestrel::shell
