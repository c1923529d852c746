#include "falcon/stations.h"

#include <algorithm>

#include "base/failure.h"
#include "base/files.h"
#include "base/numbers.h"
#include "falcon/foreign_text.h"

namespace kestrel::falcon {
namespace {

constexpr std::string_view FieldBlanks = " \t";

/// The next field of `line`, taken off it; empty at its end.
std::string_view TakeField(std::string_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(FieldBlanks), line.size()));
  const std::string_view field = line.substr(0, line.find_first_of(FieldBlanks));
  line.remove_prefix(field.size());
  return field;
}

Station StationOf(std::string_view line) {
  Station station;
  for (std::string_view field = TakeField(line); !field.empty(); field = TakeField(line)) {
    if (station.Told < StationFields) station.Texts[station.Told] = field;
    ++station.Told;
  }
  station.CampId = base::Int16FromText(station.Text(StationField::CampId));
  return station;
}

}  // namespace

double Station::Number(StationField field) const { return base::LeadingNumber(Text(field)); }

StationList ReadStations(std::string_view text) {
  StationList list;
  const std::string decoded = FromForeignText(text);
  std::size_t lineNumber = 0;
  for (const std::string_view line : LinesOf(decoded)) {
    ++lineNumber;
    const std::string_view content = TrimLine(line);
    if (content.empty() || content[0] == '#') continue;
    try {
      if (list.Stations.size() == MaxStations) throw base::RuntimeFailure("there are too many stations");
      list.Stations.push_back(StationOf(content));
    } catch (const base::RuntimeFailure& failure) {
      list.Trouble = "line " + std::to_string(lineNumber) + ": " + failure.what();
      break;
    }
  }
  return list;
}

StationList LoadStations(const std::filesystem::path& campaignFolder) {
  const std::filesystem::path file = base::FindFile(campaignFolder, StationsFile);
  StationList list = ReadStations(base::ReadWholeFile(file, MaxStationFileBytes));
  if (!list.Trouble.empty()) list.Trouble = base::NameForMessage(file) + ", " + list.Trouble;
  return list;
}

}  // namespace kestrel::falcon
