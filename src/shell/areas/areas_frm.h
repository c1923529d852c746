#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "areas/area_tree.h"
#include "base/changed.h"
#include "shell/parts/keyed_tree.h"
#include "shell/parts/tool_frm.h"
#include "shell/parts/undo_keys.h"

namespace Ui {
class AreasFrm;
}

namespace kestrel::shell {

class EmptyHint;

/// The tree of folders and groups of areas, whose marks decide what is on the map, with what adds, renames, deletes and
/// orders them.
class AreasFrm final : public ToolFrm {
  Q_OBJECT
 public:
  AreasFrm(core::Program& program, QWidget* frame);
  ~AreasFrm() override;

  /// Shows the folders and groups anew, all folders closed. The node `selectKey` ("C" and a folder's index, "D" and a
  /// group's) is selected and brought into view, for which a filter that hides it is emptied; no node for an empty key.
  void RefreshList(const QString& selectKey);

 Q_SIGNALS:
  /// The list of this group's areas is wanted.
  void GroupAsked(std::size_t group);

 protected:
  void ShowChanged(base::Changed what) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// On which node something can be done.
  enum class On { Nothing, Folder, Group, Node, NodeInOrder };
  struct Command;
  static const Command Commands[];

  void Connect();
  void LoadTree();
  std::vector<KeyedTree::Row> Rows() const;
  QString Wanted() const;
  /// Shows what stands in the filter.
  void Filter();
  /// Opens all folders while a filter holds text.
  void OpenFound();
  void ShowEnabled();
  bool Can(On on, const std::string& key) const;
  void Run(const Command& command);
  /// The node of a double click or Enter.
  void Choose();
  std::string Selected() const;
  /// After a change: the tree anew with that node selected, and the map.
  void ShowChange(const std::string& selectKey);

  void NewFolder(const std::string& key);
  void EditLabel(const std::string& key);
  void DeleteFolder(const std::string& key);
  void NewGroup(const std::string& key);
  void EditGroup(const std::string& key);
  void DeleteGroup(const std::string& key);
  template <areas::Way way>
  void Move(const std::string& key);
  void CheckAll(bool checked);
  void Undo(UndoStep<areas::AreaHistory> step);
  bool Rename(const QString& key, const QString& text);
  void ShowRefused(const QString& sentence);
  /// Opens the editor of a node again with what was typed into it.
  void EditAgain(const QString& key, const QString& text);
  void ShowMenu(const QPoint& place);
  void ShowOnMap(const std::string& key);

  std::unique_ptr<Ui::AreasFrm> form;
  KeyedTree* tree;
  EmptyHint* none = nullptr;
};

}  // namespace kestrel::shell
