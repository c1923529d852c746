// Parsed once for the tests of plain C++.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standard.h"
