#pragma once

#include <QString>
#include <cstddef>
#include <vector>

#include "radio/frequency_tree.h"
#include "shell/parts/keyed_tree.h"

namespace kestrel::shell {

/// Nodes of frequencies as the rows of a tree.
struct FreqRows {
  std::vector<KeyedTree::Row> Rows;
  std::vector<QString> Open;  ///< rows that are there for what was found below them
};

/// The rows that stay when `wanted` is looked for: airfields, folders and entries that have it in their names, and what
/// has its digits in it; with what is above them and below them. All for a blank one. "297.5" finds 297500.
FreqRows RowsOf(const std::vector<radio::FreqNode>& nodes, const QString& wanted);

/// The key that a node has after a record has gone from place `from` of its list to `to`, or out of the list for 0.
/// `letter` is that with which the keys of the list's nodes begin.
QString Renumbered(const QString& key, QChar letter, std::size_t from, std::size_t to);

}  // namespace kestrel::shell
