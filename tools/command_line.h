#pragma once

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

// What the command lines of the tools share.
namespace kestrel::tools {

/// Reads the words after the program's name into what `app` is bound to. std::invalid_argument, with a text for the
/// user, for what cannot be read.
inline void Parse(CLI::App& app, std::vector<std::string> words) {
  std::reverse(words.begin(), words.end());  // the library takes them from the back
  try {
    app.parse(words);
  } catch (const CLI::ParseError& wrong) {
    throw std::invalid_argument(std::string(wrong.what()) + "; --help says more");
  }
}

}  // namespace kestrel::tools
