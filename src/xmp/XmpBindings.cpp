#include "xmp/XmpBindings.h"

namespace {

// A usual prefix is found alike before the name of a tag and of an attribute: it has nothing in it
// that ends either or that is skipped before it. None for others, for very long ones and for the
// one that makes an attribute a binding.
XmpKnownPrefix KnownPrefix(std::string_view prefix) noexcept {
  if (prefix.empty() || prefix.size() > XmpKnownPrefix::kLongest) return {};
  if (prefix == kXmpBindingPrefix || prefix[0] == '\\') return {};
  // Most are letters, which are told apart more quickly.
  const bool isUsual = FindByteUpTo(prefix, '>', 0) == prefix.size() ||
                       prefix.find_first_of(" \n<>:") == prefix.npos;
  return isUsual ? XmpKnownPrefix(prefix) : XmpKnownPrefix();
}

}  // namespace

void XmpBindings::Reset(std::string_view packet) noexcept {
  m_packet = packet;
  m_known = {};
  m_few.clear();
  m_many.clear();
}

void XmpBindings::Bind(XmpSpan prefix, XmpSpan nameSpace) {
  const std::uint64_t head = HeadOf(m_packet, prefix.start, prefix.length);
  Binding* bound = FindFew(prefix, head);
  if (bound == nullptr && m_few.size() < kFew) {
    m_few.reserve(kFew);
    bound = &m_few.emplace_back(Binding{head, prefix, nameSpace, KnownPrefix(prefix.In(m_packet))});
  }
  if (bound == nullptr) {
    m_many.insert_or_assign(prefix.In(m_packet), nameSpace);
    return;
  }
  bound->nameSpace = nameSpace;
  Know(*bound);
}

const XmpSpan* XmpBindings::FindAnother(XmpSpan prefix) noexcept {
  const std::uint64_t head = HeadOf(m_packet, prefix.start, prefix.length);
  if (const Binding* const bound = FindFew(prefix, head); bound != nullptr) {
    Know(*bound);
    return &bound->nameSpace;
  }
  if (m_many.empty()) return nullptr;
  const auto bound = m_many.find(prefix.In(m_packet));
  return bound == m_many.end() ? nullptr : &bound->second;
}

XmpBindings::Binding* XmpBindings::FindFew(XmpSpan prefix, std::uint64_t head) noexcept {
  for (Binding& binding : m_few) {
    if (binding.head != head || binding.prefix.length != prefix.length) continue;
    const bool isWhole = prefix.length <= kChunkSize;
    if (isWhole || binding.prefix.In(m_packet) == prefix.In(m_packet)) return &binding;
  }
  return nullptr;
}
