#pragma once

#include <cstddef>
#include <exception>
#include <filesystem>

#include "falcon-info/json.h"
#include "falcon-info/options.h"

namespace kestrel::falconinfo {

/// What the reports of one run share.
struct Context {
  const Options& Asked;
  std::size_t Failures = 0;  ///< things that could not be read
};

/// What `read` gives; when it fails {"file", "error"}, which is counted.
template <class Read>
Json Attempt(Context& context, const std::filesystem::path& file, const Read& read) {
  try {
    return read();
  } catch (const std::exception& failure) {
    ++context.Failures;
    Json json;
    json["file"] = Json::OfPath(file);
    json["error"] = failure.what();
    return json;
  }
}

/// A report's head.
inline Json ReportOf(const std::filesystem::path& file, const char* kind) {
  Json json;
  json["file"] = Json::OfPath(file);
  json["kind"] = kind;
  return json;
}

}  // namespace kestrel::falconinfo
