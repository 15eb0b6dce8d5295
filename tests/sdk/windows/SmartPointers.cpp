// The identifiers of the header as compilers for Windows attach them to types, and the system's
// smart pointers on them.
//
//   smart_pointers MODULE

#include <comdef.h>
#include <cstdio>
#include <wrl/client.h>

#include <lumidex/ILumidex.h>

using Microsoft::WRL::ComPtr;
using LumidexPtr = _com_ptr_t<_com_IIID<ILumidex, &__uuidof(ILumidex)>>;

namespace {

int Failed(const char* text) {
  std::fprintf(stderr, "smart_pointers: %s\n", text);
  return 1;
}

int CheckPointers(LPFNGETCLASSOBJECT getClassObject) {
  ComPtr<IClassFactory> factory;
  ComPtr<ILumidex> photo;
  ComPtr<IUnknown> unknown;
  if (FAILED(getClassObject(__uuidof(Lumidex), IID_PPV_ARGS(factory.GetAddressOf())))) {
    return Failed("no class factory by __uuidof(Lumidex)");
  }
  if (FAILED(factory->CreateInstance(nullptr, IID_PPV_ARGS(photo.GetAddressOf())))) {
    return Failed("no object by IID_PPV_ARGS");
  }
  if (FAILED(photo.As(&unknown))) return Failed("no IUnknown by As");
  ComPtr<ILumidex> again;
  if (FAILED(unknown.As(&again)) || again.Get() != photo.Get()) return Failed("no way back by As");

  const LumidexPtr pointer(unknown.Get());
  if (pointer == nullptr) return Failed("no ILumidex by _com_ptr_t");
  if (pointer->GetFileType(L"smart-pointers-none") != LMD_FILE_UNKNOWN) return Failed("a call");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  if (__uuidof(ILumidex) != IID_ILumidex) return Failed("__uuidof(ILumidex)");
  if (__uuidof(Lumidex) != CLSID_Lumidex) return Failed("__uuidof(Lumidex)");
  const HMODULE module = LoadLibraryA(argv[1]);
  if (module == nullptr) return Failed("the module is not loaded");
  const auto entry = reinterpret_cast<void (*)()>(GetProcAddress(module, "DllGetClassObject"));
  return CheckPointers(reinterpret_cast<LPFNGETCLASSOBJECT>(entry));
}
