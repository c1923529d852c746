#include "shell/frame/about_frm.h"

#include <QMouseEvent>

#include "base/program_title.h"
#include "shell/parts/guard.h"
#include "shell/parts/look.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/unicode_text.h"
#include "ui_about_frm.h"

namespace kestrel::shell {
namespace {

constexpr int IconSide = 64;

}  // namespace

AboutFrm::AboutFrm(core::Program& running, QWidget* frame)
    : QDialog(frame, Qt::Dialog | Qt::WindowStaysOnTopHint), program(running) {
  Ui::AboutFrm ui;
  ui.setupUi(this);
  ui.picIcon->setPixmap(ProgramIcon().pixmap(QSize(IconSide, IconSide), devicePixelRatioF()));
  ui.lblTitle->setText(FromBytes(base::ProgramTitle()));
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  large.setBold(true);
  ui.lblTitle->setFont(large);
  const QString mail = FromBytes(running.State.MailUrl);
  ui.lblMail->setText(QStringLiteral("mail:") + AsCaption(mail));
  ui.lblMail->setVisible(!mail.isEmpty());
  ui.lblMail->setStyleSheet(QStringLiteral("QPushButton { color: palette(link); text-align: left; padding: 2px 0; }"));
  connect(ui.lblMail, &QPushButton::clicked, this, [this] {
    OpenMail();
    accept();
  });
  connect(ui.cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  ui.cmdClose->setFocus();
}

void AboutFrm::OpenMail() {
  Guarded(program.Log, "AboutFrm", [this] {
    // The file holds the bare address; the system tells a mail from a page by what stands before it.
    const std::string& mail = program.State.MailUrl;
    program.Desk.Open(mail.find(':') == std::string::npos ? "mailto:" + mail : mail, {}, {});
  });
}

void AboutFrm::mouseReleaseEvent(QMouseEvent* event) {
  QDialog::mouseReleaseEvent(event);
  accept();
}

}  // namespace kestrel::shell
