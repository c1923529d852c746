#include "shell/link/clients_models.h"

#include <algorithm>
#include <utility>

#include "link/client_details.h"
#include "shell/link/clients_pictures.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {

void ClientsModel::Load(link::Tables& tables) {
  const link::UntouchedClients untouched = tables.TakeUntouched();
  const std::size_t count = tables.Clients.UpperBound();
  const std::size_t common = std::min(count, Count());
  const std::size_t front = std::min(untouched.Front, common);
  const std::size_t back = std::min(untouched.Back, common - front);
  std::vector<ClientRow> wanted;
  wanted.reserve(count - front - back);
  for (std::size_t index = front + 1; index <= count - back; ++index) {
    const link::PlotRecord& client = tables.Clients[index];
    wanted.push_back({client.Id, client.Name, client.Status});
  }
  ShowBetween(front, std::move(wanted), back);
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
  if (Count() == 0) return;
  for (std::size_t row = 0; row < Count(); ++row) RowAt(row).Friendly = false;
  Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::CheckStateRole});
}

void AIListModel::SetCheckable(bool may) {
  if (std::exchange(checkable, may) == may || Count() == 0) return;
  Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

QVariant AIListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::DisplayRole) return FromBytes(At(index).Name);
  if (role == Qt::CheckStateRole) return At(index).Friendly ? Qt::Checked : Qt::Unchecked;
  if (role == Qt::ToolTipRole && !checkable) {
    return QStringLiteral("Friendly are the names of FriendlyNames.ini, while Auto Friends is on in the options");
  }
  return {};
}

bool AIListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::CheckStateRole || !checkable) return false;
  AIRow& row = RowAt(static_cast<std::size_t>(index.row()));
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
