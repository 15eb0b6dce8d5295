#include "LumidexObject.h"

namespace tool {

HRESULT CreateLumidex(ComReference<ILumidex>& object) {
  void* pointer = nullptr;
  HRESULT result = DllGetClassObject(CLSID_Lumidex, IID_IClassFactory, &pointer);
  if (FAILED(result)) return result;
  const ComReference<IClassFactory> factory(static_cast<IClassFactory*>(pointer));

  pointer = nullptr;
  result = factory->CreateInstance(nullptr, IID_ILumidex, &pointer);
  if (FAILED(result)) return result;
  object.reset(static_cast<ILumidex*>(pointer));
  return S_OK;
}

}  // namespace tool
