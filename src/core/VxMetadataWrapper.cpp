#include "core/VxMetadataWrapper.h"

#include <utility>

#include <lumidex/ResultCodes.h>

#include "core/RecordExtractors.h"

void VxMetadataWrapper::Read(VxMetadata& store, const WCHAR* path, std::uint32_t kind,
                             std::uint32_t mask) {
  constexpr std::uint32_t kLastKind = 3;
  if (store.m_pFile || path == nullptr || kind < FILETYPE_JPEG || kind > kLastKind) return;
  store.m_strPath = path;
  store.m_nFileType = kind;
  store.m_nParseFlags = mask;
  if (store.m_strPath.empty()) return;

  FileStream& file = store.m_pFile.emplace();
  if (!file.Open(path, LMD_W("rb"))) return store.m_pFile.reset();
  file.Budget() = ParseBudget(file);
  if (kind != FILETYPE_JPEG) return;
  if (store.m_fnParseAppSegments() == S_OK) store.MergeMetadata();
}

HRESULT VxMetadataWrapper::Parse(const WCHAR* path, std::uint32_t kind, std::uint32_t mask,
                                 IImageInfo* pInfo) {
  VxMetadata store;
  store.m_nOwnerValue = m_nOption;
  store.m_bReadsIfd1 = (mask & CATEGORY_IFD1) != 0;
  store.m_bKeepsThumbnail = false;
  Read(store, path, kind, mask);
  auto records = ExtractRecords(store, mask);
  if (records.empty()) return S_OK;
  // The list of a result object is always one of the module's own.
  auto* list = static_cast<OwnedRecordList*>(pInfo->GetInfoList());
  return list->Take(std::move(records)) ? S_OK : LMD_E_OUT_OF_MEMORY;
}
