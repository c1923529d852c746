#pragma once

#include <QObject>
#include <functional>
#include <vector>

#include "core/view_options.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSlider;
class QWidget;

namespace kestrel::shell {

class ColourButton;

/// Makes the controls that have a setting and holds both together: the table of core/view_options.h says by the
/// control's name which setting that is and what a change redraws. While controls are being filled nothing is stored
/// and nothing is drawn.
class OptionControls final : public QObject {
  Q_OBJECT
 public:
  /// `running` outlives this, `owner` the controls.
  OptionControls(core::Program& running, QObject* owner);

  // Each makes one control. `meaning` is its tool tip; with `caption` empty it is also what it is called to those who
  // listen.
  QCheckBox* Check(const char* name, const QString& caption, const QString& meaning, QWidget* parent);
  ColourButton* Color(const char* name, const QString& caption, const QString& meaning, QWidget* parent);
  QPushButton* Font(const char* name, const QString& caption, const QString& meaning, QWidget* parent);
  QSlider* Slider(const char* name, const QString& meaning, std::int32_t least, std::int32_t most, QWidget* parent);
  QLineEdit* Number(const char* name, const QString& meaning, QWidget* parent);
  /// A list of numbers. A setting that is not among them gets a place.
  QComboBox* MiniMapScale(const char* name, const QString& meaning, QWidget* parent);
  /// A list of words, whose places from 0 the setting holds. One without a word is shown as the first.
  QComboBox* Choice(const char* name, const QString& meaning, std::span<const char* const> words, QWidget* parent);
  QComboBox* Icon(const char* name, const QString& meaning, QWidget* parent);
  /// Buttons of which one is chosen, named `name`, "_" and their index; a setting without a button chooses none.
  std::vector<QWidget*> Positions(const char* name, std::span<const char* const> captions, QWidget* parent);

  /// Every control as its setting stands.
  void Fill();

 private:
  /// Runs `change` behind the guards and refreshes what it returns.
  template <class Change>
  void Edit(const core::OptionRow& row, Change change);
  void AddFill(std::function<void()> fill);
  void RunFill(const std::function<void()>& fill);
  template <class T>
  QComboBox* Numbers(const char* name, const QString& meaning, std::span<const T> offered, QWidget* parent);
  void TakeNumber(const core::OptionRow& row, QLineEdit& field);

  core::Program& program;
  std::vector<core::OptionRow> rows;
  std::vector<std::function<void()>> fills;
  bool filling = false;
};

}  // namespace kestrel::shell
