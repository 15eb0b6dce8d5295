#ifndef LUMIDEX_COM_CLASSFACTORY_H_
#define LUMIDEX_COM_CLASSFACTORY_H_

#include <cstdint>

#include <lumidex/ComTypes.h>

#include "com/Unknown.h"

// One class that the module creates.
struct ClassTemplate {
  const CLSID* m_ClsID;

  // Makes an object with a count of 0. Null, with E_OUTOFMEMORY in *phr, when there is no memory.
  INonDelegatingUnknown* (*m_lpfnNew)(IUnknown* pUnkOuter, HRESULT* phr);
};

// Creates objects of one class. By design its count is not interlocked: one thread at a time.
class CClassFactory final : public IClassFactory, public CBaseObject {
 public:
  explicit CClassFactory(const ClassTemplate& classTemplate) noexcept
      : m_pTemplate(&classTemplate) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppv) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL fLock) override;

 private:
  ~CClassFactory() = default;

  const ClassTemplate* m_pTemplate;
  std::uint32_t m_cRef = 0;
};

#endif  // LUMIDEX_COM_CLASSFACTORY_H_
