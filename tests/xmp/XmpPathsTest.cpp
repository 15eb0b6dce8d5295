#include <gtest/gtest.h>

#include "xmp/XmpPaths.h"

namespace {

TEST(XmpSpan, IsCutAtThePacketsEnd) {
  EXPECT_EQ((XmpSpan{1, 2}.In("abcd")), "bc");
  EXPECT_EQ((XmpSpan{3, 2}.In("abcd")), "d");
}

TEST(XmpSpan, IsEmptyBehindThePacket) {
  EXPECT_EQ((XmpSpan{4, 1}.In("abcd")), "");
  EXPECT_EQ((XmpSpan{5, 0xFFFFFFFF}.In("abcd")), "");
  EXPECT_EQ((XmpSpan{0, 1}.In("")), "");
}

}  // namespace
