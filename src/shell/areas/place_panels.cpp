#include "shell/areas/place_panels.h"

#include <QBuffer>
#include <QGridLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <algorithm>

#include "base/files.h"
#include "core/tell.h"
#include "map/icon_strokes.h"
#include "shell/parts/map_icon.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

using areas::AreaType;
using areas::EditorFields;

constexpr char FromLeft[] = "Map units east of the left edge";
constexpr char FromBelow[] = "Map units north of the lower edge";

constexpr int IconColumns = 3;
constexpr int ButtonIcon = 28;   ///< side of an icon on its button, pixels
constexpr int PictureSide = 40;  ///< of Picture1, pixels
constexpr int WrittenSide = 32;  ///< of the pictures that are written, pixels
constexpr int LastWritten = 31;  ///< icons behind it are not written
constexpr float LeastShown = 6;  ///< a text shows its own font within these sizes, points
constexpr float MostShown = 20;

/// Would rather show all that lies in it.
class IconField final : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;
  QSize sizeHint() const override { return widget()->sizeHint() + QSize(verticalScrollBar()->sizeHint().width(), 0); }
};

}  // namespace

CirclePanel::CirclePanel(EditorHand& common, QWidget* owner)
    : AreaPanel(AreaType::Circle, "lblClickOn_1", common, owner) {
  QHBoxLayout* row = NewRow();
  NewNumber("Text3", "X:", &EditorFields::Text3, FromLeft, row);
  NewNumber("Text4", "Y:", &EditorFields::Text4, FromBelow, row);
  row = NewRow();
  NewNumber("Text5", "Radius:", &EditorFields::Text5, "Nautical miles", row);
  row->addWidget(new QLabel(Words("nm"), this));
  NewColour("cmdCircleColor", row);
  AddRoom();
}

IconPanel::IconPanel(EditorHand& common, QWidget* owner)
    : AreaPanel(AreaType::Icon, "lblClickOn_2", common, owner),
      Option3(new QButtonGroup(this)),
      Picture1(new QLabel(this)) {
  QHBoxLayout* row = NewRow();
  NewNumber("Text8", "X:", &EditorFields::Text8, FromLeft, row);
  NewNumber("Text7", "Y:", &EditorFields::Text7, FromBelow, row);
  Picture1->setObjectName(Words("Picture1"));
  Picture1->setFrameShape(QFrame::StyledPanel);
  row->addWidget(Picture1);
  AddIcons();
  row = NewRow();
  NewButton("cmdMakeIcons", "Make Icons", "Writes the icons as pictures into the folder \"Icons\"", row,
            [this] { MakeIcons(); });
  row->addStretch(1);
  NewColour("cmdPointColor", row);
}

void IconPanel::AddIcons() {
  // A low screen has no room for all of them.
  icons = new IconField(this);
  icons->setFrameShape(QFrame::NoFrame);
  icons->setWidgetResizable(true);
  icons->setFocusPolicy(Qt::NoFocus);
  icons->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* field = new QWidget(icons);
  auto* grid = new QGridLayout(field);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(2);
  constexpr int perColumn = (map::LastIcon + IconColumns - 1) / IconColumns;
  for (std::int32_t icon = 1; icon <= map::LastIcon; ++icon) {
    auto* button = new QToolButton(field);
    button->setObjectName(Words("Option3_") + QString::number(icon));
    button->setText(AsCaption(FromBytes(map::IconCaption(icon))));
    button->setIcon(MapIcon(icon));
    button->setIconSize({ButtonIcon, ButtonIcon});
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button->setToolTip(map::HasShape(icon) ? Words("Icon ") + QString::number(icon)
                                           : Words("This icon has no shape: only the name of the area is drawn"));
    Option3->addButton(button, icon);
    grid->addWidget(button, (icon - 1) % perColumn, (icon - 1) / perColumn);
  }
  icons->setWidget(field);
  icons->setMinimumWidth(field->minimumSizeHint().width() + icons->verticalScrollBar()->sizeHint().width());
  NewRow()->addWidget(icons);
  connect(Option3, &QButtonGroup::idClicked, this, [this](int icon) {
    hand.Do("Option3", [&] { return areas::ChooseIcon(hand.Editor(), static_cast<std::int16_t>(icon), hand.Texts()); });
    ShowChosen();
  });
}

