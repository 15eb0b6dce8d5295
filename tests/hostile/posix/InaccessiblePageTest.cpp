// Lengths that are larger than what stands behind the pointer. What does not fit the block is not
// read at all: behind the bytes here lies memory whose first touch ends the program.

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "com/WriteTestSupport.h"
#include "hostile/Bounds.h"
#include "support/Jpeg.h"
#include "support/Png.h"

namespace test {
namespace {

// Memory whose last byte is followed by a page that nobody may touch.
class GuardedBytes {
 public:
  explicit GuardedBytes(std::size_t size) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t room = (size + page - 1) / page * page;
    m_mapped = room + page;
    m_memory = mmap(nullptr, m_mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (m_memory == MAP_FAILED) throw std::runtime_error("no memory for a test");
    auto* const first = static_cast<std::uint8_t*>(m_memory);
    if (mprotect(first + room, page, PROT_NONE) != 0) throw std::runtime_error("no guard");
    m_bytes = first + room - size;
    std::memset(m_bytes, '#', size);
  }
  ~GuardedBytes() { munmap(m_memory, m_mapped); }
  GuardedBytes(const GuardedBytes&) = delete;
  GuardedBytes& operator=(const GuardedBytes&) = delete;

  std::uint8_t* Data() const { return m_bytes; }
  std::uint64_t Address() const { return reinterpret_cast<std::uintptr_t>(m_bytes); }

 private:
  std::size_t m_mapped = 0;
  void* m_memory = nullptr;
  std::uint8_t* m_bytes = nullptr;
};

class HostileGuard : public testing::Test {
 protected:
  HRESULT Write(const Records& records, std::uint32_t length, std::uint64_t address) {
    return Bounded(kSmallInput, [&] {
      RemoveFile(m_output.Path());
      return m_object->WriteMetadata(m_source.Path(), m_output.Path(), records.Count(),
                                     records.Data(), length, address, nullptr, 0);
    });
  }

  LumidexObject m_object;
  TempFile m_source{Jpeg().Scan().Build()};
  NewPath m_output;
};

// 8 of the header, 18 of the directory, 94 of that of the thumbnail.
constexpr std::uint32_t kThumbnailRoom = 64'000 - 8 - 18 - 94;

TEST_F(HostileGuard, ThumbnailLongerThanItsBytes) {
  const GuardedBytes byte(1);
  Records records;
  records.Ascii(2, 271, "Cam");
  for (const std::uint32_t length : {kThumbnailRoom + 1, 64'000U, 65'535U, 65'536U, 0x7FFFFFFFU,
                                     0x80000000U, 0xFFFFFF88U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
    EXPECT_EQ(Write(records, length, byte.Address()), LMD_E_BUFFER_TOO_SMALL) << length;
    EXPECT_FALSE(m_output.Exists());
  }
  EXPECT_EQ(Write(records, 1, byte.Address()), S_OK);
}

// An address at which nothing stands is not read either.
TEST_F(HostileGuard, ThumbnailOfNoLengthOrAddress) {
  const GuardedBytes byte(1);
  Records records;
  records.Ascii(2, 271, "Cam");
  EXPECT_EQ(Write(records, 0, byte.Address() + 1), S_OK);
  const Bytes without = m_output.Read();
  EXPECT_EQ(Write(records, 0xFFFFFFFF, 0), S_OK);
  EXPECT_EQ(m_output.Read(), without);
  EXPECT_EQ(Write(records, 0xFFFFFFFF, byte.Address() + 1), LMD_E_BUFFER_TOO_SMALL);
}

TEST_F(HostileGuard, ThumbnailThatFits) {
  const GuardedBytes bytes(kThumbnailRoom);
  Records records;
  records.Ascii(2, 271, "Cam");
  EXPECT_EQ(Write(records, kThumbnailRoom, bytes.Address()), S_OK);
  const Bytes file = m_output.Read();
  const std::size_t end = 2 + 10 + 64'000;
  EXPECT_EQ(Bytes(file.begin() + static_cast<std::ptrdiff_t>(end - kThumbnailRoom),
                  file.begin() + static_cast<std::ptrdiff_t>(end)),
            Bytes(kThumbnailRoom, '#'));
}

// Records whose size is a lie, of every kind of value.
TEST_F(HostileGuard, RecordsLongerThanTheirBytes) {
  const GuardedBytes byte(1);
  struct Tag {
    std::uint32_t group;
    std::uint32_t id;
  };
  constexpr Tag kTags[] = {{2, 271},   {2, 282},   {2, 296}, {4, 34866},
                           {4, 37380}, {4, 37510}, {8, 30}};
  for (const auto& [group, id] : kTags) {
    for (const std::uint32_t size :
         {128'000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFCU, 0xFFFFFFFFU}) {
      CInfoRecord record;
      record.m_nGroup = group;
      record.m_nId = id;
      record.m_nSize = size;
      record.m_pData = byte.Data();
      const auto write = [&] {
        return m_object->WriteMetadata(m_source.Path(), m_output.Path(), 1, &record, 0, 0, nullptr,
                                       0);
      };
      EXPECT_EQ(Bounded(kSmallInput, write), LMD_E_BUFFER_TOO_SMALL) << id << " " << size;
      EXPECT_FALSE(m_output.Exists());
      record.m_pData = nullptr;
    }
  }
}

// The packet goes to the end of a buffer of the size that was told, and not a byte further when the
// file has grown.
TEST_F(HostileGuard, PacketOfAGrownFile) {
  for (const std::uint32_t told : {35U, 4096U, 65'535U}) {
    const NewPath file;
    const auto write = [&](std::size_t packet) {
      WriteFile(file.Path(), Jpeg().Xmp(std::string(packet, 'x')).Scan().Build());
    };
    write(told - 31);
    ASSERT_EQ(m_object->Open(file.Path()), S_OK);
    std::uint32_t size = 0;
    ASSERT_EQ(m_object->GetXmpPacketSize(&size), S_OK);
    ASSERT_EQ(size, told);
    const GuardedBytes buffer(size);
    for (const std::uint32_t packet :
         {0U, 1U, told - 31, told - 1, told, told + 1, 40'000U, 65'504U}) {
      if (packet > 65'504) continue;
      write(packet);
      const bool fits = packet <= told;
      ASSERT_EQ(m_object->GetXmpPacket(&size, buffer.Data()), fits ? S_OK : LMD_E_BUFFER_TOO_SMALL);
    }
  }
}

TEST_F(HostileGuard, PacketOfAGrownPng) {
  const std::string panorama = "<x>equirectangular</x>";
  const NewPath file(u".png");
  const auto write = [&](std::size_t more) {
    WriteFile(file.Path(), Png().Header().Xmp(panorama + std::string(more, 'x')).End().Build());
  };
  write(10);
  ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  std::uint32_t size = 0;
  ASSERT_EQ(m_object->GetXmpPacketSize(&size), S_OK);
  ASSERT_EQ(size, 32U);
  const GuardedBytes buffer(size);
  for (const std::size_t more : {0U, 9U, 10U, 11U, 100U, 100'000U, 3'000'000U}) {
    write(more);
    EXPECT_EQ(m_object->GetXmpPacket(&size, buffer.Data()),
              more <= 10 ? S_OK : LMD_E_BUFFER_TOO_SMALL);
  }
}

}  // namespace
}  // namespace test
