#pragma once

#include <QAbstractNativeEventFilter>

namespace kestrel::shell {

/// Under X a window manager that moves a window takes the keyboard for that time, and the toolkit would believe that
/// another program has come to the front. The keyboard alone being taken is not a loss of focus: that event is dropped.
class FocusFilter final : public QAbstractNativeEventFilter {
 public:
  FocusFilter();
  ~FocusFilter() override;
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
};

}  // namespace kestrel::shell
