#ifndef LUMIDEX_FUZZ_FUZZOBJECT_H_
#define LUMIDEX_FUZZ_FUZZOBJECT_H_

// The module's object as a host gets it, with one reference, the last.

#include <lumidex/ILumidex.h>

#include "FuzzChecks.h"

namespace fuzz {

class FuzzObject {
 public:
  FuzzObject() {
    IClassFactory* factory = nullptr;
    void* object = nullptr;
    Require(DllGetClassObject(CLSID_Lumidex, IID_IClassFactory,
                              reinterpret_cast<void**>(&factory)) == S_OK,
            "there is a class factory");
    Require(factory->CreateInstance(nullptr, IID_ILumidex, &object) == S_OK, "it makes an object");
    factory->Release();
    m_object = static_cast<ILumidex*>(object);
  }
  ~FuzzObject() { Require(m_object->Release() == 0, "nobody else holds the object"); }
  FuzzObject(const FuzzObject&) = delete;
  FuzzObject& operator=(const FuzzObject&) = delete;

  ILumidex* operator->() const { return m_object; }
  ILumidex& operator*() const { return *m_object; }

 private:
  ILumidex* m_object = nullptr;
};

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_FUZZOBJECT_H_
