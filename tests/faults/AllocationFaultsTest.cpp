// Every method when memory runs out at any place.

#include <gtest/gtest.h>

#include "faults/FaultSweep.h"

namespace test {
namespace {

class AllocationFaults : public testing::TestWithParam<const Operation*> {};

TEST_P(AllocationFaults, EndInADocumentedCodeAndLeaveNothing) {
  Sweep(*GetParam(), Call::Allocation);
}

INSTANTIATE_TEST_SUITE_P(Each, AllocationFaults, testing::ValuesIn(Operations()),
                         [](const auto& operation) { return std::string(operation.param->name); });

}  // namespace
}  // namespace test
