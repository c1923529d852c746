#include "shell/tape/rec_frm.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include "base/clock.h"
#include "core/connecting.h"
#include "core/tapes.h"
#include "shell/parts/guard.h"
#include "shell/parts/line_icon.h"
#include "shell/parts/unicode_text.h"
#include "ui_rec_frm.h"

namespace kestrel::shell {
namespace {

using tape::PlayerPhase;

/// Where no tape is.
constexpr const char* NoFile = "No File";

QFont Digits(const QFont& like, double larger) {
  QFont digits = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  digits.setPointSizeF(like.pointSizeF() * larger);
  return digits;
}

/// Why a playing tape does not run.
QString WhyStill(const tape::PlayerState& player) {
  if (player.SecsBetween > 0) {
    return QStringLiteral(
        "Play was pressed where the tape does not run by itself. Pause and Play let it run from here.");
  }
  if (player.SecsBetween < 0) {
    return QStringLiteral("Here the tape goes back in time, so that it does not run by itself. The bar moves it.");
  }
  return QStringLiteral(
      "Here the records are less than a second apart, so that the tape does not run by itself. The bar moves it.");
}

/// Room for the longest text, so that nothing jumps.
void SetDigits(QLabel& label, double larger, const QString& longest) {
  label.setFont(Digits(label.font(), larger));
  label.setMinimumWidth(label.fontMetrics().horizontalAdvance(longest) + 2);
  label.setMinimumHeight(label.fontMetrics().height());
}

}  // namespace

RecFrm::RecFrm(core::Program& running, QWidget* frame)
    : ToolFrm(running, core::ToolWindow::Rec, QStringLiteral("RecFrm"), QStringLiteral("PLAYBACK"), frame,
              base::Changed::Tape | base::Changed::Connection),
      form(std::make_unique<Ui::RecFrm>()) {
  form->setupUi(&Body());
  LookAlike();
  Timer1.setObjectName(QStringLiteral("Timer1"));
  Timer1.setParent(this);
  Timer1.setTimerType(Qt::PreciseTimer);
  Connect();
  ShowPlayer();
  FitBody();
}

RecFrm::~RecFrm() = default;

void RecFrm::LookAlike() {
  const struct {
    QAbstractButton* Button;
    IconKind Icon;
  } icons[] = {{form->Command1, IconKind::OpenFile},
               {form->Command2, IconKind::Playback},
               {form->Command3, IconKind::Pause},
               {form->Command5, IconKind::Stop},
               {form->Command6, IconKind::Eject}};
  for (const auto& each : icons) {
    each.Button->setIcon(LineIcon(each.Icon));
    each.Button->setIconSize(QSize(16, 16));
  }
  SetDigits(*form->Label3, 1, QStringLiteral("00/00/0000"));
  SetDigits(*form->Label4, 1.5, QStringLiteral("00:00:00"));
  // The longest that is to be read whole: a tape of hours that stands.
  form->lblRecord->setMinimumWidth(
      form->lblRecord->fontMetrics().horizontalAdvance(QStringLiteral("00000 / 00000, stands")));
  // The longest name does not widen the window.
  form->Label2->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  form->Slider1->setRange(0, tape::Player::MaxSpeedStep);
  form->Slider1->setTickPosition(QSlider::TicksBelow);
  form->Slider1->setTickInterval(1);
  form->lblFastest->setText(QStringLiteral("x%1").arg(1 << tape::Player::MaxSpeedStep));
}

void RecFrm::Connect() {
  const struct {
    QAbstractButton* Button;
    const char* Name;
    void (*Run)(core::Program&);
  } buttons[] = {
      {form->Command1, "Command1", core::LoadTape},  {form->Command2, "Command2", core::PlayTape},
      {form->Command3, "Command3", core::PauseTape}, {form->Command5, "Command5", core::StopTape},
      {form->Command6, "Command6", core::CloseTape}, {form->cmdBackToSession, "cmdBackToSession", core::BackToSession}};
  for (const auto& each : buttons) {
    connect(each.Button, &QAbstractButton::clicked, this,
            [this, name = each.Name, run = each.Run] { Guarded(program.Log, name, [this, run] { run(program); }); });
    each.Button->installEventFilter(this);
  }
  // While the tape was being indexed the keyboard went to the one control that could be used.
  connect(form->Command1, &QAbstractButton::clicked, this, [this] {
    if (program.State.Tapes.Player.State().Loaded()) form->HScroll1->setFocus();
  });
  for (QSlider* slider : {form->HScroll1, form->Slider1}) slider->installEventFilter(this);
  connect(form->HScroll1, &QSlider::valueChanged, this,
          [this](int value) { Guarded(program.Log, "HScroll1", [this, value] { core::MoveTape(program, value); }); });
  // What has been shown meanwhile has not moved the bar.
  connect(form->HScroll1, &QSlider::sliderReleased, this, &RecFrm::ShowBar);
  connect(form->Slider1, &QSlider::valueChanged, this,
          [this](int step) { Guarded(program.Log, "Slider1", [this, step] { core::SetTapeSpeed(program, step); }); });
  connect(&Timer1, &QTimer::timeout, this, [this] {
    const QScopedValueRollback<bool> ours(ticking, true);
    Guarded(program.Log, "Timer1", [this] { core::TapeTick(program); });
  });
}

void RecFrm::ShowPlayer() {
  ShowButtons();
  ShowTimes();
  ShowBar();
  ShowSpeed();
  SetTimer();
}

void RecFrm::ShowButtons() {
  const tape::PlayerState& player = program.State.Tapes.Player.State();
  const bool playing = player.Phase == PlayerPhase::Playing;
  form->HScroll1->setEnabled(player.Loaded());
  const struct {
    QAbstractButton* Button;
    bool Usable;
  } buttons[] = {{form->Command1, core::MayLoadTape(program.State)},
                 {form->Command2, player.Loaded() && !playing},
                 {form->Command3, playing},
                 {form->Command5, playing || player.Phase == PlayerPhase::Paused},
                 {form->Command6, player.Loaded()}};
  for (const auto& each : buttons) {
    // Not to the next button, where the space bar would stop or close the tape.
    if (!each.Usable && player.Loaded() && focusWidget() == each.Button) form->HScroll1->setFocus();
    each.Button->setEnabled(each.Usable);
  }
  ShowWayBack();
  const QString title = player.FileTitle.empty() ? QLatin1String(NoFile) : FromBytes(player.FileTitle);
  form->Label2->setText(form->Label2->fontMetrics().elidedText(title, Qt::ElideMiddle, form->Label2->width() - 2));
  form->Label2->setToolTip(title);
}

void RecFrm::ShowWayBack() {
  const bool open = core::MayGoBack(program.State);
  if (open) {
    const core::Server& server = *program.State.LeftForTape;
    form->cmdBackToSession->setToolTip(QStringLiteral("Closes the tape and connects again to ") +
                                       FromBytes(server.Name.empty() ? server.Host : server.Name));
  }
  if (form->cmdBackToSession->isHidden() != open) return;
  form->cmdBackToSession->setVisible(open);
  FitBody();
}

void RecFrm::ShowTimes() {
  const tape::PlayerState& player = program.State.Tapes.Player.State();
  // Before the first record of a long tape there is no time: on purpose nothing is shown rather than that of day 0.
  const bool dated = player.Loaded() && player.CurPoint != 0;
  form->Label3->setText(dated ? FromBytes(base::DateText(player.CurTime)) : QString());
  form->Label4->setText(dated ? FromBytes(base::TimeText(player.CurTime)) : QString());
  const bool still = player.Phase == PlayerPhase::Playing && player.TimerInterval == 0;
  QString record;
  if (player.Loaded()) record = QStringLiteral("%1 / %2").arg(player.CurPoint).arg(player.RecordCount);
  form->lblRecord->setText(still ? record + QStringLiteral(", stands") : record);
  form->lblRecord->setToolTip(still ? WhyStill(player) : QStringLiteral("Record on show / records of the tape"));
}

void RecFrm::ShowBar() {
  const tape::PlayerState& player = program.State.Tapes.Player.State();
  // A playing tape does not pull the bar out of the hand that drags it.
  if (ticking && form->HScroll1->isSliderDown()) return;
  if (player.Loaded()) {
    const QSignalBlocker quiet(form->HScroll1);
    form->HScroll1->setRange(player.BarMinimum, player.BarMaximum);
  }
  form->HScroll1->PutTo(player.BarValue);
}

void RecFrm::ShowSpeed() {
  const QString speed = QStringLiteral("x%1").arg(program.State.Tapes.Player.State().Speed);
  form->Frame1->setTitle(QStringLiteral("Current Speed: ") + speed);
  form->Slider1->setToolTip(speed);
}

void RecFrm::keyPressEvent(QKeyEvent* event) {
  if (!TakeKey(*event)) ToolFrm::keyPressEvent(event);
}

bool RecFrm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    // The space bar presses a button that has the keyboard; the arrows would go from one to the next. What the speed
    // does not take would end at the box around it.
    const bool isSpace = key.key() == Qt::Key_Space;
    const bool isMove = !isSpace && key.key() != Qt::Key_Plus && key.key() != Qt::Key_Minus;
    const bool own =
        (isSpace && qobject_cast<QAbstractButton*>(watched) != nullptr) || (isMove && watched == form->Slider1);
    if (!own && TakeKey(key)) return true;
  }
  return ToolFrm::eventFilter(watched, event);
}

