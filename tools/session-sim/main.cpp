#include <QCoreApplication>
#include <atomic>
#include <chrono>
#include <csignal>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "session-sim/options.h"
#include "session-sim/server.h"

namespace {

std::atomic<bool> asked{false};

/// A signal that comes just before a wait is seen after this time.
constexpr auto LongestWait = std::chrono::milliseconds(200);

void Ask(int) { asked = true; }

int Serve(const kestrel::sim::Options& options) {
  std::signal(SIGTERM, Ask);
  std::signal(SIGINT, Ask);
  kestrel::sim::Server server(options, std::cout);
  std::cout << "listening on " << server.Port() << std::endl;
  while (server.Step(LongestWait)) {
    if (asked) server.End();
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const kestrel::sim::Options options = kestrel::sim::ParseOptions(std::vector<std::string>(argv + 1, argv + argc));
    if (options.Help) {
      std::cout << kestrel::sim::HelpText();
      return 0;
    }
    const QCoreApplication application(argc, argv);
    return Serve(options);
  } catch (const std::invalid_argument& wrong) {
    std::cerr << "session-sim: " << wrong.what() << "\n";
    return 2;
  } catch (const std::exception& failure) {
    std::cerr << "session-sim: " << failure.what() << "\n";
    return 1;
  }
}
