#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "falcon-info/context.h"
#include "falcon-info/options.h"
#include "falcon-info/report.h"

namespace {

constexpr int Cannot = 1;
constexpr int WrongCommand = 2;

int Run(const kestrel::falconinfo::Options& options) {
  using namespace kestrel::falconinfo;
  if (options.Help) {
    std::cout << HelpText();
    return 0;
  }
  Context context{options};
  PrintReports(context, std::cout);
  return context.Failures == 0 && std::cout ? 0 : Cannot;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(kestrel::falconinfo::ParseOptions(std::vector<std::string>(argv + 1, argv + argc)));
  } catch (const std::invalid_argument& wrong) {
    std::cerr << "falcon-info: " << wrong.what() << "\n";
    return WrongCommand;
  } catch (const std::exception& failure) {
    std::cerr << "falcon-info: " << failure.what() << "\n";
    return Cannot;
  }
}
