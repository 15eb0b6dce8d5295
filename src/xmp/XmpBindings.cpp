#include "xmp/XmpBindings.h"

void XmpBindings::Reset(std::string_view packet) noexcept {
  m_packet = packet;
  m_count = 0;
  m_last = 0;
  m_many.clear();
}

void XmpBindings::Bind(XmpSpan prefix, XmpSpan nameSpace) {
  const std::uint64_t head = HeadOf(m_packet, prefix.start, prefix.length);
  XmpSpan* const bound = FindAnother(prefix, head);
  if (bound != nullptr) {
    *bound = nameSpace;
  } else if (m_count < m_few.size()) {
    m_few[m_count++] = {head, prefix, nameSpace};
  } else {
    m_many.emplace(prefix.In(m_packet), nameSpace);
  }
}

XmpSpan* XmpBindings::FindAnother(XmpSpan prefix, std::uint64_t head) noexcept {
  for (std::size_t i = 0; i < m_count; ++i) {
    if (!IsOf(m_few[i], prefix, head)) continue;
    m_last = i;
    return &m_few[i].nameSpace;
  }
  if (m_many.empty()) return nullptr;
  const auto bound = m_many.find(prefix.In(m_packet));
  return bound == m_many.end() ? nullptr : &bound->second;
}
