#include "core/key_page.h"

#include "base/files.h"
#include "core/key_clashes.h"

namespace kestrel::core {
namespace {

struct FixedKey {
  const char* Where;
  const char* Key;
  const char* What;
};

/// Keys that nobody can change.
constexpr FixedKey FixedKeys[] = {
    {"Map", "TAB", "Leaves the map, unless a command has it"},
    {"Map", "ESC", "Takes all ties away, unless a command has it"},
    {"Map", "CTRL+Left button", "Ties two aircraft, one after the other"},
    {"Map", "SHIFT+Left button", "Drags the map"},
    {"Main window", "F10", "Opens the menu"},
    {"Clients", "CTRL+F", "Filters the lists"},
    {"Playback", "SPACEBAR", "Plays and pauses"},
    {"Playback", "+ and -", "Change the speed"},
    {"Playback", "LEFTARROW, RIGHTARROW", "One record back and on"},
    {"Playback", "HOME, END", "The first record, the last one"},
    {"Areas, Frequencies", "CTRL+Z", "Undo"},
    {"Areas, Frequencies", "CTRL+Y", "Redo"},
    {"Areas, Frequencies", "F2", "Edits what is chosen"},
    {"Frequencies", "CTRL+C", "Copies a value"},
    {"Frequencies", "ENTER", "Tunes the radio"},
};

/// `text` with what HTML takes for marks written out, and nothing but ASCII.
std::string Escaped(std::string_view text) {
  std::string out;
  for (const char each : text) {
    const auto code = static_cast<unsigned char>(each);
    if (each == '&' || each == '<' || each == '>' || code < 32 || code > 126) {
      out += "&#" + std::to_string(code) + ";";
    } else {
      out += each;
    }
  }
  return out;
}

}  // namespace

std::vector<KeyRow> KeyRows(const Station& station) {
  std::vector<KeyRow> rows;
  const std::vector<BoundCommand> commands = BoundCommands(station);
  for (const BoundCommand& each : commands) {
    const bool everywhere = each.Command->Act == ShortcutAct::Transmit;
    std::string what(each.Command->Name);
    const std::string clash = ClashOf(commands, each.Index);
    if (clash.starts_with("taken")) what += " (no effect: " + clash + ")";
    rows.push_back({everywhere ? "Every program" : "Map", KeyName(each.Bound), std::move(what)});
  }
  for (const FixedKey& each : FixedKeys) rows.push_back({each.Where, each.Key, each.What});
  return rows;
}

std::string KeyText(std::span<const KeyRow> rows) {
  std::string text = "Where\tKey\tWhat it does\n";
  for (const KeyRow& row : rows) text += row.Where + "\t" + row.Key + "\t" + row.What + "\n";
  return text;
}

std::string KeyHtml(std::span<const KeyRow> rows) {
  std::string page =
      "<!DOCTYPE html>\n<html lang=\"en\"><head><title>KESTREL keys</title><style>\n"
      "body { font-family: sans-serif; } table { border-collapse: collapse; }\n"
      "th, td { border: 1px solid #888; padding: 2px 8px; text-align: left; }\n"
      "</style></head><body><h1>Keys</h1>\n<table>\n<tr><th>Where</th><th>Key</th><th>What it does</th></tr>\n";
  for (const KeyRow& row : rows) {
    page += "<tr><td>" + Escaped(row.Where) + "</td><td>" + Escaped(row.Key) + "</td><td>" + Escaped(row.What) +
            "</td></tr>\n";
  }
  return page + "</table></body></html>\n";
}

std::filesystem::path WriteKeyPage(const Station& station) {
  std::filesystem::path file = station.AppPath / "Keys.html";
  base::WriteWholeFile(file, KeyHtml(KeyRows(station)));
  return file;
}

}  // namespace kestrel::core
