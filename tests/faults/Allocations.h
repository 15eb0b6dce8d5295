#ifndef LUMIDEX_TESTS_FAULTS_ALLOCATIONS_H_
#define LUMIDEX_TESTS_FAULTS_ALLOCATIONS_H_

// The allocation functions of this program: they fail on demand and count what is not given back.

#include <cstddef>

namespace test {

// The bytes that were allocated and not freed.
std::size_t LiveBytes() noexcept;

// Every allocation of this size fails while it lives.
class NoMemoryOf {
 public:
  explicit NoMemoryOf(std::size_t size) noexcept { s_size = size; }
  ~NoMemoryOf() { s_size = 0; }
  NoMemoryOf(const NoMemoryOf&) = delete;
  NoMemoryOf& operator=(const NoMemoryOf&) = delete;

  static bool Hits(std::size_t size) noexcept { return s_size != 0 && size == s_size; }

 private:
  static inline std::size_t s_size = 0;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_FAULTS_ALLOCATIONS_H_
