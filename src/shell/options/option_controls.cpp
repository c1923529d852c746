#include "shell/options/option_controls.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QSlider>
#include <optional>

#include "shell/parts/character_filter.h"
#include "shell/parts/colour_button.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

using base::Changed;

/// No number that is meant needs more characters.
constexpr int LongestNumber = 12;

template <class Widget>
Widget* Named(Widget* control, const char* name, const QString& meaning) {
  control->setObjectName(QString::fromLatin1(name));
  control->setToolTip(meaning);
  return control;
}

QString Written(double value) { return FromBytes(core::TypedText(value)); }

/// The place of a number in a list that is in order; one that is missing is put in.
int PlaceOf(int number, QComboBox& list) {
  int place = 0;
  while (place < list.count() && list.itemData(place).toInt() < number) ++place;
  if (place == list.count() || list.itemData(place).toInt() != number) {
    list.insertItem(place, QString::number(number), number);
  }
  return place;
}

}  // namespace

OptionControls::OptionControls(core::Program& running, QObject* owner)
    : QObject(owner), program(running), rows(core::OptionsTable(running.State)) {}

void OptionControls::Fill() {
  for (const auto& fill : fills) RunFill(fill);
}

void OptionControls::RunFill(const std::function<void()>& fill) {
  const QScopedValueRollback<bool> ours(filling, true);
  fill();
}

void OptionControls::AddFill(std::function<void()> fill) {
  RunFill(fill);
  fills.push_back(std::move(fill));
}

template <class Change>
void OptionControls::Edit(const core::OptionRow& row, Change change) {
  if (filling) return;
  Guarded(program.Log, row.Control, [this, &change] { program.Shown.Refresh(change()); });
}

QCheckBox* OptionControls::Check(const char* name, const QString& caption, const QString& meaning, QWidget* parent) {
  const core::OptionRow& row = core::RowOf(rows, name);
  auto* box = Named(new QCheckBox(caption, parent), name, meaning);
  AddFill([&row, box] { box->setChecked(*std::get<bool*>(row.Bound)); });
  connect(box, &QCheckBox::toggled, this,
          [this, &row](bool on) { Edit(row, [this, &row, on] { return core::SetOption(program, row, on); }); });
  return box;
}

ColourButton* OptionControls::Color(const char* name, const QString& caption, const QString& meaning, QWidget* parent) {
  const core::OptionRow& row = core::RowOf(rows, name);
  auto* button = new ColourButton(caption, meaning, parent);
  button->setObjectName(QString::fromLatin1(name));
  AddFill([&row, button] { button->ShowColour(*std::get<base::Colour*>(row.Bound)); });
  connect(button, &QPushButton::clicked, this, [this, &row, button] {
    Edit(row, [this, &row, button] {
      const std::optional<base::Colour> chosen = program.Desk.PickColour(button->Colour());
      if (!chosen) return Changed::Nothing;
      button->ShowColour(*chosen);
      return core::SetOption(program, row, *chosen);
    });
  });
  return button;
}

QPushButton* OptionControls::Font(const char* name, const QString& caption, const QString& meaning, QWidget* parent) {
  const core::OptionRow& row = core::RowOf(rows, name);
  auto* button = Named(new QPushButton(caption, parent), name, meaning);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, &row] {
    Edit(row, [this, &row] {
      const bool withColour = std::get<core::FontField>(row.Bound).Color != nullptr;
      const std::optional<base::FontRecord> chosen = program.Desk.PickFont(core::FontOf(row), withColour);
      if (!chosen) return Changed::Nothing;
      const Changed what = core::SetFont(program, row, *chosen);
      // The colour has a button of its own.
      Fill();
      return what;
    });
  });
  return button;
}

QSlider* OptionControls::Slider(const char* name, const QString& meaning, std::int32_t least, std::int32_t most,
                                QWidget* parent) {
  const core::OptionRow& row = core::RowOf(rows, name);
  auto* slider = Named(new QSlider(Qt::Horizontal, parent), name, meaning);
  slider->setRange(least, most);
  slider->setAccessibleName(meaning);
  AddFill([&row, slider] { slider->setValue(*std::get<std::int32_t*>(row.Bound)); });
  connect(slider, &QSlider::valueChanged, this, [this, &row](int value) {
    Edit(row, [this, &row, value] { return core::SetOption(program, row, std::int32_t{value}); });
  });
  return slider;
}