void IconPanel::ShowEditor() {
  AreaPanel::ShowEditor();
  const std::int16_t icon = hand.Editor().WorkArea.Icon;
  if (QAbstractButton* chosen = Option3->button(icon)) {
    chosen->setChecked(true);
  } else if (QAbstractButton* former = Option3->checkedButton()) {
    // A number that is none: an exclusive group lets go of no button by itself.
    Option3->setExclusive(false);
    former->setChecked(false);
    Option3->setExclusive(true);
  }
  ShowPicture();
}

void IconPanel::showEvent(QShowEvent*) {
  // Once everything has its place.
  QMetaObject::invokeMethod(this, &IconPanel::ShowChosen, Qt::QueuedConnection);
}

void IconPanel::ShowChosen() {
  if (QAbstractButton* chosen = Option3->checkedButton()) icons->ensureWidgetVisible(chosen, 0, 0);
}

void IconPanel::ShowPicture() {
  const areas::Area& area = hand.Editor().WorkArea;
  if (pictured == area.Icon && picturedIn == area.Color && !Picture1->pixmap(Qt::ReturnByValue).isNull()) return;
  pictured = area.Icon;
  picturedIn = area.Color;
  const QColor ink = ToQColor(area.Color);
  Picture1->setPixmap(MapIconPicture(area.Icon, PictureSide, devicePixelRatioF(), ink, ReadableOn(ink)));
  Picture1->setAccessibleName(FromBytes(map::IconCaption(area.Icon)));
}

void IconPanel::MakeIcons() {
  core::Program& program = hand.Program();
  Guarded(program.Log, "cmdMakeIcons", [&program] {
    try {
      const std::filesystem::path folder = program.State.AppPath / "Icons";
      base::MakeFolder(folder);
      for (std::int32_t icon = 1; icon <= LastWritten; ++icon) {
        QBuffer bytes;
        bytes.open(QIODevice::WriteOnly);
        const QImage picture = MapIconPicture(icon, WrittenSide, 1, Qt::black, Qt::white).toImage();
        if (!picture.convertToFormat(QImage::Format_RGB32).save(&bytes, "BMP")) {
          throw base::RuntimeFailure("the picture of icon " + std::to_string(icon) + " cannot be made");
        }
        base::WriteWholeFile(folder / (std::to_string(icon) + ".bmp"), bytes.data().toStdString());
      }
    } catch (const base::RuntimeFailure& failure) {
      core::TellFailure(program, "The icons could not be written: ", failure);
    }
  });
}

TextPanel::TextPanel(EditorHand& common, QWidget* owner) : AreaPanel(AreaType::Text, "lblClickOn_3", common, owner) {
  QHBoxLayout* row = NewRow();
  NewNumber("Text6", "X:", &EditorFields::Text6, FromLeft, row);
  NewNumber("Text2", "Y:", &EditorFields::Text2, FromBelow, row);
  row = NewRow();
  Text1 = hand.NewField("Text1", &EditorFields::Text1, EditorHand::Takes::Words, "What stands on the map", this);
  auto* caption = new QLabel(Words("Text"), this);
  caption->setBuddy(Text1);
  row->addWidget(caption);
  row->addWidget(Text1, 1);
  row = NewRow();
  NewButton("cmdChangeFont", "Change Font", "Font and color of the text", row,
            [this] { ChooseAreaFont(hand, "cmdChangeFont", hand.Editor().WorkArea.TextFont, areas::SetTextFont); });
  row->addStretch(1);
  NewColour("cmdTextColor", row);
  AddRoom();
}

void TextPanel::ShowEditor() {
  AreaPanel::ShowEditor();
  const areas::Area& area = hand.Editor().WorkArea;
  QFont look(FromBytes(area.TextFont.Name));
  const float size = area.TextFont.Size;
  look.setPointSizeF(size >= LeastShown ? std::min(size, MostShown) : LeastShown);
  look.setBold(area.TextFont.Bold == areas::On);
  look.setItalic(area.TextFont.Italic == areas::On);
  look.setStrikeOut(area.TextFont.Strikethru == areas::On);
  look.setUnderline(area.TextFont.Underline == areas::On);
  if (Text1->font() != look) Text1->setFont(look);
  const QColor ink = ToQColor(area.Color);
  QPalette colours = Text1->palette();
  if (colours.color(QPalette::Text) == ink) return;
  // On a ground of its own, so that it can be read in either palette.
  colours.setColor(QPalette::Text, ink);
  colours.setColor(QPalette::Base, ReadableOn(ink));
  Text1->setPalette(colours);
}

}  // namespace kestrel::shell
