#ifndef LUMIDEX_BASE_GUARDED_H_
#define LUMIDEX_BASE_GUARDED_H_

#include <new>

#include "platform/Win32.h"

// Runs a body that gives a result code; what it throws becomes one.
template <class Body>
HRESULT Guarded(Body&& body, HRESULT outOfMemory = E_OUTOFMEMORY) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return outOfMemory;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

#endif  // LUMIDEX_BASE_GUARDED_H_
