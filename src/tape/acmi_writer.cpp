#include "tape/acmi_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <iterator>

#include "base/clock.h"
#include "base/code_page.h"
#include "base/numbers.h"
#include "base/text.h"
#include "link/plot_feed.h"

namespace kestrel::tape {
namespace {

constexpr double DaySeconds = 86400;
/// The first day that is none of the years that a calendar tells, days since 1899-12-30.
constexpr double EndOfDates = 2958466;
/// Hundredths of a metre to a hundred feet.
constexpr std::int64_t HundredthsOfMetre = 3048;

constexpr std::string_view Friendly = ",Coalition=Allies,Color=Blue";
constexpr std::string_view Hostile = ",Coalition=Enemies,Color=Red";

void AppendWhole(std::string& out, std::uint64_t value, int base) {
  std::array<char, 20> digits;
  out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value, base).ptr);
}

/// `value` counts the last of `decimals` places. Whole numbers, since a tape of an evening has millions of them.
void AppendFixed(std::string& out, std::int64_t value, std::size_t decimals) {
  if (value < 0) out += '-';
  std::uint64_t rest = static_cast<std::uint64_t>(value < 0 ? -value : value);
  std::array<char, 24> digits;
  std::size_t at = digits.size();
  for (std::size_t place = 0; rest != 0 || place <= decimals; ++place) {
    if (place == decimals) digits[--at] = '.';
    digits[--at] = static_cast<char>('0' + rest % 10);
    rest /= 10;
  }
  out.append(digits.data() + at, digits.size() - at);
}

/// To seven places, which is a centimetre.
void AppendDegrees(std::string& out, double degrees) {
  AppendFixed(out, static_cast<std::int64_t>(std::llround(degrees * 1e7)), 7);
}

/// A text of the code page as a value: what is no letter is a blank, what has a meaning of its own is marked.
void AppendText(std::string& out, std::string_view bytes) {
  std::u16string letters;
  for (char16_t letter : base::ToUnicode(bytes)) {
    if (letter < 0x20 || (letter >= 0x7F && letter < 0xA0)) letter = u' ';
    if (letter == u',' || letter == u'\\') letters += u'\\';
    letters += letter;
  }
  const std::u8string text = std::filesystem::path(letters).u8string();
  out.append(text.begin(), text.end());
}

}  // namespace

void AcmiWriter::Append(const TapeRecord& record, std::string& out) {
  if (!(record.Time >= 0 && record.Time < EndOfDates)) return;
  const double seconds = record.Time * DaySeconds;
  const bool first = records++ == 0;
  if (first) {
    Head(record.Time, out);
    reference = std::round(seconds);
  }
  out += '#';
  AppendFixed(out, static_cast<std::int64_t>(std::llround((seconds - *reference) * 100)), 2);
  out += '\n';
  if (first && Position(++lastId, earth(bullseyeX, bullseyeY), 0, out)) {
    out.append(",Type=Navaid+Static+Bullseye").append(Friendly).append(",Name=Bullseye\n");
  }
  for (const link::PlotRecord& client : record.Clients.Live()) {
    if (!link::HasShownPosition(client)) continue;
    // Ids are given anew, so that a number alone is no player.
    key.assign(client.Name).append(1, '\0').append(std::to_string(client.Id));
    Put(players, key, client.Name, Side::Friend, earth(client.X, client.Y), client.Altitude, out);
  }
  for (const link::AIPlotRecord& plot : record.AI.Live()) {
    const std::string_view name = base::Trim(plot.Name);
    Put(flights, name, name, plot.Hostile != 0 ? Side::Foe : Side::Friend,
        earth(static_cast<double>(plot.X), size - static_cast<double>(plot.Y)), plot.Altitude, out);
  }
  gone.clear();
  TakeOut(players);
  TakeOut(flights);
  std::sort(gone.begin(), gone.end());
  for (const std::uint64_t id : gone) {
    out += '-';
    AppendWhole(out, id, 16);
    out += '\n';
  }
}

void AcmiWriter::Head(double time, std::string& out) {
  out +=
      "\xEF\xBB\xBF"
      "FileType=text/acmi/tacview\nFileVersion=2.2\n0,ReferenceTime=";
  const base::CalendarTime date = base::CalendarOf(time);
  base::AppendFormat(out, date.Year, "0000");
  const std::pair<char, int> parts[] = {
      {'-', date.Month}, {'-', date.Day}, {'T', date.Hour}, {':', date.Minute}, {':', date.Second}};
  for (const auto& [mark, number] : parts) {
    out += mark;
    base::AppendFormat(out, number, "00");
  }
  out += "Z\n0,DataRecorder=KESTREL\n";
}

bool AcmiWriter::Position(std::uint64_t id, EarthPlace place, std::int16_t hundredsOfFeet, std::string& out) const {
  if (!(std::abs(place.Lat) <= 90) || !std::isfinite(place.Long)) return false;
  if (std::abs(place.Long) > 180) place.Long = std::remainder(place.Long, 360);
  AppendWhole(out, id, 16);
  out += ",T=";
  AppendDegrees(out, place.Long);
  out += '|';
  AppendDegrees(out, place.Lat);
  out += '|';
  AppendFixed(out, hundredsOfFeet * HundredthsOfMetre, 2);
  return true;
}

void AcmiWriter::Put(Kind& kind, std::string_view objectKey, std::string_view name, Side side, EarthPlace place,
                     std::int16_t hundredsOfFeet, std::string& out) {
  auto found = kind.find(objectKey);
  if (found == kind.end()) found = kind.try_emplace(std::string(objectKey)).first;
  Namesakes& those = found->second;
  if (those.Record != records) {
    those.Record = records;
    those.Seen = 0;
  }
  const bool isNew = those.Seen == those.Objects.size();
  const std::uint64_t id = isNew ? lastId + 1 : those.Objects[those.Seen].Id;
  if (!Position(id, place, hundredsOfFeet, out)) return;
  if (isNew) {
    those.Objects.push_back({++lastId, side});
    out += ",Type=Air+FixedWing";
  }
  Object& object = those.Objects[those.Seen++];
  if (isNew || object.Shown != side) out += side == Side::Foe ? Hostile : Friendly;
  object.Shown = side;
  if (isNew) AppendText(out.append(",Name="), name);
  out += '\n';
}

void AcmiWriter::TakeOut(Kind& kind) {
  for (auto at = kind.begin(); at != kind.end();) {
    Namesakes& those = at->second;
    const std::size_t seen = those.Record == records ? those.Seen : 0;
    for (std::size_t n = seen; n < those.Objects.size(); ++n) gone.push_back(those.Objects[n].Id);
    those.Objects.resize(seen);
    at = seen == 0 ? kind.erase(at) : std::next(at);
  }
}

}  // namespace kestrel::tape