QLineEdit* OptionControls::Number(const char* name, const QString& meaning, QWidget* parent) {
  const core::OptionRow& row = core::RowOf(rows, name);
  auto* field = Named(new QLineEdit(parent), name, meaning);
  NumberCharacters takes = DigitsAndPoint();
  takes.CommaIsPoint = true;
  new CharacterFilter(std::move(takes), *field);
  field->setMaxLength(LongestNumber);
  field->setAlignment(Qt::AlignRight);
  // What stands there already in other words stays as it was typed.
  const auto fill = [&row, field] {
    const double value = *std::get<double*>(row.Bound);
    const QString text = field->text();
    if (text.isEmpty() || core::ReadTyped(row, ToBytes(text)).Value != value) field->setText(Written(value));
  };
  AddFill(fill);
  connect(field, &QLineEdit::textChanged, this, [this, &row, field] { TakeNumber(row, *field); });
  connect(field, &QLineEdit::editingFinished, this, [this, fill] { RunFill(fill); });
  return field;
}

void OptionControls::TakeNumber(const core::OptionRow& row, QLineEdit& field) {
  Edit(row, [this, &row, &field] {
    const core::TypedNumber typed = core::ReadTyped(row, ToBytes(field.text()));
    if (typed.OutOfRange) RunFill([&field] { field.setText(Written(0)); });
    return core::SetOption(program, row, typed.Value);
  });
}

template <class T>
QComboBox* OptionControls::Numbers(const char* name, const QString& meaning, std::span<const T> offered,
                                   QWidget* parent) {
  const core::OptionRow& row = core::RowOf(rows, name);
  auto* list = Named(new QComboBox(parent), name, meaning);
  for (const T number : offered) list->addItem(QString::number(number), static_cast<int>(number));
  AddFill([&row, list] { list->setCurrentIndex(PlaceOf(*std::get<T*>(row.Bound), *list)); });
  connect(list, &QComboBox::currentIndexChanged, this, [this, &row, list](int place) {
    Edit(row, [this, &row, list, place] {
      return core::SetOption(program, row, static_cast<T>(list->itemData(place).toInt()));
    });
  });
  return list;
}

QComboBox* OptionControls::MiniMapScale(const char* name, const QString& meaning, QWidget* parent) {
  return Numbers(name, meaning, core::MiniMapScales(), parent);
}

QComboBox* OptionControls::Icon(const char* name, const QString& meaning, QWidget* parent) {
  return Numbers(name, meaning, core::TacanIcons(), parent);
}

QComboBox* OptionControls::Choice(const char* name, const QString& meaning, std::span<const char* const> words,
                                  QWidget* parent) {
  const core::OptionRow& row = core::RowOf(rows, name);
  auto* list = Named(new QComboBox(parent), name, meaning);
  for (const char* word : words) list->addItem(QString::fromLatin1(word));
  AddFill([&row, list] {
    const std::int32_t place = *std::get<std::int32_t*>(row.Bound);
    list->setCurrentIndex(place > 0 && place < list->count() ? place : 0);
  });
  connect(list, &QComboBox::currentIndexChanged, this, [this, &row](int place) {
    Edit(row, [this, &row, place] { return core::SetOption(program, row, std::int32_t{place}); });
  });
  return list;
}

std::vector<QWidget*> OptionControls::Positions(const char* name, std::span<const char* const> captions,
                                                QWidget* parent) {
  const core::OptionRow& row = core::RowOf(rows, name);
  auto* group = new QButtonGroup(parent);
  std::vector<QWidget*> buttons;
  for (const char* caption : captions) {
    const int index = static_cast<int>(buttons.size());
    auto* button = new QRadioButton(QString::fromLatin1(caption), parent);
    button->setObjectName(QString::fromLatin1(name) + u'_' + QString::number(index));
    group->addButton(button, index);
    buttons.push_back(button);
  }
  AddFill([&row, group] {
    QAbstractButton* chosen = group->button(*std::get<std::int32_t*>(row.Bound));
    group->setExclusive(false);
    for (QAbstractButton* button : group->buttons()) button->setChecked(button == chosen);
    group->setExclusive(true);
  });
  connect(group, &QButtonGroup::idToggled, this, [this, &row](int index, bool on) {
    if (!on) return;
    Edit(row, [this, &row, index] { return core::SetOption(program, row, std::int32_t{index}); });
  });
  return buttons;
}

}  // namespace kestrel::shell
