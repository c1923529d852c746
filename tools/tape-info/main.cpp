#include <cstdint>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tape-info/acmi.h"
#include "tape-info/options.h"
#include "tape-info/repair.h"
#include "tape-info/survey.h"

namespace {

constexpr int Cannot = 1;
constexpr int WrongCommand = 2;
constexpr int Damaged = 3;

int Run(const kestrel::tapeinfo::Options& options) {
  using namespace kestrel::tapeinfo;
  if (options.Help) {
    std::cout << HelpText();
    return 0;
  }
  if (!options.AcmiTo.empty()) {
    const std::int32_t records = WriteAcmi(options.File, options.AcmiTo, TheaterOf(options.File, options.Theater));
    std::cout << options.AcmiTo << ": " << records << " records\n";
    return 0;
  }
  const Survey survey = LookThrough(options.File);
  if (options.RepairTo.empty()) {
    std::cout << options.File << "\n" << Report(survey);
    return survey.IsWhole() ? 0 : Damaged;
  }
  Repair(options.File, survey, options.RepairTo);
  std::cout << options.RepairTo << ": " << survey.WholeRecords << " records, " << survey.WholeBytes << " bytes\n";
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(kestrel::tapeinfo::ParseOptions(std::vector<std::string>(argv + 1, argv + argc)));
  } catch (const std::invalid_argument& wrong) {
    std::cerr << "tape-info: " << wrong.what() << "\n";
    return WrongCommand;
  } catch (const std::exception& failure) {
    std::cerr << "tape-info: " << failure.what() << "\n";
    return Cannot;
  }
}
