#include "link/callsigns.h"

#include <algorithm>

namespace kestrel::link {
namespace {

/// A line of a file holds it.
bool IsOneLine(std::string_view text) {
  return text.size() <= Callsigns::MaxText &&
         std::all_of(text.begin(), text.end(), [](char letter) { return static_cast<unsigned char>(letter) >= ' '; });
}

}  // namespace

GivenLook* Callsigns::LookOf(std::string_view name) {
  const auto found = looks.find(name);
  if (found != looks.end()) return &found->second;
  if (name.empty() || !IsOneLine(name) || looks.size() >= MaxNames) return nullptr;
  return &looks[std::string(name)];
}

void Callsigns::DropEmpty(std::string_view name) {
  const auto found = looks.find(name);
  if (found != looks.end() && found->second.Label.empty() && found->second.Color == 0) looks.erase(found);
}

void Callsigns::GiveLabel(std::string_view name, std::string_view label) {
  if (!IsOneLine(label)) return;
  if (GivenLook* look = LookOf(name)) look->Label = label;
  DropEmpty(name);
}

void Callsigns::GiveColor(std::string_view name, base::Colour color) {
  if (GivenLook* look = LookOf(name)) look->Color = color;
  DropEmpty(name);
}

const GivenLook* Callsigns::Recall(std::string_view name) const {
  if (!REMEMBERCALLSIGNS) return nullptr;
  const auto found = looks.find(name);
  return found == looks.end() ? nullptr : &found->second;
}

}  // namespace kestrel::link
