#include "com/ClassFactory.h"

HRESULT STDMETHODCALLTYPE CClassFactory::QueryInterface(REFIID riid, void** ppv) {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  if (riid != IID_IUnknown && riid != IID_IClassFactory) return E_NOINTERFACE;
  *ppv = static_cast<IClassFactory*>(this);
  AddRef();
  return S_OK;
}

ULONG STDMETHODCALLTYPE CClassFactory::AddRef() {
  return ++m_cRef;
}

ULONG STDMETHODCALLTYPE CClassFactory::Release() {
  if (--m_cRef != 0) return m_cRef;
  delete this;
  return 0;
}

// An aggregated object may only be asked for its non-delegating unknown.
HRESULT STDMETHODCALLTYPE CClassFactory::CreateInstance(IUnknown* pUnkOuter, REFIID riid,
                                                        void** ppv) {
  if (ppv == nullptr) return E_POINTER;
  if (pUnkOuter != nullptr && riid != IID_IUnknown) return E_NOINTERFACE;
  HRESULT result = S_OK;
  INonDelegatingUnknown* object = m_pTemplate->m_lpfnNew(pUnkOuter, &result);
  if (object == nullptr) return E_OUTOFMEMORY;
  if (FAILED(result)) {
    delete object;
    return result;
  }

  object->NonDelegatingAddRef();
  result = object->NonDelegatingQueryInterface(riid, ppv);
  object->NonDelegatingRelease();
  return result;
}

// By design plain and without a lower bound.
HRESULT STDMETHODCALLTYPE CClassFactory::LockServer(BOOL fLock) {
  m_cLocks += fLock != FALSE ? 1 : -1;
  return S_OK;
}
