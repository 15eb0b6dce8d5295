#include "Bench.h"
#include "Text.h"

int wmain(int argc, wchar_t** argv) {
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(tool::Utf8FromWide(argv[i]));
  return bench::RunBench(arguments);
}
