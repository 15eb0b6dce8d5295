// A host in C++ on the interface header alone.
//
//   header_host MODULE PHOTO

#include <cstdio>
#include <filesystem>
#include <string>
#include <type_traits>

#include <lumidex/ILumidex.h>

extern "C" {
#include "Module.h"
}

static_assert(!std::has_virtual_destructor_v<IUnknown>);
static_assert(!std::has_virtual_destructor_v<IClassFactory>);
static_assert(!std::has_virtual_destructor_v<ILumidex> && sizeof(ILumidex) == sizeof(void*));
static_assert(!std::has_virtual_destructor_v<IImageInfo> && sizeof(IImageInfo) == sizeof(void*));
static_assert(!std::is_polymorphic_v<CMETADATA_INFO_LIST>);
static_assert(std::is_trivial_v<CMETADATA_INFO_LIST>);
static_assert(std::is_trivial_v<CInfoRecord> && std::is_standard_layout_v<CInfoRecord>);
static_assert(std::is_same_v<decltype(LMD_W('x')), WCHAR> && sizeof(WCHAR) == 2);
static_assert(sizeof(HRESULT) == 4 && sizeof(ULONG) == 4 && sizeof(BOOL) == 4);
static_assert(SUCCEEDED(S_FALSE) && FAILED(LMD_E_NOT_FOUND));

namespace {

int g_failures = 0;

void Check(bool condition, const char* text, int line) {
  if (condition) return;
  std::fprintf(stderr, "%s:%d: %s\n", __FILE__, line, text);
  ++g_failures;
}
#define CHECK(condition) Check((condition), #condition, __LINE__)

ILumidex* NewPhoto() {
  const auto getClassObject =
      reinterpret_cast<LPFNGETCLASSOBJECT>(ModuleFunction("DllGetClassObject"));
  void* out = nullptr;
  CHECK(getClassObject(CLSID_Lumidex, IID_IClassFactory, &out) == S_OK);
  auto* factory = static_cast<IClassFactory*>(out);
  out = nullptr;
  CHECK(factory->CreateInstance(nullptr, IID_ILumidex, &out) == S_OK);
  factory->Release();
  return static_cast<ILumidex*>(out);
}

void CheckPhoto(ILumidex& photo, const std::filesystem::path& path) {
  const auto text = path.string<WCHAR>();
  float angle = 0;
  IImageInfo* info = nullptr;
  CHECK(photo.GetFileType(text.c_str()) == LMD_FILE_JPEG);
  CHECK(photo.GetPoseHeading(&angle) == LMD_E_INVALID_ARG);
  CHECK(photo.Open(text.c_str()) == S_OK);
  CHECK(photo.ParseBasic(text.c_str(), &info) == S_OK);
  if (info == nullptr) return;
  const CMETADATA_INFO_LIST* list = info->GetInfoList();
  CHECK(info->GetState() == 1 && list->m_nState == 1);
  CHECK(list->m_nCount >= 5 && list->m_pRecords[4].m_nId == LMD_ID_COLOR_SPACE);
  CHECK(info->Release() == 0);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 || OpenModule(argv[1]) == 0) return 2;
  ILumidex* photo = NewPhoto();
  if (photo == nullptr) return 1;
  CheckPhoto(*photo, argv[2]);
  CHECK(photo->Release() == 0);
  CHECK(reinterpret_cast<LPFNCANUNLOADNOW>(ModuleFunction("DllCanUnloadNow"))() == S_OK);
  CloseModule();
  return g_failures == 0 ? 0 : 1;
}
