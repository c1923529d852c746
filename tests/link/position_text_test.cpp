#include "link/position_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "base/numbers.h"

namespace kestrel::link {
namespace {

TEST(PositionText, PositionsAreWrittenAsTheGeneralRoadDoes) {
  const auto seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> near(-1, 10001);
  const auto check = [](double value) {
    std::string quick;
    AppendPosition(quick, value);
    EXPECT_EQ(quick, base::FormatInvariant(value, "0000.000")) << std::hexfloat << value;
  };
  for (int round = 0; round < 100000; ++round) {
    check(near(random));
    // On and beside the halves, where the rounding turns.
    const double half = static_cast<double>(random() % 10000000) / 1000 + 0.0005;
    check(half);
    check(std::nextafter(half, 0));
    check(half * (1 + 1e-13));
    check(half + 1e-9);
  }
  for (const double value :
       {0.0, -0.0, -0.0001, -5.0, 9998.9999, 9999.0, 9999.9995, 1e15, 1e300, -1e300, HUGE_VAL, std::nan("")}) {
    check(value);
  }
}

}  // namespace
}  // namespace kestrel::link
