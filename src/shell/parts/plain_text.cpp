#include "shell/parts/plain_text.h"

#include <QLabel>

namespace kestrel::shell {

void ShowAsWritten(QWidget& widget) {
  auto* label = qobject_cast<QLabel*>(&widget);
  if (label != nullptr && label->textFormat() == Qt::AutoText) label->setTextFormat(Qt::PlainText);
}

QString AsCaption(QString text) { return text.replace(u'&', QStringLiteral("&&")).replace(u'\t', u' '); }

QString AsTitle(QString text) { return text.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")); }

}  // namespace kestrel::shell
