#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "base/changed.h"
#include "radio/frequency_changes.h"
#include "radio/frequency_edits.h"
#include "radio/frequency_tree.h"
#include "shell/parts/keyed_tree.h"
#include "shell/parts/modal_count.h"
#include "shell/parts/tool_frm.h"
#include "shell/parts/undo_keys.h"

class QCheckBox;
class QTreeView;

namespace Ui {
class FreqFrm;
}

namespace kestrel::shell {

class EmptyHint;
class IvcStatus;

/// The channels, the airfields with their navigation aids and the frequencies of the controller, a tab and a tree each.
/// A click on a frequency tunes the radio of the voice client.
class FreqFrm final : public ToolFrm {
  Q_OBJECT
 public:
  /// `dialogs` outlives the window.
  FreqFrm(core::Program& running, ModalCount& dialogs, QWidget* frame);
  ~FreqFrm() override;

  /// Shows tab `tab` anew, 1 to 3; all three for any other number. In the tree of `selectTab` the node `key` is
  /// selected and brought into view, for which a filter that hides it is emptied; without a key the first root,
  /// nothing, the first folder. `collapse`: all nodes are closed before that, otherwise what is open stays open.
  void RefreshList(int tab, int selectTab, const QString& key, bool collapse);
  /// Brings the boxes "Select All ..." and the marks of the teams in line with the tables.
  void UpdateTreeviewCheckBoxes();
  /// Clears the boxes "Select All ..."; no flag of an airfield changes.
  void ClearCheckboxes();
  /// Shows the state of the voice client.
  void RefreshIVCStatus();
  /// Tab 1 to 3.
  void ShowTab(int tab);
  /// Shows the first tab anew; what is selected there stays so.
  void ShowLoadedChannels();

  // The pop-up menu mnupopup4, for the node that it was opened on.
  /// Only while the voice client is connected, and for a node that has a value.
  bool MayTune() const;
  bool MayCopy() const;
  bool MayShowOnMap() const;
  /// Tunes a radio to the value, of whatever kind it is.
  void TuneUHF();
  void TuneVHF();
  void CopyOffered();
  void ShowOfferedOnMap();

 Q_SIGNALS:
  /// A right click on a node; `place` on the screen.
  void PopUp4Asked(const QPoint& place);
  /// cmdLoadChannels, cmdSaveChannels, cmdLoadAirports: what the simulator has is wanted, or what is here there.
  void LoadChannelsAsked();
  void SaveChannelsAsked();
  void LoadAirportsAsked();

 protected:
  void ShowChanged(base::Changed what) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// On which node something can be done.
  enum class On { Nothing, Channel, Airfield, Folder, Entry, FolderOrEntry };
  struct Command;
  static const Command Commands[];

  void LoadTrees();
  void Connect();
  void ConnectTree(QTreeView& view);
  std::vector<radio::FreqNode> Nodes(radio::FreqTab tab) const;
  void Build(radio::FreqTab tab, const QString& key, bool collapse, KeyedTree::KeyNow now);
  /// Opens what is above those that a filter has found, and says in an empty tree why it is empty.
  void ShowFound(radio::FreqTab tab, const std::vector<QString>& open);
  /// Marks the rows whose values the radios have.
  void ShowTuned(radio::FreqTab tab);
  QString Wanted(radio::FreqTab tab) const;
  void Filter();
  void ShowEnabled();
  bool Can(On on, const std::string& key) const;
  void Run(const Command& command);
  radio::Frequencies& Tables() { return program.State.Frequencies; }
  radio::FrequencyHistory& Steps() { return program.State.FrequencySteps; }
  radio::FreqTab Tab() const;
  KeyedTree& TreeOf(radio::FreqTab tab) const;
  QTreeView& ViewOf(radio::FreqTab tab) const;
  std::string Selected() const;
  std::array<QCheckBox*, 6> SelectAllControls() const;
  /// The tree of the current tab after an edit: what is open stays open, also where `now` gives it another key.
  void ShowEdited(const radio::Reselect& select, const KeyedTree::KeyNow& now = {});

  /// On whatever tab that was: it comes to the front.
  void Undo(UndoStep<radio::FrequencyHistory> step);
  void EditChannel(const std::string& key);
  void LoadBMS(const std::string& key);
  /// Tells by a signal that the button has been pressed.
  template <void (FreqFrm::*Asked)()>
  void Ask(const std::string& key);
  void AddFolder(const std::string& key);
  void EditFolder(const std::string& key);
  void DeleteFolder(const std::string& key);
  void AddFreq(const std::string& key);
  void EditFreq(const std::string& key);
  void DeleteFreq(const std::string& key);
  template <radio::FreqMove move>
  void MoveFreq(const std::string& key);
  /// What a drag does: an entry goes to the folder after its own, or before it.
  void MoveToFolder(const std::string& key, bool down);
  template <radio::FreqMove move>
  void MoveAirfield(const std::string& key);
  bool Check(const QString& key, bool on);
  void SelectAll(radio::SelectAllBox box, bool on);
  bool Rename(const QString& key, const QString& text);
  void ShowRefused(const QString& sentence);
  /// Opens the editor of a folder's name again with what was typed into it.
  void EditAgain(const QString& key, const QString& text);

  void Click(const std::string& key);
  void AskPopUp4(const QPoint& place);
  void Copy(const std::string& key);

  std::unique_ptr<Ui::FreqFrm> form;
  ModalCount& modal;
  std::array<KeyedTree*, 3> trees;
  IvcStatus* status = nullptr;
  EmptyHint* noAirfield = nullptr;
  EmptyHint* noFreq = nullptr;
  std::string offeredKey;    ///< of the node that the pop-up menu was opened on
  std::string offeredValue;  ///< to be tuned; empty: the node has none
  bool marked = false;       ///< the press that is under way has been on a check mark
};

}  // namespace kestrel::shell
