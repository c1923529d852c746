#pragma once

#include <QFrame>
#include <QTimer>
#include <functional>

#include "core/program.h"
#include "map/plot_find.h"
#include "shell/parts/row_model.h"

class QLabel;
class QLineEdit;
class QListView;

namespace kestrel::shell {

struct FindRow {
  map::Aircraft Who;
  std::string Text;

  std::string Key() const { return Who.Real ? std::to_string(Who.Id) : "A" + Who.Name; }
  bool operator==(const FindRow&) const = default;
};

/// The rows of lstFind.
class FindModel final : public RowModel<FindRow> {
 public:
  using RowModel::RowModel;
  QVariant data(const QModelIndex& index, int role) const override;
};

/// The field over the map's upper left in which a person looks for an aircraft: txtFind filters the rows of lstFind,
/// the arrows choose, Enter asks for the chosen one, Esc closes. The list follows the tables.
class FindField final : public QFrame {
  Q_OBJECT
 public:
  static constexpr int FollowMs = 200;

  /// `owner` is the map's picture, `scene` what it draws; `running` outlives the field.
  FindField(core::Program& running, std::function<map::Scene()> scene, QWidget* owner);

  /// Shows it and gives it the keyboard; what was typed before is selected.
  void Open();
  /// Tables have changed: the list follows within FollowMs, once for all that comes meanwhile.
  void Follow();
  bool HasKeyboard() const;

 Q_SIGNALS:
  void Asked(const map::Aircraft& who);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Fill();
  void Ask();
  void Close();

  core::Program& program;
  std::function<map::Scene()> makeScene;
  QLineEdit* txtFind;
  QListView* lstFind;
  QLabel* lblFound;
  FindModel* model;
  QTimer follow;
};

}  // namespace kestrel::shell
