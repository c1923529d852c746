#include "shell/falcon/import_theater_frm.h"

#include <QElapsedTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QRadioButton>
#include <algorithm>
#include <string>

#include "base/files.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/tell.h"
#include "shell/falcon/multi_col_editorfrm.h"
#include "shell/parts/character_filter.h"
#include "shell/parts/colour_button.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"
#include "ui_import_theater_frm.h"

namespace kestrel::shell {
namespace {

/// Milliseconds between two turns of events while something is going on.
constexpr qint64 EventsEvery = 20;
constexpr QSize SwatchSize(16, 16);
constexpr QSize SampleSize(160, 80);
constexpr std::string_view CriteriaFilter = "Colors export file (*.cxp)|*.cxp";

QString Number(double value) { return FromBytes(base::FormatInvariant(value, "0")); }

QPixmap Swatch(base::Colour colour, double ratio) {
  QPixmap swatch((QSizeF(SwatchSize) * ratio).toSize());
  swatch.fill(ToQColor(colour));
  swatch.setDevicePixelRatio(ratio);
  return swatch;
}

/// A coast: the sea on the left, land on the right.
QPixmap Sample(const falcon::TwoColours& colours, double ratio) {
  QPixmap sample((QSizeF(SampleSize) * ratio).toSize());
  sample.setDevicePixelRatio(ratio);
  sample.fill(ToQColor(colours.Sea));
  QPainter painter(&sample);
  painter.fillRect(QRect(SampleSize.width() / 2, 0, SampleSize.width(), SampleSize.height()), ToQColor(colours.Land));
  return sample;
}

}  // namespace

ImportTheaterFrm::ImportTheaterFrm(core::Program& running, const falcon::FalconInstall& install, std::int32_t theater,
                                   QWidget* parent)
    : QDialog(parent),
      program(running),
      import(running, install, static_cast<std::size_t>(theater)),
      form(std::make_unique<Ui::ImportTheaterFrm>()) {
  form->setupUi(this);
  MakeColourButtons();
  new CharacterFilter(Digits(), *form->txtColors);
  form->ListView1->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  PrepareForm();
  Connect();
  RefreshList();
  ShowSea();
  ShowTwoColours();
}

ImportTheaterFrm::~ImportTheaterFrm() = default;

void ImportTheaterFrm::PrepareForm() {
  const core::TheaterSource& source = import.Source();
  form->lblTheaterName->setText(FromBytes(source.Name));
  form->lblTheaterSize->setText(QStringLiteral("Theater size: ") + FromBytes(source.Size));
  std::string missing;
  for (const std::string& line : source.Missing) missing += (missing.empty() ? "" : "\n") + line;
  form->lblMissing->setText(FromBytes(missing));
  form->lblMissing->setVisible(!missing.empty());
  form->cmdOK->setEnabled(source.HasHeights);
  form->cmdAutoCalculate->setEnabled(source.HasHeights);
  form->ProgressBar1->setMaximum(static_cast<int>(core::ImportParts));
  form->ProgressBar1->hide();
}

void ImportTheaterFrm::MakeColourButtons() {
  const auto make = [this](const char* name, const char* caption, const char* meaning, QBoxLayout& row, int at) {
    auto* button = new ColourButton(QString::fromLatin1(caption), QString::fromLatin1(meaning), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setMinimumHeight(form->cmdAdd->sizeHint().height());
    row.insertWidget(at, button);
    return button;
  };
  cmdSeaColor = make("cmdSeaColor", "Sea Color:", "Sea color", *form->criteriaButtons, 3);
  cmdColor1 = make("cmdColor1", "Sea", "Color of the sea", *form->customColours, 0);
  cmdColor2 = make("cmdColor2", "Land", "Color of the land", *form->customColours, 1);
  setTabOrder(form->cmdDelete, cmdSeaColor);
  setTabOrder(cmdSeaColor, form->txtColors);
  setTabOrder(form->Opt2colorstype_2, cmdColor1);
  setTabOrder(cmdColor1, cmdColor2);
  setTabOrder(cmdColor2, form->chkShading);
}

void ImportTheaterFrm::Connect() {
  const auto on = [this](QAbstractButton* button, auto act) {
    connect(button, &QAbstractButton::clicked, this,
            [this, act, name = button->objectName().toStdString()] { Guarded(program.Log, name, act); });
  };
  on(form->cmdAdd, [this] { EditCriterion(true); });
  on(form->cmdEdit, [this] { EditCriterion(false); });
  on(form->cmdDelete, [this] { DeleteCriterion(); });
  on(form->cmdAutoCalculate, [this] { AutoCalculate(); });
  on(form->cmdLoadPalette, [this] { LoadPalette(); });
  on(form->cmdExportColors, [this] { ExportColors(); });
  on(form->cmdImportColors, [this] { ImportColors(); });
  on(form->cmdBack, [this] { done(Back); });
  on(cmdSeaColor, [this] {
    if (PickColour(choice.Sea)) ShowSea();
  });
  // Who picks a colour of their own wants it.
  const auto onCustom = [this, on](ColourButton* button, base::Colour& colour) {
    on(button, [this, &colour] {
      if (!PickColour(colour)) return;
      form->Opt2colorstype_2->setChecked(true);
      ShowTwoColours();
    });
  };
  onCustom(cmdColor1, custom.Sea);
  onCustom(cmdColor2, custom.Land);
  for (QRadioButton* option : {form->Opt2colorstype_0, form->Opt2colorstype_1, form->Opt2colorstype_2}) {
    on(option, [this] { ShowTwoColours(); });
  }
  connect(form->ListView1, &QTreeWidget::itemDoubleClicked, this,
          [this] { Guarded(program.Log, "ListView1", [this] { EditCriterion(false); }); });
  form->ListView1->installEventFilter(this);
}

bool ImportTheaterFrm::eventFilter(QObject* watched, QEvent* event) {
  const bool pressed = watched == form->ListView1 && event->type() == QEvent::KeyPress;
  if (!pressed || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Delete) return QDialog::eventFilter(watched, event);
  Guarded(program.Log, "cmdDelete", [this] { DeleteCriterion(); });
  return true;
}

std::size_t ImportTheaterFrm::SelectedRow() const {
  return static_cast<std::size_t>(std::max(form->ListView1->indexOfTopLevelItem(form->ListView1->currentItem()), 0));
}

void ImportTheaterFrm::RefreshList(std::size_t current) {
  falcon::SortCriteria(choice.Criteria);
  QTreeWidget& list = *form->ListView1;
  list.clear();
  QList<QTreeWidgetItem*> rows;
  for (const falcon::ColourCriterion& criterion : choice.Criteria) {
    auto* row = new QTreeWidgetItem;
    row->setIcon(0, Swatch(criterion.Colour, devicePixelRatioF()));
    row->setData(0, Qt::AccessibleTextRole, ToQColor(criterion.Colour).name());
    row->setToolTip(0, ToQColor(criterion.Colour).name());
    row->setText(1, Number(criterion.Height));
    rows.append(row);
  }
  list.addTopLevelItems(rows);
  const std::size_t count = choice.Criteria.size();
  if (count > 0) list.setCurrentItem(rows[static_cast<int>(std::min(current, count - 1))]);
  form->txtColors->setText(Number(static_cast<double>(count)));
  form->lblcolnum->setText(Number(static_cast<double>(count)) + QStringLiteral(" of ") +
                           Number(static_cast<double>(falcon::MostCriteria)));
  form->cmdEdit->setEnabled(count > 0);
  form->cmdDelete->setEnabled(count > 0);
}

void ImportTheaterFrm::ShowSea() { cmdSeaColor->ShowColour(choice.Sea); }

falcon::TwoColours ImportTheaterFrm::ChosenTwoColours() const {
  if (form->Opt2colorstype_0->isChecked()) return falcon::LightColours;
  return form->Opt2colorstype_1->isChecked() ? falcon::DarkColours : custom;
}

void ImportTheaterFrm::ShowTwoColours() {
  cmdColor1->ShowColour(custom.Sea);
  cmdColor2->ShowColour(custom.Land);
  const falcon::TwoColours colours = ChosenTwoColours();
  form->Pic2Colors->setPixmap(Sample(colours, devicePixelRatioF()));
  form->Pic2Colors->setAccessibleName(QStringLiteral("Sea: ") + ToQColor(colours.Sea).name() +
                                      QStringLiteral(", land: ") + ToQColor(colours.Land).name());
}

bool ImportTheaterFrm::PickColour(base::Colour& colour) {
  const auto picked = program.Desk.PickColour(colour);
  if (picked) colour = *picked;
  return picked.has_value();
}

void ImportTheaterFrm::EditCriterion(bool isNew) {
  if (isNew && choice.Criteria.size() >= falcon::MostCriteria) {
    core::Tell(program, "Can't have more than 255 elements");
    return;
  }
  const std::size_t row = SelectedRow();
  if (!isNew && row >= choice.Criteria.size()) return;
  // It stands over this window, which is counted as open already.
  MultiColEditorfrm editor(program, isNew ? falcon::ColourCriterion{0xFFFFFF, 0} : choice.Criteria[row], this);
  if (editor.exec() != Accepted) return;
  const falcon::ColourCriterion entered = editor.Entered();
  if (isNew) {
    choice.Criteria.push_back(entered);
  } else {
    choice.Criteria[row] = entered;
  }
  falcon::SortCriteria(choice.Criteria);
  const auto place = std::find(choice.Criteria.begin(), choice.Criteria.end(), entered);
  RefreshList(static_cast<std::size_t>(place - choice.Criteria.begin()));
}

void ImportTheaterFrm::DeleteCriterion() {
  const std::size_t row = SelectedRow();
  if (row >= choice.Criteria.size()) return;
  choice.Criteria.erase(choice.Criteria.begin() + static_cast<std::ptrdiff_t>(row));
  RefreshList(row);
}

void ImportTheaterFrm::AutoCalculate() {
  const std::optional<int> count = falcon::TypedCount(ToBytes(form->txtColors->text()));
  if (!count) {
    core::Tell(program, "Invalid number of colors. Should be between 1 and 255");
    return;
  }
  Run("Read the heights", [&](const falcon::Progress& progress) {
    const std::optional<std::int16_t> highest = import.Highest(progress);
    if (!highest) return;
    core::AutoCalculate(program, choice, *count, *highest);
    RefreshList();
  });
}

void ImportTheaterFrm::LoadPalette() {
  const auto file = core::ChooseFile(program, "Open Palette", "ACT File (*.act)|*.act|PAL File (*.pal)|*.pal");
  if (!file) return;
  // The filter that was chosen shows files of one ending.
  const bool isPal = base::SameNoCase(base::NameForMessage(file->extension()), ".pal");
  if (!core::LoadPalette(program, choice, *file, isPal)) return;
  ShowSea();
  form->lblPaletteTo->setText(QStringLiteral("Palette to use: ") + FromBytes(base::NameForMessage(*file)));
}

void ImportTheaterFrm::ExportColors() {
  if (const auto file = core::ChooseNewFile(program, "Save Criteria Export File", CriteriaFilter)) {
    core::ExportCriteria(program, choice, *file);
  }
}

void ImportTheaterFrm::ImportColors() {
  const auto file = core::ChooseFile(program, "Open Criteria Export File", CriteriaFilter);
  if (!file || !core::ImportCriteria(program, choice, *file)) return;
  ShowSea();
  RefreshList();
}

falcon::ColourScheme ImportTheaterFrm::Scheme() const {
  falcon::ColourScheme scheme = form->tabMethod->currentIndex() == 0 ? falcon::ColourScheme{choice.Sea, choice.Criteria}
                                                                     : falcon::SchemeOf(ChosenTwoColours());
  scheme.Shaded = form->chkShading->isChecked();
  return scheme;
}

void ImportTheaterFrm::accept() {
  Guarded(program.Log, "cmdOK", [this] {
    if (working || !import.Source().HasHeights) return;
    const falcon::ColourScheme scheme = Scheme();
    if (scheme.Bands.empty()) {
      core::Tell(program, "You need at least one color for this to work...");
      return;
    }
    bool imported = false;
    Run("Imported the theater", [&](const falcon::Progress& progress) { imported = import.Import(scheme, progress); });
    if (imported) QDialog::accept();
  });
}

void ImportTheaterFrm::reject() {
  if (working) {
    cancelled = true;
  } else {
    QDialog::reject();
  }
}

void ImportTheaterFrm::SetWorking(bool on) {
  working = on;
  for (QWidget* part : {static_cast<QWidget*>(form->tabMethod), static_cast<QWidget*>(form->chkShading),
                        static_cast<QWidget*>(form->cmdBack)}) {
    part->setEnabled(!on);
  }
  form->cmdOK->setEnabled(!on && import.Source().HasHeights);
  form->ProgressBar1->setVisible(on);
}

void ImportTheaterFrm::Run(const char* what, const std::function<void(const falcon::Progress&)>& work) {
  struct Working {
    ImportTheaterFrm& Window;
    explicit Working(ImportTheaterFrm& window) : Window(window) { Window.SetWorking(true); }
    ~Working() { Window.SetWorking(false); }
  };
  QWidget* const before = focusWidget();
  cancelled = false;
  form->ProgressBar1->setValue(0);
  QElapsedTimer all, since;
  all.start();
  qint64 longest = 0;
  {
    const Working now(*this);
    form->cmdCancel->setFocus();
    work([&](std::uint64_t done, std::uint64_t) {
      // The first word comes before anything has been done.
      if (since.isValid() && since.elapsed() < EventsEvery) return;
      if (since.isValid()) longest = std::max(longest, since.elapsed());
      form->ProgressBar1->setValue(static_cast<int>(done));
      program.Desk.LetEventsRun();
      since.start();
      if (cancelled) throw core::ImportCancelled();
    });
    if (since.isValid()) longest = std::max(longest, since.elapsed());
  }
  if (before != nullptr) before->setFocus();
  program.Log.LogLine(std::string(what) + " in " + std::to_string(all.elapsed()) +
                      " ms, the longest time without events " + std::to_string(longest) + " ms");
}

}  // namespace kestrel::shell
