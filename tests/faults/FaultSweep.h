#ifndef LUMIDEX_TESTS_FAULTS_FAULTSWEEP_H_
#define LUMIDEX_TESTS_FAULTS_FAULTSWEEP_H_

// Makes the first, the second, ... call of a kind fail during an operation, until it goes by
// undisturbed, and looks at what is left each time.

#include <set>

#include "faults/Operation.h"

namespace test {

// Sweeps once with single and once with lasting failures. Every result must be among the documented
// ones; afterwards the same object must open a good file as any other, and nothing may be left: no
// memory, no object, no open file. Returns the results that were seen.
std::set<HRESULT> Sweep(const Operation& operation, Call kind);

// The name of a result.
std::string CodeName(HRESULT result);

}  // namespace test

#endif  // LUMIDEX_TESTS_FAULTS_FAULTSWEEP_H_
