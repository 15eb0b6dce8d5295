#ifndef LUMIDEX_COMTYPES_H_
#define LUMIDEX_COMTYPES_H_

// The COM vocabulary that the interface is written in, for C11 and C++17: the system's own headers
// on Windows, the same few names with the same sizes elsewhere. Text is UTF-16 on every platform.

#include <stdint.h>

#if defined(_WIN32)

#include <unknwn.h>
#include <windows.h>

#define LMD_W(text) L##text

#else

#include <string.h>
#if !defined(__cplusplus)
#include <uchar.h>
#endif

typedef char16_t WCHAR;
typedef int32_t BOOL;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef uint32_t DWORD;
typedef uint32_t UINT;
typedef int32_t HRESULT;

#define LMD_W(text) u##text

#if !defined(FALSE)
#define FALSE 0
#endif
#if !defined(TRUE)
#define TRUE 1
#endif

typedef struct GUID {
  uint32_t Data1;
  uint16_t Data2;
  uint16_t Data3;
  uint8_t Data4[8];
} GUID;

typedef GUID IID;
typedef GUID CLSID;

// In C++ an identifier is passed by reference, in C by address: to a callee it is the same.
#if defined(__cplusplus)
typedef const GUID& REFGUID;
typedef const IID& REFIID;
typedef const CLSID& REFCLSID;

inline bool operator==(REFGUID left, REFGUID right) noexcept {
  return memcmp(&left, &right, sizeof(GUID)) == 0;
}
inline bool operator!=(REFGUID left, REFGUID right) noexcept {
  return !(left == right);
}

constexpr bool SUCCEEDED(HRESULT result) noexcept {
  return result >= 0;
}
constexpr bool FAILED(HRESULT result) noexcept {
  return result < 0;
}
#else
typedef const GUID* REFGUID;
typedef const IID* REFIID;
typedef const CLSID* REFCLSID;

#define SUCCEEDED(result) ((HRESULT)(result) >= 0)
#define FAILED(result) ((HRESULT)(result) < 0)
#endif

// The words with which one text declares an interface for both languages. CINTERFACE asks for the
// form of C in C++.
#define STDMETHODCALLTYPE
#define STDAPICALLTYPE
#define MIDL_INTERFACE(iid) struct
#if defined(__cplusplus) && !defined(CINTERFACE)
#define STDMETHOD_(type, method) virtual type STDMETHODCALLTYPE method
#define PURE = 0
#define THIS_
#define THIS
#else
#define STDMETHOD_(type, method) type(STDMETHODCALLTYPE* method)
#define PURE
#define THIS_ INTERFACE *This,
#define THIS INTERFACE* This
#endif
#define STDMETHOD(method) STDMETHOD_(HRESULT, method)

#endif  // !_WIN32

// A result code and an identifier as constants of the language.
#if defined(__cplusplus)
#define LMD_DECLARE_CODE(name, value, meaning) \
  inline constexpr HRESULT name = static_cast<HRESULT>(value);
#define LMD_GUID_CONSTANT inline constexpr
#else
#define LMD_DECLARE_CODE(name, value, meaning) enum { name = (HRESULT)(value) };
#define LMD_GUID_CONSTANT static const
#endif

// In C an interface is an object that begins with the address of a table of functions, of which the
// first three are those of IUnknown.
#if defined(__cplusplus) && !defined(CINTERFACE)
#define LMD_UNKNOWN_METHODS
#else
#define LMD_C_INTERFACE(name)           \
  typedef struct name name;             \
  typedef struct name##Vtbl name##Vtbl; \
  struct name {                         \
    const name##Vtbl* lpVtbl;           \
  };                                    \
  struct name##Vtbl
#define LMD_UNKNOWN_METHODS                                      \
  STDMETHOD(QueryInterface)(THIS_ REFIID riid, void** ppv) PURE; \
  STDMETHOD_(ULONG, AddRef)(THIS) PURE;                          \
  STDMETHOD_(ULONG, Release)(THIS) PURE;
