#include "link/phonebook.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/text.h"

namespace kestrel::link {
namespace {

constexpr int HighestPort = 65535;

std::string OneLine(std::string_view text) {
  std::string line(text);
  std::replace_if(
      line.begin(), line.end(), [](char letter) { return static_cast<unsigned char>(letter) < ' '; }, ' ');
  return std::string(base::Trim(line));
}

}  // namespace

ConnEntry TrimmedEntry(std::string_view name, std::string_view ip) { return {OneLine(name), OneLine(ip)}; }

std::optional<std::string> Objection(const ConnEntry& entry) {
  if (entry.Ip.empty()) return "Please enter the address or the name of a server.";
  // The system may take what stands before a blank for the whole address, and connect somewhere else.
  if (entry.Ip.find(' ') != std::string::npos) return "An address has no blanks in it.";
  return std::nullopt;
}

EntryMatch ValidateEntry(const ConnEntry& entry, const base::Table<ConnEntry>& list) {
  EntryMatch match;
  for (std::size_t index = 1; index <= list.UpperBound(); ++index) {
    if (list[index].Name == entry.Name) match.Name = index;
    if (list[index].Ip == entry.Ip) match.Ip = index;
  }
  return match;
}

std::optional<std::int32_t> PortFromText(std::string_view text) {
  const std::string_view digits = base::Trim(text);
  const bool whole =
      std::all_of(digits.begin(), digits.end(), [](char letter) { return letter >= '0' && letter <= '9'; });
  const double port = base::LeadingNumber(digits);  // 0 when nothing is there
  if (!whole || port < 1 || port > HighestPort) return std::nullopt;
  return base::ToInt32(port);
}

std::optional<HostAndPort> SplitPort(std::string_view address) {
  const std::size_t colon = address.rfind(':');
  if (colon == std::string_view::npos || colon == 0) return std::nullopt;
  std::string_view host = address.substr(0, colon);
  if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
    host = host.substr(1, host.size() - 2);
  } else if (host.find_first_of(":[]") != std::string_view::npos) {
    return std::nullopt;
  }
  const std::optional<std::int32_t> port = PortFromText(address.substr(colon + 1));
  if (!port) return std::nullopt;
  return HostAndPort{std::string(host), *port};
}

}  // namespace kestrel::link
