#pragma once

#include <string>
#include <string_view>

// The names that the program gives itself: in captions, as the titles of its boxes, at the head of its files.
namespace kestrel::base {

/// "KESTREL v" + major + "." + minor + "." + revision: the caption of the frame and the usual title of a box.
std::string ProgramTitle();

/// The caption of the map window: ProgramTitle with a "b" behind it.
std::string MapTitle();

/// The title of the box that ends a start without theaters: "KESTRELS v" + major + "." + minor.
std::string NoTheatersTitle();

/// The beginning of Banner that tells which version wrote a file: "\"KESTREL v1.0.0 ".
std::string BannerHead();

/// First line of a settings file, in double quotes: "KESTREL v1.0.0 Main INI File". `kind`: "Main" or "Theater".
std::string Banner(std::string_view kind);

}  // namespace kestrel::base
