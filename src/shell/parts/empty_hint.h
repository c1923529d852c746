#pragma once

#include <QLabel>

class QAbstractItemView;

namespace kestrel::shell {

/// A muted sentence in the middle of a list or tree for as long as it has no rows: what the person can do then.
class EmptyHint final : public QLabel {
  Q_OBJECT
 public:
  /// `view` owns it and has its model already.
  EmptyHint(QAbstractItemView& view, const QString& sentence);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Follow();

  QAbstractItemView& list;
};

}  // namespace kestrel::shell
