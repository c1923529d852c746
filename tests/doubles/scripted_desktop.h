#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/desktop.h"

namespace kestrel::doubles {

/// A desktop without a screen: keeps every box that was asked for and answers from a list (Ok, or the last choice that
/// the buttons offer, when the list is empty).
class ScriptedDesktop final : public base::Desktop {
 public:
  struct Box {
    std::string Title;
    std::string Text;
    base::MessageIcon Icon;
    base::MessageButtons Buttons;
    base::Answer Enter;
  };
  struct Opened {
    std::string File;
    std::string Argument;
    std::string Folder;
  };
  struct FileQuestion {
    std::string Title;
    std::string Filter;
    std::string Folder;
    std::string DefaultName;
  };

  struct FontQuestion {
    base::FontRecord Present;
    bool WithColour;
  };

  base::Answer Ask(std::string_view title, std::string_view text, base::MessageIcon icon, base::MessageButtons buttons,
                   base::Answer enter) override {
    Boxes.push_back({std::string(title), std::string(text), icon, buttons, enter});
    if (WhileOpen) WhileOpen();
    if (!Answers.empty()) {
      const base::Answer answer = Answers.front();
      Answers.pop_front();
      return answer;
    }
    switch (buttons) {
      case base::MessageButtons::YesNo:
        return base::Answer::No;
      case base::MessageButtons::YesNoCancel:
        return base::Answer::Cancel;
      case base::MessageButtons::Ok:
        break;
    }
    return base::Answer::Ok;
  }

  base::Answer AskUnlessTold(std::string_view title, std::string_view text, bool& never) override {
    const base::Answer answer = base::Desktop::AskUnlessTold(title, text, never);
    never = Never;
    return answer;
  }

  void LetEventsRun() override {
    ++EventRuns;
    if (WhenEventsRun) WhenEventsRun();
  }

  void Open(const std::string& file, const std::string& argument, const std::string& folder) override {
    Files.push_back({file, argument, folder});
  }

  std::optional<std::string> OpenFile(std::string_view title, std::string_view filter, const std::string& folder,
                                      std::string_view defaultName) override {
    FileQuestions.push_back({std::string(title), std::string(filter), folder, std::string(defaultName)});
    return Next(FileAnswers);
  }

  std::optional<std::string> SaveFile(std::string_view title, std::string_view filter, const std::string& folder,
                                      std::string_view defaultName) override {
    SaveQuestions.push_back({std::string(title), std::string(filter), folder, std::string(defaultName)});
    return Next(SaveAnswers);
  }

  std::optional<base::Colour> PickColour(base::Colour present) override {
    ColourQuestions.push_back(present);
    return Next(ColourAnswers);
  }

  std::optional<base::FontRecord> PickFont(const base::FontRecord& present, bool withColour) override {
    FontQuestions.push_back({present, withColour});
    return Next(FontAnswers);
  }

  std::vector<Box> Boxes;               ///< in the order shown
  std::deque<base::Answer> Answers;     ///< used up from the front
  std::vector<Opened> Files;            ///< what Open was called with
  int EventRuns = 0;                    ///< calls of LetEventsRun
  bool Never = false;                   ///< "Do not ask again" is ticked
  std::function<void()> WhileOpen;      ///< run while a box is on the screen
  std::function<void()> WhenEventsRun;  ///< run inside LetEventsRun

  std::vector<FileQuestion> FileQuestions;                ///< what OpenFile was called with
  std::deque<std::optional<std::string>> FileAnswers;     ///< used up from the front; nothing, as cancelled, when empty
  std::vector<FileQuestion> SaveQuestions;                ///< what SaveFile was called with
  std::deque<std::optional<std::string>> SaveAnswers;     ///< as FileAnswers
  std::vector<base::Colour> ColourQuestions;              ///< what PickColour was called with
  std::deque<std::optional<base::Colour>> ColourAnswers;  ///< as FileAnswers
  std::vector<FontQuestion> FontQuestions;                ///< what PickFont was called with
  std::deque<std::optional<base::FontRecord>> FontAnswers;  ///< as FileAnswers

 private:
  template <class Answer>
  static std::optional<Answer> Next(std::deque<std::optional<Answer>>& answers) {
    if (answers.empty()) return std::nullopt;
    std::optional<Answer> answer = std::move(answers.front());
    answers.pop_front();
    return answer;
  }
};

}  // namespace kestrel::doubles
