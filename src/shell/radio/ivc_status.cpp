#include "shell/radio/ivc_status.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

#include "shell/parts/guard.h"
#include "shell/parts/line_icon.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// The images of the group by their numbers, from 1.
constexpr IconKind Images[] = {IconKind::VoiceConnected, IconKind::VoiceApart, IconKind::ProgramRuns,
                               IconKind::ProgramMissing};

/// `words` is what the image says, for whoever does not see it.
void SetImage(QLabel& label, int image, const QString& words) {
  const int size = label.style()->pixelMetric(QStyle::PM_SmallIconSize);
  label.setPixmap(LineIcon(Images[image - 1]).pixmap(QSize(size, size), label.devicePixelRatioF()));
  label.setAccessibleName(words);
}

QString Words(const radio::VoiceStatus& status) {
  if (!status.Running) return QStringLiteral("The IVC Client is not running");
  return status.Connected ? QStringLiteral("Connected") : QStringLiteral("Running, not connected");
}

}  // namespace

IvcStatus::IvcStatus(core::Program& running, QWidget* owner)
    : QGroupBox(QStringLiteral("IVC Status"), owner), program(running) {
  setObjectName(QStringLiteral("IvcStatus"));
  if (program.Voice.Available()) {
    AddControls();
    Show();
    return;
  }
  auto* line = new QLabel(QStringLiteral("The IVC Client runs on Windows alone."), this);
  line->setObjectName(QStringLiteral("lblIVCNone"));
  line->setForegroundRole(QPalette::PlaceholderText);
  auto* row = new QHBoxLayout(this);
  row->addWidget(line);
}

void IvcStatus::AddControls() {
  const auto image = [this](const char* name, const QString& tip) {
    auto* label = new QLabel(this);
    label->setObjectName(QString::fromLatin1(name));
    label->setToolTip(tip);
    return label;
  };
  const auto box = [this](const char* name, const QString& tip) {
    auto* line = new QLineEdit(this);
    line->setObjectName(QString::fromLatin1(name));
    line->setReadOnly(true);
    line->setToolTip(tip);
    return line;
  };
  Image_IVCRunning = image("Image_IVCRunning", QStringLiteral("IVC Running Status"));
  Image_IVCConnected = image("Image_IVCConnected", QStringLiteral("IVC Connected Status"));
  lblIVCWords = new QLabel(this);
  lblIVCWords->setObjectName(QStringLiteral("lblIVCWords"));
  txtIVC_UHF = box("txtIVC_UHF", QStringLiteral("What the UHF radio of the client has"));
  txtIVC_VHF = box("txtIVC_VHF", QStringLiteral("What the VHF radio of the client has"));
  auto* cmdRefresh = new QPushButton(QStringLiteral("Refresh"), this);
  cmdRefresh->setObjectName(QStringLiteral("cmdRefresh"));
  cmdRefresh->setToolTip(QStringLiteral("Asks the client anew"));
  cmdRefresh->setAutoDefault(false);
  connect(cmdRefresh, &QPushButton::clicked, this,
          [this] { Guarded(program.Log, "cmdRefresh", [this] { Refresh(); }); });

  auto* state = new QHBoxLayout;
  state->setSpacing(8);
  for (QWidget* part : {Image_IVCRunning, Image_IVCConnected}) state->addWidget(part);
  state->addWidget(lblIVCWords, 1);
  state->addWidget(cmdRefresh);
  auto* radios = new QHBoxLayout;
  radios->setSpacing(8);
  for (const auto& [word, line] : {std::pair("UHF", txtIVC_UHF), std::pair("VHF", txtIVC_VHF)}) {
    auto* label = new QLabel(QString::fromLatin1(word), this);
    label->setBuddy(line);
    radios->addWidget(label);
    radios->addWidget(line, 1);
  }
  auto* rows = new QVBoxLayout(this);
  rows->setSpacing(8);
  rows->addLayout(state);
  rows->addLayout(radios);
}

void IvcStatus::changeEvent(QEvent* event) {
  QGroupBox::changeEvent(event);
  // The images have the colours that were in use when they were shown.
  if (event->type() == QEvent::PaletteChange && Image_IVCRunning != nullptr) Show();
}

void IvcStatus::Refresh() {
  if (Image_IVCRunning != nullptr) {
    status = program.Voice.Status();
    Show();
  }
  Q_EMIT Refreshed();
}

void IvcStatus::Show() {
  SetImage(*Image_IVCRunning, status.Running ? 3 : 4,
           status.Running ? QStringLiteral("Running") : QStringLiteral("Not running"));
  SetImage(*Image_IVCConnected, status.Connected ? 1 : 2,
           status.Connected ? QStringLiteral("Connected") : QStringLiteral("Not connected"));
  lblIVCWords->setText(Words(status));
  txtIVC_UHF->setText(FromBytes(status.UHF));
  txtIVC_VHF->setText(FromBytes(status.VHF));
}

}  // namespace kestrel::shell
