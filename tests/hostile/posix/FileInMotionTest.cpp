// Every operation on a file that shrinks, grows or becomes another before the n-th read from it,
// for every n up to a run with fewer reads. A result is one of the documented codes; an output that
// is called good is that of the file before or after, or of what had been read of a file that ended
// there when it was read on.

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "FileInMotion.h"
#include "com/WriteTestSupport.h"
#include "hostile/Bounds.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

Bytes First(const Bytes& bytes, std::size_t count) {
  return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
}

// What a file may become: all kinds of cuts, and more of it.
std::vector<Bytes> ChangesOf(const Bytes& whole) {
  std::vector<Bytes> changes;
  for (const std::size_t size : {0U, 1U, 9U, 12U, 21U, 40U, 4'096U}) {
    if (size < whole.size()) changes.push_back(First(whole, size));
  }
  changes.push_back(First(whole, whole.size() - 1));
  changes.push_back(First(whole, whole.size() - 12));
  changes.push_back(Join({whole, Bytes(3'000, 0xFF)}));
  return changes;
}

// How much of a file may have been read when it changes: around what the operations look at.
constexpr std::size_t kMoments[] = {0, 1, 8, 9, 12, 30, 44, 100, 4'096, 4'104, 4'200, 4'600, 8'300};

// Runs an operation on a new file of `before` that becomes `after` meanwhile, at every moment that
// it reaches. `check` gets the result of each run.
void ForEveryMoment(const Bytes& before, const Bytes& after,
                    const std::function<HRESULT(const WCHAR* path)>& operate,
                    const std::function<void(HRESULT result, const WCHAR* path)>& check) {
  std::size_t changes = 0;
  for (const std::size_t moment : kMoments) {
    SCOPED_TRACE(std::to_string(after.size()) + " bytes after " + std::to_string(moment));
    const NewPath file;
    WriteFile(file.Path(), before);
    const FileInMotion motion(file.Path(), moment, [&] { WriteFile(file.Path(), after); });
    Cost cost;
    const HRESULT result = Measure(cost, [&] { return operate(file.Path()); });
    EXPECT_LT(cost.bytes, kSmallInput.bytes);
    if (!motion.HasChanged()) break;
    ++changes;
    check(result, file.Path());
  }
  EXPECT_GE(changes, 3U);
}

// The same for an operation that writes a file of its own and none of the source.
void ExpectCopies(const Bytes& before,
                  const std::function<HRESULT(const WCHAR* source, const WCHAR* output)>& copy) {
  const auto copyOf = [&](const Bytes& contents) {
    const TempFile source(contents);
    const NewPath output;
    return copy(source.Path(), output.Path()) == S_OK ? output.Read() : Bytes{};
  };
  const Bytes good = copyOf(before);
  EXPECT_FALSE(good.empty());
  for (const Bytes& after : ChangesOf(before)) {
    const Bytes other = copyOf(after);
    const NewPath output;
    const auto operate = [&](const WCHAR* path) {
      RemoveFile(output.Path());
      return copy(path, output.Path());
    };
    ForEveryMoment(before, after, operate, [&](HRESULT result, const WCHAR* path) {
      EXPECT_EQ(ReadFile(path), after);
      if (result == S_OK) {
        const Bytes written = output.Read();
        const bool isOfOneState = written == good || (!other.empty() && written == other);
        const std::size_t read = before.size() + written.size() - good.size();
        EXPECT_TRUE(isOfOneState ||
                    (after.size() < read && written == copyOf(First(before, read))));
      } else {
        EXPECT_TRUE(result == LMD_E_READ_FAILED || result == LMD_E_BAD_FORMAT);
      }
    });
  }
}

class HostileMotion : public ComTest {
 protected:
  LumidexObject m_object;
  TempFile m_packet{Text("<y/>"), ".xmp"};
  Bytes m_jpeg = Jpeg().Exif(Zeros(8)).Scan().Raw(Bytes(4'500, 'j')).Build();
  Bytes m_png = Png().Header().Chunk("IDAT", Bytes(4'500, 'p')).End().Build();
};

TEST_F(HostileMotion, EmbeddingIntoACopy) {
  const auto embed = [&](const WCHAR* source, const WCHAR* output) {
    return m_object->EmbedXmpFile(source, output, m_packet.Path());
  };
  ExpectCopies(m_jpeg, embed);
  ExpectCopies(m_png, embed);
}

TEST_F(HostileMotion, WritingRecords) {
  Records records;
  records.Ascii(2, 271, "Cam");
  ExpectCopies(m_jpeg, [&](const WCHAR* source, const WCHAR* output) {
    return m_object->WriteMetadata(source, output, records.Count(), records.Data(), 0, 0,
                                   m_packet.Path(), 1);
  });
  ExpectCopies(m_jpeg, [&](const WCHAR* source, const WCHAR* output) {
    return m_object->WriteMetadata(source, output, 0, nullptr, 0, 0, m_packet.Path(), 1);
  });
}

// A packet file that changes: the copy has all of one of the two packets, or as much of the first
// as was read when it ended there, or there is no copy.
TEST_F(HostileMotion, PacketFile) {
  const TempFile source(Jpeg().Scan().Build());
  const Bytes before(4'000, 'x');
  for (const Bytes& after : {Bytes{}, Bytes(1, 'x'), Bytes(3'999, 'x'), Bytes(4'001, 'x'),
                             Bytes(65'504, 'x'), Bytes(65'505, 'x')}) {
    const NewPath output;
    const auto operate = [&](const WCHAR* path) {
      RemoveFile(output.Path());
      return m_object->EmbedXmpFile(source.Path(), output.Path(), path);
    };
    ForEveryMoment(before, after, operate, [&](HRESULT result, const WCHAR*) {
      if (result == S_OK) {
        const std::size_t size = output.Read().size() - source.Read().size() - 33;
        const bool isCut = after.size() < size && size < before.size();
        EXPECT_TRUE(size == before.size() || size == after.size() || isCut) << size;
      } else {
        EXPECT_TRUE(result == LMD_E_READ_FAILED || result == LMD_E_BUFFER_TOO_SMALL);
        EXPECT_FALSE(output.Exists());
      }
    });
  }
}

// A file that has shrunk has no end any more where it was looked for, and nothing is written.
TEST_F(HostileMotion, EmbeddingInPlaceOfAFileThatShrinks) {
  const auto embed = [&](const WCHAR* path) {
    return m_object->EmbedXmpFile(path, path, m_packet.Path());
  };
  for (const Bytes& after : ChangesOf(m_png)) {
    if (after.size() > m_png.size()) continue;
    ForEveryMoment(m_png, after, embed, [&](HRESULT result, const WCHAR* path) {
      EXPECT_EQ(result, LMD_E_BAD_FORMAT);
      EXPECT_EQ(ReadFile(path), after);
    });
  }
}

TEST_F(HostileMotion, AppendingTheTrailer) {
  const auto append = [&](const WCHAR* path) { return m_object->AppendTrailer(path); };
  for (const Bytes& after : ChangesOf(m_jpeg)) {
    ForEveryMoment(m_jpeg, after, append, [&](HRESULT result, const WCHAR* path) {
      const Bytes now = ReadFile(path);
      if (after.size() < m_jpeg.size()) {
        EXPECT_EQ(result, LMD_E_READ_FAILED);
        EXPECT_EQ(now, after);
      } else {
        EXPECT_EQ(result, S_OK);
        EXPECT_EQ(First(now, after.size()), after);
        EXPECT_EQ(now.size(), after.size() + 64);
      }
    });
  }
}

// A parse takes what is there. The object opens the next file as ever.
TEST_F(HostileMotion, Opening) {
  const Bytes photo = FullPhoto();
  for (const Bytes& after : ChangesOf(photo)) {
    const auto open = [&](const WCHAR* path) { return m_object->Open(path); };
    ForEveryMoment(photo, after, open, [&](HRESULT result, const WCHAR*) {
      EXPECT_TRUE(result == S_OK || result == LMD_E_BAD_FORMAT);
    });
  }
  const TempFile good(Jpeg().Xmp("<x/>").Scan().Build());
  EXPECT_EQ(m_object->Open(good.Path()), S_OK);
  std::uint32_t flag = 7;
  EXPECT_EQ(m_object->IsPanorama(&flag), LMD_E_NOT_PANORAMA);
}

TEST_F(HostileMotion, AskingForAPanorama) {
  const Bytes before = Png().Header().Xmp(kPanoramaPacket).Chunk("IDAT", Zeros(100)).End().Build();
  for (const Bytes& after : ChangesOf(before)) {
    std::uint32_t flag = 7;
    const auto ask = [&](const WCHAR* path) {
      EXPECT_EQ(m_object->Open(path), S_OK);
      const FileInMotion motion(path, 0, [&] { WriteFile(path, after); });
      return m_object->IsPanorama(&flag);
    };
    const NewPath file;
    WriteFile(file.Path(), before);
    const HRESULT result = ask(file.Path());
    constexpr std::size_t kWordEnd = 33 + 30 + 18;
    EXPECT_EQ(result, after.size() < 8 ? LMD_E_BAD_FORMAT : S_OK) << after.size();
    EXPECT_EQ(flag, after.size() < kWordEnd ? 0U : 1U) << after.size();
  }
}

// The size is told, then the packet grows while it is read: no more is written than was told.
TEST_F(HostileMotion, ReadingAPacketThatGrows) {
  const auto jpegOf = [](std::size_t size) {
    return Jpeg().Xmp(std::string(size, 'x')).Scan().Build();
  };
  const auto pngOf = [](std::size_t size) {
    return Png().Header().Xmp(std::string(kPanoramaPacket) + std::string(size, 'x')).End().Build();
  };
  for (const auto& [before, after] : {std::pair{jpegOf(10), jpegOf(65'000)},
                                      {jpegOf(3'000), jpegOf(3'100)},
                                      {jpegOf(3'000), jpegOf(1)},
                                      {pngOf(10), pngOf(100'000)},
                                      {pngOf(100'000), pngOf(200'000)},
                                      {pngOf(3'000), pngOf(0)},
                                      {jpegOf(10), Bytes{}},
                                      {pngOf(3'000), First(pngOf(9), 80)}}) {
    std::uint32_t told = 0;
    Bytes buffer;
    for (const std::size_t moment : kMoments) {
      const NewPath file;
      WriteFile(file.Path(), before);
      ASSERT_EQ(m_object->Open(file.Path()), S_OK);
      ASSERT_EQ(m_object->GetXmpPacketSize(&told), S_OK);
      buffer.assign(told + 70'000, '#');
      const FileInMotion motion(file.Path(), moment,
                                [&, contents = after] { WriteFile(file.Path(), contents); });
      std::uint32_t size = 7;
      const HRESULT result = m_object->GetXmpPacket(&size, buffer.data());
      EXPECT_TRUE(result == S_OK || result == LMD_E_BUFFER_TOO_SMALL ||
                  result == LMD_E_READ_FAILED || result == LMD_E_BAD_FORMAT ||
                  result == LMD_E_NOT_FOUND)
          << result;
      EXPECT_EQ(Bytes(buffer.begin() + told, buffer.end()), Bytes(70'000, '#'));
      if (!motion.HasChanged()) break;
    }
  }
}

}  // namespace
}  // namespace test
