#pragma once

#include <string>

#include "base/failure.h"

namespace kestrel::test {

/// What the RuntimeFailure of `work` says; empty when there is none.
template <class Work>
std::string FailureOf(const Work& work) {
  try {
    work();
  } catch (const base::RuntimeFailure& failure) {
    return failure.what();
  }
  return "";
}

}  // namespace kestrel::test
