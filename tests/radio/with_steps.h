#pragma once

#include <gtest/gtest.h>

#include "radio/frequency_changes.h"

namespace kestrel::radio {

/// A test with a history.
class WithSteps : public testing::Test {
 protected:
  FrequencyHistory steps;
};

}  // namespace kestrel::radio
