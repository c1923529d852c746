#pragma once

#include <QLineEdit>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "areas/area_editor.h"
#include "core/program.h"
#include "shell/parts/guard.h"
#include "shell/parts/modal_count.h"

namespace kestrel::shell {

/// What the editor's window and its panels have in common: the way to the editor, and its fields of text.
class EditorHand {
 public:
  /// `show` brings every control to what the editor holds. All outlive it.
  EditorHand(core::Program& running, ModalCount& dialogs, QWidget& owner, std::function<void()> show)
      : program(running), modal(dialogs), window(owner), showEditor(std::move(show)) {}

  core::Program& Program() { return program; }
  ModalCount& Modal() { return modal; }
  QWidget& Window() { return window; }
  areas::AreaEditor& Editor() { return program.State.Editor; }
  areas::TextMeasure& Texts() { return program.Shown.Texts(); }

  /// Runs a procedure of the editor for `handler`, shows what has become of it and refreshes what it returned.
  template <class Act>
  void Do(std::string_view handler, Act&& act) {
    Guarded(program.Log, handler, [&] {
      const base::Changed changed = act();
      showEditor();
      program.Shown.Refresh(changed);
    });
  }

  enum class Takes { Words, Numbers };
  /// A line for a text of the editor: what is typed goes there at once, but for a text that the code page does not
  /// hold, which waits for OK; when it is left, a number is shown with two decimals.
  QLineEdit* NewField(const char* name, areas::EditorField field, Takes takes, const char* meaning, QWidget* parent);
  /// The fields whose text is not what the editor has.
  void ShowFields();

 private:
  struct Field {
    QLineEdit* Line;
    areas::EditorField Of;
    std::string Shown;  ///< what the editor had when the line was last brought to it
  };

  core::Program& program;
  ModalCount& modal;
  QWidget& window;
  std::function<void()> showEditor;
  std::vector<Field> fields;
};

}  // namespace kestrel::shell
