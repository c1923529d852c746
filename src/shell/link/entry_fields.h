#pragma once

#include <QLabel>
#include <QLineEdit>
#include <optional>
#include <string>

#include "link/phonebook.h"
#include "shell/core/text.h"

// The two fields of a phonebook entry, as the windows that show them share them.
namespace kestrel::shell {

/// No more can be typed than an entry holds.
inline void LimitFields(QLineEdit& name, QLineEdit& address) {
  for (QLineEdit* field : {&name, &address}) field->setMaxLength(static_cast<int>(link::MaxEntryText));
}

/// What is typed, without blanks around it.
inline link::ConnEntry TypedEntry(const QLineEdit& name, const QLineEdit& address) {
  return link::TrimmedEntry(ToBytes(name.text()), ToBytes(address.text()));
}

/// False, with the reason in `refused` and the keyboard in `address`, when the entry cannot be taken.
inline bool MayBeTaken(const link::ConnEntry& entry, QLabel& refused, QLineEdit& address) {
  const std::optional<std::string> objection = link::Objection(entry);
  refused.setText(objection ? FromBytes(*objection) : QString());
  refused.setVisible(objection.has_value());
  if (objection) address.setFocus();
  return !objection;
}

}  // namespace kestrel::shell
