#include "makernote/VxMakerNoteParser.h"

#include <utility>

#include "core/DebugLog.h"
#include "makernote/VendorTable.h"

CVxMakerNoteParser::CVxMakerNoteParser(std::uint32_t) {}

CVxMakerNoteParser::~CVxMakerNoteParser() = default;

bool CVxMakerNoteParser::SetCameraInfo(std::string make, std::string model) {
  m_strMake = std::move(make);
  m_strModel = std::move(model);
  m_pParser = CreateVendorParser(m_strMake);
  return m_pParser != nullptr;
}

void CVxMakerNoteParser::SetExtraInfo(std::string software, std::uint16_t focalLength) {
  m_strSoftware = std::move(software);
  m_nFocalLength = focalLength;
}

void CVxMakerNoteParser::FreeMakerNoteInfo(std::unique_ptr<MakerNoteInfo> info) {
  info.reset();
}

std::unique_ptr<MakerNoteInfo> CVxMakerNoteParser::ParseMakerNote(FileStream& stream,
                                                                  std::uint32_t baseOffset,
                                                                  ByteOrder order,
                                                                  std::uint32_t lower,
                                                                  std::uint32_t upper) {
  if (!HasParser()) return nullptr;
  if (!Parse(stream, baseOffset, order, lower, upper)) return nullptr;
  return BuildInfo();
}

std::unique_ptr<MakerNoteInfo> CVxMakerNoteParser::ParseMakerNote(const WCHAR* path,
                                                                  std::uint32_t position,
                                                                  std::uint32_t baseOffset,
                                                                  ByteOrder order) {
  if (!HasParser()) return nullptr;
  if (path == nullptr || *path == 0) {
    DebugLog("[ParseMakerNote] err! Invalid file path!");
    return nullptr;
  }
  FileStream stream;
  if (!stream.Open(path, LMD_W("rb"))) {
    DebugLog("[ParseMakerNote] err! Fail to open file");
    return nullptr;
  }
  stream.Seek(position);
  if (!Parse(stream, baseOffset, order, 0, 0)) return nullptr;
  static_cast<void>(stream.Close());
  return BuildInfo();
}

bool CVxMakerNoteParser::FirstEntry() {
  return m_pParser && m_pParser->FirstEntry();
}

bool CVxMakerNoteParser::NextEntry() {
  return m_pParser && m_pParser->NextEntry();
}

const TagEntry* CVxMakerNoteParser::CurrentEntry() {
  return m_pParser ? m_pParser->CurrentEntry() : nullptr;
}

bool CVxMakerNoteParser::HasParser() const {
  if (m_pParser) return true;
  DebugLog("[VxMakerNoteParser] Err! m_pParser is invalid! ");
  return false;
}

bool CVxMakerNoteParser::Parse(FileStream& stream, std::uint32_t baseOffset, ByteOrder order,
                               std::uint32_t lower, std::uint32_t upper) {
  m_pParser->SetContext(m_strMake, m_strModel, baseOffset, m_strSoftware, m_nFocalLength);
  return m_pParser->Parse(stream, order, lower, upper);
}

std::unique_ptr<MakerNoteInfo> CVxMakerNoteParser::BuildInfo() {
  auto info = std::make_unique<MakerNoteInfo>();
  static_cast<void>(m_pParser->GetInfo(*info));
  return info;
}
