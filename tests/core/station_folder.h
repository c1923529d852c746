#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "base/picture_files.h"
#include "doubles/station_around.h"

namespace kestrel::core {

/// A program folder of its own, gone with the object. Others may look into it.
class ProgramFolder {
 public:
  ProgramFolder() {
    std::random_device random;
    do {
      Path = std::filesystem::path(testing::TempDir()) / ("kestrel-core-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(Path));
    std::filesystem::permissions(Path, std::filesystem::perms(0755));
    std::filesystem::create_directory(Path / "Theaters");
  }
  ~ProgramFolder() {
    std::error_code failure;
    for (const auto& folder : {Path, Path / "Theaters"})
      std::filesystem::permissions(folder, std::filesystem::perms(0755), failure);
    std::filesystem::remove_all(Path, failure);
  }
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  void Write(std::string_view name, std::string_view bytes) const {
    std::ofstream(Path / name, std::ios::binary) << bytes;
  }
  std::string Read(std::string_view name) const {
    std::ifstream file(Path / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  bool Has(std::string_view name) const { return std::filesystem::exists(Path / name); }

  std::filesystem::path Path;
};

/// `text` with CR LF at its line ends.
inline std::string Dos(std::string_view text) {
  std::string dos;
  for (const char letter : text) {
    if (letter == '\n') dos += '\r';
    dos += letter;
  }
  return dos;
}

/// A picture of `side` by `side` pixels, 24 bits each, as a BMP file.
inline std::string TinyBmp(int side) {
  const int row = (side * 3 + 3) / 4 * 4;
  return test::Bmp(static_cast<std::uint32_t>(side), side, 24, "",
                   std::string(static_cast<std::size_t>(row * side), '\x60'));
}

/// A station in `folder` with doubles around it.
struct Around : doubles::StationAround<> {
  explicit Around(const std::filesystem::path& folder) { State.AppPath = folder; }
};

/// The files of a station that starts: theaters "korea" (2 by 2 pixels, two bullseyes) and "balkans" (3 by 3, none).
inline void WriteInstallation(const ProgramFolder& folder) {
  folder.Write("update.txt", "DOCS=http://docs.example\r\nMAIL=desk@mail.example\r\n");
  folder.Write("common.ini", "[GENERAL]\r\nAUTOUPDATE=0\r\n");
  folder.Write("FriendlyNames.ini", "Cowboy\r\n\r\n Falcon \r\n");
  folder.Write("KESTREL.ini",
               "[MAPS]\r\nTOTALMAPS=2\r\nMAP1=korea.ini\r\nMAP2=balkans.ini\r\nCURRENTMAP=1\r\n"
               "[CONNLIST]\r\nNUM=1\r\n[CONNLIST1]\r\nNAME=Demo session\r\nIP=127.0.0.1\r\n");
  folder.Write(
      "Theaters/korea.ini",
      "[MAP]\r\nNAME=korea\r\nDISPLNAME=Korea\r\nPIC=korea.bmp\r\nSIZE=1024\r\nCURRENTBULL=1\r\nPICSIZE=2\r\n"
      "BULLSEYES=2\r\n[BULLS1]\r\nNAME=Anvil\r\nX=100\r\nY=200\r\n[BULLS2]\r\nNAME=Hammer\r\nX=300\r\nY=400\r\n");
  folder.Write("Theaters/korea.bmp", TinyBmp(2));
  folder.Write("Theaters/balkans.ini",
               "[MAP]\r\nNAME=balkans\r\nDISPLNAME=Balkans\r\nPIC=balkans.bmp\r\nSIZE=2048\r\nPICSIZE=3\r\n");
  folder.Write("Theaters/balkans.bmp", TinyBmp(3));
}

}  // namespace kestrel::core
