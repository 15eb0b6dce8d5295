#ifndef LUMIDEX_TOOL_LUMIDEXOBJECT_H_
#define LUMIDEX_TOOL_LUMIDEXOBJECT_H_

#include <memory>

#include <lumidex/ILumidex.h>

namespace tool {

struct ComReleaser {
  void operator()(IUnknown* object) const noexcept { object->Release(); }
};

// One reference to a COM object.
template <class Interface>
using ComReference = std::unique_ptr<Interface, ComReleaser>;

// Creates the module's object the way every host does: class factory, then instance. Returns the
// code of the step that failed.
HRESULT CreateLumidex(ComReference<ILumidex>& object);

}  // namespace tool

#endif  // LUMIDEX_TOOL_LUMIDEXOBJECT_H_
