#include "xmp/VxXMPParser.h"

#include "core/DebugLog.h"

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

// Of a tag of which only the ends are known.
std::string_view NameOf(XmpTag tag) {
  ScanXmpTagContent(tag);
  return tag.Name();
}

void LogStrayEndTag(std::string_view tag) {
  if (g_bDebugLogEnabled == 0) return;
  DebugLog("[VxXMPParser] XMPParser!!!, format error, Should not here (%s)", LogText(tag).c_str());
}

// Where the last zero byte of a text ends, or 0. Blocks are searched from the last to the first, so
// that a text of many zeros costs no more than one without any.
std::size_t ZerosEnd(std::string_view text) noexcept {
  constexpr std::size_t kBlockSize = 256;
  if (text.find('\0') == text.npos) return 0;
  while (!text.empty()) {
    const std::size_t start = (text.size() - 1) / kBlockSize * kBlockSize;
    if (text.find('\0', start) != text.npos) return text.rfind('\0') + 1;
    text = text.substr(0, start);
  }
  return 0;
}

// By design: the last letter of the root's tag is not compared.
constexpr std::string_view kRootTag = "<rdf:RDF";
constexpr std::string_view kComparedRootTag = kRootTag.substr(0, kRootTag.size() - 1);

constexpr std::string_view kPacketName = "xmpmeta";
constexpr std::string_view kBindingPrefix = "xmlns";

}  // namespace

void VxXMPParser::Reset() noexcept {
  SetText({});
  m_bindings.clear();
  m_lastPrefix = {};
  m_properties = std::vector<Record>();
}

void VxXMPParser::SetText(std::span<const std::uint8_t> packet) noexcept {
  m_text = {reinterpret_cast<const char*>(packet.data()), packet.size()};
  m_paths.Reset(m_text);
  m_zerosEnd = static_cast<std::uint32_t>(ZerosEnd(m_text));
}

void VxXMPParser::ParseRoot() {
  XmpTag tag;
  for (std::uint32_t position = 0; ReadTag(position, tag); position = tag.end + 1) {
    if (!m_text.substr(tag.start).starts_with(kComparedRootTag)) continue;
    ParsePacket(tag.start);
    return;
  }
}

int VxXMPParser::ParsePacket(std::uint32_t position) {
  const std::uint32_t next = ParseElement(position, kXmpRootPath);
  XmpTag tag;
  if (ReadTag(next, tag) && tag.Name() == kPacketName) return 1;
  LogMismatch("[VxXMPParser] XMPParser!!!, wrong end (%s)!=(%s)", tag.Name(), kPacketName);
  return 0;
}

// Elements nest without limit, so the open ones are a chain of paths and not of calls. A start tag
// stays pending until the next tag shows whether it has children or is a leaf.
std::uint32_t VxXMPParser::ParseElement(std::uint32_t position, XmpPathIndex path) {
  XmpTag tag;
  if (!ScanXmpTagEnds(m_text, position, tag)) return position;
  if (tag.kind == XmpTagKind::EndTag) {
    LogStrayEndTag(tag.Text());
    return position;
  }
  XmpPathIndex current = path;
  XmpTag start;
  bool isPending = false;
  do {
    position = tag.end + 1;
    if (tag.kind != XmpTagKind::EndTag) {
      ScanXmpTagContent(tag);
      if (isPending) current = m_paths.Add(current, Cut(start.nameStart, start.nameEnd));
      ParseAttributes(current, tag);
      isPending = tag.kind == XmpTagKind::StartTag;
      start = tag;
    } else if (isPending) {
      CloseLeaf(current, start, tag);
      isPending = false;
    } else {
      current = CloseElement(current, tag);
    }
  } while ((isPending || current != path) && ScanXmpTagEnds(m_text, position, tag));
  return position;
}

void VxXMPParser::CloseLeaf(XmpPathIndex path, const XmpTag& start, const XmpTag& end) {
  if (g_bDebugLogEnabled != 0) {
    LogMismatch("[VxXMPParser] XMPParser!!!, format error, wrong Pair (%s)!=(%s)", NameOf(end),
                start.Name());
  }
  ReadTextValue(path, start, end);
}

// Any end tag closes the innermost element. Returns the path around it.
XmpPathIndex VxXMPParser::CloseElement(XmpPathIndex path, const XmpTag& end) const {
  if (g_bDebugLogEnabled != 0) {
    LogMismatch("[VxXMPParser] XMPParser!!!, format error, wrong End (%s)!=(%s)", NameOf(end),
                m_paths.Name(path));
  }
  return m_paths.Parent(path);
}

void VxXMPParser::ParseAttributes(XmpPathIndex path, const XmpTag& tag) {
  XmpAttribute attribute;
  for (std::uint32_t from = tag.attrStart; ReadAttribute(from, tag.attrEnd, attribute);
       from = attribute.end + 1) {
    const XmpSpan prefix = Cut(attribute.prefixStart, attribute.prefixEnd);
    const XmpSpan name = Cut(attribute.nameStart, attribute.nameEnd);
    const XmpSpan value = Cut(attribute.valueStart, attribute.valueEnd);
    if (prefix.In(m_text) == kBindingPrefix) {
      Bind(name, value);
    } else {
      AddProperty(path, prefix, name, value);
    }
  }
}

void VxXMPParser::ReadTextValue(XmpPathIndex path, const XmpTag& start, const XmpTag& end) {
  AddProperty(path, Cut(start.prefixStart, start.prefixEnd), Cut(start.nameStart, start.nameEnd),
              Cut(start.end + 1, end.start - 1));
}

void VxXMPParser::AddProperty(XmpPathIndex path, XmpSpan prefix, XmpSpan name, XmpSpan value) {
  constexpr std::size_t kFewProperties = 64;
  if (m_properties.empty()) m_properties.reserve(kFewProperties);
  m_properties.push_back({path, name, ResolveNamespace(prefix), value});
}

void VxXMPParser::Bind(XmpSpan prefix, XmpSpan nameSpace) {
  m_bindings[prefix.In(m_text)] = nameSpace;
  m_lastPrefix = {};
}

XmpSpan VxXMPParser::ResolveNamespace(XmpSpan prefix) {
  const std::string_view text = prefix.In(m_text);
  if (!text.empty() && text == m_lastPrefix) return m_lastNamespace;
  const auto bound = m_bindings.find(text);
  if (bound == m_bindings.end()) return prefix;
  m_lastPrefix = text;
  m_lastNamespace = bound->second;
  return m_lastNamespace;
}

std::string_view VxXMPParser::PropertyName(std::size_t index) const {
  return m_properties[index].name.In(m_text);
}

std::string_view VxXMPParser::PropertyNamespace(std::size_t index) const {
  return m_properties[index].nameSpace.In(m_text);
}

std::string_view VxXMPParser::PropertyValue(std::size_t index) const {
  return m_properties[index].value.In(m_text);
}

XmpProperty VxXMPParser::Property(std::size_t index) const {
  return {m_paths.Text(PropertyPath(index)), std::string(PropertyName(index)),
          std::string(PropertyNamespace(index)), std::string(PropertyValue(index))};
}

// A text that stops at a zero byte, or that is empty, is a shorter span from the same start.
XmpSpan VxXMPParser::Cut(std::uint32_t first, std::uint32_t last) const noexcept {
  if (first >= m_zerosEnd && first <= last && last < m_text.size()) {
    return {first, last - first + 1};
  }
  return {first, static_cast<std::uint32_t>(XmpSubstring(m_text, first, last).size())};
}
