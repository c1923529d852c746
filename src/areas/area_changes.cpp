#include "areas/area_changes.h"

#include <algorithm>
#include <type_traits>

namespace kestrel::areas {
namespace {

template <class T>
base::Table<T>& TableOf(AreaCatalogue& catalogue, std::size_t group) {
  if constexpr (std::is_same_v<T, AreaFolder>) {
    return catalogue.AreaFolders;
  } else if constexpr (std::is_same_v<T, AreaGroup>) {
    return catalogue.AreaGroups;
  } else {
    return catalogue.AreaGroups[group].Areas;
  }
}

template <class T>
Change Run(AreaCatalogue& catalogue, Insert<T> insert) {
  base::Table<T>& table = TableOf<T>(catalogue, insert.Group);
  Take<T> back{insert.Group, {}};
  back.At.reserve(insert.Items.size());
  for (const Placed<T>& placed : insert.Items) back.At.push_back(placed.At);

  std::size_t from = table.UpperBound();
  std::size_t left = insert.Items.size();
  table.Resize(from + left);
  // From the end, so that each element moves once; what stands before the first place stays.
  for (std::size_t to = from + left; left != 0; --to) {
    if (insert.Items[left - 1].At == to) {
      table[to] = std::move(insert.Items[--left].Item);
    } else {
      table[to] = std::move(table[from--]);
    }
  }
  return back;
}

template <class T>
Change Run(AreaCatalogue& catalogue, Take<T> take) {
  base::Table<T>& table = TableOf<T>(catalogue, take.Group);
  Insert<T> back{take.Group, {}};
  if (take.At.empty()) return back;
  back.Items.reserve(take.At.size());
  std::size_t to = take.At.front();
  for (std::size_t from = to; from <= table.UpperBound(); ++from) {
    if (back.Items.size() < take.At.size() && take.At[back.Items.size()] == from) {
      back.Items.push_back({from, std::move(table[from])});
    } else {
      table[to++] = std::move(table[from]);
    }
  }
  table.Resize(to - 1);
  return back;
}

template <class T>
Change Run(AreaCatalogue& catalogue, Move<T> move) {
  TableOf<T>(catalogue, move.Group).Move(move.From, move.To);
  std::swap(move.From, move.To);
  return move;
}

Change Run(AreaCatalogue& catalogue, SwapGroups swap) {
  std::swap(catalogue.AreaGroups[swap.One], catalogue.AreaGroups[swap.Other]);
  return swap;
}

template <auto Field>
Change Run(AreaCatalogue& catalogue, Put<Field> put) {
  auto& table = TableOf<typename Put<Field>::Record>(catalogue, put.Group);
  for (auto& placed : put.Values) std::swap(table[placed.At].*Field, placed.Item);
  return put;
}

Change Run(AreaCatalogue& catalogue, ReplaceOne replace) {
  std::swap(catalogue.AreaGroups[replace.Group].Areas[replace.New.At], replace.New.Item);
  return replace;
}

template <class Number>
std::size_t Held(Number) {
  return 0;
}

std::size_t Held(const std::string& text) { return text.capacity(); }

std::size_t Held(const AreaFolder& folder) { return Held(folder.Name); }

std::size_t Held(const Area& area) {
  return Held(area.Name) + Held(area.Text) + Held(area.AltFont.Name) + Held(area.TextFont.Name) +
         area.Lines.Slots().size_bytes() + area.Points.Slots().size_bytes();
}

std::size_t Held(const AreaGroup& group) {
  std::size_t sum = Held(group.Name);
  for (const Area& area : group.Areas.Slots()) sum += sizeof(Area) + Held(area);
  return sum;
}

template <class T>
std::size_t Held(const std::vector<Placed<T>>& items) {
  std::size_t sum = items.size() * sizeof(Placed<T>);
  for (const Placed<T>& placed : items) sum += Held(placed.Item);
  return sum;
}

struct BytesOf {
  template <class T>
  std::size_t operator()(const Insert<T>& insert) const {
    return Held(insert.Items);
  }
  template <class T>
  std::size_t operator()(const Take<T>& take) const {
    return take.At.size() * sizeof(std::size_t);
  }
  template <class T>
  std::size_t operator()(const Move<T>&) const {
    return 0;
  }
  std::size_t operator()(const SwapGroups&) const { return 0; }
  template <auto Field>
  std::size_t operator()(const Put<Field>& put) const {
    return Held(put.Values);
  }
  std::size_t operator()(const ReplaceOne& replace) const { return Held(replace.New.Item); }
};

std::size_t BytesOfStep(const Step& step) {
  std::size_t sum = sizeof(Step) + Held(step.Text) + step.Changes.size() * sizeof(Change);
  for (const Change& change : step.Changes) sum += std::visit(BytesOf(), change);
  return sum;
}

bool ChangesGroups(const Step& step) {
  return std::ranges::any_of(step.Changes, [](const Change& change) {
    return std::holds_alternative<Insert<AreaGroup>>(change) || std::holds_alternative<Take<AreaGroup>>(change) ||
           std::holds_alternative<SwapGroups>(change);
  });
}

}  // namespace

Change Apply(AreaCatalogue& catalogue, Change change) {
  return std::visit([&catalogue](auto& made) { return Run(catalogue, std::move(made)); }, change);
}

Moved AreaHistory::Run(AreaCatalogue& catalogue, Steps& from, Steps& to) {
  if (from.empty() || open != nullptr) return {};
  Step step = std::move(from.back());
  from.pop_back();
  bytes -= step.Bytes;

  std::vector<Change> back;
  back.reserve(step.Changes.size());
  while (!step.Changes.empty()) {
    back.push_back(Apply(catalogue, std::move(step.Changes.back())));
    step.Changes.pop_back();
  }
  step.Changes = std::move(back);
  step.Joins.clear();
  ++catalogue.Revision;

  Moved moved{true, &from == &undo ? step.SelectBefore : step.SelectAfter, ChangesGroups(step)};
  Settle();
  Push(to, std::move(step));
  return moved;
}

void AreaHistory::Record(Step step) {
  while (!redo.empty()) DropOldest(redo);
  if (!step.Joins.empty() && !undo.empty() && undo.back().Joins == step.Joins) {
    // What takes the first of them back takes both back.
    undo.back().Text = std::move(step.Text);
    undo.back().SelectAfter = std::move(step.SelectAfter);
    return;
  }
  Push(undo, std::move(step));
}

void AreaHistory::Push(Steps& steps, Step step) {
  step.Bytes = BytesOfStep(step);
  bytes += step.Bytes;
  steps.push_back(std::move(step));
  KeepToLimit();
}

void AreaHistory::DropOldest(Steps& steps) {
  bytes -= steps.front().Bytes;
  steps.pop_front();
}

void AreaHistory::KeepToLimit() {
  // Of what can be redone those go first that would come last: without the earlier they could not be done.
  while (bytes > limit && !undo.empty()) DropOldest(undo);
  while (bytes > limit && !redo.empty()) DropOldest(redo);
}

void AreaHistory::Settle() {
  if (!undo.empty()) undo.back().Joins.clear();
}

void AreaHistory::Clear() {
  undo.clear();
  redo.clear();
  bytes = 0;
}

OneStep::OneStep(AreaCatalogue& changed, AreaHistory& recorder, std::string text, std::string joins)
    : catalogue(changed), history(recorder) {
  step.Text = std::move(text);
  step.Joins = std::move(joins);
  if (history.open == nullptr) history.open = this;
}

OneStep::~OneStep() {
  if (history.open != this) return;
  history.open = nullptr;
  if (step.Changes.empty()) return;
  ++catalogue.Revision;
  try {
    history.Record(std::move(step));
  } catch (...) {
    // No memory for it: what came before cannot be undone without it.
    history.Clear();
  }
}

void OneStep::Do(Change change) {
  std::vector<Change>& changes = history.open->step.Changes;
  changes.push_back(Apply(catalogue, std::move(change)));
}

void OneStep::Select(std::string before, std::string after) {
  step.SelectBefore = std::move(before);
  step.SelectAfter = std::move(after);
}

}  // namespace kestrel::areas
