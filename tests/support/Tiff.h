#ifndef LUMIDEX_TESTS_SUPPORT_TIFF_H_
#define LUMIDEX_TESTS_SUPPORT_TIFF_H_

// Builds TIFF blocks: a header, directories, their values and child directories.
//
//   Tiff tiff(ByteOrder::LittleEndian);
//   Directory exif = {tiff.Rational(0x829A, {{1, 250}})};
//   Bytes block = tiff.Build({tiff.Ascii(271, "Maker"), tiff.Child(0x8769, exif)});

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "support/Bytes.h"

namespace test {

struct Entry;
using Directory = std::vector<Entry>;

struct Entry {
  std::uint16_t tag = 0;
  std::uint16_t type = 0;
  std::uint32_t count = 0;
  Bytes value;                      // in the block's byte order
  std::vector<Directory> children;  // the value becomes the list of their offsets
  bool inPlace = false;             // the value is the four bytes of the value field itself
};

class Tiff {
 public:
  explicit Tiff(ByteOrder order) : m_order(order) {}

  ByteOrder Order() const { return m_order; }

  Entry Byte(std::uint16_t tag, Bytes values) const;
  Entry Ascii(std::uint16_t tag, std::string_view text) const;  // with a final zero
  Entry Short(std::uint16_t tag, std::vector<std::uint16_t> values) const;
  Entry Long(std::uint16_t tag, std::vector<std::uint32_t> values) const;
  Entry Rational(std::uint16_t tag,
                 std::vector<std::pair<std::uint32_t, std::uint32_t>> values) const;
  Entry Undefined(std::uint16_t tag, Bytes values) const;

  // Any type, count and value bytes, not checked against each other. A value of at most four bytes
  // stands in the value field, a longer one behind the directory.
  Entry Raw(std::uint16_t tag, std::uint16_t type, std::uint32_t count, Bytes value) const;

  // An entry whose value field holds the given offset, whatever type and count say.
  Entry AtOffset(std::uint16_t tag, std::uint16_t type, std::uint32_t count,
                 std::uint32_t offset) const;

  // A LONG pointing to a child directory, or a list of them.
  Entry Child(std::uint16_t tag, Directory directory) const;
  Entry Children(std::uint16_t tag, std::vector<Directory> directories) const;

  // A whole block with IFD0 at offset 8 and, unless empty, IFD1 as its next directory.
  Bytes Build(const Directory& ifd0, const Directory& ifd1 = {}, std::uint16_t magic = 42) const;

  // One directory and its values, for a block in which it stands at `offset`; `next` is the value
  // of its next-directory field.
  Bytes BuildDirectory(const Directory& directory, std::uint32_t offset,
                       std::uint32_t next = 0) const;

 private:
  ByteOrder m_order;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_TIFF_H_
