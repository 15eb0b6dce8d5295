// Marks of the bytes of a block, on whatever compares them: all at once or one by one.

#include <array>
#include <cstddef>

#include <gtest/gtest.h>

#include "platform/ByteBlock.h"

namespace {

using BlockBytes = std::array<char, kByteBlockSize>;

template <class Block>
class ByteBlocks : public testing::Test {};

using BlockTypes = testing::Types<ByteBlock, PlainByteBlock>;
TYPED_TEST_SUITE(ByteBlocks, BlockTypes);

TYPED_TEST(ByteBlocks, MarkEachPlace) {
  for (std::size_t place = 0; place < kByteBlockSize; ++place) {
    BlockBytes bytes = {};
    bytes[place] = 'x';
    EXPECT_EQ(TypeParam(bytes.data()).template AnyOf<'x'>(), ByteMarks{1} << place);
    EXPECT_EQ((TypeParam(bytes.data()).template AnyOf<'x', '\0'>()), 0xFFFFFFFF);
  }
}

TYPED_TEST(ByteBlocks, MarkOnlyWhatIsWanted) {
  for (int value = -128; value < 128; ++value) {
    BlockBytes bytes = {};
    bytes.fill(static_cast<char>(value));
    const TypeParam block(bytes.data());
    EXPECT_EQ(block.template AnyOf<'<'>(), value == '<' ? 0xFFFFFFFF : 0u);
    EXPECT_EQ((block.template AnyOf<'\n', '>', ' ', '\xFF'>()),
              value == '\n' || value == '>' || value == ' ' || value == -1 ? 0xFFFFFFFF : 0u);
  }
}

TYPED_TEST(ByteBlocks, MarkSeveralBytes) {
  const char text[] = "a:b=c a:bb=cc a:bbb=ccc a:bbbb=c";
  static_assert(sizeof(text) == kByteBlockSize + 1);
  const TypeParam block(text);
  EXPECT_EQ(block.template AnyOf<'='>(), 1U << 3 | 1U << 10 | 1U << 19 | 1U << 30);
  EXPECT_EQ((block.template AnyOf<':', ' '>()),
            1U << 1 | 1U << 5 | 1U << 7 | 1U << 13 | 1U << 15 | 1U << 23 | 1U << 25);
}

TYPED_TEST(ByteBlocks, MayBeginAnywhere) {
  std::array<char, 2 * kByteBlockSize> bytes = {};
  bytes[kByteBlockSize] = 'x';
  for (std::size_t start = 1; start <= kByteBlockSize; ++start) {
    EXPECT_EQ(TypeParam(bytes.data() + start).template AnyOf<'x'>(),
              ByteMarks{1} << (kByteBlockSize - start));
  }
}

}  // namespace
