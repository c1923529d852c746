#include "shell/frame/status_strip.h"

#include <QFontDatabase>
#include <QHBoxLayout>

#include "shell/frame/look.h"

namespace kestrel::shell {

StatusStrip::StatusStrip(QWidget* owner) : QWidget(owner) {
  setObjectName(QStringLiteral("Picture1"));
  const LampColours lamps = LampColoursOf(palette());
  StatPic_Conn = new Lamp(QStringLiteral("StatPic_Conn"), QStringLiteral("LINK"), lamps.Connection, this);
  StatPic_Act = new Lamp(QStringLiteral("StatPic_Act"), QStringLiteral("DATA"), lamps.Activity, this);
  StatPic_Rec = new Lamp(QStringLiteral("StatPic_Rec"), QStringLiteral("REC"), lamps.Recording, this);
  lblPosition = ReadOut("lblPosition", QStringLiteral("x:-0000.00 / y:-0000.00"));
  lblZoom = ReadOut("lblZoom", QStringLiteral("Zoom: x000.000000"));
  lblLat = ReadOut("lblLat", QStringLiteral("N00\u00b0 00.000'"));
  lblLong = ReadOut("lblLong", QStringLiteral("E000\u00b0 00.000'"));

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->setSpacing(16);
  for (Lamp* lamp : {StatPic_Conn, StatPic_Act, StatPic_Rec}) row->addWidget(lamp);
  row->addStretch(1);
  for (QLabel* readOut : {lblPosition, lblZoom, lblLat, lblLong}) row->addWidget(readOut);

  TimerAct.setObjectName(QStringLiteral("TimerAct"));
  TimerAct.setInterval(TickMs);
  connect(&TimerAct, &QTimer::timeout, this, [this] { Tick(); });
  ShowConnected(false);
  StatPic_Act->Set(false, QStringLiteral("No data"));
  StatPic_Rec->Set(false, QStringLiteral("Not recording"));
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

void StatusStrip::ActivityPulse() {
  ActivityOn = false;
  if (!TimerAct.isActive()) TimerAct.start();
}

void StatusStrip::Tick() {
  ActivityOn = !ActivityOn;
  StatPic_Act->Set(ActivityOn, ActivityOn ? QStringLiteral("Data") : QStringLiteral("No data"));
  if (!ActivityOn) TimerAct.stop();
}

void StatusStrip::ShowZoom(const QString& text) { lblZoom->setText(text); }

void StatusStrip::ShowPosition(const QString& position, const QString& lat, const QString& lon) {
  lblPosition->setText(position);
  lblLat->setText(lat);
  lblLong->setText(lon);
}

}  // namespace kestrel::shell
