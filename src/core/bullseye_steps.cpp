#include "core/bullseye_steps.h"

#include <utility>

#include "core/theater_switch.h"

namespace kestrel::core {
namespace {

std::size_t CurrentIndex(const Station& station) {
  const theaters::Theater& theater = station.Catalogue.Current();
  const auto index = static_cast<std::size_t>(theater.CurrentBull);
  return theater.CurrentBull > 0 && index <= theater.Bulls.UpperBound() ? index : 0;
}

}  // namespace

BullseyeStep PresentBullseye(const Station& station) {
  const std::size_t index = CurrentIndex(station);
  return {index, station.Catalogue.Current().Bulls[index]};
}

void KeepBullseye(Station& station, BullseyeStep before) {
  if (!station.Session.Connected || before.Index == 0) return;
  const BullseyeStep now = PresentBullseye(station);
  if (now.Index != before.Index) {
    before.Edited.reset();
  } else if (now.Edited->X == before.Edited->X && now.Edited->Y == before.Edited->Y) {
    return;
  }
  station.BullseyeSteps.push_back(std::move(before));
}

void ForgetBullseye(Station& station, std::size_t row) {
  std::erase_if(station.BullseyeSteps, [row](const BullseyeStep& step) { return step.Index == row; });
  for (BullseyeStep& step : station.BullseyeSteps) step.Index -= step.Index > row ? 1 : 0;
}

std::optional<std::string> BullseyeBefore(const Station& station) {
  if (!station.Session.Connected || station.BullseyeSteps.empty()) return std::nullopt;
  return station.Catalogue.Current().Bulls[station.BullseyeSteps.back().Index].Name;
}

base::Changed UndoBullseye(Program& program) {
  Station& station = program.State;
  if (!BullseyeBefore(station)) return base::Changed::Nothing;
  const BullseyeStep step = std::move(station.BullseyeSteps.back());
  station.BullseyeSteps.pop_back();
  theaters::Theater& theater = station.Catalogue.Current();
  if (step.Edited) theater.Bulls[step.Index] = *step.Edited;
  theater.CurrentBull = static_cast<std::int16_t>(step.Index);
  return ReloadBulls(station) | base::Changed::NameMenus;
}

std::string BullseyeInUse(const Station& station) {
  if (station.Tapes.Bullseye && station.Tapes.Bullseye->IsPlace()) return "The tape's bullseye";
  const std::size_t index = CurrentIndex(station);
  return index == 0 ? "Middle of the map" : station.Catalogue.Current().Bulls[index].Name;
}

}  // namespace kestrel::core
