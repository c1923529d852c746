#include <cstdio>
#include <exception>
#include <string_view>

#include "sample-theater/theater_writer.h"

// sample-theater FOLDER: makes the sample theater there, the same bytes every time.
int main(int argc, char** argv) {
  if (argc != 2 || std::string_view(argv[1]) == "--help") {
    std::fputs(
        "usage: sample-theater FOLDER\nMakes the sample theater (settings, map picture, elevations, frequencies) in "
        "FOLDER.\n",
        argc == 2 ? stdout : stderr);
    return argc == 2 ? 0 : 2;
  }
  try {
    kestrel::land::WriteTheater(argv[1]);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "sample-theater: %s\n", failure.what());
    return 1;
  }
  return 0;
}
