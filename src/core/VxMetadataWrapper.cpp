#include "core/VxMetadataWrapper.h"

#include <algorithm>
#include <new>
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

  auto file = std::make_unique<FileStream>();
  if (!file->Open(path, LMD_W("rb"))) return;
  file->Budget() = ParseBudget(*file);
  store.m_pFile = std::move(file);
  if (kind != FILETYPE_JPEG) return;
  if (store.m_fnParseAppSegments() == S_OK) store.MergeMetadata();
}

HRESULT VxMetadataWrapper::Parse(const WCHAR* path, std::uint32_t kind, std::uint32_t mask,
                                 IImageInfo* pInfo) {
  std::unique_ptr<VxMetadata> store;
  try {
    store = std::make_unique<VxMetadata>();
  } catch (...) {
    return E_POINTER;
  }
  store->m_nOwnerValue = m_nOption;
  store->m_bKeepsThumbnail = false;
  Read(*store, path, kind, mask);
  auto records = ExtractRecords(*store, mask);
  if (records.empty()) return S_OK;
  // The list of a result object is always one of the module's own.
  auto* list = static_cast<OwnedRecordList*>(pInfo->GetInfoList());
  return list->Take(std::move(records)) ? S_OK : LMD_E_OUT_OF_MEMORY;
}
