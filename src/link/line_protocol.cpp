#include "link/line_protocol.h"

#include <utility>

namespace kestrel::link {

void ParseData(std::string_view arrived, std::vector<CommandEntry>& Commands) {
  while (!arrived.empty()) {
    const std::size_t end = arrived.find(Terminator);
    if (end == std::string_view::npos) return;
    const std::string_view message = arrived.substr(0, end);
    const std::size_t word = message.size() < CommandLength ? message.size() : CommandLength;
    Commands.push_back({message.substr(0, word), message.substr(word)});
    arrived.remove_prefix(end + 1);
  }
}

bool InDataBuffer::Append(std::string_view arrived) {
  const std::size_t last = arrived.rfind(Terminator);
  if (last != std::string_view::npos) wholeBytes = InData.size() + last + 1;
  InData.append(arrived);
  if (InData.size() - wholeBytes <= MaxMessageBytes) return true;
  InData.resize(wholeBytes);
  return false;
}

bool InDataBuffer::TakeWhole(std::string& whole) {
  if (wholeBytes == 0) return false;
  if (wholeBytes == InData.size()) {
    whole.clear();
    std::swap(whole, InData);
  } else {
    whole.assign(InData, 0, wholeBytes);
    InData.erase(0, wholeBytes);
  }
  wholeBytes = 0;
  return true;
}

}  // namespace kestrel::link
