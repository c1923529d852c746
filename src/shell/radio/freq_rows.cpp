#include "shell/radio/freq_rows.h"

#include <algorithm>

#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

using radio::FreqRecord;

/// What is looked for.
class Wanted {
 public:
  explicit Wanted(const QString& typed) : text(typed.trimmed()), digits(text) {
    digits.remove(u'.').remove(u',');
    const auto isDigit = [](QChar sign) { return sign.isDigit(); };
    hasDigit = std::any_of(digits.begin(), digits.end(), isDigit);
    if (!std::all_of(digits.begin(), digits.end(), isDigit)) digits.clear();
  }

  bool All() const { return text.isEmpty(); }
  bool FoundIn(const radio::FreqNode& node) const {
    switch (radio::ReadFreqKey(node.Key).Record) {
      case FreqRecord::Team:
        return false;
      case FreqRecord::TowerUHF:
      case FreqRecord::TowerVHF:
      case FreqRecord::TACAN:
      case FreqRecord::ILS:
        // They have no name.
        return hasDigit && Contains(FromBytes(node.Text));
      default:
        return Contains(FromBytes(node.Text));
    }
  }

 private:
  bool Contains(const QString& shown) const {
    return shown.contains(text, Qt::CaseInsensitive) || (!digits.isEmpty() && shown.contains(digits));
  }

  QString text;
  QString digits;  ///< of a text that is nothing else, but for a point
  bool hasDigit = false;
};

KeyedTree::Row RowOf(const radio::FreqNode& node, int parent) {
  constexpr KeyedTree::Mark marks[] = {KeyedTree::Mark::None, KeyedTree::Mark::Off, KeyedTree::Mark::On};
  KeyedTree::Row row{FromBytes(node.Key),
                     FromBytes(node.Text),
                     parent,
                     static_cast<int>(node.Image),
                     marks[static_cast<std::size_t>(node.Check)],
                     node.Renames,
                     node.Drags};
  row.Instead = QStringLiteral("(no name)");
  return row;
}

}  // namespace

FreqRows RowsOf(const std::vector<radio::FreqNode>& nodes, const QString& typed) {
  const Wanted wanted(typed);
  const std::size_t count = nodes.size();
  std::vector<bool> whole(count), stays(count), below(count);
  const auto parentOf = [&nodes](std::size_t at) { return static_cast<std::size_t>(nodes[at].Parent); };
  for (std::size_t at = 0; at < count; ++at) {
    whole[at] = wanted.All() || (nodes[at].Parent >= 0 && whole[parentOf(at)]) || wanted.FoundIn(nodes[at]);
  }
  // Parents stand before their children.
  for (std::size_t at = count; at-- > 0;) {
    stays[at] = whole[at] || below[at];
    if (stays[at] && nodes[at].Parent >= 0) below[parentOf(at)] = true;
  }
  FreqRows found;
  found.Rows.reserve(count);
  std::vector<int> numbers(count, -1);
  for (std::size_t at = 0; at < count; ++at) {
    if (!stays[at]) continue;
    numbers[at] = static_cast<int>(found.Rows.size());
    found.Rows.push_back(RowOf(nodes[at], nodes[at].Parent < 0 ? -1 : numbers[parentOf(at)]));
    if (!whole[at]) found.Open.push_back(found.Rows.back().Key);
  }
  return found;
}

QString Renumbered(const QString& key, QChar letter, std::size_t from, std::size_t to) {
  bool isNumber = false;
  const std::size_t at = key.startsWith(letter) ? key.sliced(1).toULongLong(&isNumber) : 0;
  if (!isNumber) return key;
  std::size_t now = at;
  if (at == from) {
    now = to;
  } else if (at > from && (to == 0 || at <= to)) {
    --now;
  } else if (at < from && to != 0 && at >= to) {
    ++now;
  }
  return now == 0 ? QString() : letter + QString::number(now);
}

}  // namespace kestrel::shell
