#pragma once

#include <stdexcept>

namespace kestrel::base {

/// A failure while running: bad input, a file that cannot be read, a number that does not fit. Its text is for the log.
/// It is thrown before anything has been changed and caught only at a boundary (start, arrival, file operation, draw).
class RuntimeFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace kestrel::base
