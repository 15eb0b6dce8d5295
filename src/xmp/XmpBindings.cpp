#include "xmp/XmpBindings.h"

void XmpBindings::Reset(std::string_view packet) noexcept {
  m_packet = packet;
  m_count = 0;
  m_later.clear();
  KnowNone();
}

void XmpBindings::Bind(XmpSpan prefix, XmpSpan nameSpace) {
  KnowNone();
  if (m_count == kFew) {
    m_later.insert_or_assign(prefix.In(m_packet), nameSpace);
  } else {
    m_first[m_count++] = {HeadOf(m_packet, prefix.start, prefix.length), prefix, nameSpace};
  }
}

const XmpSpan* XmpBindings::FindAnother(XmpSpan prefix) noexcept {
  if (!m_later.empty()) {
    const auto bound = m_later.find(prefix.In(m_packet));
    if (bound != m_later.end()) return &bound->second;
  }
  const Binding* const bound = FindFirst(prefix);
  if (bound == nullptr) return nullptr;
  // Very long ones are not told by their first bytes.
  if (prefix.length <= kChunkSize) Know(*bound);
  return &bound->nameSpace;
}

void XmpBindings::Know(const Binding& binding) noexcept {
  m_known = binding;
  m_knownBytes = FirstBytes(binding.prefix.length);
}

void XmpBindings::KnowNone() noexcept {
  m_known = kNone;
  m_knownBytes = 0;
}

// The last binding of a prefix is the one that counts.
const XmpBindings::Binding* XmpBindings::FindFirst(XmpSpan prefix) const noexcept {
  const std::uint64_t head = HeadOf(m_packet, prefix.start, prefix.length);
  for (std::size_t i = m_count; i-- != 0;) {
    const Binding& binding = m_first[i];
    if (binding.head != head || binding.prefix.length != prefix.length) continue;
    const bool isWhole = prefix.length <= kChunkSize;
    if (isWhole || binding.prefix.In(m_packet) == prefix.In(m_packet)) return &binding;
  }
  return nullptr;
}
