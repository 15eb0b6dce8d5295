#ifndef LUMIDEX_XMP_XMPRECORDS_H_
#define LUMIDEX_XMP_XMPRECORDS_H_

// What a parser keeps of the properties of a packet, in the packet's order: a list to which adding
// is a few steps, as a packet has one for every attribute and every text.

#include <cstddef>
#include <cstdint>
#include <memory>

#include "xmp/XmpPaths.h"

struct XmpRecord {
  XmpPathIndex path;
  std::uint32_t number;  // of the property in the packet
  XmpSpan name;
  XmpSpan nameSpace;
  XmpSpan value;
};

class XmpRecords {
 public:
  // Gives the memory back.
  void Clear() noexcept;

  // Makes room for as many in all. Throws std::bad_alloc.
  void Reserve(std::size_t count);

  void Add(const XmpRecord& record) {
    if (m_count == m_room) Reserve(2 * m_room + 1);
    m_records[m_count++] = record;
  }

  std::size_t Count() const noexcept { return m_count; }
  const XmpRecord& operator[](std::size_t index) const noexcept { return m_records[index]; }

 private:
  std::unique_ptr<XmpRecord[]> m_records;
  std::size_t m_count = 0;
  std::size_t m_room = 0;
};

#endif  // LUMIDEX_XMP_XMPRECORDS_H_
