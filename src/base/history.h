#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/table_changes.h"

// What the person did to tables, to be undone and redone.
namespace kestrel::base {

/// What the person did at once.
template <class Change>
struct Step {
  std::string Text = {};             ///< "delete of General", for a menu behind "Undo "
  std::vector<Change> Changes = {};  ///< that take it back (or do it again), to be applied from the last to the first
  std::string SelectBefore = {};     ///< key of the node that is selected when it has been taken back, or empty
  std::string SelectAfter = {};      ///< and when it has been done
  std::string Joins = {};            ///< a step of the same, not empty, right behind it is one with it: typing
  std::size_t Bytes = 0;             ///< of memory, about
};

/// The steps that can be undone and redone. `Tables` counts its `Revision`; `Change` is a variant of changes, to which
/// belong, in the namespace of the tables, `Change Apply(Tables&, Change)`, giving the change that takes it back, and
/// what its records hold (`Held`). `Moved` says what is to be shown after an Undo or Redo: whether it was `Done`, the
/// key to `Select`, and what it reads off each change by `Note`.
template <class Tables, class Change, class Moved>
class History {
 public:
  class OneStep;

  /// All steps together hold about `most` bytes at most; the oldest go. A step that holds more by itself cannot be
  /// undone.
  explicit History(std::size_t most = std::size_t{64} << 20) : limit(most) {}

  Moved Undo(Tables& tables) { return Run(tables, undo, redo); }
  Moved Redo(Tables& tables) { return Run(tables, redo, undo); }

  /// "delete of General"; empty when there is nothing to undo.
  std::string_view UndoText() const { return undo.empty() ? std::string_view() : undo.back().Text; }
  std::string_view RedoText() const { return redo.empty() ? std::string_view() : redo.back().Text; }

  /// What is typed from now on is a step of its own.
  void Settle() {
    if (!undo.empty()) undo.back().Joins.clear();
  }
  /// For other tables: nothing of these can be undone.
  void Clear() {
    undo.clear();
    redo.clear();
    bytes = 0;
  }

  /// About how much memory the steps hold.
  std::size_t Bytes() const { return bytes; }

 private:
  using Steps = std::deque<Step<Change>>;
  Moved Run(Tables& tables, Steps& from, Steps& to);
  void Record(Step<Change> step);
  void Push(Steps& steps, Step<Change> step);
  void DropOldest(Steps& steps);

  std::size_t limit;
  std::size_t bytes = 0;
  Steps undo;               ///< the last done at the back
  Steps redo;               ///< the last undone at the back
  OneStep* open = nullptr;  ///< the outermost that lives
};

/// While it lives, all that is done to the tables is one step; inside another, it is part of that one. Without a
/// change there is no step. What has been done when a failure passes through is recorded too.
template <class Tables, class Change, class Moved>
class History<Tables, Change, Moved>::OneStep {
 public:
  /// Both outlive it. `joins` as in Step.
  OneStep(Tables& changed, History& recorder, const std::string& text, const std::string& joins = {})
      : tables(changed), history(recorder), step{.Text = text, .Joins = joins} {
    if (history.open == nullptr) history.open = this;
  }
  ~OneStep() {
    if (history.open != this) return;
    history.open = nullptr;
    if (step.Changes.empty()) return;
    ++tables.Revision;
    try {
      history.Record(std::move(step));
    } catch (...) {
      // No memory for it: what came before cannot be undone without it.
      history.Clear();
    }
  }
  OneStep(const OneStep&) = delete;
  OneStep& operator=(const OneStep&) = delete;

  void Do(Change change) { history.open->step.Changes.push_back(Apply(tables, std::move(change))); }
  /// The keys to be selected when the step has been taken back, and when it has been done.
  void Select(const std::string& before, const std::string& after) {
    step.SelectBefore = before;
    step.SelectAfter = after;
  }

 private:
  Tables& tables;
  History& history;
  Step<Change> step;
};

template <class Tables, class Change, class Moved>
Moved History<Tables, Change, Moved>::Run(Tables& tables, Steps& from, Steps& to) {
  if (from.empty() || open != nullptr) return {};
  Step<Change> step = std::move(from.back());
  from.pop_back();
  bytes -= step.Bytes;

  Moved moved;
  moved.Done = true;
  moved.Select = &from == &undo ? step.SelectBefore : step.SelectAfter;
  std::vector<Change> back;
  back.reserve(step.Changes.size());
  while (!step.Changes.empty()) {
    back.push_back(Apply(tables, std::move(step.Changes.back())));
    step.Changes.pop_back();
    moved.Note(back.back());
  }
  step.Changes = std::move(back);
  step.Joins.clear();
  ++tables.Revision;

  Settle();
  Push(to, std::move(step));
  return moved;
}

template <class Tables, class Change, class Moved>
void History<Tables, Change, Moved>::Record(Step<Change> step) {
  while (!redo.empty()) DropOldest(redo);
  if (!step.Joins.empty() && !undo.empty() && undo.back().Joins == step.Joins) {
    // What takes the first of them back takes both back.
    undo.back().Text = std::move(step.Text);
    undo.back().SelectAfter = std::move(step.SelectAfter);
    return;
  }
  Push(undo, std::move(step));
}

template <class Tables, class Change, class Moved>
void History<Tables, Change, Moved>::Push(Steps& steps, Step<Change> step) {
  step.Bytes = sizeof(step) + Held(step.Text) + Held(step.Changes);
  bytes += step.Bytes;
  steps.push_back(std::move(step));
  // Of what can be redone those go first that would come last: without the earlier they could not be done.
  while (bytes > limit && !undo.empty()) DropOldest(undo);
  while (bytes > limit && !redo.empty()) DropOldest(redo);
}

template <class Tables, class Change, class Moved>
void History<Tables, Change, Moved>::DropOldest(Steps& steps) {
  bytes -= steps.front().Bytes;
  steps.pop_front();
}

}  // namespace kestrel::base
