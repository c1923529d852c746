#include "shell/tape/rec_frm.h"

#include <QFontDatabase>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include "base/clock.h"
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
              base::Changed::Tape),
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
  form->lblFastest->setText(QStringLiteral("x%1").arg(1 << tape::Player::MaxSpeedStep));
}

void RecFrm::Connect() {
  const struct {
    QAbstractButton* Button;
    const char* Name;
    void (*Run)(core::Program&);
  } buttons[] = {{form->Command1, "Command1", core::LoadTape},
                 {form->Command2, "Command2", core::PlayTape},
                 {form->Command3, "Command3", core::PauseTape},
                 {form->Command5, "Command5", core::StopTape},
                 {form->Command6, "Command6", core::CloseTape}};
  for (const auto& each : buttons) {
    connect(each.Button, &QAbstractButton::clicked, this,
            [this, name = each.Name, run = each.Run] { Guarded(program.Log, name, [this, run] { run(program); }); });
  }
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
  form->Command1->setEnabled(core::MayLoadTape(program.State));
  form->Command2->setEnabled(player.Loaded() && !playing);
  form->Command3->setEnabled(playing);
  form->Command5->setEnabled(playing || player.Phase == PlayerPhase::Paused);
  form->Command6->setEnabled(player.Loaded());
  form->HScroll1->setEnabled(player.Loaded());
  const QString title = player.FileTitle.empty() ? QLatin1String(NoFile) : FromBytes(player.FileTitle);
  form->Label2->setText(form->Label2->fontMetrics().elidedText(title, Qt::ElideMiddle, form->Label2->width() - 2));
  form->Label2->setToolTip(title);
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
