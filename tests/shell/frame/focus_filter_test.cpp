#include "shell/frame/focus_filter.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <QByteArray>
#include <array>

namespace kestrel::shell {
namespace {

TEST(FocusFilter, DropsOnlyTheLossThatIsATakenKeyboard) {
  struct Case {
    const char* Kind;
    std::uint8_t Type;
    std::uint8_t Why;
    bool Dropped;
  };
  FocusFilter filter;
  for (const Case& each : {Case{"xcb_generic_event_t", 10, 1, true}, Case{"xcb_generic_event_t", 0x80 | 10, 1, true},
                           Case{"xcb_generic_event_t", 10, 0, false}, Case{"xcb_generic_event_t", 10, 2, false},
                           Case{"xcb_generic_event_t", 10, 3, false}, Case{"xcb_generic_event_t", 9, 1, false},
                           Case{"windows_generic_MSG", 10, 1, false}}) {
    std::array<std::uint8_t, 32> event{};
    event[0] = each.Type;
    event[8] = each.Why;
    qintptr result = 0;
    EXPECT_EQ(filter.nativeEventFilter(QByteArray(each.Kind), event.data(), &result), each.Dropped)
        << each.Kind << " type " << int{each.Type} << " why " << int{each.Why};
  }
}

}  // namespace
}  // namespace kestrel::shell
