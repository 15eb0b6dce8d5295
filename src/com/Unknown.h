#ifndef LUMIDEX_COM_UNKNOWN_H_
#define LUMIDEX_COM_UNKNOWN_H_

// Identity, counting and delegation for every COM object of the module. An object has two unknowns:
// the non-delegating one owns its reference count; the one behind its public interfaces forwards to
// the owner, which is the outer object when it is aggregated and its own non-delegating unknown
// otherwise.

#include <atomic>
#include <cstdint>

#include <lumidex/ComTypes.h>

// Module-wide counts, zero at load.
extern std::atomic<std::int32_t> m_cObjects;  // live objects derived from CBaseObject
extern std::int32_t m_cLocks;  // IClassFactory::LockServer; by design not interlocked

// Counts a live object of the module.
class CBaseObject {
 public:
  CBaseObject() noexcept { m_cObjects.fetch_add(1); }
  CBaseObject(const CBaseObject&) = delete;
  CBaseObject& operator=(const CBaseObject&) = delete;

 protected:
  ~CBaseObject() { m_cObjects.fetch_sub(1); }
};

class INonDelegatingUnknown {
 public:
  virtual HRESULT STDMETHODCALLTYPE NonDelegatingQueryInterface(REFIID riid, void** ppv) = 0;
  virtual ULONG STDMETHODCALLTYPE NonDelegatingAddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE NonDelegatingRelease() = 0;
  virtual ~INonDelegatingUnknown() = default;
};

class CUnknown : public INonDelegatingUnknown, public CBaseObject {
 public:
  // `pUnkOuter` is the owner of an aggregated object, or null. It is not referenced: an aggregated
  // object never outlives its owner.
  explicit CUnknown(IUnknown* pUnkOuter) noexcept
      : m_face(*this), m_pUnknown(pUnkOuter != nullptr ? pUnkOuter : &m_face) {}

  // Knows IUnknown alone; a derived class puts its own interfaces in front.
  HRESULT STDMETHODCALLTYPE NonDelegatingQueryInterface(REFIID riid, void** ppv) override;
  ULONG STDMETHODCALLTYPE NonDelegatingAddRef() override;
  ULONG STDMETHODCALLTYPE NonDelegatingRelease() override;

  IUnknown* Owner() const noexcept { return m_pUnknown; }

 private:
  // The non-delegating operations as the IUnknown that COM hands around.
  class Face final : public IUnknown {
   public:
    explicit Face(CUnknown& object) noexcept : m_object(object) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
      return m_object.NonDelegatingQueryInterface(riid, ppv);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return m_object.NonDelegatingAddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return m_object.NonDelegatingRelease(); }

   private:
    CUnknown& m_object;
  };

  Face m_face;
  IUnknown* m_pUnknown;
  std::atomic<std::uint32_t> m_cRef{0};
};

// Gives an object of the module one public interface: the three methods of IUnknown forward to the
// owner.
template <class Interface>
class ComObject : public Interface, public CUnknown {
 public:
  using CUnknown::CUnknown;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
    return Owner()->QueryInterface(riid, ppv);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return Owner()->AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return Owner()->Release(); }
};

#endif  // LUMIDEX_COM_UNKNOWN_H_
