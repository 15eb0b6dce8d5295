#include "Module.h"

#include <stdexcept>
#include <windows.h>

#include "Text.h"

namespace bench {

GetClassObject LoadModule(const std::string& path) {
  const HMODULE module = LoadLibraryW(tool::WideFromUtf8(path).c_str());
  const FARPROC entry = module == nullptr ? nullptr : GetProcAddress(module, "DllGetClassObject");
  if (entry == nullptr) throw std::runtime_error(path + " cannot be loaded");
  return reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(entry));
}

}  // namespace bench
