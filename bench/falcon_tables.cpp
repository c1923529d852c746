// What the simulator's tables cost since they are XML, by the processor's time: a class table of 8 MB against the
// parser with handlers that do nothing, and a database of 1,200 classes of objectives in folders of their own, read
// whole.
#include <expat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "falcon/object_database.h"
#include "falcon/xml_object_tables.h"
#include "falcon/xml_writer.h"
#include "timing.h"

namespace {

namespace fs = std::filesystem;
using namespace kestrel;
using namespace bench;

constexpr std::size_t Classes = 5300;
constexpr int Folders = 1200;
constexpr int Rounds = 15;

std::size_t sink = 0;

void ParseForNothing(const std::string& text) {
  XML_Parser parser = XML_ParserCreate(nullptr);
  XML_SetElementHandler(
      parser, [](void*, const XML_Char*, const XML_Char**) { ++sink; }, [](void*, const XML_Char*) { ++sink; });
  XML_SetCharacterDataHandler(parser, [](void*, const XML_Char*, int) { ++sink; });
  if (XML_Parse(parser, text.data(), static_cast<int>(text.size()), XML_TRUE) != XML_STATUS_OK) {
    throw base::RuntimeFailure("the table is no XML");
  }
  XML_ParserFree(parser);
}

void MeasureClassTable() {
  std::vector<std::string> records(Classes, test::XmlClass({.Models = {829, 830, 0, 0, 0, 0, 0}, .Index = 128}));
  const falcon::DataFile file{"Falcon4_CT.xml", test::XmlTable("CTRecords", "CT", records)};
  std::vector<double> parsed, read;
  // By turns, so that what else the machine does meets both.
  for (int round = 0; round < Rounds; ++round) {
    parsed.push_back(ProcessorMilliseconds([&] { ParseForNothing(file.Bytes); }));
    read.push_back(ProcessorMilliseconds([&] { sink += falcon::ReadXmlClasses(file).size(); }));
  }
  std::printf("class table of %.1f MB in XML: %.1f ms, parsed for nothing %.1f ms, ratio %.2f (goal 1.50)\n",
              static_cast<double>(file.Bytes.size()) / 1e6, Median(read), Median(parsed),
              Median(read) / Median(parsed));
}

void Write(const fs::path& file, const std::string& text) {
  fs::create_directories(file.parent_path());
  test::WriteBytes(file, text);
}

void MeasureFolders() {
  const test::TempFolder disk;
  Write(disk / "Falcon4_CT.xml",
        test::XmlTable("CTRecords", "CT", std::vector<std::string>(Classes, test::XmlClass({}))));
  Write(disk / "Falcon4_FCD.xml",
        test::XmlTable("FCDRecords", "FCD", std::vector<std::string>(1200, test::XmlFeatureClass({.Name = "Hangar"}))));
  const std::vector<std::string> features(
      20, test::XmlFeatureEntry({.Class = 698, .Value = 5, .East = 100.5F, .North = -200.5F, .Heading = 90}));
  const std::vector<std::string> points(40, test::XmlPoint({.East = 1740.25F, .North = 3112.25F, .Kind = 3}));
  const std::vector<std::string> headers(
      4, test::XmlHeader({.Kind = 1, .Count = 10, .Runway = 0}, "25.448", test::XmlAge::Folders));
  int files = 0;
  for (int n = 0; n < Folders; ++n) {
    const std::string digits = std::to_string(100000 + n).substr(1);
    const fs::path folder = disk.Path() / "ObjectiveRelatedData" / ("OCD_" + digits);
    const std::string record = test::XmlObjectiveClass({.Class = n, .Name = "Class"}, test::XmlAge::Folders);
    Write(folder / ("OCD_" + digits + ".XML"),
          test::XmlTable("OCDRecords", "OCD", {record}, static_cast<std::size_t>(n)));
    Write(folder / ("FED_" + digits + ".XML"), test::XmlTable("FEDRecords", "FED", features));
    files += 2;
    // Half of them have points.
    if (n % 2 != 0) continue;
    Write(folder / ("PHD_" + digits + ".XML"), test::XmlTable("PHDRecords", "PHD", headers));
    Write(folder / ("PDX_" + digits + ".XML"), test::XmlTable("PDRecords", "PD", points));
    files += 2;
  }
  std::vector<double> times;
  const fs::path folder = disk.Path();
  for (int round = 0; round < 5; ++round) {
    times.push_back(ProcessorMilliseconds([&] {
      sink += falcon::LoadObjectDatabase({&folder, 1}).Tables.Features.size();
    }));
  }
  std::printf("database of %d folders and %d files, cached: %.0f ms (goal 1000)\n", Folders, files, Median(times));
}

}  // namespace

int main() {
  try {
    MeasureClassTable();
    MeasureFolders();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return EXIT_FAILURE;
  }
  return sink == 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
