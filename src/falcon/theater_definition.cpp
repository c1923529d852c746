#include "falcon/theater_definition.h"

#include <algorithm>
#include <limits>

#include "base/numbers.h"
#include "base/text.h"
#include "falcon/foreign_text.h"

namespace kestrel::falcon {
namespace {

constexpr DefinitionKey Keys[] = {
    {"name", &TheaterDefinition::Name},
    {"desc", &TheaterDefinition::Desc},
    {"bitmap", &TheaterDefinition::Bitmap},
    {"campaigndir", &TheaterDefinition::CampaignDir},
    {"terraindir", &TheaterDefinition::TerrainDir},
    {"artdir", &TheaterDefinition::ArtDir},
    {"moviedir", &TheaterDefinition::MovieDir},
    {"uisounddir", &TheaterDefinition::UiSoundDir},
    {"objectdir", &TheaterDefinition::ObjectDir},
    {"misctexdir", &TheaterDefinition::MiscTexDir},
    {"3ddatadir", &TheaterDefinition::ThreeDDataDir},
    {"sounddir", &TheaterDefinition::SoundDir},
    {"specialdbdir", &TheaterDefinition::SpecialDbDir},
    {"tileset", &TheaterDefinition::TileSet},
    {"simdatadir", &TheaterDefinition::SimDataDir},
};

std::int16_t ShortNumber(std::string_view text) {
  const double number = base::RoundHalfEven(base::LeadingNumber(text));
  using Limits = std::numeric_limits<std::int16_t>;
  return number >= Limits::min() && number <= Limits::max() ? static_cast<std::int16_t>(number) : std::int16_t{0};
}

/// The lines that are neither empty nor comments, trimmed. Views into `text`.
std::vector<std::string_view> LinesWithContent(std::string_view text) {
  std::vector<std::string_view> lines;
  for (const std::string_view line : LinesOf(text)) {
    const std::string_view content = TrimLine(line);
    if (!content.empty() && content[0] != '#') lines.push_back(content);
  }
  return lines;
}

void TakeLine(std::string_view line, TheaterDefinition& definition) {
  const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
  const std::string_view word = line.substr(0, end);
  const std::string_view value = TrimLine(line.substr(end));
  if (base::SameNoCase(word, "mintacan")) definition.MinTacan = ShortNumber(value);
  for (const DefinitionKey& key : Keys) {
    if (base::SameNoCase(word, key.Word)) definition.*key.Text = value;
  }
}

}  // namespace

std::span<const DefinitionKey> DefinitionKeys() { return Keys; }

TheaterDefinition ReadTheaterDefinition(std::string_view text) {
  const std::string decoded = FromForeignText(text);
  TheaterDefinition definition;
  for (const std::string_view line : LinesWithContent(decoded)) TakeLine(line, definition);
  return definition;
}

std::vector<std::string> ReadTheaterList(std::string_view text) {
  const std::string decoded = FromForeignText(text);
  const std::vector<std::string_view> lines = LinesWithContent(decoded);
  return {lines.begin(), lines.end()};
}

}  // namespace kestrel::falcon
