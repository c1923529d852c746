#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace kestrel::link {

/// Exactly as base::AppendFormat with "0000.000", in half its time: a tape has thousands in each of its records.
void AppendPosition(std::string& out, double value);

/// A position as text: X and Y, each "0000.000", joined; or any text that a tape tells. That of a position is made when
/// it is read first, since the feed sets a thousand in each cycle and few are read. So reading is a change: not for two
/// threads at once.
class PositionText {
 public:
  PositionText& operator=(std::string_view other);
  void Set(double newX, double newY) {
    x = newX;
    y = newY;
    unwritten = true;
  }
  void clear();
  bool empty() const { return !unwritten && text.empty(); }
  std::size_t size() const { return Text().size(); }
  /// The text is not empty and not that of 0, 0.
  bool IsPlace() const;

  const std::string& Text() const;
  /// To be written over.
  std::string& Text();
  operator std::string_view() const { return Text(); }
  friend bool operator==(const PositionText& a, std::string_view b) { return a.Text() == b; }
  friend bool operator==(const PositionText& a, const PositionText& b) { return a.Text() == b.Text(); }
  friend std::string operator+(std::string a, const PositionText& b) { return std::move(a) + b.Text(); }

 private:
  double x = 0;
  double y = 0;
  mutable bool unwritten = false;  ///< it is that of x, y
  mutable std::string text;        ///< what it is otherwise
};

}  // namespace kestrel::link
