#include "xmp/VxXMPParser.h"

#include <algorithm>

#include "core/DebugLog.h"
#include "xmp/ByteChunks.h"

namespace {

// The part of a text that a log line can hold at most.
constexpr std::size_t kLoggedLength = 1023;

std::string LogText(std::string_view text) {
  return std::string(text.substr(0, kLoggedLength));
}

// Names are compared for the log alone, which is mostly off.
void LogMismatch(const char* format, std::string_view found, std::string_view expected) {
  if (g_bDebugLogEnabled == 0 || found == expected) return;
  DebugLog(format, LogText(found).c_str(), LogText(expected).c_str());
}

// Of the tag at a position.
std::string_view NameOf(std::string_view packet, std::size_t start) {
  XmpTag tag;
  static_cast<void>(ScanXmpTag(packet, XmpPosition(start), tag));
  return tag.Name();
}

// A leaf's tags: its start tag, and the position of the end tag.
void LogWrongPair(const XmpTag& start, std::size_t end) {
  if (g_bDebugLogEnabled == 0) return;
  LogMismatch("[VxXMPParser] XMPParser!!!, format error, wrong Pair (%s)!=(%s)",
              NameOf(start.packet, end), start.Name());
}

// The name of an element with children, and the position of the end tag that closes it.
void LogWrongEnd(std::string_view packet, std::string_view name, std::size_t end) {
  if (g_bDebugLogEnabled == 0) return;
  LogMismatch("[VxXMPParser] XMPParser!!!, format error, wrong End (%s)!=(%s)", NameOf(packet, end),
              name);
}

void LogStrayEndTag(std::string_view tag) {
  if (g_bDebugLogEnabled == 0) return;
  DebugLog("[VxXMPParser] XMPParser!!!, format error, Should not here (%s)", LogText(tag).c_str());
}

// By design: the last letter of the root's tag is not compared.
constexpr std::string_view kRootTag = "<rdf:RDF";
constexpr std::string_view kComparedRootTag = kRootTag.substr(0, kRootTag.size() - 1);

// As many as a packet of this size has as a rule, so that a long one is not copied as it grows.
std::size_t PropertiesToExpect(std::string_view packet) noexcept {
  constexpr std::size_t kUsualSize = 40;  // of a property with its markup
  constexpr std::size_t kMost = std::size_t{1} << 18;
  return std::min(packet.size() / kUsualSize + 1, kMost);
}

// Whether no text that is cut out of a packet can hold a zero byte: those of the tags from a
// position on, and the first byte. What follows the last tag does not count.
bool AreTagsZeroFree(std::string_view packet, std::uint32_t position) noexcept {
  if (packet.starts_with('\0')) return false;
  const std::size_t zero = packet.find('\0', position);
  return zero == packet.npos || packet.find('>', zero) == packet.npos;
}

constexpr std::string_view kPacketName = "xmpmeta";

}  // namespace

void VxXMPParser::Reset() noexcept {
  SetText({});
  m_wanted = nullptr;
  m_count = 0;
  m_properties.Clear();
}

void VxXMPParser::SetText(std::span<const std::uint8_t> packet) noexcept {
  m_text = {reinterpret_cast<const char*>(packet.data()), packet.size()};
  m_paths.Reset(m_text);
  m_bindings.Reset(m_text);
  m_isZeroFree = false;
}

void VxXMPParser::ParseRoot() {
  std::size_t start = FindByte(m_text, '<', 0);
  std::size_t end = FindByte(m_text, '>', start);
  for (; end < m_text.size(); end = FindByte(m_text, '>', start)) {
    if (m_text.substr(start).starts_with(kComparedRootTag)) {
      ParsePacket(XmpPosition(start));
      return;
    }
    start = FindByte(m_text, '<', end);
  }
}

