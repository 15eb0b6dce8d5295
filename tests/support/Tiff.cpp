#include "support/Tiff.h"

#include <algorithm>

namespace test {
namespace {

void Append(Bytes& bytes, const Bytes& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

}  // namespace

Entry Tiff::Raw(std::uint16_t tag, std::uint16_t type, std::uint32_t count, Bytes value) const {
  Entry entry;
  entry.tag = tag;
  entry.type = type;
  entry.count = count;
  entry.value = std::move(value);
  return entry;
}

Entry Tiff::Byte(std::uint16_t tag, Bytes values) const {
  const auto count = static_cast<std::uint32_t>(values.size());
  return Raw(tag, 1, count, std::move(values));
}

Entry Tiff::Ascii(std::uint16_t tag, std::string_view text) const {
  Bytes value = Text(text);
  value.push_back(0);
  const auto count = static_cast<std::uint32_t>(value.size());
  return Raw(tag, 2, count, std::move(value));
}

Entry Tiff::Short(std::uint16_t tag, std::vector<std::uint16_t> values) const {
  Bytes value;
  for (const std::uint16_t number : values) Append(value, U16(number, m_order));
  return Raw(tag, 3, static_cast<std::uint32_t>(values.size()), std::move(value));
}

Entry Tiff::Long(std::uint16_t tag, std::vector<std::uint32_t> values) const {
  Bytes value;
  for (const std::uint32_t number : values) Append(value, U32(number, m_order));
  return Raw(tag, 4, static_cast<std::uint32_t>(values.size()), std::move(value));
}

Entry Tiff::Rational(std::uint16_t tag,
                     std::vector<std::pair<std::uint32_t, std::uint32_t>> values) const {
  Bytes value;
  for (const auto& [numerator, denominator] : values) {
    Append(value, U32(numerator, m_order));
    Append(value, U32(denominator, m_order));
  }
  return Raw(tag, 5, static_cast<std::uint32_t>(values.size()), std::move(value));
}

Entry Tiff::Undefined(std::uint16_t tag, Bytes values) const {
  const auto count = static_cast<std::uint32_t>(values.size());
  return Raw(tag, 7, count, std::move(values));
}

Entry Tiff::AtOffset(std::uint16_t tag, std::uint16_t type, std::uint32_t count,
                     std::uint32_t offset) const {
  Entry entry = Raw(tag, type, count, U32(offset, m_order));
  entry.inPlace = true;
  return entry;
}

Entry Tiff::Child(std::uint16_t tag, Directory directory) const {
  return Children(tag, {std::move(directory)});
}

Entry Tiff::Children(std::uint16_t tag, std::vector<Directory> directories) const {
  Entry entry = Raw(tag, 4, static_cast<std::uint32_t>(directories.size()), {});
  entry.children = std::move(directories);
  return entry;
}

Bytes Tiff::BuildDirectory(const Directory& directory, std::uint32_t offset,
                           std::uint32_t next) const {
  const auto fixedSize = static_cast<std::uint32_t>(2 + 12 * directory.size() + 4);
  Bytes behind;
  const auto place = [&](const Bytes& bytes) {
    if (behind.size() % 2 != 0) behind.push_back(0);
    const auto at = static_cast<std::uint32_t>(offset + fixedSize + behind.size());
    Append(behind, bytes);
    return at;
  };

  Bytes fixed = U16(static_cast<std::uint16_t>(directory.size()), m_order);
  for (const Entry& entry : directory) {
    Bytes value = entry.value;
    for (const Directory& child : entry.children) {
      if (behind.size() % 2 != 0) behind.push_back(0);
      const auto at = static_cast<std::uint32_t>(offset + fixedSize + behind.size());
      place(BuildDirectory(child, at));
      Append(value, U32(at, m_order));
    }
    if (value.size() > 4 && !entry.inPlace) value = U32(place(value), m_order);
    value.resize(4);
    Append(fixed, U16(entry.tag, m_order));
    Append(fixed, U16(entry.type, m_order));
    Append(fixed, U32(entry.count, m_order));
    Append(fixed, value);
  }
  Append(fixed, U32(next, m_order));
  Append(fixed, behind);
  return fixed;
}

Bytes Tiff::Build(const Directory& ifd0, const Directory& ifd1, std::uint16_t magic) const {
  constexpr std::uint32_t kFirst = 8;
  Bytes first = BuildDirectory(ifd0, kFirst);
  if (first.size() % 2 != 0) first.push_back(0);
  const auto second = static_cast<std::uint32_t>(kFirst + first.size());
  if (!ifd1.empty()) {
    const Bytes next = U32(second, m_order);
    std::copy(next.begin(), next.end(),
              first.begin() + static_cast<std::ptrdiff_t>(2 + 12 * ifd0.size()));
  }

  const Bytes mark = Text(m_order == ByteOrder::BigEndian ? "MM" : "II");
  Bytes block = Join({mark, U16(magic, m_order), U32(kFirst, m_order), first});
  if (!ifd1.empty()) Append(block, BuildDirectory(ifd1, second));
  return block;
}

}  // namespace test
