#include "tape-info/survey.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <utility>

#include "base/clock.h"
#include "base/code_page.h"
#include "base/failure.h"

namespace kestrel::tapeinfo {
namespace {

/// "2026-11-21 09:05:07"
std::string DateText(double date) {
  const base::CalendarTime time = base::CalendarOf(date);
  char text[80];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.Year, time.Month, time.Day, time.Hour,
                time.Minute, time.Second);
  return text;
}

/// "1:02:03", of a time in days.
std::string DurationText(double days) {
  constexpr double secondsPerDay = 86400, most = 1e6;
  if (!(std::abs(days) < most)) return "unknown";
  const long long seconds = std::llround(std::abs(days) * secondsPerDay);
  char text[80];
  std::snprintf(text, sizeof text, "%s%lld:%02lld:%02lld", days < 0 ? "-" : "", seconds / 3600, seconds / 60 % 60,
                seconds % 60);
  return text;
}

/// "1,234,567"
std::string Grouped(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, ",");
  return text;
}

/// "3", or "2 to 5"
std::string SpanText(const Span& span) {
  if (span.Least >= span.Most) return std::to_string(span.Most);
  return std::to_string(span.Least) + " to " + std::to_string(span.Most);
}

/// `text` of the code page for a terminal: what is no letter there is shown as a point.
std::string Shown(std::string_view text) {
  std::u16string letters = base::ToUnicode(text);
  const auto isControl = [](char16_t letter) { return letter < 0x20 || (letter >= 0x7F && letter < 0xA0); };
  std::replace_if(letters.begin(), letters.end(), isControl, u'.');
  const std::u8string shown = std::filesystem::path(letters).u8string();
  return std::string(shown.begin(), shown.end());
}

std::string Line(const std::string& name, const std::string& value) {
  std::string line = "  " + name;
  line.resize(std::max<std::size_t>(line.size() + 1, 18), ' ');
  return line + value + "\n";
}

std::string BytesLine(const std::string& name, std::uint64_t bytes, std::uint64_t whole) {
  char share[40];
  std::snprintf(share, sizeof share, "%20s bytes %5.1f %%", Grouped(bytes).c_str(),
                whole == 0 ? 0 : 100.0 * static_cast<double>(bytes) / static_cast<double>(whole));
  return Line(name, share);
}

/// Where each player stands in the roster.
using Places = std::map<std::pair<std::int16_t, std::string>, std::size_t>;

void AddPlayers(const tape::TapeRecord& record, Survey& survey, Places& places) {
  for (const link::PlotRecord& client : record.Clients.Live()) {
    const auto [place, isNew] = places.try_emplace({client.Id, client.Name}, survey.Roster.size());
    if (isNew) survey.Roster.push_back({client.Id, client.Name, record.Time, record.Time, 0});
    Player& player = survey.Roster[place->second];
    player.Last = record.Time;
    ++player.Records;
  }
}

}  // namespace

void Span::Add(std::uint32_t value) {
  Least = std::min(Least, value);
  Most = std::max(Most, value);
}

bool Survey::IsWhole() const {
  return Header.RecordCount >= 0 && static_cast<std::uint64_t>(Header.RecordCount) == WholeRecords &&
         BehindRecords() == 0;
}

Survey LookThrough(const std::filesystem::path& file) {
  tape::TapeReader reader(file);
  Survey survey;
  survey.Header = reader.Header();
  Places places;
  while (survey.WholeBytes < (survey.FileBytes = reader.Size())) {
    try {
      const tape::RecordShape shape = reader.Skip(survey.WholeBytes);
      const tape::TapeRecord record = reader.ReadRecord(survey.WholeBytes, tape::TapeReader::Histories::StepOver);
      AddPlayers(record, survey, places);
      if (survey.WholeRecords == 0) survey.FirstTime = shape.Time;
      survey.LastTime = shape.Time;
      survey.Players.Add(shape.Clients);
      survey.AIAircraft.Add(shape.AIPlots);
      survey.TimeBytes += sizeof shape.Time;
      survey.AIBytes += shape.AIBytes;
      survey.ClientBytes += shape.ClientBytes;
      survey.HistoryBytes += shape.HistoryBytes;
      survey.WholeBytes = shape.Next;
      ++survey.WholeRecords;
    } catch (const base::RuntimeFailure& failure) {
      survey.Stopped = failure.what();
      break;
    }
  }
  return survey;
}

std::string Report(const Survey& survey) {
  const tape::TapeHeader& header = survey.Header;
  char bullseye[80];
  std::snprintf(bullseye, sizeof bullseye, "%.3f, %.3f map units", header.BullX, header.BullY);
  std::string text = Line("started", DateText(header.StartTime)) +
                     Line("cycle", std::to_string(header.SyncInterval) + " ms") + Line("bullseye", bullseye) +
                     Line("records", Grouped(survey.WholeRecords));
  if (survey.WholeRecords > 0) {
    text += Line("first record", DateText(survey.FirstTime)) + Line("last record", DateText(survey.LastTime)) +
            Line("length", DurationText(survey.LastTime - survey.FirstTime)) +
            Line("players", SpanText(survey.Players)) + Line("AI aircraft", SpanText(survey.AIAircraft));
  }
  text += "bytes\n" + BytesLine("header", tape::FirstRecordAt, survey.FileBytes) +
          BytesLine("times", survey.TimeBytes, survey.FileBytes) + BytesLine("AI", survey.AIBytes, survey.FileBytes) +
          BytesLine("players", survey.ClientBytes, survey.FileBytes) +
          BytesLine("histories", survey.HistoryBytes, survey.FileBytes);
  if (survey.BehindRecords() > 0) text += BytesLine("behind records", survey.BehindRecords(), survey.FileBytes);
  text += BytesLine("file", survey.FileBytes, survey.FileBytes);
  if (!survey.Roster.empty()) text += "roster (id, first and last record, records, name)\n";
  for (const Player& player : survey.Roster) {
    char line[120];
    std::snprintf(line, sizeof line, "  %6d  %s  %s  %7s  ", player.Id, DateText(player.First).c_str(),
                  DateText(player.Last).c_str(), Grouped(player.Records).c_str());
    text += line + Shown(player.Name) + "\n";
  }
  if (survey.IsWhole()) return text;

  if (header.RecordCount == 0 && survey.WholeRecords > 0) {
    text += "The count is 0 though " + Grouped(survey.WholeRecords) +
            " whole records are there: the tape was not closed, and the player reports it as empty.\n";
  } else if (header.RecordCount < 0 || static_cast<std::uint64_t>(header.RecordCount) != survey.WholeRecords) {
    text += "The count is " + std::to_string(header.RecordCount) + ", but " + Grouped(survey.WholeRecords) +
            " whole records are there.\n";
  }
  if (survey.BehindRecords() > 0) {
    text += "The last " + Grouped(survey.BehindRecords()) + " bytes are no whole record: " + survey.Stopped + ".\n";
  }
  if (survey.WholeRecords > 0) text += "\"tape-info --repair FILE NEW\" writes a copy that can be played.\n";
  return text;
}

}  // namespace kestrel::tapeinfo
