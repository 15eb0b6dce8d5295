#include "xmp/VxXMPParser.h"

#include <algorithm>

#include "core/DebugLog.h"
#include "xmp/TextSearch.h"

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
void LogWrongPair(std::string_view packet, const XmpTagMarks& start, std::size_t end) {
  if (g_bDebugLogEnabled == 0) return;
  LogMismatch("[VxXMPParser] XMPParser!!!, format error, wrong Pair (%s)!=(%s)",
              NameOf(packet, end), MakeXmpTag(packet, start).Name());
}

// The name of an element with children, and the position of the end tag that closes it.
void LogWrongEnd(std::string_view packet, std::string_view name, std::size_t end) {
  if (g_bDebugLogEnabled == 0) return;
  LogMismatch("[VxXMPParser] XMPParser!!!, format error, wrong End (%s)!=(%s)", NameOf(packet, end),
              name);
}

void LogStrayEndTag(std::string_view packet, std::size_t start) {
  if (g_bDebugLogEnabled == 0) return;
  XmpTag tag;
  if (!ScanXmpTag(packet, XmpPosition(start), tag)) return;
  DebugLog("[VxXMPParser] XMPParser!!!, format error, Should not here (%s)",
           LogText(tag.Text()).c_str());
}

// Whether an attribute may be one that binds a prefix. It has four characters at least: a name, "="
// and two quotes.
bool MayBind(std::string_view packet, std::size_t start) noexcept {
  constexpr std::uint32_t kHead = XmpNameSet::EndingOf(kXmpBindingPrefix.substr(0, 4));
  return LoadHalf(packet, start) == kHead;
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
  m_filter = nullptr;
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
  std::size_t start = FindByte<'<'>(m_text, 0);
  std::size_t end = FindByte<'>'>(m_text, start);
  for (; end < m_text.size(); end = FindByte<'>'>(m_text, start)) {
    if (m_text.substr(start).starts_with(kComparedRootTag)) {
      ParsePacket(XmpPosition(start));
      return;
    }
    start = FindByte<'<'>(m_text, end);
  }
}

int VxXMPParser::ParsePacket(std::uint32_t position) {
  m_properties.Reserve(PropertiesToExpect(m_text));
  m_isZeroFree = AreTagsZeroFree(m_text, position);
  // A name that a zero byte cuts does not end where it seems to.
  m_filter = m_isZeroFree ? m_wanted : nullptr;
  const std::uint32_t next = ParseElement(position, kXmpRootPath);
  XmpTag tag;
  if (ReadTag(next, tag) && tag.Name() == kPacketName) return 1;
  LogMismatch("[VxXMPParser] XMPParser!!!, wrong end (%s)!=(%s)", tag.Name(), kPacketName);
  return 0;
}

// Most leaves are not wanted.
inline void VxXMPParser::ReadLeaf(XmpPathIndex path, const XmpTagMarks& start, std::size_t end) {
  LogWrongPair(m_text, start, end);
  if (IsWanted(start.nameEnd)) {
    ReadTextValue(path, start, end);
  } else {
    ++m_count;
  }
}

// Elements nest without limit, so the open ones are a chain of paths and not of calls. Any end tag
// closes the innermost element; of it only the ends matter, except to the log.
std::uint32_t VxXMPParser::ParseElement(std::uint32_t position, XmpPathIndex path) {
  const std::string_view text = m_text;
  std::size_t next = FindByte<'<'>(text, position);
  if (IsXmpEndTag(text, next)) {
    LogStrayEndTag(text, next);
    return position;
  }
  XmpTagMarks tag;
  std::size_t at = position;
  XmpPathIndex current = path;
  for (;;) {
    if (IsXmpEndTag(text, next)) {
      const std::size_t end = FindByte<'>'>(text, next + 2);
      if (end == text.size()) break;
      LogWrongEnd(text, m_paths.Name(current), next);
      current = m_paths.Parent(current);
      at = end + 1;
    } else {
      if (!FindXmpTag(text, next, tag)) break;
      if (tag.attributes != 0) ReadAttributes(current, tag.attributes, tag.end);
      at = tag.end + 1;
      if (!IsXmpEmptyTag(text, tag)) {
        next = FindByte<'<'>(text, at);
        if (!IsXmpEndTag(text, next)) {
          current = AddPath(current, tag);
          continue;
        }
        const std::size_t end = FindByte<'>'>(text, next + 2);
        if (end == text.size()) break;
        ReadLeaf(current, tag, next);
        at = end + 1;
      }
    }
    if (current == path) break;
    next = FindByte<'<'>(text, at);
  }
  return XmpPosition(at);
}

XmpPathIndex VxXMPParser::AddPath(XmpPathIndex parent, const XmpTagMarks& tag) {
  const std::size_t colon = FindXmpColon(m_text, tag.name, tag.nameEnd);
  return m_paths.Add(parent, LocalName(tag.name, colon, tag.nameEnd));
}

// By design: with several colons the prefix is what stands before the last one, back to the one
// before.
void VxXMPParser::ReadTextValue(XmpPathIndex path, const XmpTagMarks& start, std::size_t end) {
  const std::size_t colon = FindXmpColon(m_text, start.name, start.nameEnd);
  const std::size_t before = FindXmpColon(m_text, start.name, colon);
  const std::size_t prefix = before == start.name ? before : before + 1;
  AddProperty(path, colon == start.name ? Cut(0, 1) : Cut(prefix, colon),
              LocalName(start.name, colon, start.nameEnd), Cut(start.end + 1, end));
}

void VxXMPParser::ReadAttributes(XmpPathIndex path, std::size_t from, std::size_t end) {
  // Most attributes are neither wanted nor bind a prefix.
  const std::string_view text = m_text;
  const XmpNameSet* const filter = m_filter;
  const auto add = [this, path, text, filter](const XmpAttributeMarks& marks) {
    if (filter == nullptr || filter->MayHold(text, marks.equals) || MayBind(text, marks.start)) {
      AddAttribute(path, marks);
    } else {
      ++m_count;
    }
    return true;
  };
  VisitXmpAttributes(text, from, end, add);
}

void VxXMPParser::AddAttribute(XmpPathIndex path, const XmpAttributeMarks& marks) {
  const std::size_t colon = FindXmpColon(m_text, marks.start, marks.equals);
  const XmpSpan prefix = Prefix(marks.start, colon);
  const XmpSpan name = LocalName(marks.start, colon, marks.equals);
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
