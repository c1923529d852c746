#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/station.h"

// All keys of the station on one page, as they are bound now.
namespace kestrel::core {

/// One key: where it works, as KeyName writes it, and what it does.
struct KeyRow {
  std::string Where;
  std::string Key;
  std::string What;
};

/// The commands with their present bindings, then the keys that are always there.
std::vector<KeyRow> KeyRows(const Station& station);

/// The rows as lines with tabs between, below a line of headings.
std::string KeyText(std::span<const KeyRow> rows);
/// The rows as a page of HTML with a table, plain ASCII.
std::string KeyHtml(std::span<const KeyRow> rows);

/// Writes the page as "Keys.html" into AppPath and returns its path, so that a browser can print it. RuntimeFailure
/// when it cannot be written.
std::filesystem::path WriteKeyPage(const Station& station);

}  // namespace kestrel::core
