// The module's exports.

#include <algorithm>
#include <array>
#include <new>

#include <lumidex/ComTypes.h>
#include <lumidex/Guids.h>

#include "com/ClassFactory.h"
#include "com/Lumidex.h"
#include "com/Unknown.h"

namespace {

constexpr std::array kClasses = {
    ClassTemplate{&CLSID_Lumidex, CLumidex::CreateInstance},
};

}  // namespace

// Both accepted interfaces begin at the same place, so that the factory is handed out for either
// without a query.
extern "C" HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
  if (ppv == nullptr) return E_POINTER;
  if (riid != IID_IUnknown && riid != IID_IClassFactory) return E_NOINTERFACE;
  const auto found =
      std::find_if(kClasses.begin(), kClasses.end(),
                   [&](const ClassTemplate& entry) { return *entry.m_ClsID == rclsid; });
  if (found == kClasses.end()) return CLASS_E_CLASSNOTAVAILABLE;

  *ppv = nullptr;
  auto* factory = new (std::nothrow) CClassFactory(*found);
  if (factory == nullptr) return E_OUTOFMEMORY;
  factory->AddRef();
  *ppv = static_cast<IClassFactory*>(factory);
  return S_OK;
}

extern "C" HRESULT STDAPICALLTYPE DllCanUnloadNow() {
  return m_cLocks > 0 || m_cObjects.load() != 0 ? S_FALSE : S_OK;
}
