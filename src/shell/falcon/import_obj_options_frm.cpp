#include "shell/falcon/import_obj_options_frm.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QGridLayout>
#include <QRadioButton>
#include <QToolButton>
#include <utility>

#include "map/icon_strokes.h"
#include "shell/parts/character_filter.h"
#include "shell/parts/colour_button.h"
#include "shell/parts/guard.h"
#include "shell/parts/map_icon.h"
#include "shell/parts/unicode_text.h"
#include "ui_import_obj_options_frm.h"

namespace kestrel::shell {
namespace {

using core::ObjectiveLook;

constexpr int IconColumns = 9;
constexpr int IconSide = 28;          ///< pixels
constexpr qint64 BetweenEvents = 40;  ///< milliseconds

/// What stands beside the colour, by the number of the option.
constexpr const char* DependingOn[] = {"Color of the icons:", "Color of the lines:", "Icon, and its color:"};

}  // namespace

ImportObjOptionsFrm::ImportObjOptionsFrm(core::Program& running, const ObjectiveSource& source,
                                         const core::ObjectiveImport& former, QWidget* owner)
    : QDialog(owner),
      program(running),
      from(source),
      form(std::make_unique<Ui::ImportObjOptionsFrm>()),
      OptImportType(new QButtonGroup(this)),
      Option3(new QButtonGroup(this)),
      cmdCol(new ColourButton(QStringLiteral("C&olor..."), QStringLiteral("Color on the map"), this)) {
  form->setupUi(this);
  cmdCol->setObjectName(QStringLiteral("cmdCol"));
  form->colourRow->addWidget(cmdCol);
  form->lblDependingOn->setBuddy(cmdCol);
  int number = 0;
  for (QRadioButton* option : {form->OptImportType_0, form->OptImportType_1, form->OptImportType_2}) {
    OptImportType->addButton(option, number++);
  }
  for (QLineEdit* field : {form->txtSimplFactor, form->txtMaxZ}) new CharacterFilter(SignedNumber(), *field);
  for (QWidget* told : {static_cast<QWidget*>(form->PB1), static_cast<QWidget*>(form->lblWORKING),
                        static_cast<QWidget*>(form->lblLabel1), static_cast<QWidget*>(form->lblLabel2)}) {
    QSizePolicy keeps = told->sizePolicy();
    keeps.setRetainSizeWhenHidden(true);
    told->setSizePolicy(keeps);
  }
  AddIcons();
  Show(former);
  Connect();
  QWidget* before = form->OptImportType_2;
  for (QWidget* next : {static_cast<QWidget*>(cmdCol), static_cast<QWidget*>(form->txtSimplFactor),
                        static_cast<QWidget*>(form->txtMaxZ)}) {
    setTabOrder(before, next);
    before = next;
  }
  ShowLook();
  ShowWorking(false);
  OptImportType->checkedButton()->setFocus();
}

ImportObjOptionsFrm::~ImportObjOptionsFrm() = default;

void ImportObjOptionsFrm::AddIcons() {
  auto* grid = new QGridLayout(form->icons);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(2);
  for (std::int32_t icon = 1; icon <= map::LastIcon; ++icon) {
    auto* button = new QToolButton(form->icons);
    const QString caption = FromBytes(map::IconCaption(icon));
    button->setObjectName(QStringLiteral("Option3_") + QString::number(icon));
    if (map::HasShape(icon)) {
      button->setIcon(MapIcon(icon));
    } else {
      button->setText(QString::number(icon));
    }
    button->setIconSize({IconSide, IconSide});
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAccessibleName(caption);
    button->setToolTip(
        map::HasShape(icon) ? caption : caption + QStringLiteral(": this icon has no shape, only the name is drawn"));
    Option3->addButton(button, icon);
    grid->addWidget(button, (icon - 1) / IconColumns, (icon - 1) % IconColumns);
  }
  grid->setColumnStretch(IconColumns, 1);
}

void ImportObjOptionsFrm::Show(const core::ObjectiveImport& former) {
  OptImportType->button(static_cast<int>(former.Look))->setChecked(true);
  if (QAbstractButton* icon = Option3->button(former.Icon)) icon->setChecked(true);
  cmdCol->ShowColour(former.Color);
  form->txtSimplFactor->setText(FromBytes(former.SimplFactor));
  form->txtMaxZ->setText(FromBytes(former.MaxZ));
}

core::ObjectiveImport ImportObjOptionsFrm::Chosen() const {
  return {.Look = static_cast<ObjectiveLook>(OptImportType->checkedId()),
          .Color = cmdCol->Colour(),
          .Icon = static_cast<std::int16_t>(Option3->checkedId()),
          .SimplFactor = ToBytes(form->txtSimplFactor->text()),
          .MaxZ = ToBytes(form->txtMaxZ->text())};
}

void ImportObjOptionsFrm::Connect() {
  connect(OptImportType, &QButtonGroup::idToggled, this, [this](int, bool on) {
    if (on) ShowLook();
  });
  connect(cmdCol, &QPushButton::clicked, this, [this] { Guarded(program.Log, "cmdCol", [this] { PickColour(); }); });
  connect(form->cmdBack, &QPushButton::clicked, this, &ImportObjOptionsFrm::reject);
  connect(form->cmdCancel, &QPushButton::clicked, this, &ImportObjOptionsFrm::Cancel);
  connect(form->cmdImport, &QPushButton::clicked, this,
          [this] { Guarded(program.Log, "cmdImport", [this] { Import(); }); });
}

void ImportObjOptionsFrm::ShowLook() {
  const int look = OptImportType->checkedId();
  form->lblDependingOn->setText(QString::fromLatin1(DependingOn[look]));
  form->looks->setCurrentIndex(look);
}

void ImportObjOptionsFrm::ShowWorking(bool on) {
  working = on;
  for (QWidget* asked : {static_cast<QWidget*>(form->fraLook), static_cast<QWidget*>(form->cmdBack),
                         static_cast<QWidget*>(form->cmdImport)}) {
    asked->setEnabled(!on);
  }
  for (QWidget* told : {static_cast<QWidget*>(form->PB1), static_cast<QWidget*>(form->lblWORKING),
                        static_cast<QWidget*>(form->lblLabel1), static_cast<QWidget*>(form->lblLabel2)}) {
    told->setVisible(on);
  }
}

void ImportObjOptionsFrm::PickColour() {
  const std::optional<base::Colour> colour = program.Desk.PickColour(cmdCol->Colour());
  if (colour) cmdCol->ShowColour(*colour);
}

void ImportObjOptionsFrm::reject() {
  if (working) {
    stopped = true;
  } else {
    QDialog::reject();
  }
}

void ImportObjOptionsFrm::Cancel() {
  if (working) {
    stopped = true;
  } else {
    done(GivenUp);
  }
}

void ImportObjOptionsFrm::Import() {
  stopped = false;
  sinceEvents.invalidate();
  ShowWorking(true);
  form->cmdCancel->setFocus();
  const bool imported = core::ImportObjectives(program, from.Data, from.Models, from.List, Chosen(),
                                               [this](const auto& progress) { return Follow(progress); });
  ShowWorking(false);
  form->cmdImport->setFocus();
  if (imported) accept();
}

bool ImportObjOptionsFrm::Follow(const core::ObjectiveProgress& progress) {
  form->PB1->setValue(progress.Percent);
  form->lblLabel1->setText(
      QStringLiteral("Proccessing Objective %1 of total %2").arg(progress.Number).arg(progress.Total));
  form->lblLabel2->setText(QStringLiteral("(* ") + FromBytes(progress.Name) + QStringLiteral(" *)"));
  // Painting costs more than an icon: not for each one.
  if (!sinceEvents.isValid() || sinceEvents.elapsed() >= BetweenEvents) {
    program.Desk.LetEventsRun();
    sinceEvents.start();
  }
  return !stopped;
}

}  // namespace kestrel::shell
