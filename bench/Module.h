#ifndef LUMIDEX_BENCH_MODULE_H_
#define LUMIDEX_BENCH_MODULE_H_

#include <string>

#include <lumidex/ILumidex.h>

#include "LumidexObject.h"

namespace bench {

using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

// The entry point of a module file, which stays loaded. Throws when there is none.
GetClassObject LoadModule(const std::string& path);

// An object of a module file, made as every host makes one. Throws when that fails.
tool::ComReference<ILumidex> CreateFromModule(const std::string& path);

}  // namespace bench

#endif  // LUMIDEX_BENCH_MODULE_H_
