#include "session-sim/faults.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

#include "session-sim/encoder.h"

namespace kestrel::sim {
namespace {

constexpr std::string_view RS = "\x1e";
constexpr std::array<std::string_view, 7> UnknownWords = {"QWERTY",  "indata", "AILOC",       "X",
                                                          "NAWACS1", "SYNCR0", "\xff\xfe\x01"};
/// Texts that are no Id of 16 bits.
constexpr std::array<std::string_view, 9> BadIds = {"",    "abc",  "99999", "-40000",        "1e9",
                                                    "nan", "0x7b", "--4",   "32768000000000"};
constexpr std::array<std::string_view, 6> BadPositions = {"         nan         inf        -inf",
                                                          "twelve lettertwelve lettertwelve letter",
                                                          "  1e308       -1e308      9e99999    ",
                                                          "12",
                                                          "",
                                                          "999999999999999999999999999999999999"};

template <std::size_t N>
std::string_view OneOf(const std::array<std::string_view, N>& texts, Random& random) {
  return texts[static_cast<std::size_t>(random.Whole(0, static_cast<int>(N) - 1))];
}

std::string UnusedId(Random& random) { return std::to_string(random.Whole(FirstUnusedId, 32767)); }

std::string Join(std::string_view word, std::initializer_list<std::string_view> fields) {
  std::string message(word);
  bool first = true;
  for (const std::string_view field : fields) {
    if (!first) message += RS;
    message += field;
    first = false;
  }
  return message;
}

/// A client message with too few fields or with an Id that is none.
std::string BadClient(std::string_view word, Random& random) {
  switch (random.Whole(0, 3)) {
    case 0:
      return std::string(word);
    case 1:
      return Join(word, {UnusedId(random)});
    case 2:
      return Join(word, {UnusedId(random), "Half", "F-16"});
    default:
      return Join(word, {OneOf(BadIds, random), "Nobody", "none", "O"});
  }
}

std::string BadPosition(std::string_view good, Random& random) {
  switch (random.Whole(0, 4)) {
    case 0:
      return Join("INDATA", {UnusedId(random), OneOf(BadPositions, random)});
    case 1:
      return Join("INDATA", {OneOf(BadIds, random), "        1.00        2.00        3.00"});
    case 2:
      return Join("INDATA", {UnusedId(random), "        1.00        2.00        3.00", "more", "", "fields"});
    case 3:
      // A real player's message that ends before its position.
      if (good.substr(0, 6) == "INDATA") return std::string(good.substr(0, good.find(RecordSeparator)));
      return "INDATA";
    default:
      return std::string(static_cast<std::size_t>(random.Whole(1, 4)), '\0');
  }
}

/// The snapshot cut anywhere, within a record more often than not.
std::string PartOf(std::string_view snapshot, Random& random) {
  const int data = static_cast<int>(snapshot.size()) - 7;
  return std::string(snapshot.substr(0, static_cast<std::size_t>(6 + random.Whole(0, std::max(0, data)))));
}

}  // namespace

std::vector<std::string> CutAtRandom(std::string_view bytes, Random& random) {
  std::vector<std::size_t> cuts = {0, bytes.size()};
  if (bytes.size() > 1) {
    for (int k = random.Whole(1, 4); k > 0; --k) {
      cuts.push_back(static_cast<std::size_t>(random.Whole(1, static_cast<int>(bytes.size()) - 1)));
    }
  }
  std::sort(cuts.begin(), cuts.end());
  std::vector<std::string> pieces;
  for (std::size_t k = 1; k < cuts.size(); ++k) {
    if (cuts[k] > cuts[k - 1]) pieces.emplace_back(bytes.substr(cuts[k - 1], cuts[k] - cuts[k - 1]));
  }
  return pieces;
}

std::string Garbage(std::string_view good, Random& random) {
  std::string message;
  if (good.substr(0, 6) == "AILOCA" && random.Chance(0.5)) {
    message = PartOf(good, random);
  } else {
    switch (random.Whole(0, 5)) {
      case 0:
        message = OneOf(UnknownWords, random);
        break;
      case 1:
        message = BadClient("NEWCLT", random);
        break;
      case 2:
        message = BadClient("PLSUPD", random);
        break;
      case 3:
        message = "DELCLT" + (random.Chance(0.3) ? UnusedId(random) : std::string(OneOf(BadIds, random)));
        break;
      default:
        message = BadPosition(good, random);
        break;
    }
  }
  message += '\0';
  return message;
}

std::vector<std::string> MixGarbage(std::vector<std::string> messages, int percent, Random& random) {
  if (percent <= 0) return messages;
  std::vector<std::string> mixed;
  for (std::string& message : messages) {
    if (random.Chance(percent / 100.0)) mixed.push_back(Garbage(message, random));
    mixed.push_back(std::move(message));
  }
  return mixed;
}

}  // namespace kestrel::sim
