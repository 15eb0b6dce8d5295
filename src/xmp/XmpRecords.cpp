#include "xmp/XmpRecords.h"

#include <algorithm>
#include <utility>

void XmpRecords::Clear() noexcept {
  m_records.reset();
  m_count = 0;
  m_room = 0;
}

void XmpRecords::Reserve(std::size_t count) {
  if (count <= m_room) return;
  auto records = std::make_unique_for_overwrite<XmpRecord[]>(count);
  std::copy_n(m_records.get(), m_count, records.get());
  m_records = std::move(records);
  m_room = count;
}
