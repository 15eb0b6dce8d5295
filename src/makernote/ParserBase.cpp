#include "makernote/ParserBase.h"

#include <utility>

#include "base/TagValue.h"
#include "base/TypeSizes.h"

namespace {

// A value of at most these many bytes stands in the entry itself.
constexpr std::uint32_t kValueFieldSize = 4;

// An entry with more values is passed over.
constexpr std::uint32_t kMaxValueCount = 65535;

}  // namespace

bool CParserBase::Parse(FileStream& stream, ByteOrder order, std::uint32_t lower,
                        std::uint32_t upper) {
  if (!stream.IsOpen()) return false;
  m_nParseState = 0;
  m_nStartPosition = static_cast<std::uint32_t>(stream.Position());
  m_byteOrder = order;
  return ReadHeader(stream) && ParseIFD(stream, lower, upper);
}

bool CParserBase::GetInfo(MakerNoteInfo& info) {
  info.nVendorCode = m_nVendorCode;
  return FillInfo(info);
}

bool CParserBase::FirstEntry() {
  m_current = m_entries.begin();
  return true;
}

bool CParserBase::NextEntry() {
  if (m_current == m_entries.end()) return false;
  ++m_current;
  return m_current != m_entries.end();
}

const TagEntry* CParserBase::CurrentEntry() {
  return m_current == m_entries.end() ? nullptr : &m_current->second;
}

bool CParserBase::ParseIFD(FileStream& stream, std::uint32_t lower, std::uint32_t upper) {
  return ReadDirectory(stream, m_nBaseOffset, lower, upper);
}

bool CParserBase::OnEntry(FileStream&, std::uint32_t, std::uint32_t) {
  return true;
}

bool CParserBase::OnFinish(FileStream&) {
  return true;
}

void CParserBase::SetContext(std::string make, std::string model, std::uint32_t baseOffset,
                             std::string software, std::uint16_t focalLength) {
  m_strMake = std::move(make);
  m_strModel = std::move(model);
  m_nBaseOffset = baseOffset;
  m_strSoftware = std::move(software);
  m_nFocalLength = focalLength;
}

bool CParserBase::GetEntry(std::uint32_t tag, EntryCopy& out) const {
  const TagEntry* entry = m_entries.Find(tag);
  if (entry == nullptr) return false;
  const auto bytes = TagBytes(*entry);
  if (bytes.empty()) return false;
  out.m_nTag = entry->m_nTag;
  out.m_nType = entry->m_nType;
  out.bytes.assign(bytes.begin(), bytes.end());
  return true;
}

// A used-up budget ends the walk as if the entry before had been the last.
bool CParserBase::ReadDirectory(FileStream& stream, std::uint32_t offsetBase, std::uint32_t lower,
                                std::uint32_t upper) {
  const std::uint16_t count = stream.ReadU16(m_byteOrder);
  if (count == 0 || count > kMaxEntries) return false;
  for (std::uint16_t i = 0; i < count && stream.Budget().TakeEntry(); ++i) {
    ReadEntry(stream, offsetBase, lower, upper);
  }
  static_cast<void>(OnFinish(stream));
  return true;
}

// Leaves the stream behind the entry's 12 bytes.
void CParserBase::ReadEntry(FileStream& stream, std::uint32_t offsetBase, std::uint32_t lower,
                            std::uint32_t upper) {
  const std::uint16_t tag = stream.ReadU16(m_byteOrder);
  const std::uint16_t type = stream.ReadU16(m_byteOrder);
  const std::uint32_t count = stream.ReadU32(m_byteOrder);
  const auto valueField = static_cast<std::uint32_t>(stream.Position());

  if (SeekToValue(stream, ValueSize(type, count), offsetBase, lower, upper)) {
    static_cast<void>(OnEntry(stream, tag, type));
    if (count <= kMaxValueCount) {
      m_fnStoreTagValue(m_entries.FindOrInsert(tag), tag, stream, type, count, m_byteOrder,
                        m_nodes);
    }
  }
  stream.Seek(valueField + kValueFieldSize);
}

// With the stream at the value field: moves it to the value and says whether the entry is accepted.
bool CParserBase::SeekToValue(FileStream& stream, std::uint64_t size, std::uint32_t offsetBase,
                              std::uint32_t lower, std::uint32_t upper) const {
  if (size <= kValueFieldSize) return true;
  const std::uint32_t position = offsetBase + stream.ReadU32(m_byteOrder);
  const bool bounded = lower != 0 && upper != 0;
  if (bounded && (position <= lower || position >= upper)) return false;
  stream.Seek(position);
  return true;
}
