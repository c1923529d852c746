#include "shell/link/clients_models.h"

#include <utility>

#include "link/client_details.h"
#include "shell/core/text.h"
#include "shell/link/clients_pictures.h"

namespace kestrel::shell {

void ClientsModel::Load(const link::Tables& tables) {
  std::vector<ClientRow> wanted;
  wanted.reserve(tables.Clients.UpperBound());
  for (const link::PlotRecord& client : tables.Clients.Live())
    wanted.push_back({client.Id, client.Name, client.Status});
  Show(std::move(wanted));
}

QVariant ClientsModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const ClientRow& row = At(index);
  switch (role) {
    case Qt::DisplayRole:
      return FromBytes(row.Name);
    case Qt::DecorationRole:
      return StatusIcon(link::StatusPicture(row.Status));
    case Qt::ToolTipRole:
      return QStringLiteral("Id %1, status \"%2\"").arg(row.Id).arg(FromBytes(row.Status));
    case KeyRole:
      return FromBytes(link::ClientKey(row.Id));
    case PictureRole:
      return link::StatusPicture(row.Status);
    default:
      return {};
  }
}

void AIListModel::Load() {
  std::vector<AIRow> wanted;
  wanted.reserve(plots.AIPlots.UpperBound());
  for (const link::AIPlotRecord& plot : plots.AIPlots.Live()) wanted.push_back({plot.Name, plot.Hostile == 0});
  Show(std::move(wanted));
}

void AIListModel::UncheckAll() {
  if (Rows().empty()) return;
  for (AIRow& row : Rows()) row.Friendly = false;
  Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::CheckStateRole});
}

void AIListModel::SetCheckable(bool may) {
  if (std::exchange(checkable, may) == may || Rows().empty()) return;
  Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

QVariant AIListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::DisplayRole) return FromBytes(At(index).Name);
  if (role == Qt::CheckStateRole) return At(index).Friendly ? Qt::Checked : Qt::Unchecked;
  return {};
}

bool AIListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::CheckStateRole || !checkable) return false;
  AIRow& row = Rows()[static_cast<std::size_t>(index.row())];
  const bool friendly = value.value<Qt::CheckState>() == Qt::Checked;
  if (row.Friendly == friendly) return true;
  row.Friendly = friendly;
  link::CheckFriendly(row.Name, friendly, plots);
  Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
  return true;
}

Qt::ItemFlags AIListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Qt::ItemFlags always = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  return checkable ? always | Qt::ItemIsUserCheckable : always;
}

}  // namespace kestrel::shell