int VxXMPParser::ParsePacket(std::uint32_t position) {
  m_properties.Reserve(PropertiesToExpect(m_text));
  m_isZeroFree = AreTagsZeroFree(m_text, position);
  const std::uint32_t next = ParseElement(position, kXmpRootPath);
  XmpTag tag;
  if (ReadTag(next, tag) && tag.Name() == kPacketName) return 1;
  LogMismatch("[VxXMPParser] XMPParser!!!, wrong end (%s)!=(%s)", tag.Name(), kPacketName);
  return 0;
}

// Elements nest without limit, so the open ones are a chain of paths and not of calls. A start tag
// stays pending until the next tag shows whether it has children or is a leaf. Any end tag closes
// the innermost element; of it only the ends matter, except to the log.
std::uint32_t VxXMPParser::ParseElement(std::uint32_t position, XmpPathIndex path) {
  XmpTag tag;
  if (!ReadTag(position, tag)) return position;
  if (tag.kind == XmpTagKind::EndTag) {
    LogStrayEndTag(tag.Text());
    return position;
  }
  std::size_t at = position;
  XmpPathIndex current = path;
  bool isPending = false;
  do {
    const std::size_t next = FindByte(m_text, '<', at);
    if (IsXmpEndTag(m_text, next)) {
      const std::size_t end = FindByte(m_text, '>', next + 2);
      if (end == m_text.size()) break;
      if (isPending) {
        LogWrongPair(tag, next);
        ReadTextValue(current, tag, next);
        isPending = false;
      } else {
        LogWrongEnd(m_text, m_paths.Name(current), next);
        current = m_paths.Parent(current);
      }
      at = end + 1;
    } else {
      const XmpSpan outer = isPending ? NameSpan(tag) : XmpSpan{};
      if (!ScanXmpTagAt(m_text, next, m_bindings.Known(), tag)) break;
      if (isPending) current = m_paths.Add(current, outer);
      if (tag.attrStart != 0) ParseAttributes(current, tag);
      isPending = tag.kind == XmpTagKind::StartTag;
      at = std::size_t{tag.end} + 1;
    }
  } while (isPending || current != path);
  return XmpPosition(at);
}

void VxXMPParser::ParseAttributes(XmpPathIndex path, const XmpTag& tag) {
  const std::string_view text = m_text.substr(0, std::size_t{tag.attrEnd} + 1);
  // Most attributes share the prefix of the one before and so are properties without a look-up.
  const auto add = [this, path](const XmpAttributeMarks& marks) {
    if (m_isZeroFree && marks.hasKnownPrefix) {
      KeepProperty(path, Span(marks.colon + 1, marks.equals), m_bindings.KnownNamespace(),
                   Span(marks.opening + 1, marks.closing));
    } else {
      AddAttribute(path, marks);
    }
    return true;
  };
  VisitXmpAttributes(text, tag.attrStart, m_bindings.Known(), add);
}

// By design: a name without a colon gets the packet's first byte as its prefix.
void VxXMPParser::AddAttribute(XmpPathIndex path, XmpAttributeMarks marks) {
  const bool hasPrefix = marks.colon != marks.start;
  const XmpSpan prefix = hasPrefix ? Cut(marks.start, marks.colon) : Cut(0, 1);
  const XmpSpan name = Cut(hasPrefix ? marks.colon + 1 : marks.start, marks.equals);
  const XmpSpan value = Cut(marks.opening + 1, marks.closing);
  if (prefix.In(m_text) == kXmpBindingPrefix) {
    m_bindings.Bind(name, value);
  } else {
    AddProperty(path, prefix, name, value);
  }
}

XmpProperty VxXMPParser::Property(std::size_t index) const {
  return {m_paths.Text(PropertyPath(index)), std::string(PropertyName(index)),
          std::string(PropertyNamespace(index)), std::string(PropertyValue(index))};
}

std::uint32_t VxXMPParser::LengthToZero(XmpSpan span) const noexcept {
  const std::string_view text = span.In(m_text);
  return static_cast<std::uint32_t>(std::min(text.find('\0'), text.size()));
}
