#include "shell/map/read_out.h"

#include <QFontDatabase>

namespace kestrel::shell {

QLabel* NewReadOut(const char* name, const QString& longest, const QString& meaning, QWidget* owner) {
  auto* label = new QLabel(owner);
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  label->setToolTip(meaning);
  label->setAccessibleName(meaning);
  QFont digits = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  digits.setPointSizeF(owner->font().pointSizeF() * 1.3);
  label->setFont(digits);
  label->setMinimumWidth(label->fontMetrics().horizontalAdvance(longest) + 2);
  label->setMinimumHeight(label->fontMetrics().height());
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return label;
}

}  // namespace kestrel::shell
