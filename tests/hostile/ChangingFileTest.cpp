// Files that become others between two calls of a host.

#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "Bounds.h"
#include "DrivenFile.h"
#include "com/WriteTestSupport.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

constexpr std::uint32_t kUntouched = 4711;

class HostileChange : public ComTest {
 protected:
  void Open(const Bytes& contents) {
    WriteFile(m_file.Path(), contents);
    ASSERT_EQ(m_object->Open(m_file.Path()), S_OK);
  }
  void Become(const Bytes& contents) { WriteFile(m_file.Path(), contents); }

  // The answer of IsPanorama and its flag.
  std::pair<HRESULT, std::uint32_t> Panorama() {
    std::uint32_t flag = kUntouched;
    const HRESULT result = Bounded(kSmallInput, [&] { return m_object->IsPanorama(&flag); });
    return {result, flag};
  }

  LumidexObject m_object;
  NewPath m_file{LMD_W(".img")};
};

using Answer = std::pair<HRESULT, std::uint32_t>;

// Values come from the records of the parse, not from the file.
TEST_F(HostileChange, ValuesAreThoseOfTheParse) {
  Open(Jpeg().Xmp(XmpPacket("GPano:PoseHeadingDegrees=\"12.5\"")).Scan().Build());
  for (const Bytes& contents : {Bytes{}, Bytes{0xFF}, Png().End().Build(), Bytes(100'000, 0xFF)}) {
    Become(contents);
    float heading = 0;
    EXPECT_EQ(m_object->GetPoseHeading(&heading), S_OK);
    EXPECT_EQ(heading, 12.5F);
    EXPECT_EQ(Panorama(), Answer(LMD_E_NOT_PANORAMA, 0));
  }
}

TEST_F(HostileChange, JpegThatBecomesAnother) {
  Open(Jpeg().Scan().Build());
  EXPECT_EQ(Panorama(), Answer(LMD_E_NOT_FOUND, 0));
  const Bytes packet = Jpeg().Xmp("<x/>").Scan().Build();
  Become(packet);
  EXPECT_EQ(Panorama(), Answer(LMD_E_NOT_PANORAMA, 0));
  for (std::size_t size = 0; size < 2 + 4 + 28; ++size) {
    Become(Bytes(packet.begin(), packet.begin() + static_cast<std::ptrdiff_t>(size)));
    EXPECT_EQ(Panorama(), Answer(LMD_E_NOT_FOUND, 0)) << size;
  }
  Become(Png().Header().Xmp(kPanoramaPacket).End().Build());
  EXPECT_EQ(Panorama(), Answer(LMD_E_NOT_FOUND, 0));
  RemoveFile(m_file.Path());
  EXPECT_EQ(Panorama(), Answer(LMD_E_NOT_FOUND, 0));
}

TEST_F(HostileChange, PngThatBecomesAnother) {
  Open(Png().Header().End().Build());
  EXPECT_EQ(Panorama(), Answer(S_OK, 0));
  const Bytes panorama = Png().Header().Xmp(kPanoramaPacket).End().Build();
  for (std::size_t size = 0; size <= panorama.size(); ++size) {
    Become(Bytes(panorama.begin(), panorama.begin() + static_cast<std::ptrdiff_t>(size)));
    constexpr std::size_t kWordEnd = 8 + 25 + 30 + 18;
    EXPECT_EQ(Panorama(), size < 8          ? Answer(LMD_E_BAD_FORMAT, 0)
                          : size < kWordEnd ? Answer(S_OK, 0)
                                            : Answer(S_OK, 1))
        << size;
  }
  Become(Jpeg().Xmp(kPanoramaPacket).Build());
  EXPECT_EQ(Panorama(), Answer(LMD_E_BAD_FORMAT, 0));
  RemoveFile(m_file.Path());
  EXPECT_EQ(Panorama(), Answer(LMD_E_NOT_FOUND, 0));
}

// The packet of a file that is cut after its size was told: all of it, or nothing.
TEST_F(HostileChange, PacketOfAFileThatShrinks) {
  const Bytes jpeg = Jpeg().Xmp("<x/>").Build();
  const Bytes png = Png().Header().Xmp(kPanoramaPacket).Build();
  struct Row {
    const Bytes& whole;
    std::string packet;
    std::size_t start;  // of the packet
    std::size_t known;  // what must be there for the file to have one
    std::size_t signature;
  };
  for (const Row& row : {Row{jpeg, "<x/>", 2 + 33, 2 + 4 + 28, 2},
                         Row{png, std::string(kPanoramaPacket), 33 + 30, 33 + 30 + 18, 8}}) {
    Open(row.whole);
    std::uint32_t told = 0;
    ASSERT_EQ(m_object->GetXmpPacketSize(&told), S_OK);
    for (std::size_t size = 0; size <= row.whole.size(); ++size) {
      SCOPED_TRACE(size);
      Become(Bytes(row.whole.begin(), row.whole.begin() + static_cast<std::ptrdiff_t>(size)));
      const bool isWhole = size >= row.start + row.packet.size();
      const HRESULT expected = isWhole                ? S_OK
                               : size >= row.known    ? LMD_E_READ_FAILED
                               : size < row.signature ? LMD_E_BAD_FORMAT
                                                      : LMD_E_NOT_FOUND;
      std::string buffer(60, '#');
      std::uint32_t written = kUntouched;
      EXPECT_EQ(m_object->GetXmpPacket(&written, reinterpret_cast<std::uint8_t*>(buffer.data())),
                expected);
      const std::string packet = isWhole ? row.packet : "";
      EXPECT_EQ(buffer, packet + std::string(60 - packet.size(), '#'));
      EXPECT_EQ(written == kUntouched, !isWhole);
    }
  }
}

// The size was told of a JPEG; what stands there now is looked for as in a JPEG.
TEST_F(HostileChange, PacketOfAFileThatChangesItsType) {
  Open(Jpeg().Xmp("<x/>").Build());
  std::uint32_t size = 0;
  EXPECT_EQ(m_object->GetXmpPacketSize(&size), S_OK);
  Become(Png().Header().Xmp(kPanoramaPacket).End().Build());
  Bytes buffer(60, '#');
  EXPECT_EQ(m_object->GetXmpPacket(&size, buffer.data()), LMD_E_BAD_FORMAT);
  EXPECT_EQ(m_object->GetXmpPacketSize(&size), LMD_E_BAD_FORMAT);
  EXPECT_EQ(buffer, Bytes(60, '#'));

  // Opened anew it is a PNG; the told size still holds until it is asked for.
  EXPECT_EQ(m_object->Open(m_file.Path()), S_OK);
  EXPECT_EQ(m_object->GetXmpPacket(&size, buffer.data()), S_OK);
  Become(Png().Header().Xmp(std::string(kPanoramaPacket) + std::string(14, '!')).End().Build());
  Bytes room(60, '#');
  EXPECT_EQ(m_object->GetXmpPacket(&size, room.data()), LMD_E_BUFFER_TOO_SMALL);
  EXPECT_EQ(room, Bytes(60, '#'));
}

}  // namespace
}  // namespace test
