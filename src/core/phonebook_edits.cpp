#include "core/phonebook_edits.h"

#include <string>
#include <utility>

#include "core/settings.h"
#include "core/theater_data.h"
#include "link/phonebook.h"

namespace kestrel::core {
namespace {

constexpr std::string_view ReplaceIpText =
    "The connection name you specified allready exists in the phonebook. Do you want to replace the associated IP "
    "address (selecting No won't add the entry in phonebook)?";
constexpr std::string_view ReplaceNameText =
    "The connection IP address you specified allready exists in the phonebook. Do you want to replace the associated "
    "name (selecting No won't add the entry in phonebook)?";

/// What cannot be saved is told in a box and stays in memory.
void KeepPhonebook(Program& program) {
  program.Shown.Refresh(base::Changed::ConnectionMenus);
  try {
    SaveConnList(program.State);
  } catch (const base::RuntimeFailure& failure) {
    TellUnsaved(program, {"phonebook", failure.what()});
  }
}

/// Asks whether `kept` takes the typed value; false on Cancel. What is replaced is gone, so that Enter is No.
bool AskToReplace(Program& program, std::string_view question, std::string& kept, const std::string& typed) {
  const base::Answer answer = program.Desk.Ask("Validator", question, base::MessageIcon::Question,
                                               base::MessageButtons::YesNoCancel, base::Answer::No);
  if (answer == base::Answer::Yes) {
    kept = typed;
    program.Shown.Refresh(base::Changed::ConnectionMenus);
  }
  return answer != base::Answer::Cancel;
}

}  // namespace

bool KeepTypedEntry(Program& program, const link::ConnEntry& entry) {
  base::Table<link::ConnEntry>& entries = program.State.LinkOptions.ConnList;
  const link::EntryMatch match = link::ValidateEntry(entry, entries);
  // Both are there, perhaps in two entries: nothing is asked and nothing replaced.
  if (match.Name != 0 && match.Ip != 0) return true;
  if (match.Name != 0) return AskToReplace(program, ReplaceIpText, entries[match.Name].Ip, entry.Ip);
  if (match.Ip != 0) return AskToReplace(program, ReplaceNameText, entries[match.Ip].Name, entry.Name);
  AddEntry(program, entry);
  return true;
}

void AddEntry(Program& program, link::ConnEntry entry) {
  program.State.LinkOptions.ConnList.Append(std::move(entry));
  KeepPhonebook(program);
}

void RemoveEntry(Program& program, std::size_t index) {
  program.State.LinkOptions.ConnList.Remove(index);
  KeepPhonebook(program);
}

void ReplaceEntry(Program& program, std::size_t index, link::ConnEntry entry) {
  program.State.LinkOptions.ConnList[index] = std::move(entry);
  KeepPhonebook(program);
}

void StoreConnPort(Program& program, std::int32_t port) {
  program.State.LinkOptions.CONNPORT = port;
  for (const Unsaved& failure : SaveAll(program.State)) TellUnsaved(program, failure);
}

void ChangeConnPort(Program& program, std::int32_t port) {
  StoreConnPort(program, port);
  program.Link.DropSocket();
}

}  // namespace kestrel::core
