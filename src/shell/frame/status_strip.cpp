#include "shell/frame/status_strip.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <utility>
#include <vector>

#include "shell/frame/tool_table.h"
#include "shell/parts/look.h"

namespace kestrel::shell {

namespace {

constexpr int Spacing = 12;

}  // namespace

StatusStrip::StatusStrip(QWidget* owner) : QWidget(owner) {
  setObjectName(QStringLiteral("Picture1"));
  const LampColours lamps = LampColoursOf(palette());
  StatPic_Conn = new Lamp(QStringLiteral("StatPic_Conn"), QStringLiteral("LINK"), lamps.Connection, this);
  StatPic_Act = new Lamp(QStringLiteral("StatPic_Act"), QStringLiteral("DATA"), lamps.Activity, this);
  StatPic_Rec = new Lamp(QStringLiteral("StatPic_Rec"), QStringLiteral("REC"), lamps.Recording, this);
  StatPic_UHF = new Lamp(QStringLiteral("StatPic_UHF"), QStringLiteral("UHF"), lamps.Transmit, this);
  StatPic_VHF = new Lamp(QStringLiteral("StatPic_VHF"), QStringLiteral("VHF"), lamps.Transmit, this);
  StatPic_Guard = new Lamp(QStringLiteral("StatPic_Guard"), QStringLiteral("GUARD XMIT"), lamps.Transmit, this);
  lblThreats = ReadOut("lblThreats", QStringLiteral("THREATS 000"));
  lblThreats->setToolTip(QStringLiteral("Players with a hostile AI aircraft near them"));
  lblThreats->setVisible(false);
  lblPosition = ReadOut("lblPosition", QStringLiteral("x:-0000.00 / y:-0000.00"));
  lblZoom = ReadOut("lblZoom", QStringLiteral("Zoom: x000.000000"));
  lblLat = ReadOut("lblLat", QStringLiteral("N00\u00b0 00.000'"));
  lblLong = ReadOut("lblLong", QStringLiteral("E000\u00b0 00.000'"));

  lblElevation = ReadOut("lblElevation", QStringLiteral("-00000 ft"));
  lblElevation->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  for (const auto& [readOut, meaning] :
       {std::pair(lblPosition, "The pointer, map units east and north of the lower left corner"),
        std::pair(lblZoom, "Zoom of the map: x1 shows a pixel of its size as one on the screen"),
        std::pair(lblLat, "Latitude of the pointer, degrees and minutes"),
        std::pair(lblLong, "Longitude of the pointer, degrees and minutes"),
        std::pair(lblElevation, "Height of the ground below the pointer, feet")}) {
    readOut->setToolTip(QString::fromLatin1(meaning));
  }

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(4, 2, 8, 2);
  row->setSpacing(Spacing);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(2);
  for (const ToolEntry& entry : ToolEntries()) {
    QToolButton* button = CheckButton(entry.Check, QString::fromLatin1(entry.Title));
    button->setIcon(LineIcon(entry.Icon));
    checks[static_cast<std::size_t>(entry.Which)] = button;
    buttons->addWidget(button);
  }
  row->addLayout(buttons);
  for (Lamp* lamp : Lamps()) row->addWidget(lamp);
  fixedWidth = row->sizeHint().width();
  row->addWidget(lblThreats);
  row->addStretch(1);
  for (QLabel* readOut : {lblPosition, lblZoom, lblLat, lblLong, lblElevation}) row->addWidget(readOut);

  lblMoment = new QLabel(this);
  lblMoment->setObjectName(QStringLiteral("lblMoment"));
  lblMoment->setTextFormat(Qt::PlainText);
  lblMoment->setAutoFillBackground(true);
  lblMoment->hide();
  moment.setSingleShot(true);
  moment.setInterval(MomentMs);
  connect(&moment, &QTimer::timeout, lblMoment, &QLabel::hide);
  TimerAct.setObjectName(QStringLiteral("TimerAct"));
  TimerAct.setInterval(TickMs);
  connect(&TimerAct, &QTimer::timeout, this, [this] { Tick(); });
  ShowConnected(false);
  ShowActivity();
  StatPic_Rec->Set(false, QStringLiteral("Not recording"));
  ShowTransmit({});
}

QToolButton* StatusStrip::CheckButton(const char* name, const QString& caption) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setCheckable(true);
  button->setAutoRaise(true);
  // Reached by Tab, but a press leaves the keyboard where it is.
  button->setFocusPolicy(Qt::TabFocus);
  button->setIconSize(QSize(16, 16));
  button->setFixedSize(26, 22);
  button->setToolTip(QStringLiteral("Show ") + caption);
  button->setAccessibleName(caption);
  connect(button, &QToolButton::toggled, button, [button, caption](bool on) {
    button->setToolTip((on ? QStringLiteral("Hide ") : QStringLiteral("Show ")) + caption);
  });
  return button;
}

std::array<Lamp*, 6> StatusStrip::Lamps() const {
  return {StatPic_Conn, StatPic_Act, StatPic_Rec, StatPic_UHF, StatPic_VHF, StatPic_Guard};
}

int StatusStrip::WidthOfWords() const {
  int words = 0;
  for (const Lamp* lamp : Lamps()) words += lamp->WordWidth();
  return words;
}

QSize StatusStrip::minimumSizeHint() const {
  return {fixedWidth - WidthOfWords() + WidthOfThreats(), QWidget::minimumSizeHint().height()};
}

void StatusStrip::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitParts();
  PlaceMoment();
}

