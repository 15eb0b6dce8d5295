#ifndef LUMIDEX_CONTAINER_PNGCHUNKS_H_
#define LUMIDEX_CONTAINER_PNGCHUNKS_H_

// What PNG files and the XMP chunks in them are made of (PNG specification, sections 5 and 11.3.3;
// XMP part 3, section 1.1.5). A chunk is a length, a type, that many bytes of data, and a CRC.

#include <array>
#include <cstdint>
#include <string_view>

inline constexpr std::array<std::uint8_t, 8> kPngSignature = {0x89, 'P',  'N',  'G',
                                                              0x0D, 0x0A, 0x1A, 0x0A};

// Chunk types as big-endian numbers.
inline constexpr std::uint32_t kEndChunkType = 0x49454E44;   // "IEND"
inline constexpr std::uint32_t kTextChunkType = 0x69545874;  // "iTXt"

// The keyword of an XMP chunk, its zero, no compression, no language, no translated keyword.
inline constexpr std::string_view kXmpChunkHeader("XML:com.adobe.xmp\0\0\0\0\0", 22);

// The chunk that ends every file, whole.
inline constexpr std::array<std::uint8_t, 12> kEndChunk = {0,   0,   0,    0,    'I',  'E',
                                                           'N', 'D', 0xAE, 0x42, 0x60, 0x82};

// Length and type before a chunk's data, and the CRC behind it.
inline constexpr std::uint32_t kChunkHeadSize = 8;
inline constexpr std::uint32_t kChunkOverhead = 12;

#endif  // LUMIDEX_CONTAINER_PNGCHUNKS_H_
