// A PNG of more than 4 GiB, nearly all of it a hole that takes no room.

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "com/WriteTestSupport.h"
#include "hostile/Bounds.h"
#include "support/Png.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

constexpr std::uint32_t kLength = 0xFFFFFFF0;

// Behind the first 4 GiB a panorama; at the place that a 32-bit position would come back to, none.
TEST(HostileLargePng, PacketBehindFourGiB) {
  const NewPath file(u".png");
  WriteFile(file.Path(), Png().ChunkOfLength("IDAT", kLength, Zeros(100)).Build());
  constexpr std::uint64_t kNext = 8 + 12 + std::uint64_t{kLength};
  const std::filesystem::path path(file.Path());
  std::filesystem::resize_file(path, kNext);
  const Bytes chunk = Png().Xmp(kPanoramaPacket).End().Build();
  std::ofstream stream(path, std::ios::binary | std::ios::app);
  stream.write(reinterpret_cast<const char*>(chunk.data()) + 8,
               static_cast<std::streamsize>(chunk.size() - 8));
  stream.close();
  ASSERT_EQ(std::filesystem::file_size(path), kNext + 30 + 22 + 4 + 12);

  const LumidexObject object;
  EXPECT_EQ(object->Open(file.Path()), S_OK);
  std::uint32_t flag = 7;
  std::uint32_t size = 7;
  Bytes buffer(30, '#');
  EXPECT_EQ(Bounded(kSmallInput, [&] { return object->IsPanorama(&flag); }), S_OK);
  EXPECT_EQ(flag, 1U);
  EXPECT_EQ(Bounded(kSmallInput, [&] { return object->GetXmpPacketSize(&size); }), S_OK);
  EXPECT_EQ(size, 22U);
  EXPECT_EQ(Bounded(kSmallInput, [&] { return object->GetXmpPacket(&size, buffer.data()); }), S_OK);
  EXPECT_EQ(buffer, Join({Text(kPanoramaPacket), Bytes(8, '#')}));
}

}  // namespace
}  // namespace test
