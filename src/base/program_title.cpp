#include "base/program_title.h"

#include "base/numbers.h"
#include "version.h"

namespace kestrel::base {
namespace {

std::string ShortVersion() { return FormatInvariant(VersionMajor, "0") + '.' + FormatInvariant(VersionMinor, "0"); }

}  // namespace

std::string ProgramTitle() { return "KESTREL v" + ShortVersion() + '.' + FormatInvariant(VersionRevision, "0"); }

std::string MapTitle() { return ProgramTitle() + 'b'; }

std::string NoTheatersTitle() { return "KESTRELS v" + ShortVersion(); }

std::string BannerHead() { return '"' + ProgramTitle() + ' '; }

std::string Banner(std::string_view kind) { return BannerHead() + std::string(kind) + " INI File\""; }

}  // namespace kestrel::base
