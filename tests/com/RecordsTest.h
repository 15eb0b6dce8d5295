#ifndef LUMIDEX_TESTS_COM_RECORDSTEST_H_
#define LUMIDEX_TESTS_COM_RECORDSTEST_H_

// An object whose parse result is a fake one.

#include <cstring>
#include <span>
#include <vector>

#include "ComTest.h"
#include "FakeImageInfo.h"
#include "LumidexState.h"
#include "support/Png.h"
#include "support/TempFile.h"

namespace test {

// The groups of the maker note's records and of XMP's.
inline constexpr std::uint32_t kNoteGroup = 1024;
inline constexpr std::uint32_t kXmpGroup = 64;

// Every record type, and two that are none.
inline constexpr std::uint32_t kRecordTypes[] = {LMD_RECORD_INT32,
                                                 LMD_RECORD_SRATIONAL,
                                                 LMD_RECORD_DOUBLE,
                                                 LMD_RECORD_ASCII,
                                                 LMD_RECORD_WIDE_TEXT,
                                                 LMD_RECORD_BYTES,
                                                 LMD_RECORD_UINT32,
                                                 LMD_RECORD_URATIONAL,
                                                 0,
                                                 7};

// 32-bit values as records hold them.
template <class Number>
Bytes Words(const std::vector<Number>& values) {
  Bytes bytes;
  for (const Number value : values) {
    bytes = Join({bytes, U32(static_cast<std::uint32_t>(value), kHostByteOrder)});
  }
  return bytes;
}

class RecordsTest : public ComTest {
 protected:
  RecordsTest() { m_object->AddRef(); }
  ~RecordsTest() override {
    EXPECT_EQ(m_object->Release(), 0U);
    EXPECT_EQ(m_info.references, 0U);
  }

  // Puts the fake in the place of the object's parse result.
  void Give(const std::vector<FakeRecord>& records) {
    m_info.SetRecords(records);
    IImageInfo*& info = ImageInfoOf(*m_lumidex);
    if (info != &m_info) {
      if (info != nullptr) info->Release();
      info = &m_info;
      m_info.references = 1;
    }
  }

  // Makes a PNG the current file without touching the parse result.
  void MakePngCurrent() {
    const TempFile png(Png().Header().End().Build(), ".png");
    IImageInfo* none = nullptr;
    ASSERT_EQ(m_object->ParseBasic(png.Path(), &none), S_OK);
  }

  FakeImageInfo m_info;
  CLumidex* m_lumidex = new CLumidex(nullptr);
  ILumidex* m_object = m_lumidex;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_COM_RECORDSTEST_H_