bool RecFrm::TakeKey(const QKeyEvent& key) {
  const tape::PlayerState& player = program.State.Tapes.Player.State();
  if (!player.Loaded() || (key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier))) return false;
  switch (key.key()) {
    case Qt::Key_Space:
      if (!key.isAutoRepeat()) PlayOrPause();
      return true;
    case Qt::Key_Plus:
      form->Slider1->setValue(form->Slider1->value() + 1);
      return true;
    case Qt::Key_Minus:
      form->Slider1->setValue(form->Slider1->value() - 1);
      return true;
    case Qt::Key_Left:
      GoTo(player.CurPoint - 1);
      return true;
    case Qt::Key_Right:
      GoTo(player.CurPoint + 1);
      return true;
    case Qt::Key_Home:
      GoTo(1);
      return true;
    case Qt::Key_End:
      GoTo(player.RecordCount);
      return true;
    default:
      return false;
  }
}

void RecFrm::PlayOrPause() {
  Guarded(program.Log, "Space", [this] {
    if (program.State.Tapes.Player.State().Phase == PlayerPhase::Playing) {
      core::PauseTape(program);
    } else {
      core::PlayTape(program);
    }
  });
}

void RecFrm::GoTo(std::int32_t point) {
  Guarded(program.Log, "GoTo", [this, point] {
    if (point >= 1 && point <= program.State.Tapes.Player.State().RecordCount) core::ShowTapePoint(program, point);
  });
}

void RecFrm::SetTimer() {
  const tape::PlayerState& player = program.State.Tapes.Player.State();
  // An interval of 0 never fires.
  if (player.Phase != PlayerPhase::Playing || player.TimerInterval == 0) {
    Timer1.stop();
  } else if (!Timer1.isActive() || timerStarts != player.TimerStarts) {
    Timer1.start(player.TimerInterval);
  }
  timerStarts = player.TimerStarts;
}

}  // namespace kestrel::shell
