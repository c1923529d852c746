#pragma once

#include <cstdint>
#include <string>

#include "link/tables.h"
#include "shell/parts/row_model.h"

namespace kestrel::shell {

struct ClientRow {
  std::int16_t Id = 0;
  std::string Name;
  std::string Status;

  std::int16_t Key() const { return Id; }
  bool operator==(const ClientRow&) const = default;
};

/// The nodes of TreeView1: one for each record of Clients, also when an Id comes twice.
class ClientsModel final : public RowModel<ClientRow> {
 public:
  /// The node's key: Id, then "N".
  static constexpr int KeyRole = Qt::UserRole;
  /// The number of its picture, 0 for none.
  static constexpr int PictureRole = Qt::UserRole + 1;

  using RowModel::RowModel;
  /// Looks at no more of the clients than has been touched since the last time; `tables` are always the same.
  void Load(link::Tables& tables);
  QVariant data(const QModelIndex& index, int role) const override;
};

struct AIRow {
  std::string Name;  ///< as received, blanks and all: this is the item's text
  bool Friendly = false;

  const std::string& Key() const { return Name; }
  bool operator==(const AIRow&) const = default;
};

/// The items of List1: the latest snapshot, checked when friendly. A check that the person changes goes to
/// FriendlyList; what is loaded does not.
class AIListModel final : public RowModel<AIRow> {
 public:
  /// `tables` outlives the model.
  AIListModel(link::Tables& tables, QObject* owner) : RowModel(owner), plots(tables) {}
  void Load();
  /// Unchecks all items, and leaves FriendlyList alone.
  void UncheckAll();
  /// Whether the person may change checks.
  void SetCheckable(bool may);
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  link::Tables& plots;
  bool checkable = true;
};

}  // namespace kestrel::shell
