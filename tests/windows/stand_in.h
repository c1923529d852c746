#pragma once

// What the stand-in for the voice client and its tests have in common.
namespace kestrel::test {

/// Posted to the stand-in's top window: it answers no message until the event of its name is set, or its limit is over.
inline constexpr unsigned HangMessage = 0x8000 + 1;
/// Milliseconds after which a hung stand-in goes on by itself.
inline constexpr unsigned HangLimit = 60000;
/// Followed by the title.
inline constexpr const char* GoOnEvent = "KestrelStandInGoesOn ";

}  // namespace kestrel::test
