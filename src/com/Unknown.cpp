#include "com/Unknown.h"

std::atomic<std::int32_t> m_cObjects{0};
std::int32_t m_cLocks = 0;

namespace {

// A count is never reported as 0 while the object lives.
ULONG Reported(std::uint32_t count) {
  return count == 0 ? 1 : count;
}

}  // namespace

HRESULT STDMETHODCALLTYPE CUnknown::NonDelegatingQueryInterface(REFIID riid, void** ppv) {
  if (ppv == nullptr) return E_POINTER;
  if (riid == IID_IUnknown) {
    *ppv = static_cast<IUnknown*>(&m_face);
    NonDelegatingAddRef();
    return S_OK;
  }
  *ppv = nullptr;
  return E_NOINTERFACE;
}

ULONG STDMETHODCALLTYPE CUnknown::NonDelegatingAddRef() {
  return Reported(m_cRef.fetch_add(1) + 1);
}

// Unless this was the last reference, another thread may delete the object at once, so the count is
// not looked at again. The last release counts up once more: a stray AddRef and Release while the
// object is torn down cannot delete it twice.
ULONG STDMETHODCALLTYPE CUnknown::NonDelegatingRelease() {
  const std::uint32_t before = m_cRef.fetch_sub(1);
  if (before != 1) return Reported(before - 1);
  m_cRef.fetch_add(1);
  delete this;
  return 0;
}
