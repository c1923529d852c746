#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <functional>
#include <vector>

// How the benches take times.
namespace kestrel::bench {

/// By the clock on the wall.
inline double Milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// Of the processor: for work that waits for nothing, as when it reads what is in the page cache, so that others on the
/// machine do not count.
inline double ProcessorMilliseconds(const std::function<void()>& work) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  };
  const double start = now();
  work();
  return now() - start;
}

/// The middle one of at least one value.
inline double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

/// Of the processor, the median of `rounds`.
inline double MedianMilliseconds(int rounds, const std::function<void()>& work) {
  std::vector<double> values;
  for (int round = 0; round < rounds; ++round) values.push_back(ProcessorMilliseconds(work));
  return Median(values);
}

}  // namespace kestrel::bench
