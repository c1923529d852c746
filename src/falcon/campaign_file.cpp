#include "falcon/campaign_file.h"

#include <cstdint>
#include <utility>

#include "base/bytes.h"
#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"

namespace kestrel::falcon {
namespace {

/// Length of the name, position and size.
constexpr std::size_t SmallestEntry = 9;
/// The simulator writes a dozen.
constexpr std::size_t MostEntries = 1000;

std::string_view ExtensionOf(std::string_view name) {
  const auto point = name.rfind('.');
  return point == std::string_view::npos ? std::string_view() : name.substr(point + 1);
}

}  // namespace

CampaignFile::CampaignFile(std::string bytes) : content(std::move(bytes)) {
  base::BinaryReader directory(content);
  const std::uint32_t start = directory.U32();
  if (start < 4 || start > content.size()) throw base::RuntimeFailure("it is no campaign file");
  directory.Skip(start - 4);
  const std::uint32_t count = directory.U32();
  if (count > directory.Left() / SmallestEntry || count > MostEntries)
    throw base::RuntimeFailure("its directory is damaged");
  for (std::uint32_t n = 0; n < count; ++n) {
    Entry entry;
    entry.Name = directory.Text(directory.U8());
    entry.Position = directory.U32();
    entry.Size = directory.U32();
    if (entry.Position > content.size() || entry.Size > content.size() - entry.Position) {
      throw base::RuntimeFailure("its directory names a piece outside the file");
    }
    entries.push_back(std::move(entry));
  }
}

std::optional<std::string_view> CampaignFile::Piece(std::string_view extension) const {
  for (const Entry& entry : entries) {
    if (base::SameNoCase(ExtensionOf(entry.Name), extension)) {
      return std::string_view(content).substr(entry.Position, entry.Size);
    }
  }
  return std::nullopt;
}

std::optional<int> CampaignFile::DataVersion() const {
  const std::optional<std::string_view> piece = Piece("ver");
  if (!piece) return std::nullopt;
  const std::int16_t version = base::Int16FromText(*piece);
  if (version < 1 || version > 999) throw base::RuntimeFailure("its version is not known");
  return version;
}

}  // namespace kestrel::falcon
