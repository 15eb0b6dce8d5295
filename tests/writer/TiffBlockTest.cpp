#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Bytes.h"
#include "support/LogCapture.h"
#include "writer/TiffBlock.h"

namespace test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TiffBlock, GrowsFromItsStart) {
  TiffBlock block;
  EXPECT_EQ(block.Position(), 0U);
  block.AppendU16(0x0102);
  block.AppendU32(0x03040506);
  block.AppendBytes(Text("ab"));
  EXPECT_EQ(block.Position(), 8U);
  EXPECT_EQ(Hex(block.Bytes()), "0201060504036162");
}

TEST(TiffBlock, NewRoomIsZero) {
  TiffBlock block;
  block.AppendBytes(Text("abcd"));
  block.Clear();
  EXPECT_TRUE(block.Bytes().empty());
  EXPECT_EQ(Hex(block.Append(3)), "000000");
}

TEST(TiffBlock, TakesExactlyItsCapacity) {
  TiffBlock block;
  EXPECT_EQ(block.Append(63998).size(), 63998U);
  block.AppendU16(0x1234);
  EXPECT_FALSE(block.IsOverrun());
  EXPECT_EQ(block.Bytes().size(), 64000U);
  EXPECT_TRUE(block.Append(0).empty());
  EXPECT_FALSE(block.IsOverrun());
}

TEST(TiffBlock, OneByteMoreIsAnOverrun) {
  TiffBlock block;
  EXPECT_EQ(block.Append(63999).size(), 63999U);
  block.AppendU16(0x1234);
  EXPECT_TRUE(block.IsOverrun());
  EXPECT_EQ(block.Position(), 63999U);
  block.Clear();
  EXPECT_FALSE(block.IsOverrun());
}

TEST(TiffBlock, HugeSizesDoNotWrap) {
  TiffBlock block;
  block.AppendU32(1);
  EXPECT_TRUE(block.Append(std::numeric_limits<std::size_t>::max()).empty());
  EXPECT_TRUE(block.Append(std::numeric_limits<std::size_t>::max() - 3).empty());
  EXPECT_TRUE(block.IsOverrun());
  EXPECT_EQ(block.Position(), 4U);
}

TEST(TiffBlock, LinkStoresThePositionOfADirectory) {
  const LogCapture log;
  TiffBlock block;
  block.AppendBytes(Zeros(12));
  block.Link(8, 0x01020304);
  EXPECT_EQ(Hex(block.Bytes()), "000000000000000004030201");
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(TiffBlock, LinkWithoutAPointerIsLogged) {
  const LogCapture log;
  TiffBlock block;
  block.AppendBytes(Zeros(8));
  block.Link(0, 8);
  EXPECT_EQ(Hex(block.Bytes()), "0000000000000000");
  EXPECT_THAT(log.Lines(), ElementsAre("m_nExifIFDPos is 0, err!"));
}

}  // namespace
}  // namespace test
