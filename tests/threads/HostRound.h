#ifndef LUMIDEX_TESTS_THREADS_HOSTROUND_H_
#define LUMIDEX_TESTS_THREADS_HOSTROUND_H_

// All that a host does with one object, from its creation to its release.

#include <cstddef>
#include <string>
#include <vector>

#include "support/Bytes.h"

namespace test {

struct HostRound {
  std::string answers;         // a line for each call: method, result code, values
  std::vector<Bytes> written;  // the files that the calls made or changed
  std::vector<std::string> log;

  bool operator==(const HostRound&) const = default;
};

// Does the round on files of its own, with an object of its own from a class factory of its own.
HostRound PlayHostRound();

// Creates and releases this many objects, with a line to the debug log while each lives.
HostRound PlayLoggingRound(std::size_t objects);

// Sends the debug log's lines to the round of the thread that caused them, as long as it lives.
class LogOfRounds {
 public:
  LogOfRounds();
  ~LogOfRounds();
  LogOfRounds(const LogOfRounds&) = delete;
  LogOfRounds& operator=(const LogOfRounds&) = delete;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_THREADS_HOSTROUND_H_
