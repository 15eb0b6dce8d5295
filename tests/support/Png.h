#ifndef LUMIDEX_TESTS_SUPPORT_PNG_H_
#define LUMIDEX_TESTS_SUPPORT_PNG_H_

// Builds PNG files chunk by chunk:
//
//   Bytes file = Png().Header().Xmp("<x:xmpmeta/>").End().Build();

#include <cstdint>
#include <string_view>

#include "support/Bytes.h"

namespace test {

class Png {
 public:
  Png();  // the signature

  // A chunk with its length and checksum. `type` has four characters.
  Png& Chunk(std::string_view type, const Bytes& data);

  // The same with a length of the caller's choice.
  Png& ChunkOfLength(std::string_view type, std::uint32_t length, const Bytes& data);

  Png& Header();                    // IHDR of one grey pixel
  Png& Xmp(std::string_view text);  // iTXt, not compressed, without language and translation
  Png& End();                       // IEND
  Png& Raw(const Bytes& bytes);

  Bytes Build() const { return m_bytes; }

  // The offset at which the next chunk will begin.
  std::uint32_t NextOffset() const { return static_cast<std::uint32_t>(m_bytes.size()); }

 private:
  Bytes m_bytes;
};

// The data of an iTXt chunk with the keyword of XMP: five bytes of flags and empty texts, which a
// test may change, and the text.
Bytes XmpChunkData(std::string_view text, std::string_view keyword = "XML:com.adobe.xmp",
                   const Bytes& between = {0, 0, 0, 0, 0});

// A file with header and end alone.
Bytes SmallPng();

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_PNG_H_
