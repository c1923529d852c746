#include "shell/radio/edit_freq_frm.h"

#include <QStyle>
#include <QValidator>
#include <optional>
#include <utility>

#include "radio/frequency_edits.h"
#include "radio/frequency_words.h"
#include "shell/parts/guard.h"
#include "shell/parts/typed_text.h"
#include "shell/parts/unicode_text.h"
#include "shell/radio/freq_images.h"
#include "ui_edit_freq_frm.h"

namespace kestrel::shell {
namespace {

/// Characters of a value that come back from the file.
constexpr int LongestText = 749;

/// Turns line ends, which can only be pasted, into blanks: they would spoil the file.
class OneLine final : public QValidator {
 public:
  explicit OneLine(QLineEdit& field) : QValidator(&field) { field.setValidator(this); }
  State validate(QString& text, int&) const override {
    text.replace(u'\r', u' ').replace(u'\n', u' ');
    return Acceptable;
  }
};

}  // namespace

EditFreqFrm::EditFreqFrm(core::Program& running, QWidget* owner)
    : QDialog(owner), program(running), form(std::make_unique<Ui::EditFreqFrm>()) {
  form->setupUi(this);
  for (QLineEdit* field : {form->txtFreqDescr, form->txtFreqValue}) {
    field->setMaxLength(LongestText);
    new OneLine(*field);
  }
  const auto show = [this] { Guarded(program.Log, "EditFreqFrm", [this] { ShowWhatItIs(); }); };
  connect(form->txtFreqValue, &QLineEdit::textChanged, this, show);
  connect(form->cmdOK, &QPushButton::clicked, this, &EditFreqFrm::accept);
  connect(form->cmdCancel, &QPushButton::clicked, this, &EditFreqFrm::reject);
  Populate(Entry, true, {}, {});
}

EditFreqFrm::~EditFreqFrm() = default;

void EditFreqFrm::Populate(int kind, bool isNew, const QString& given, const QString& givenDescription) {
  described = kind != Channel;
  form->lblFrequencyDescription->setVisible(described);
  form->txtFreqDescr->setVisible(described);
  form->txtFreqValue->setText(isNew ? FromBytes(radio::NewFrequencyValue) : given);
  form->txtFreqDescr->setText(isNew ? FromBytes(radio::NewFrequencyDescription) : givenDescription);
  const QString what = described ? QStringLiteral("Frequency") : QStringLiteral("Channel");
  setWindowTitle((isNew ? QStringLiteral("New ") : QStringLiteral("Edit ")) + what);
  QLineEdit* first = isNew && described ? form->txtFreqDescr : form->txtFreqValue;
  first->setFocus();
  first->selectAll();
  ShowWhatItIs();
}

void EditFreqFrm::ShowWhatItIs() {
  const std::string typed = ToBytes(form->txtFreqValue->text());
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
  form->imgFreq->setPixmap(FreqImageOf(radio::FreqValToIcon(typed)).pixmap(QSize(size, size), devicePixelRatioF()));
  form->lblFreqWords->setText(FromBytes(radio::FrequencyWords(typed)));
}

void EditFreqFrm::accept() {
  Guarded(program.Log, "EditFreqFrm", [this] {
    std::optional<std::string> typedDescription = std::string();
    if (described) typedDescription = TakeText(*form->txtFreqDescr, *form->lblRefused);
    if (!typedDescription) return;
    std::optional<std::string> typed = TakeText(*form->txtFreqValue, *form->lblRefused);
    if (!typed) return;
    description = std::move(*typedDescription);
    value = std::move(*typed);
    QDialog::accept();
  });
}

}  // namespace kestrel::shell
