#include "shell/core/saving_message.h"

#include <QCoreApplication>

#include "ui_saving_message.h"

namespace kestrel::shell {

frmSavingMessage::frmSavingMessage(QWidget* owner) : QDialog(owner, Qt::Dialog | Qt::FramelessWindowHint) {
  Ui::frmSavingMessage().setupUi(this);
}

void frmSavingMessage::ShowNow() {
  show();
  raise();
  // Neither input nor the socket may come in between: what is about to be written should not change under the writing.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
  repaint();
}

}  // namespace kestrel::shell
