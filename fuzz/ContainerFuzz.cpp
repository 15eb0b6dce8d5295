// A whole file through the container with any category mask, and through the two steps of the parse
// driver: both must give the same records. With a bit of the mask that means nothing else, the
// container parses twice.

#include <cstdint>
#include <span>

#include "FuzzChecks.h"
#include "FuzzInput.h"
#include "MemoryFiles.h"
#include "container/ImageContainer.h"
#include "core/VxMetadataWrapper.h"

namespace {

constexpr std::uint32_t kParseTwiceBit = 0x40000000;

std::span<const CInfoRecord> RecordsOf(IImageInfo& info) {
  const CMETADATA_INFO_LIST* list = info.GetInfoList();
  fuzz::Require(list != nullptr && list->m_nState == 1, "a result has a list");
  fuzz::Require((list->m_pRecords == nullptr) == (list->m_nCount == 0),
                "a list has records when it counts some");
  return {list->m_pRecords, static_cast<std::size_t>(list->m_nCount)};
}

IImageInfo* Parse(CJpegContainer& container, const WCHAR* path, std::uint32_t mask) {
  IImageInfo* info = nullptr;
  fuzz::Require(container.Parse(path, mask, &info) == S_OK, "a parse succeeds");
  fuzz::Require(info != nullptr && info->GetState() == 1, "a parse gives a result");
  return info;
}

// A second parse answers the same and leaves the first result alone.
void RequireOwnRecords(CJpegContainer& container, const WCHAR* path, std::uint32_t mask,
                       IImageInfo& first) {
  const auto dump = fuzz::DumpRecords(RecordsOf(first));
  IImageInfo* const second = Parse(container, path, mask);
  fuzz::Require(dump == fuzz::DumpRecords(RecordsOf(*second)), "a second parse answers the same");
  second->Release();
  fuzz::Require(dump == fuzz::DumpRecords(RecordsOf(first)), "each result owns its records");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzz::MemoryFiles files;
  static const WCHAR* const path = files.Add();

  const fuzz::RunChecks checks;
  fuzz::FuzzInput input(data, size);
  const std::uint32_t mask = input.TakeU32();
  files.Put(path, input.TakeRest());

  CJpegContainer container;
  IImageInfo* const info = Parse(container, path, mask);
  fuzz::RequireSoundRecords(RecordsOf(*info), mask);
  const auto dump = fuzz::DumpRecords(RecordsOf(*info));
  if ((mask & kParseTwiceBit) != 0) RequireOwnRecords(container, path, mask, *info);
  info->Release();

  VxMetadata store;
  VxMetadataWrapper::Read(store, path, FILETYPE_JPEG, mask);
  fuzz::RequireSoundStore(store);
  const auto before = fuzz::DumpStore(store);
  const auto records = ExtractRecords(store, mask);
  const CInfoRecord* const first = records.data();
  fuzz::Require(dump == fuzz::DumpRecords({first, records.size()}),
                "the records are those of the store");
  fuzz::Require(before == fuzz::DumpStore(store), "the records are copies");
  return 0;
}
