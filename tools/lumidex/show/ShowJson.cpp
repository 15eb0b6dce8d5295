#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "ResultNames.h"
#include "Text.h"
#include "base/ByteOrder.h"
#include "names/Names.h"
#include "show/RecordValue.h"
#include "show/Show.h"

namespace tool {
namespace {

using Json = nlohmann::json;

template <class Number>
Json Numbers(const CInfoRecord& record) {
  Json values = Json::array();
  for (std::size_t i = 0; i < RecordCount(record, sizeof(Number)); ++i) {
    values.push_back(HostValue<Number>(RecordBytes(record), i));
  }
  return values;
}

template <class Number>
Json Rationals(const CInfoRecord& record) {
  Json values = Json::array();
  for (std::size_t i = 0; i < RecordCount(record, 2 * sizeof(Number)); ++i) {
    values.push_back(Json::array({HostValue<Number>(RecordBytes(record), 2 * i),
                                  HostValue<Number>(RecordBytes(record), 2 * i + 1)}));
  }
  return values;
}

Json ValueOf(const CInfoRecord& record) {
  switch (record.m_nType) {
    case LMD_RECORD_INT32:
      return Numbers<std::int32_t>(record);
    case LMD_RECORD_UINT32:
      return Numbers<std::uint32_t>(record);
    case LMD_RECORD_SRATIONAL:
      return Rationals<std::int32_t>(record);
    case LMD_RECORD_URATIONAL:
      return Rationals<std::uint32_t>(record);
    case LMD_RECORD_DOUBLE:
      return Numbers<double>(record);
    case LMD_RECORD_ASCII:
    case LMD_RECORD_WIDE_TEXT:
      return RecordText(record);
    default:
      return HexBytes(RecordBytes(record));
  }
}

// An object as text. Fields are added in their order; looking each one up first, as the library
// does, would take quadratic time on a large table.
class ObjectText {
 public:
  void AddText(std::string_view key, const std::string& json) {
    m_text += Concat({m_text.empty() ? "{" : ",", Json(key).dump(), ":", json});
  }
  void Add(std::string_view key, const Json& value) { AddText(key, value.dump()); }
  std::string Text() const { return m_text.empty() ? "{}" : m_text + "}"; }

 private:
  std::string m_text;
};

std::string RecordObject(const CInfoRecord& record, bool raw) {
  const TagRow* row = FindInGroup(record.m_nGroup, record.m_nId);
  ObjectText object;
  object.Add("group", record.m_nGroup);
  object.Add("id", record.m_nId);
  object.Add("name", row != nullptr ? Json(row->name) : Json(nullptr));
  object.Add("type", record.m_nType);
  object.Add("size", record.m_nSize);
  object.Add("value", ValueOf(record));
  if (raw) object.Add("hex", HexBytes(RecordBytes(record)));
  return object.Text();
}

std::string RecordsText(const OwnedRecords& records, bool raw) {
  std::string text = "[";
  for (const CInfoRecord& record : records) {
    if (text.size() > 1) text += ",";
    text += RecordObject(record, raw);
  }
  return text + "]";
}

std::string TableText(const TagMap& table) {
  ObjectText object;
  for (const auto& [key, entry] : table) {
    ObjectText value;
    value.Add("tag", entry.m_nTag);
    value.Add("type", entry.m_nType);
    value.Add("count", entry.m_nCount);
    value.Add("size", entry.m_nSize);
    value.Add("data", HexBytes(TagBytes(entry)));
    object.AddText(std::to_string(key), value.Text());
  }
  return object.Text();
}

Json ThumbnailOf(const VxMetadata& store) {
  if (store.m_pThumbnail == nullptr) return nullptr;
  return HexBytes({store.m_pThumbnail.get(), store.m_nThumbnailSize});
}

std::string StoreText(VxMetadata& store) {
  ObjectText blocks;
  for (std::int32_t block = 1; block <= kBlockCount; ++block) {
    blocks.AddText(std::to_string(block), TableText(*store.m_fnGetBlock(block)));
  }
  ObjectText subIfds;
  for (const auto& [block, table] : store.m_mapSubIfd) {
    subIfds.AddText(std::to_string(block), TableText(table));
  }
  ObjectText object;
  object.AddText("blocks", blocks.Text());
  object.AddText("subifds", subIfds.Text());
  object.Add("image", Json::array({store.m_nImageWidth, store.m_nImageHeight}));
  object.Add("thumbnail", ThumbnailOf(store));
  object.Add("thumbnail_fields", Json::array({store.m_nThumbnailSize, store.m_nThumbnailWidth,
                                              store.m_nThumbnailHeight, store.m_nThumbnailFormat}));
  object.Add("tiff_magic", store.m_nTiffMagic);
  object.Add("embedded_jpeg_pos", store.m_nEmbeddedJpegPos);
  return object.Text();
}

}  // namespace

std::string JsonLine(Photo& photo, const Options& options) {
  ObjectText object;
  object.Add("file", photo.file);
  object.Add("type", photo.type);
  object.Add("result", ResultNumber(photo.result));
  object.AddText("records", RecordsText(photo.records, options.raw));
  if (options.trace) object.Add("log", photo.log);
  if (options.store) object.AddText("store", StoreText(photo.store));
  return object.Text() + "\n";
}

}  // namespace tool