#endif

// The system's result codes that a host of the module meets; LMD_SYSTEM_CODES(X) calls
// X(name, value, meaning) once for each.
// clang-format off
#define LMD_SYSTEM_CODES(X)                                                            \
  X(S_OK,                      0x00000000U, "success")                                 \
  X(S_FALSE,                   0x00000001U, "success, and the answer is no")           \
  X(E_NOTIMPL,                 0x80004001U, "not implemented")                         \
  X(E_NOINTERFACE,             0x80004002U, "the object has no such interface")        \
  X(E_POINTER,                 0x80004003U, "a null pointer")                          \
  X(E_FAIL,                    0x80004005U, "the operation failed")                    \
  X(E_UNEXPECTED,              0x8000FFFFU, "an unexpected failure")                   \
  X(CLASS_E_CLASSNOTAVAILABLE, 0x80040111U, "the module does not have the class")      \
  X(E_OUTOFMEMORY,             0x8007000EU, "out of memory")
// clang-format on

#if !defined(_WIN32)

LMD_SYSTEM_CODES(LMD_DECLARE_CODE)

LMD_GUID_CONSTANT IID IID_IUnknown = {
    0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
LMD_GUID_CONSTANT IID IID_IClassFactory = {
    0x00000001, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

#if defined(__cplusplus) && !defined(CINTERFACE)
struct IUnknown {
  STDMETHOD(QueryInterface)(REFIID riid, void** ppv) PURE;
  STDMETHOD_(ULONG, AddRef)() PURE;
  STDMETHOD_(ULONG, Release)() PURE;
};
struct IClassFactory : public IUnknown
#else
#undef INTERFACE
#define INTERFACE IUnknown
LMD_C_INTERFACE(IUnknown){LMD_UNKNOWN_METHODS};
#undef INTERFACE
#define INTERFACE IClassFactory
LMD_C_INTERFACE(IClassFactory)
#endif
{
  LMD_UNKNOWN_METHODS
  STDMETHOD(CreateInstance)(THIS_ IUnknown* pUnkOuter, REFIID riid, void** ppv) PURE;
  STDMETHOD(LockServer)(THIS_ BOOL fLock) PURE;
};

#if defined(COBJMACROS) && (!defined(__cplusplus) || defined(CINTERFACE))
#define IUnknown_QueryInterface(This, riid, ppv) (This)->lpVtbl->QueryInterface(This, riid, ppv)
#define IUnknown_AddRef(This) (This)->lpVtbl->AddRef(This)
#define IUnknown_Release(This) (This)->lpVtbl->Release(This)

#define IClassFactory_QueryInterface(This, riid, ppv) \
  (This)->lpVtbl->QueryInterface(This, riid, ppv)
#define IClassFactory_AddRef(This) (This)->lpVtbl->AddRef(This)
#define IClassFactory_Release(This) (This)->lpVtbl->Release(This)
#define IClassFactory_CreateInstance(This, pUnkOuter, riid, ppv) \
  (This)->lpVtbl->CreateInstance(This, pUnkOuter, riid, ppv)
#define IClassFactory_LockServer(This, fLock) (This)->lpVtbl->LockServer(This, fLock)
#endif

// The types of the module's two entry points, and the entry points.
typedef HRESULT(STDAPICALLTYPE* LPFNGETCLASSOBJECT)(REFCLSID rclsid, REFIID riid, void** ppv);
typedef HRESULT(STDAPICALLTYPE* LPFNCANUNLOADNOW)(void);

#if defined(__cplusplus)
extern "C" {
#endif
HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);
HRESULT STDAPICALLTYPE DllCanUnloadNow(void);
#if defined(__cplusplus)
}
#endif

#endif  // !_WIN32

#endif  // LUMIDEX_COMTYPES_H_
