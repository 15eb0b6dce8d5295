#include "Bench.h"

int main(int argc, char** argv) {
  return bench::RunBench({argv + (argc > 0 ? 1 : 0), argv + argc});
}
