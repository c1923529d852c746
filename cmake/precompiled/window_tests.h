// Parsed once for the tests of windows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtTest>

#include "toolkit.h"
