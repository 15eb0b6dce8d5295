#ifndef LUMIDEX_COM_TRAILERBLOCK_H_
#define LUMIDEX_COM_TRAILERBLOCK_H_

// The fixed block that AppendTrailer puts behind a photograph. Numbers are little-endian.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

inline constexpr std::size_t kTrailerSize = 64;

namespace trailer {

// A field of the block: a number of `size` bytes, or a text.
struct Field {
  std::size_t offset;
  std::size_t size;
  std::uint32_t number;
  std::string_view text;
};

// clang-format off
inline constexpr std::array kFields = {
    Field{ 0,  2, 0x0000, {}},                 // reserved
    Field{ 2,  2, 0x0A50, {}},                 // record type
    Field{ 4,  4,     15, {}},                 // length of the record name
    Field{ 8, 15,      0, "Jpeg360_2D_Info"},  // record name
    Field{23,  9,      0, "Jpeg3602D"},        // record data
    Field{32,  4,      0, "SEFH"},             // directory header magic
    Field{36,  4,    101, {}},                 // directory version
    Field{40,  4,      1, {}},                 // number of directory entries
    Field{44,  2, 0x0000, {}},                 // reserved
    Field{46,  2, 0x0A50, {}},                 // entry: record type
    Field{48,  4,     32, {}},                 // entry: distance from the header back to the record
    Field{52,  4,     32, {}},                 // entry: record size
    Field{56,  4,     24, {}},                 // size of the directory
    Field{60,  4,      0, "SEFT"},             // trailer magic
};
// clang-format on

consteval std::array<std::uint8_t, kTrailerSize> Build() {
  std::array<std::uint8_t, kTrailerSize> block = {};
  for (const Field& field : kFields) {
    for (std::size_t i = 0; i < field.size; ++i) {
      block[field.offset + i] = field.text.empty()
                                    ? static_cast<std::uint8_t>(field.number >> (8 * i))
                                    : static_cast<std::uint8_t>(field.text[i]);
    }
  }
  return block;
}

// The fields follow each other without a gap and fill the block.
consteval bool IsComplete() {
  std::size_t end = 0;
  for (const Field& field : kFields) {
    if (field.offset != end || (!field.text.empty() && field.text.size() != field.size))
      return false;
    end += field.size;
  }
  return end == kTrailerSize;
}
static_assert(IsComplete());

}  // namespace trailer

inline constexpr std::array<std::uint8_t, kTrailerSize> kTrailerBlock = trailer::Build();

#endif  // LUMIDEX_COM_TRAILERBLOCK_H_
