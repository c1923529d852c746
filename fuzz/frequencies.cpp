// Any bytes as the frequencies of a theater and as the default channels: they are read, what was read is written and
// read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "base/profile_file.h"
#include "radio/frequency_file.h"

namespace {

using namespace kestrel;

void Check(bool holds) {
  if (!holds) std::abort();
}

radio::Frequencies Read(std::string_view text) {
  std::vector<std::string> notes;
  radio::Frequencies tables = radio::ReadFrequencies(base::ProfileFile(text), notes);
  Check(notes.size() <= 21);
  return tables;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const radio::Frequencies tables = Read(input);
  try {
    const std::string written = radio::WriteFrequencies(tables);
    Check(radio::HasKeysOf(tables, written));
    radio::HasKeysOf(tables, input);
    const radio::Frequencies again = Read(written);
    Check(again.FreqFolders.UpperBound() == tables.FreqFolders.UpperBound());
    Check(again.Airfields.UpperBound() == tables.Airfields.UpperBound());
    // Of quotes within quotes a pair goes each time, so it settles after no more passes than a value has pairs.
    std::string settled = radio::WriteFrequencies(again);
    std::size_t passes = 0;
    for (std::string next; (next = radio::WriteFrequencies(Read(settled))) != settled; settled = next) {
      Check(++passes < 400);
    }
  } catch (const base::RuntimeFailure&) {
    // Longer than a file may be.
  }
  radio::FreqValToIcon(input);
  radio::ReadDefaultFrequencies(base::ProfileFile(input));
  return 0;
}
