#include "Bench.h"

#include <cstdio>
#include <exception>
#include <string_view>

#include "Growth.h"
#include "Opens.h"
#include "Reading.h"
#include "Writing.h"

namespace bench {
namespace {

using Arguments = std::vector<std::string>;

struct Command {
  std::string_view name;
  std::size_t arguments;
  const char* usage;
  void (*run)(const Arguments& arguments);
};

void Read(const Arguments& arguments) {
  MeasureReading(arguments[0], arguments[1]);
}
void Write(const Arguments& arguments) {
  MeasureWriting(arguments[0], arguments[1], arguments[2]);
}
void Grow(const Arguments&) {
  MeasureGrowth();
}
void Count(const Arguments& arguments) {
  CountOpens(arguments[0], arguments[1]);
}

// clang-format off
constexpr Command kCommands[] = {
    {"read",   2, " MODULE FOLDER",         &Read},
    {"write",  3, " MODULE FOLDER OUTPUTS", &Write},
    {"growth", 0, "",                       &Grow},
    {"opens",  2, " MODULE FOLDER",         &Count},
};
// clang-format on

int Misuse() {
  for (const Command& command : kCommands) {
    std::fprintf(stderr, "lumidex_bench %s%s\n", command.name.data(), command.usage);
  }
  return 2;
}

int Run(const Arguments& arguments) {
  if (arguments.empty()) return Misuse();
  const Arguments rest(arguments.begin() + 1, arguments.end());
  for (const Command& command : kCommands) {
    if (command.name != arguments[0] || command.arguments != rest.size()) continue;
    command.run(rest);
    return 0;
  }
  return Misuse();
}

}  // namespace

int RunBench(const std::vector<std::string>& arguments) {
  try {
    return Run(arguments);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "lumidex_bench: %s\n", error.what());
    return 1;
  }
}

}  // namespace bench
