// Text conversion when there is no memory for its buffer: the allocation function that does not
// throw is replaced for this program and fails on demand.

#include <cstddef>
#include <new>

#include <gtest/gtest.h>

#include "xmp/TextConversion.h"

namespace {

thread_local bool g_isOutOfMemory = false;

class NoMemory {
 public:
  NoMemory() { g_isOutOfMemory = true; }
  ~NoMemory() { g_isOutOfMemory = false; }
  NoMemory(const NoMemory&) = delete;
  NoMemory& operator=(const NoMemory&) = delete;
};

}  // namespace

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  if (g_isOutOfMemory) return nullptr;
  try {
    return ::operator new[](size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

namespace {

TEST(TextConversionWithoutMemory, IsAPointerErrorThatLeavesTheOutStringAlone) {
  WideString wide = LMD_W("before");
  const NoMemory noMemory;
  EXPECT_EQ(ConvertToWide("\xC3\xA9", &wide, 65001), E_POINTER);
  EXPECT_EQ(wide, LMD_W("before"));
}

TEST(TextConversionWithoutMemory, GivesEmptyTexts) {
  const NoMemory noMemory;
  EXPECT_TRUE(ToWideString("\xC3\xA9", 65001).empty());
  EXPECT_TRUE(ToAnsiString(LMD_W("abc")).empty());
}

}  // namespace
