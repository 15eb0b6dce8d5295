#include "Module.h"

#include <dlfcn.h>
#include <stdexcept>

namespace bench {

GetClassObject LoadModule(const std::string& path) {
  void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const entry = module == nullptr ? nullptr : dlsym(module, "DllGetClassObject");
  if (entry == nullptr) throw std::runtime_error(dlerror());
  return reinterpret_cast<GetClassObject>(entry);
}

}  // namespace bench
