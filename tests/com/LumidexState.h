#ifndef LUMIDEX_TESTS_COM_LUMIDEXSTATE_H_
#define LUMIDEX_TESTS_COM_LUMIDEXSTATE_H_

// The parse result of an object, for tests that put one there that no file could produce: records
// with the same identifier, other states, a list without its array.

#include "com/Lumidex.h"

namespace test {

// An explicit instantiation may name a private member; the friend hands the member's address out.
template <auto member>
struct ImageInfoMember {
  friend IImageInfo* CLumidex::*AccessImageInfo(const CLumidex&) { return member; }
};
IImageInfo* CLumidex::*AccessImageInfo(const CLumidex& object);
template struct ImageInfoMember<&CLumidex::m_pImageInfo>;

inline IImageInfo*& ImageInfoOf(CLumidex& object) {
  return object.*AccessImageInfo(object);
}

}  // namespace test

#endif  // LUMIDEX_TESTS_COM_LUMIDEXSTATE_H_
