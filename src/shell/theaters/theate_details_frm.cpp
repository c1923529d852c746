#include "shell/theaters/theate_details_frm.h"

#include <QImage>
#include <QPixmap>
#include <utility>

#include "base/numbers.h"
#include "core/catalogue_edits.h"
#include "core/tell.h"
#include "shell/parts/character_filter.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/guard.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/typed_text.h"
#include "shell/parts/unicode_text.h"
#include "ui_theate_details_frm.h"

namespace kestrel::shell {
namespace {

QString Text(double value, std::string_view pattern) { return FromBytes(base::FormatInvariant(value, pattern)); }

double Number(const QLineEdit& field) { return base::InvariantNumber(ToBytes(field.text())); }

constexpr std::string_view CornerPattern = "0.00000000";

}  // namespace

TheateDetailsFrm::TheateDetailsFrm(core::Program& running, std::size_t index, QWidget* owner)
    : QDialog(owner), program(running), edited(index), form(std::make_unique<Ui::TheateDetailsFrm>()) {
  form->setupUi(this);
  new CharacterFilter(Digits(), *form->txtSize);
  for (QLineEdit* field : {form->txtBullX, form->txtBullY}) new CharacterFilter(DigitsAndPoint(), *field);
  for (QLineEdit* field : {form->txtLat, form->txtLong}) new CharacterFilter(SignedNumber(), *field);
  connect(form->cmdChange, &QPushButton::clicked, this,
          [this] { Guarded(program.Log, "cmdChange", [this] { ChangePicture(); }); });
  connect(form->cmdGetCoords, &QPushButton::clicked, this,
          [this] { Guarded(program.Log, "cmdGetCoords", [this] { GetCoords(); }); });
  if (index == 0) {
    PopulateNew();
  } else {
    PopulateEdit();
  }
  form->txtName->setFocus();
  form->txtName->selectAll();
}

TheateDetailsFrm::~TheateDetailsFrm() = default;

void TheateDetailsFrm::PopulateNew() {
  setWindowTitle(QStringLiteral("New Theater"));
  form->txtName->setText(QStringLiteral("New Theater"));
  form->txtSize->setText(Text(theaters::DefaultSize, "0"));
  form->txtBullX->setText(QStringLiteral("0"));
  form->txtBullY->setText(QStringLiteral("0"));
  form->txtLat->setText(Text(0, CornerPattern));
  form->txtLong->setText(Text(0, CornerPattern));
  form->lblIniFile->hide();
  held = base::BlankPicture(static_cast<int>(theaters::DefaultSize));
  ShowPicture(held);
}

void TheateDetailsFrm::PopulateEdit() {
  const theaters::Theater& theater = program.State.Catalogue.Theaters[edited];
  setWindowTitle(AsTitle(QStringLiteral("Theater: ") + FromBytes(theater.DisplayName)));
  form->txtName->setText(FromBytes(theater.DisplayName));
  form->txtSize->setText(Text(theater.Size, "0"));
  form->lblIniFile->setText(QStringLiteral("Theater INI file: ") + FromBytes(theater.TheaterFile));
  form->lblPicSize->setText(QStringLiteral("Picture Size: ") + Text(theater.PicSize, "0"));
  form->txtLat->setText(Text(theater.CoordLat, CornerPattern));
  form->txtLong->setText(Text(theater.CoordLong, CornerPattern));
  for (QWidget* widget : {static_cast<QWidget*>(form->lblBullX), static_cast<QWidget*>(form->txtBullX),
                          static_cast<QWidget*>(form->lblBullY), static_cast<QWidget*>(form->txtBullY)}) {
    widget->hide();
  }
  before = Entered(theater.DisplayName);
  Guarded(program.Log, "Picture1", [this, &theater] { ShowStoredPicture(theater.Pic); });
}

void TheateDetailsFrm::ShowStoredPicture(const std::string& name) {
  const WaitCursor wait;
  if (const auto picture = core::OpenStoredPicture(program, name)) ShowPicture(*picture);
}

void TheateDetailsFrm::ShowPicture(const base::Picture& picture) {
  const QImage shown(picture.Pixels, picture.Width, picture.Height, picture.Stride, QImage::Format_RGB32);
  const double ratio = devicePixelRatioF();
  QPixmap scaled =
      QPixmap::fromImage(shown.scaled((QSizeF(form->Picture1->maximumSize()) * ratio).toSize() - QSize(4, 4),
                                      Qt::KeepAspectRatio, Qt::SmoothTransformation));
  scaled.setDevicePixelRatio(ratio);
  form->Picture1->setPixmap(scaled);
  form->lblPicSize->setText(QStringLiteral("Picture size: ") + QString::number(picture.Width));
}

void TheateDetailsFrm::ChangePicture() {
  const auto file = core::ChooseFile(program, "Open Map Image", "Images |*.bmp;*.jpg;*.gif;*.png;*.dds");
  if (!file) return;
  const WaitCursor wait;
  const auto picture = core::OpenMapImage(program, *file);
  if (!picture) return;
  held = *picture;
  ShowPicture(held);
}

void TheateDetailsFrm::GetCoords() {
  const auto file = core::ChooseFile(program, "Open Map File", "Theater.map file |*.map", "theater.map");
  if (!file) return;
  const auto corner = core::OpenMapFile(program, *file);
  if (!corner) return;
  form->txtLat->setText(Text(corner->Lat, CornerPattern));
  form->txtLong->setText(Text(corner->Long, CornerPattern));
}

theaters::TheaterDetails TheateDetailsFrm::Entered(std::string name) const {
  return {std::move(name), Number(*form->txtSize), Number(*form->txtLat), Number(*form->txtLong)};
}

void TheateDetailsFrm::accept() {
  Guarded(program.Log, "TheateDetailsFrm", [this] {
    std::optional<std::string> name = TakeText(*form->txtName, *form->lblRefused);
    if (!name) return;
    core::TheaterEdit edit;
    edit.Index = edited;
    edit.Details = Entered(std::move(*name));
    edit.Shown = before;
    edit.Default = {{}, Number(*form->txtBullX), Number(*form->txtBullY)};
    edit.Held = held;
    const WaitCursor wait;
    if (core::StoreTheater(program, edit)) QDialog::accept();
  });
}

}  // namespace kestrel::shell
