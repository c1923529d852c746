#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "base/changed.h"
#include "map/aircraft.h"
#include "shell/link/clients_models.h"
#include "shell/link/name_proxy.h"
#include "shell/parts/tool_frm.h"

class QAbstractItemView;
class QLabel;
class QLineEdit;

namespace Ui {
class ClientsFrm;
}

namespace kestrel::shell {

/// The roster of real players with the details of the selected one, and the AI aircraft with their friendly checks.
class ClientsFrm final : public ToolFrm {
  Q_OBJECT
 public:
  ClientsFrm(core::Program& running, QWidget* frame);
  ~ClientsFrm() override;

  /// Shows or hides the plot of Clients(Index); an index that no client has does nothing.
  void ShowPlot(std::size_t Index);
  void HidePlot(std::size_t Index);
  /// The index in Clients of the client whose node PopUp3 was opened on, 0 when it has left.
  std::size_t PopUp3Client() const;

 Q_SIGNALS:
  /// A right click on a node; `place` on the screen.
  void PopUp3Asked(const QPoint& place);
  /// A double click on a player or on the name of an AI aircraft: it is to be shown on the map.
  void AircraftAsked(const map::Aircraft& who);

 protected:
  void ShowChanged(base::Changed what) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Fill { All, NotWhatIsEdited };

  void Connect();
  void LoadRoster();
  void LoadAIList();
  void ShowConnection();
  /// The pictures of the connection in the colours in use.
  void ShowPictures();
  /// By AUTOFRIENDS: Reset and the checks of the AI aircraft can be used while it is off.
  void ShowOptions();
  void ShowDetails(Fill fill);
  void EditCallsign();
  /// Gives both lists the height that is kept, half of what is more each, and the window with them.
  void FitHeight();
  /// The lower edge has been dragged so far, pixels: the window becomes as tall as its screen has room for.
  void DragHeight(int by);
  /// Gives the window the height that the sentence of a refused callsign needs, or none.
  void FitRefused();
  void AddFilter();
  /// What is typed into the filter goes for both lists; none is typed while it is hidden.
  void FilterNames();
  /// A click on the head of a list: its names from A to Z, from Z to A, as told.
  void SortNames(QAbstractItemView& view, QLabel& head);
  /// Puts the proxy between a list and its model while it does something.
  void UseProxy(QAbstractItemView& view);
  /// The row of the model behind a row of the view, and the way back.
  QModelIndex SourceRow(const QAbstractItemView& view, const QModelIndex& row) const;
  QModelIndex ViewRow(const QAbstractItemView& view, const QModelIndex& row) const;
  void PressedInTree();
  void NodeSelected();
  void AskPopUp3(const QPoint& place);
  /// A double click in tree or list at this place.
  void AskAircraft(const QAbstractItemView& view, QPoint place);
  void FollowEdit();
  void PickColor();
  void ResetFriends();
  /// Runs an edit and refreshes what it has changed.
  template <class Edit>
  void Change(const char* control, Edit edit);

  std::unique_ptr<Ui::ClientsFrm> form;
  ClientsModel* clients;
  AIListModel* aircraft;
  NameProxy* clientNames;
  NameProxy* aircraftNames;
  QLineEdit* txtFilter = nullptr;
  int heldHeight = 0;                   ///< CLIENTSHEIGHT when the lower edge was taken hold of
  std::optional<std::int16_t> popUpId;  ///< the client that PopUp3 was opened on
  bool updating = false;  ///< the tree is being changed by us: what it selects meanwhile is no one's choice
};

}  // namespace kestrel::shell
