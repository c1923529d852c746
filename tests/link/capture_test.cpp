#include "link/capture.h"

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "doubles/fake_clock.h"

namespace kestrel::link {
namespace {

using namespace std::string_literals;

TEST(Capture, HasALineForEachArrival) {
  const test::TempFolder folder;
  doubles::FakeClock clock;
  Capture capture(clock);
  test::WriteBytes(folder / "debug_out.dat", "what was there before");
  capture.Arrival("before it is open");
  capture.Open(folder / "debug_out.dat");
  clock.Date = 45000 + (13 * 3600 + 4 * 60 + 5) / 86400.0;
  capture.Arrival("SYNCRO\0DEL"s);
  capture.Arrival("\r\n\x1e");
  clock.Date = 45000.75;
  capture.Close();
  capture.Close();
  capture.Arrival("after it was closed");
  EXPECT_EQ(test::ReadBytes(folder / "debug_out.dat"),
            "--------->>>>>> Debug Started at 12:00:00<<<<<<---------\r\n"
            "13:04:05|SYNCRO\0DEL\r\n"
            "13:04:05|\r\n\x1e\r\n"
            "--------->>>>>> Debug ended at 18:00:00<<<<<<---------\r\n"s);
}

TEST(Capture, FileThatCannotBeMadeIsAFailure) {
  const test::TempFolder folder;
  doubles::FakeClock clock;
  Capture capture(clock);
  EXPECT_THROW(capture.Open(folder / "missing/debug_out.dat"), base::RuntimeFailure);
  EXPECT_FALSE(capture.IsOpen());
}

}  // namespace
}  // namespace kestrel::link
