#include "shell/frame/focus_filter.h"

#include <QCoreApplication>
#include <cstdint>

namespace kestrel::shell {
namespace {

// Of the X protocol: an event's first byte is its type (the highest bit: sent by a program), a focus event's ninth says
// why it came.
constexpr std::uint8_t FocusOut = 10;
constexpr std::uint8_t NotifyGrab = 1;

}  // namespace

FocusFilter::FocusFilter() { QCoreApplication::instance()->installNativeEventFilter(this); }

FocusFilter::~FocusFilter() {
  if (QCoreApplication::instance() != nullptr) QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool FocusFilter::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (eventType != "xcb_generic_event_t") return false;
  const auto* bytes = static_cast<const std::uint8_t*>(message);
  return (bytes[0] & 0x7f) == FocusOut && bytes[8] == NotifyGrab;
}

}  // namespace kestrel::shell
