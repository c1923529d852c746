#pragma once

namespace kestrel::shell {

/// Counts the program's own dialogs that are on the screen; one may stand on another.
class ModalCount {
 public:
  bool Open() const { return dialogs > 0; }

  /// Stands beside a dialog for as long as it is shown.
  class Scope {
   public:
    explicit Scope(ModalCount& owner) : count(owner) { ++count.dialogs; }
    ~Scope() { --count.dialogs; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    ModalCount& count;
  };

 private:
  int dialogs = 0;
};

}  // namespace kestrel::shell
