#include "shell/core/font_dialog.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "shell/parts/colour_button.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// Sizes that a text can have, points.
constexpr float LeastSize = 1, GreatestSize = 200;

QFont FontOf(const base::FontRecord& record) {
  QFont font(FromBytes(record.FontName));
  font.setPointSizeF(record.FontSize >= LeastSize ? std::min(record.FontSize, GreatestSize) : LeastSize);
  font.setBold(record.FontBold);
  font.setItalic(record.FontItalic);
  font.setStrikeOut(record.FontStrike);
  font.setUnderline(record.FontUnder);
  // Of a family that is not there the dialog would know no bold or italic.
  if (!QFontDatabase::hasFamily(font.family())) font.setFamily(QFontInfo(font).family());
  // The dialog looks for a style by its usual name, and where a family calls it otherwise ("Book") takes the first one.
  font.setStyleName(QFontInfo(font).styleName());
  return font;
}

}  // namespace

base::FontRecord WithChanges(const base::FontRecord& before, const QFont& shown, const QFont& chosen) {
  base::FontRecord changed = before;
  if (chosen.family() != shown.family()) changed.FontName = ToBytes(chosen.family());
  if (chosen.pointSize() != shown.pointSize()) changed.FontSize = static_cast<float>(chosen.pointSizeF());
  if (chosen.bold() != shown.bold()) changed.FontBold = chosen.bold();
  if (chosen.italic() != shown.italic()) changed.FontItalic = chosen.italic();
  if (chosen.strikeOut() != shown.strikeOut()) changed.FontStrike = chosen.strikeOut();
  if (chosen.underline() != shown.underline()) changed.FontUnder = chosen.underline();
  return changed;
}

FontDialog::FontDialog(const base::FontRecord& present, bool withColour, QWidget* owner)
    : QDialog(owner), before(present), fonts(new QFontDialog(FontOf(present), this)), cmdColor(nullptr) {
  setObjectName(QStringLiteral("PickFont"));
  setWindowTitle(QStringLiteral("Font"));
  fonts->setWindowFlags(Qt::Widget);
  fonts->setOptions(QFontDialog::NoButtons | QFontDialog::DontUseNativeDialog);
  shownAtFirst = fonts->currentFont();

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  // The hidden one of the inner dialog would keep it from being that by itself.
  buttons->button(QDialogButtonBox::Ok)->setDefault(true);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(fonts, 1);
  auto* foot = new QHBoxLayout;
  if (withColour) {
    cmdColor = new ColourButton(QStringLiteral("Co&lor"), QStringLiteral("Color of the text"), this);
    cmdColor->setObjectName(QStringLiteral("cmdColor"));
    cmdColor->ShowColour(present.Color);
    connect(cmdColor, &QPushButton::clicked, this, [this] {
      const QColor chosen =
          QColorDialog::getColor(ToQColor(cmdColor->Colour()), this, {}, QColorDialog::DontUseNativeDialog);
      if (chosen.isValid()) cmdColor->ShowColour(FromQColor(chosen));
    });
    foot->addWidget(cmdColor);
  }
  foot->addStretch(1);
  foot->addWidget(buttons);
  rows->addLayout(foot);
  // Esc and a double click in its lists close the inner one, and with it the whole.
  connect(fonts, &QDialog::rejected, this, &QDialog::reject);
  connect(fonts, &QDialog::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

base::FontRecord FontDialog::Chosen() const {
  base::FontRecord chosen = WithChanges(before, shownAtFirst, fonts->currentFont());
  if (cmdColor != nullptr) chosen.Color = cmdColor->Colour();
  return chosen;
}

}  // namespace kestrel::shell
