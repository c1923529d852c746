#include "falcon/colour_criteria.h"

#include <algorithm>
#include <limits>

#include "base/numbers.h"

namespace kestrel::falcon {

void SortCriteria(std::vector<ColourCriterion>& criteria) {
  std::stable_sort(criteria.begin(), criteria.end(),
                   [](const ColourCriterion& a, const ColourCriterion& b) { return a.Height < b.Height; });
}

std::int16_t TypedHeight(std::string_view text) {
  using Limits = std::numeric_limits<std::int16_t>;
  return base::ToInt16(std::clamp<double>(base::InvariantNumber(text), Limits::min(), Limits::max()));
}

std::optional<int> TypedCount(std::string_view text) {
  const double count = base::RoundHalfEven(base::InvariantNumber(text));
  if (!(count >= 1 && count <= static_cast<double>(MostCriteria))) return std::nullopt;
  return static_cast<int>(count);
}

void CalculateCriteria(ColourChoice& choice, int count, std::int16_t highest) {
  const int step = highest / count;
  const std::size_t colourStep = MostCriteria / static_cast<std::size_t>(count);
  choice.Criteria.clear();
  for (int n = 1; n <= count; ++n) {
    choice.Criteria.push_back(
        {choice.Palette[colourStep * static_cast<std::size_t>(n)], static_cast<std::int16_t>(step * n)});
  }
  SortCriteria(choice.Criteria);
}

}  // namespace kestrel::falcon
