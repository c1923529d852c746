#pragma once

#include <QLabel>
#include <QLineEdit>
#include <optional>
#include <string>

#include "link/phonebook.h"
#include "shell/parts/typed_text.h"
#include "shell/parts/unicode_text.h"

// The two fields of a phonebook entry, as the windows that show them share them.
namespace kestrel::shell {

/// No more can be typed than an entry holds.
inline void LimitFields(QLineEdit& name, QLineEdit& address) {
  for (QLineEdit* field : {&name, &address}) field->setMaxLength(static_cast<int>(link::MaxEntryText));
}

/// What is typed, without blanks around it. Nothing, with the reason in `refused` and the keyboard in the field that it
/// lies in, when it cannot be taken.
inline std::optional<link::ConnEntry> TypedEntry(QLineEdit& name, QLineEdit& address, QLabel& refused) {
  const std::optional<std::string> typedName = TakeText(name, refused);
  if (!typedName) return std::nullopt;
  const std::optional<std::string> typedAddress = TakeText(address, refused);
  if (!typedAddress) return std::nullopt;
  link::ConnEntry entry = link::TrimmedEntry(*typedName, *typedAddress);
  const std::optional<std::string> objection = link::Objection(entry);
  if (!objection) return entry;
  refused.setText(FromBytes(*objection));
  refused.show();
  address.setFocus();
  return std::nullopt;
}

}  // namespace kestrel::shell
