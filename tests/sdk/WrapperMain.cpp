// The program of the wrapper's tests: wrapper_tests MODULE

#include <string>

#include <gtest/gtest.h>

#include "WrapperTest.h"

namespace {

std::string g_modulePath;

}  // namespace

lumidex::Module test::LoadModule() {
  return lumidex::Module::Load(g_modulePath);
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 2) return 2;
  g_modulePath = argv[1];
  return RUN_ALL_TESTS();
}
