#include <cstdio>
#include <exception>
#include <string_view>

#include "sample-tape/demo_tape.h"

// sample-tape FILE: records the demo tape, the same bytes every time.
int main(int argc, char** argv) {
  if (argc != 2 || std::string_view(argv[1]) == "--help") {
    std::fputs("usage: sample-tape FILE\nRecords five minutes of session-sim's aircraft on a tape.\n",
               argc == 2 ? stdout : stderr);
    return argc == 2 ? 0 : 2;
  }
  try {
    kestrel::demo::WriteDemoTape(argv[1]);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "sample-tape: %s\n", failure.what());
    return 1;
  }
  return 0;
}
