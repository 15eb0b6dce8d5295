#include "Activation.h"

#include <cstdio>
#include <thread>

#include <lumidex/Lumidex.hpp>

namespace {

int g_failures = 0;

// Runs an action on a thread of its own in an apartment of the given kind.
template <class Action>
void InApartment(DWORD kind, HANDLE context, Action action) {
  std::thread thread([&] {
    ULONG_PTR cookie = 0;
    if (context != nullptr) Check(ActivateActCtx(context, &cookie) != FALSE, "ActivateActCtx");
    Check(SUCCEEDED(CoInitializeEx(nullptr, kind)), "CoInitializeEx");
    action();
    CoUninitialize();
    if (context != nullptr) Check(DeactivateActCtx(0, cookie) != FALSE, "DeactivateActCtx");
  });
  thread.join();
}

template <class Action>
void InEachApartment(HANDLE context, Action action) {
  InApartment(COINIT_APARTMENTTHREADED, context, action);
  InApartment(COINIT_MULTITHREADED, context, action);
}

// Whether the object's functions are in the module's file.
bool IsOfTheModule(ILumidex* object) {
  const void* const* table = *reinterpret_cast<const void* const* const*>(object);
  HMODULE module = nullptr;
  constexpr DWORD kFlags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  if (!GetModuleHandleExW(kFlags, static_cast<LPCWSTR>(table[3]), &module)) return false;
  return module == GetModuleHandleW(L"LumidexMgr.dll");
}

HRESULT Create(ILumidex** object) {
  return CoCreateInstance(__uuidof(Lumidex), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(object));
}

}  // namespace

void Check(bool condition, const char* text) {
  if (condition) return;
  std::fprintf(stderr, "activation: %s\n", text);
  ++g_failures;
}

int FailureCount() {
  return g_failures;
}

void CheckActivation(const std::wstring& photo, HANDLE context) {
  InEachApartment(context, [&] {
    ILumidex* object = nullptr;
    Check(Create(&object) == S_OK, "CoCreateInstance");
    if (object == nullptr) return;
    Check(IsOfTheModule(object), "an object without a proxy");
    Check(object->Open(photo.c_str()) == S_OK, "Open");
    object->Release();
  });
  InEachApartment(context, [&] {
    try {
      const auto size = lumidex::Module::Activate().Open(photo).Records().size();
      Check(size > 5, "records through the wrapper");
    } catch (const lumidex::Error& error) {
      Check(false, error.what());
    }
  });
}

void CheckNoActivation() {
  InEachApartment(nullptr, [] {
    ILumidex* object = nullptr;
    Check(Create(&object) == REGDB_E_CLASSNOTREG, "a class that nobody has registered");
    Check(object == nullptr, "no object");
  });
}
