#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::link {

/// Ends a message in both directions.
inline constexpr char Terminator = '\0';
/// Separates the fields in the data of NEWCLT, PLSUPD and INDATA.
inline constexpr char FieldSeparator = '\x1e';
inline constexpr std::size_t CommandLength = 6;
/// Longest message that is waited for, bytes: 230,000 AI records. A longer one means that the peer speaks another
/// language.
inline constexpr std::size_t MaxMessageBytes = 4 << 20;

/// One message of the current arrival; views into the arrival's bytes.
struct CommandEntry {
  std::string_view Command;  ///< the first 6 characters, fewer in a shorter message
  std::string_view Data;
};

/// Cuts `arrived`, which ends with a terminator (or is empty), at the terminators and appends one entry for each
/// message.
void ParseData(std::string_view arrived, std::vector<CommandEntry>& Commands);

/// The receive buffer: keeps the unterminated tail across arrivals and connections.
class InDataBuffer {
 public:
  /// Appends what arrived. False when the unterminated tail exceeds MaxMessageBytes: it has been dropped and the
  /// connection should be closed; messages that were whole stay to be taken.
  bool Append(std::string_view arrived);
  /// Moves all whole messages into `whole` (replacing it); false when there is none.
  bool TakeWhole(std::string& whole);
  std::size_t Size() const { return InData.size(); }

 private:
  std::string InData;
  std::size_t wholeBytes = 0;  ///< up to and with the last terminator
};

}  // namespace kestrel::link
