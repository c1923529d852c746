#pragma once

#include <QHash>
#include <QPointer>
#include <QWidget>
#include <functional>

#include "base/desktop.h"
#include "shell/parts/modal_count.h"

class QCheckBox;
class QFileDialog;

namespace kestrel::shell {

/// Message boxes and the system's "open", with the toolkit's own boxes so that they look and test alike. A box is named
/// "MessageBox", its buttons "cmdOk", "cmdYes", "cmdNo" and "cmdCancel".
class QtDesktop final : public base::Desktop {
 public:
  /// `dialogs` outlives the desktop.
  explicit QtDesktop(ModalCount& dialogs) : modal(dialogs) {}
  /// The window that boxes stand over; none before the frame is there.
  void SetOwner(QWidget* window) { owner = window; }

  base::Answer Ask(std::string_view title, std::string_view text, base::MessageIcon icon, base::MessageButtons buttons,
                   base::Answer enter) override;
  /// The box to be ticked is "chkNever".
  base::Answer AskUnlessTold(std::string_view title, std::string_view text, bool& never) override;
  void MessageSoon(std::string_view title, std::string_view text, base::MessageIcon icon) override;
  void LetEventsRun() override;
  /// A file with an argument is started as a program when it exists; anything else (a page, a document) is handed to
  /// the system.
  void Open(const std::string& file, const std::string& argument, const std::string& folder) override;
  /// The toolkit's own dialogs, which look the same everywhere; named "OpenFile", "SaveFile",
  /// "PickColour" and "PickFont". Without a folder the choice of a file begins where one was last chosen under the same
  /// title, or at home.
  std::optional<std::string> OpenFile(std::string_view title, std::string_view filter, const std::string& folder,
                                      std::string_view defaultName) override;
  std::optional<std::string> SaveFile(std::string_view title, std::string_view filter, const std::string& folder,
                                      std::string_view defaultName) override;
  std::optional<base::Colour> PickColour(base::Colour present) override;
  std::optional<base::FontRecord> PickFont(const base::FontRecord& present, bool withColour) override;

 private:
  /// Ask, with a check box below the text unless that is null.
  base::Answer AskWith(QCheckBox* check, std::string_view title, std::string_view text, base::MessageIcon icon,
                       base::MessageButtons buttons, base::Answer enter);
  /// What is asked for about a file.
  struct FileQuestion {
    std::string_view Title, Filter;
    const std::string& Folder;
    std::string_view DefaultName;
  };
  /// Runs the choice of a file; `setUp` makes it the one for opening or saving.
  std::optional<std::string> ChooseFile(const FileQuestion& question, const std::function<void(QFileDialog&)>& setUp);

  ModalCount& modal;
  QPointer<QWidget> owner;
  QHash<QString, QString> lastFolders;  ///< where a file was last chosen, by the title of the choice
};

}  // namespace kestrel::shell
