#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "areas/area.h"

// Changes of the catalogue as data. Applying one gives the change that takes it back; what it holds is moved between
// the two and the catalogue, never copied. All indexes are those of the catalogue, from 1, and have to be there.
namespace kestrel::areas {

/// Something with its index in a table.
template <class T>
struct Placed {
  std::size_t At = 0;
  T Item = {};
};

/// Puts elements in, such that each then stands at its place; ascending. `Group` is that of areas.
template <class T>
struct Insert {
  std::size_t Group = 0;
  std::vector<Placed<T>> Items = {};
};

/// Takes the elements out that stand at these places; ascending.
template <class T>
struct Take {
  std::size_t Group = 0;
  std::vector<std::size_t> At = {};
};

/// Moves the element at `From` to `To`; those between shift by one.
template <class T>
struct Move {
  std::size_t Group = 0;
  std::size_t From = 0;
  std::size_t To = 0;
};

/// Two groups change places.
struct SwapGroups {
  std::size_t One = 0;
  std::size_t Other = 0;
};

template <class T, class V>
T RecordOf(V T::*);
template <class T, class V>
V ValueOf(V T::*);

/// Gives a field of some elements other values; each element once.
template <auto Field>
struct Put {
  using Record = decltype(RecordOf(Field));
  using Value = decltype(ValueOf(Field));
  std::size_t Group = 0;
  std::vector<Placed<Value>> Values = {};
};

/// Puts an area in the place of another.
struct ReplaceOne {
  std::size_t Group = 0;
  Placed<Area> New = {};
};

using Change = std::variant<Insert<AreaFolder>, Insert<AreaGroup>, Insert<Area>, Take<AreaFolder>, Take<AreaGroup>,
                            Take<Area>, Move<AreaFolder>, Move<Area>, SwapGroups, Put<&AreaFolder::Name>,
                            Put<&AreaFolder::Visible>, Put<&AreaGroup::Name>, Put<&AreaGroup::Visible>,
                            Put<&AreaGroup::FolderIndex>, Put<&Area::Visible>, Put<&Area::Color>, ReplaceOne>;

/// Makes the change; gives the one that takes it back.
Change Apply(AreaCatalogue& catalogue, Change change);

/// What the person did at once.
struct Step {
  std::string Text;             ///< "delete of General", for a menu behind "Undo "
  std::vector<Change> Changes;  ///< that take it back (or do it again), to be applied from the last to the first
  std::string SelectBefore;     ///< key of the node that is selected when it has been taken back, "C3", "D7" or empty
  std::string SelectAfter;      ///< and when it has been done
  std::string Joins;            ///< a step of the same, not empty, right behind it is one with it: typing
  std::size_t Bytes = 0;        ///< of memory, about
};

/// What the windows are to do after an Undo or Redo.
struct Moved {
  bool Done = false;           ///< false: there was nothing to undo or redo
  std::string Select;          ///< key of the node to be selected, or empty
  bool GroupsChanged = false;  ///< groups came, went or changed their order: what holds the index of one is stale
};

/// The steps that can be undone and redone.
class AreaHistory {
 public:
  /// All steps together hold about `most` bytes at most; the oldest go. A step that holds more by itself cannot be
  /// undone.
  explicit AreaHistory(std::size_t most = std::size_t{64} << 20) : limit(most) {}

  Moved Undo(AreaCatalogue& catalogue) { return Run(catalogue, undo, redo); }
  Moved Redo(AreaCatalogue& catalogue) { return Run(catalogue, redo, undo); }

  /// "delete of General"; empty when there is nothing to undo.
  std::string_view UndoText() const { return undo.empty() ? std::string_view() : undo.back().Text; }
  std::string_view RedoText() const { return redo.empty() ? std::string_view() : redo.back().Text; }

  /// What is typed from now on is a step of its own.
  void Settle();
  /// For another catalogue: nothing of this one can be undone.
  void Clear();

  /// About how much memory the steps hold.
  std::size_t Bytes() const { return bytes; }

 private:
  friend class OneStep;
  using Steps = std::deque<Step>;
  Moved Run(AreaCatalogue& catalogue, Steps& from, Steps& to);
  void Record(Step step);
  void Push(Steps& steps, Step step);
  void DropOldest(Steps& steps);
  void KeepToLimit();

  std::size_t limit;
  std::size_t bytes = 0;
  Steps undo;                     ///< the last done at the back
  Steps redo;                     ///< the last undone at the back
  class OneStep* open = nullptr;  ///< the outermost that lives
};

/// While it lives, all that is done to the catalogue is one step; inside another, it is part of that one. Without a
/// change there is no step. What has been done when a failure passes through is recorded too.
class OneStep {
 public:
  /// Both outlive it. `joins` as in Step.
  OneStep(AreaCatalogue& changed, AreaHistory& recorder, std::string text, std::string joins = {});
  ~OneStep();
  OneStep(const OneStep&) = delete;
  OneStep& operator=(const OneStep&) = delete;

  void Do(Change change);
  /// The keys to be selected when the step has been taken back, and when it has been done.
  void Select(std::string before, std::string after);

 private:
  AreaCatalogue& catalogue;
  AreaHistory& history;
  Step step;
};

}  // namespace kestrel::areas