void StatusStrip::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  const LampColours lamps = LampColoursOf(palette());
  StatPic_Conn->Recolor(lamps.Connection, lamps.Recording);
  StatPic_Act->Recolor(lamps.Activity, lamps.Recording);
  StatPic_Rec->Recolor(lamps.Recording, lamps.Recording);
  for (Lamp* lamp : {StatPic_UHF, StatPic_VHF, StatPic_Guard}) lamp->Recolor(lamps.Transmit, lamps.Recording);
}

int StatusStrip::WidthOfThreats() const { return lblThreats->isHidden() ? 0 : lblThreats->minimumWidth() + Spacing; }

void StatusStrip::ShowThreats(std::optional<std::size_t> threats) {
  if (threats) lblThreats->setText(QStringLiteral("THREATS %1").arg(*threats));
  if (lblThreats->isHidden() != threats.has_value()) return;
  lblThreats->setVisible(threats.has_value());
  updateGeometry();
  FitParts();
}

void StatusStrip::ShowMoment(const QString& text) {
  lblMoment->setText(text);
  PlaceMoment();
  lblMoment->show();
  lblMoment->raise();
  moment.start();
}

void StatusStrip::PlaceMoment() {
  layout()->activate();
  const QWidget* last = lblThreats->isHidden() ? static_cast<const QWidget*>(StatPic_Guard) : lblThreats;
  const int wide = qMin(lblMoment->sizeHint().width(), width());
  const int left = qMin(last->geometry().right() + 1 + Spacing, width() - wide);
  lblMoment->setGeometry(left, 0, wide, height());
}

void StatusStrip::FitParts() {
  // In the order of what is missed most; half a place is none.
  const std::vector<QLabel*> readOuts[] = {{lblLat, lblLong}, {lblElevation}, {lblZoom}, {lblPosition}};
  const auto widthOf = [](const std::vector<QLabel*>& labels) {
    int sum = 0;
    for (const QLabel* label : labels) sum += label->minimumWidth() + Spacing;
    return sum;
  };
  int all = 0;
  for (const std::vector<QLabel*>& labels : readOuts) all += widthOf(labels);
  int room = width() - fixedWidth - WidthOfThreats();
  // The tips of the lamps tell the same as their words, which therefore go before any read-out.
  const bool words = room >= all;
  for (Lamp* lamp : Lamps()) lamp->ShowWord(words);
  if (!words) room += WidthOfWords();
  for (const std::vector<QLabel*>& labels : readOuts) {
    room -= widthOf(labels);
    for (QLabel* label : labels) label->setVisible(room >= 0);
  }
}

QLabel* StatusStrip::ReadOut(const char* name, const QString& longest) {
  auto* label = new QLabel(this);
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  QFont digits = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  digits.setPointSizeF(font().pointSizeF());
  label->setFont(digits);
  label->setFixedWidth(label->fontMetrics().horizontalAdvance(longest) + 2);
  label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  return label;
}

void StatusStrip::ShowConnected(bool connected) {
  StatPic_Conn->Set(connected, connected ? QStringLiteral("Connected") : QStringLiteral("Not connected"));
}

void StatusStrip::ShowRecording(bool recording, const QString& toolTip) { StatPic_Rec->Set(recording, toolTip); }

void StatusStrip::ActivityPulse() {
  ActivityOn = false;
  if (!TimerAct.isActive()) TimerAct.start();
}

void StatusStrip::Tick() {
  ActivityOn = !ActivityOn;
  ShowActivity();
  if (!ActivityOn) TimerAct.stop();
}

void StatusStrip::ShowActivity() {
  if (!ActivityOn && !silence.isEmpty()) {
    StatPic_Act->SetFailed(LampColoursOf(palette()).Recording, silence);
  } else {
    StatPic_Act->Set(ActivityOn, ActivityOn ? QStringLiteral("Data") : QStringLiteral("No data"));
  }
}

void StatusStrip::ShowSilence(const QString& text) {
  silence = text;
  if (!TimerAct.isActive()) ShowActivity();
}

void StatusStrip::ShowTransmit(const radio::Transmission& keys) {
  const auto show = [&](Lamp& lamp, radio::TransmitKey key, const QString& radioName) {
    switch (radio::PictureOf(keys, key)) {
      case radio::TransmitPicture::Idle:
        lamp.Set(false, QStringLiteral("Not transmitting on ") + radioName);
        break;
      case radio::TransmitPicture::Sending:
        lamp.Set(true, QStringLiteral("Transmitting on ") + radioName);
        break;
      case radio::TransmitPicture::Failed:
        lamp.SetFailed(LampColoursOf(palette()).Recording,
                       QStringLiteral("Trying to transmit on ") + radioName +
                           QStringLiteral(": the voice client is not connected or does not answer"));
        break;
    }
  };
  show(*StatPic_UHF, radio::TransmitKey::UHF, QStringLiteral("UHF"));
  show(*StatPic_VHF, radio::TransmitKey::VHF, QStringLiteral("VHF"));
  show(*StatPic_Guard, radio::TransmitKey::Guard, QStringLiteral("Guard"));
}

void StatusStrip::ShowZoom(const QString& text) { lblZoom->setText(text); }

void StatusStrip::ShowPosition(const QString& position, const QString& lat, const QString& lon) {
  lblPosition->setText(position);
  lblLat->setText(lat);
  lblLong->setText(lon);
}

void StatusStrip::ShowElevation(const QString& text) { lblElevation->setText(text); }

}  // namespace kestrel::shell
