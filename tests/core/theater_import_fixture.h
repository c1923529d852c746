#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <map>
#include <string>

#include "core/settings.h"
#include "core/theater_data.h"
#include "core/theater_import.h"
#include "core/theater_switch.h"
#include "falcon/island_install.h"
#include "station_folder.h"

namespace kestrel::core {

/// A station that runs, beside an installation with an island.
class TheaterImportTest : public testing::Test {
 protected:
  TheaterImportTest() {
    WriteInstallation(folder);
    around.Shown.WhenShown = [this] { RunSteps(MapLoadSteps(), around.All); };
    EXPECT_TRUE(Main(around.All));
    around.Shown.Refreshes.clear();
    SaveAll(station);
  }

  /// Lowland, hills and mountains: up to 999, up to 1999 and above.
  static falcon::ColourScheme ThreeBands() {
    return {0x0000FF, {{0x00FF00, 999}, {0xFF0000, 1999}, {0xFFFFFF, 2999}}, false};
  }
  bool Import(const falcon::Progress& progress = {}) {
    return TheaterImport(around.All, island.Install, 1).Import(ThreeBands(), progress);
  }
  void Rename(const std::string& name) { island.Install.Theaters[1].Definition.Name = name; }

  using Files = std::map<std::string, std::string>;
  /// All files of the program folder with what they hold.
  Files AllFiles() const {
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path)) {
      if (!entry.is_regular_file()) continue;
      files[entry.path().lexically_relative(folder.Path).generic_string()] = test::ReadBytes(entry.path());
    }
    return files;
  }
  /// 0xRRGGBB at a place, Y north.
  static std::uint32_t PictureAt(const base::Picture& picture, int x, int y) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel,
                picture.Pixels + std::ptrdiff_t{picture.Height - 1 - y} * picture.Stride + std::ptrdiff_t{x} * 4, 4);
    return pixel & 0xFFFFFF;
  }

  ProgramFolder folder;
  test::IslandInstall island;
  Around around{folder.Path};
  Station& station = around.State;
};

}  // namespace kestrel::core
