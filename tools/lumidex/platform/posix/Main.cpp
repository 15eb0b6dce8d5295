#include <unistd.h>

#include "StreamConsole.h"

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  return tool::RunOnStreams(arguments, isatty(STDOUT_FILENO) == 1, isatty(STDERR_FILENO) == 1);
}
