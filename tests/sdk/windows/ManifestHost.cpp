// A program whose own manifest names the module's assembly, which stands beside it.
//
//   activation_manifest PHOTO

#include <filesystem>

#include "Activation.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  CheckActivation(std::filesystem::path(argv[1]).wstring());
  return FailureCount() == 0 ? 0 : 1;
}
