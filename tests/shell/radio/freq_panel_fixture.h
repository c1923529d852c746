#pragma once

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMimeData>
#include <QTabBar>

#include "shell/areas/area_tables_fixture.h"
#include "shell/radio/freq_frm.h"

namespace kestrel::shell {

/// The panel over a few channels, three airfields of two teams and two folders of frequencies.
class FreqPanel : public AreaTables {
 protected:
  void SetUp() override {
    station.DefaultFrequencies.ChannelNames[1] = " Flight 1 ";
    for (std::size_t i = 1; i <= radio::ChannelCount; ++i) {
      station.DefaultFrequencies.DefaultUHF[i] = std::to_string(300000 + 100 * i);
      station.DefaultFrequencies.DefaultVHF[i] = std::to_string(130000 + 100 * i);
    }
    station.DefaultFrequencies.DefaultF1 = "349000";
    station.DefaultFrequencies.DefaultF2 = "0";
    Tables().CustomUHF[1] = " 297500 ";
    Tables().CustomVHF[2] = "138050";
    Tables().CustomUHF[3] = "0";
    Tables().CustomF1 = "243000";
    Tables().Teams[1] = "Blue";
    Tables().Teams[2] = "Red";
    AddAirfield("North Field", 1, "292300", "126500");
    AddAirfield("Far Harbour", 2, "305100", "0");
    AddAirfield("South Field", 1, "", "118250");
    AddEntries("Tankers", {{"Track one", "251000"}, {"Track two", "138050"}, {"Spare", "999"}});
    AddEntries("Ranges", {{"Tower", "118250"}});
    panel.Refresh(base::Changed::Frequencies);
    Activate(panel);
    MapDraws();
    voiceWindows.Operations = 0;
  }

  radio::Frequencies& Tables() { return station.Frequencies; }
  void AddAirfield(const char* name, std::uint8_t team, const char* uhf, const char* vhf) {
    radio::Airfield airfield;
    airfield.Name = name;
    airfield.TEAM_INDEX = team;
    airfield.UHF = uhf;
    airfield.VHF = vhf;
    airfield.TACAN = std::to_string(75 + Tables().Airfields.UpperBound());
    airfield.TACAN_BAND = "X";
    airfield.TACANR = 150;
    airfield.TACANX = 100.0 * static_cast<double>(Tables().Airfields.UpperBound() + 1);
    airfield.TACANY = 700;
    airfield.ILS = {"10930", "-", "-", "-"};
    airfield.ILS_DES = {"09L", "-", "-", "-"};
    airfield.ILS_R[0] = {airfield.TACANX + 2, airfield.TACANY + 4};
    Tables().Airfields.Append(std::move(airfield));
  }
  void AddEntries(const char* folder, std::initializer_list<radio::FreqEntry> entries) {
    radio::FreqFolder made;
    made.Name = folder;
    for (const radio::FreqEntry& entry : entries) made.Entries.Append(entry);
    Tables().FreqFolders.Append(std::move(made));
  }
  /// "North Field;Far Harbour;".
  std::string Airfields() {
    std::string names;
    for (const radio::Airfield& airfield : Tables().Airfields.Live()) names += airfield.Name + ";";
    return names;
  }
  /// "Ranges(Tower=118250;)".
  std::string Folders() {
    std::string names;
    for (const radio::FreqFolder& folder : Tables().FreqFolders.Live()) {
      names += folder.Name + "(";
      for (const radio::FreqEntry& entry : folder.Entries.Live()) names += entry.Description + "=" + entry.Value + ";";
      names += ")";
    }
    return names;
  }
  static constexpr const char* BothFolders =
      "Tankers(Track one=251000;Track two=138050;Spare=999;)Ranges(Tower=118250;)";
  /// The flags of an airfield: VIS, TACAN_VIS, ILS_VIS; "10.1000".
  std::string Flags(std::size_t index) {
    const radio::Airfield& airfield = Tables().Airfields[index];
    std::string flags = {airfield.VIS ? '1' : '0', airfield.TACAN_VIS ? '1' : '0', '.'};
    for (const bool on : airfield.ILS_VIS) flags += on ? '1' : '0';
    return flags;
  }

  QTabBar& Tabs() { return In<QTabBar>(panel, "TabStrip1"); }
  QTreeView& Tree(int tab) { return In<QTreeView>(panel, ("TreeView" + std::to_string(tab)).c_str()); }
  QTreeView& Tree() { return Tree(Tabs().currentIndex() + 1); }
  QLineEdit& Filter() { return In<QLineEdit>(panel, "txtFilter"); }
  std::string Selected() { return SelectedIn(Tree()); }
  bool Ticked(const char* box) { return In<QCheckBox>(panel, box).isChecked(); }
  /// Comes to a tab by a click on it.
  void Open(int tab) { QTest::mouseClick(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(tab - 1).center()); }
  /// Selects a node without a click, on its tab.
  void Stand(int tab, const char* key) {
    Open(tab);
    const QModelIndex at = At(Tree(), key);
    ASSERT_TRUE(at.isValid()) << key;
    Tree().setCurrentIndex(at);
  }
  void PressAt(int tab, const char* key, const char* button) {
    Stand(tab, key);
    Press(panel, button);
  }
  void SelectNothing(int tab) {
    Open(tab);
    Tree().selectionModel()->clear();
  }
  void Click(const char* key) { ClickNode(Tree(), key); }
  /// A key for the tree with that node selected.
  void KeyAt(int tab, const char* node, Qt::Key key) {
    Stand(tab, node);
    QTest::keyClick(&Tree(), key);
  }

  /// Runs `act` on the dialog that the next press opens.
  template <class Act>
  void InDialog(Act act) {
    QTimer::singleShot(0, &panel, [act] {
      QWidget* dialog = QApplication::activeModalWidget();
      ASSERT_NE(dialog, nullptr);
      act(*dialog);
    });
  }
  static void Type(QWidget& dialog, const char* name, const char* text) {
    auto& field = In<QLineEdit>(dialog, name);
    field.selectAll();
    QTest::keyClicks(&field, QString::fromLatin1(text));
  }
  /// OK with that value, and description where there is one.
  void TypeFreq(const char* value, const char* description = nullptr) {
    InDialog([value, description](QWidget& dialog) {
      Type(dialog, "txtFreqValue", value);
      if (description != nullptr) Type(dialog, "txtFreqDescr", description);
      Press(dialog, "cmdOK");
    });
  }
  void CancelDialog() {
    InDialog([](QWidget& dialog) { Press(dialog, "cmdCancel"); });
  }

  ModalCount modal;
  FreqFrm panel{program, modal, &frame};
};

}  // namespace kestrel::shell
