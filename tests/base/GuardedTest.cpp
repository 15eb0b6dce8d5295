// What a guarded body throws becomes a result code.

#include <new>
#include <stdexcept>

#include <gtest/gtest.h>

#include "base/Guarded.h"

namespace {

TEST(Guarded, ResultOfTheBodyIsTheResult) {
  EXPECT_EQ(Guarded([]() -> HRESULT { return S_FALSE; }), S_FALSE);
}

TEST(Guarded, MissingMemoryIsTheCodeForIt) {
  const auto body = []() -> HRESULT { throw std::bad_alloc(); };
  EXPECT_EQ(Guarded(body), E_OUTOFMEMORY);
  EXPECT_EQ(Guarded(body, E_FAIL), E_FAIL);
}

TEST(Guarded, AnythingElseIsUnexpected) {
  EXPECT_EQ(Guarded([]() -> HRESULT { throw std::length_error("too long"); }, E_FAIL),
            E_UNEXPECTED);
  EXPECT_EQ(Guarded([]() -> HRESULT { throw 1; }, E_FAIL), E_UNEXPECTED);
}

}  // namespace
