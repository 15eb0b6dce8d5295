#include "Module.h"

#include <stdexcept>

namespace bench {

tool::ComReference<ILumidex> CreateFromModule(const std::string& path) {
  void* pointer = nullptr;
  if (FAILED(LoadModule(path)(CLSID_Lumidex, IID_IClassFactory, &pointer))) {
    throw std::runtime_error(path + " has no such class");
  }
  const tool::ComReference<IClassFactory> factory(static_cast<IClassFactory*>(pointer));
  if (FAILED(factory->CreateInstance(nullptr, IID_ILumidex, &pointer))) {
    throw std::runtime_error(path + " creates no object");
  }
  return tool::ComReference<ILumidex>(static_cast<ILumidex*>(pointer));
}

}  // namespace bench
