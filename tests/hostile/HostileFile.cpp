#include "HostileFile.h"

#include <gtest/gtest.h>

#include "container/ImageContainer.h"

namespace test {
namespace {

// With the budget that the driver gives it.
std::unique_ptr<StoreFile> OpenFile(const Bytes& bytes) {
  auto file = std::make_unique<StoreFile>(bytes);
  file->Stream().Budget() = ParseBudget(file->Stream());
  return file;
}

// The number of records of a complete parse.
std::int32_t ParseForAHost(const WCHAR* path) {
  CJpegContainer container;
  IImageInfo* info = nullptr;
  EXPECT_EQ(container.Parse(path, kAllCategories, &info), S_OK);
  if (info == nullptr) return 0;
  const std::int32_t count = info->GetInfoList()->m_nCount;
  info->Release();
  return count;
}

}  // namespace

std::unique_ptr<StoreFile> BoundedJpeg(const Bytes& bytes) {
  const Bound bound = InputOf(bytes.size());
  const TempFile copy(bytes);
  const std::int32_t records = Bounded(bound, [&] { return ParseForAHost(copy.Path()); });
  EXPECT_GE(records, 5);  // those of the image basics
  return Bounded(bound, [&] {
    auto file = OpenFile(bytes);
    EXPECT_EQ(file->ParseJpeg(), S_OK);
    return file;
  });
}

std::unique_ptr<StoreFile> BoundedTiff(const Bytes& bytes, std::uint32_t tiffBase,
                                       std::uint32_t segStart, std::uint32_t segEnd,
                                       HRESULT* result) {
  return Bounded(InputOf(bytes.size()), [&] {
    auto file = OpenFile(bytes);
    const HRESULT answer = file->ParseTiff(tiffBase, segStart, segEnd);
    if (result != nullptr) *result = answer;
    return file;
  });
}

Bytes Repeat(const Bytes& bytes, std::size_t times) {
  Bytes all;
  all.reserve(bytes.size() * times);
  for (std::size_t i = 0; i < times; ++i) all.insert(all.end(), bytes.begin(), bytes.end());
  return all;
}

Bytes First(const Bytes& bytes, std::size_t count) {
  return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
}

Directory ShortEntries(const Tiff& tiff, std::uint16_t firstTag, std::uint16_t count) {
  Directory directory;
  for (std::uint16_t i = 0; i < count; ++i) {
    const auto tag = static_cast<std::uint16_t>(firstTag + i);
    directory.push_back(tiff.Short(tag, {tag}));
  }
  return directory;
}

void ExpectSound(VxMetadata& store) {
  const auto expectSound = [](const TagMap& table) {
    for (const auto& [key, entry] : table) {
      EXPECT_EQ(entry.m_nTag, key);
      EXPECT_TRUE(entry.m_pData == nullptr || TagBytes(entry).size() == entry.m_nSize) << key;
    }
  };
  for (std::int32_t block = BLOCK_IFD0; block <= kBlockCount; ++block) {
    expectSound(*store.m_fnGetBlock(block));
  }
  for (const auto& [number, table] : store.m_mapSubIfd) expectSound(table);
  EXPECT_TRUE(store.m_pThumbnail != nullptr || store.m_nThumbnailSize == 0);
}

std::uint64_t StoredBytes(VxMetadata& store, std::int32_t block) {
  std::uint64_t sum = 0;
  for (const auto& [key, entry] : *store.m_fnGetBlock(block)) sum += TagBytes(entry).size();
  return sum;
}

}  // namespace test
