#pragma once

#include <functional>

namespace kestrel::shell {

/// Counts the program's own dialogs that are on the screen; one may stand on another.
class ModalCount {
 public:
  bool Open() const { return dialogs > 0; }

  /// Called with false before the first dialog is shown and with true when the last one is gone.
  std::function<void(bool)> ShowFloating;

  /// Stands beside a dialog for as long as it is shown.
  class Scope {
   public:
    explicit Scope(ModalCount& owner) : count(owner) {
      if (count.dialogs == 0 && count.ShowFloating) count.ShowFloating(false);
      ++count.dialogs;
    }
    ~Scope() {
      if (--count.dialogs == 0 && count.ShowFloating) count.ShowFloating(true);
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    ModalCount& count;
  };

 private:
  int dialogs = 0;
};

}  // namespace kestrel::shell
