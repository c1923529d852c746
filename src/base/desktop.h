#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/colour.h"
#include "base/font.h"

namespace kestrel::base {

enum class MessageIcon { None, Information, Question, Exclamation, Critical };
enum class MessageButtons { Ok, YesNo, YesNoCancel };
enum class Answer { Ok, Yes, No, Cancel };

/// Seam: what the rooms ask of the person and of the windowing system. It alone counts a box as open and suspends the
/// floating windows (ShowAllWindows) around it. The scripted double in tests answers from a list and keeps what
/// was shown.
class Desktop {
 public:
  virtual ~Desktop() = default;
  /// Shows a box, word for word, and waits for the answer. Closing it counts as Cancel, or No, or Ok, the last there
  /// is. `enter`, one of `buttons`, is what the Enter key answers: No where a Yes cannot be undone.
  virtual Answer Ask(std::string_view title, std::string_view text, MessageIcon icon, MessageButtons buttons,
                     Answer enter) = 0;
  /// As Ask with Yes and No, with the box "Do not ask again". `never` becomes true when the person ticks it.
  virtual Answer AskUnlessTold(std::string_view title, std::string_view text, bool& never) {
    never = false;
    return Ask(title, text, MessageIcon::Question, MessageButtons::YesNo, Answer::No);
  }
  /// Lets pending window events run once.
  virtual void LetEventsRun() = 0;
  /// Starts a file with an argument in a folder as the system's "open" verb does; both are text as of base::TextOfPath,
  /// a page without an argument is an address. The result is not examined.
  virtual void Open(const std::string& file, const std::string& argument, const std::string& folder) = 0;
  /// Asks for a file that exists. `filter` is label and patterns, as "Images |*.bmp;*.jpg", more pairs following after
  /// another "|"; `folder` is where the choice begins, `defaultName` the name already filled in. Paths are text as of
  /// base::TextOfPath. Nothing when the person cancels.
  virtual std::optional<std::string> OpenFile(std::string_view title, std::string_view filter,
                                              const std::string& folder, std::string_view defaultName) = 0;
  /// Asks for a file to write, as OpenFile does. A name typed without an extension gets that of the first pattern of
  /// the filter that is chosen; a file that exists is named only once the person agrees to its being replaced.
  virtual std::optional<std::string> SaveFile(std::string_view title, std::string_view filter,
                                              const std::string& folder, std::string_view defaultName) = 0;
  /// Asks for a colour, beginning at `present`. Nothing when the person cancels.
  virtual std::optional<Colour> PickColour(Colour present) = 0;
  /// Asks for a font, and for its colour when `withColour`, beginning at `present`. Nothing when the person cancels.
  virtual std::optional<FontRecord> PickFont(const FontRecord& present, bool withColour) = 0;

  /// Shows a box with OK once what is being handled now has been, and waits for nothing: what told of it goes on.
  virtual void MessageSoon(std::string_view title, std::string_view text, MessageIcon icon) {
    Message(title, text, icon);
  }

  void Message(std::string_view title, std::string_view text, MessageIcon icon) {
    Ask(title, text, icon, MessageButtons::Ok, Answer::Ok);
  }
};

}  // namespace kestrel::base
