#ifndef LUMIDEX_TESTS_FAULTS_OPERATION_H_
#define LUMIDEX_TESTS_FAULTS_OPERATION_H_

// The calls of a host that are disturbed, each with its own files, and what they may answer.

#include <map>
#include <memory>
#include <set>
#include <span>
#include <string_view>
#include <vector>

#include <lumidex/ILumidex.h>

#include "faults/Fault.h"

namespace test {

// One call, made again and again from the same start. Nothing that it allocates outlives Check.
class Scenario {
 public:
  Scenario() = default;
  virtual ~Scenario() = default;
  Scenario(const Scenario&) = delete;
  Scenario& operator=(const Scenario&) = delete;

  // Brings the files to their start and a new object to the state that the call is about.
  virtual void Prepare(ILumidex& object) = 0;

  virtual HRESULT Run(ILumidex& object) = 0;

  // Expects outputs and files to be what the result says.
  virtual void Check(ILumidex& object, HRESULT result) = 0;
};

template <class Kind>
std::unique_ptr<Scenario> Make() {
  return std::make_unique<Kind>();
}

// What a call may answer when the calls of a kind fail. A kind that is not there is never called.
using Outcomes = std::map<Call, std::set<HRESULT>>;

struct Operation {
  std::string_view name;
  HRESULT undisturbed;
  std::unique_ptr<Scenario> (*make)();
  Outcomes outcomes;
};

std::span<const Operation> ObjectOperations();
std::span<const Operation> GetterOperations();
std::span<const Operation> PacketOperations();
std::span<const Operation> WriteOperations();

// All of them.
std::vector<const Operation*> Operations();

}  // namespace test

#endif  // LUMIDEX_TESTS_FAULTS_OPERATION_H_
