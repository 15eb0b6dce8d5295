#ifndef LUMIDEX_TESTS_FAULTS_FAULT_H_
#define LUMIDEX_TESTS_FAULTS_FAULT_H_

// Makes one call of the machine fail, or one and all later ones. Whatever stands in for a kind of
// call asks here first.

#include <array>
#include <cstddef>
#include <string_view>

namespace test {

enum class Call { Allocation, Attributes, Open, Read, Write, Seek, Flush, Truncate, Close };

inline constexpr std::array<std::string_view, 9> kCallNames = {
    "allocation", "attributes", "open", "read", "write", "seek", "flush", "truncate", "close"};

inline std::string_view NameOf(Call kind) {
  return kCallNames[static_cast<std::size_t>(kind)];
}

// While it lives it counts the calls of one kind and fails the one with a number, from 1, alone or
// with all behind it; with the number 0 it only counts. Those that live at the same time work
// together. For one thread.
class Fault {
 public:
  Fault(Call kind, int number, bool isLasting) noexcept
      : m_kind(kind), m_number(number), m_isLasting(isLasting), m_outer(s_current) {
    s_current = this;
  }
  ~Fault() { s_current = m_outer; }
  Fault(const Fault&) = delete;
  Fault& operator=(const Fault&) = delete;

  int Calls() const noexcept { return m_calls; }
  bool WasMet() const noexcept { return m_number != 0 && m_calls >= m_number; }

  // Counts a call and says how it ends.
  enum class Verdict { Succeeds, FailsOnce, FailsForGood };
  static Verdict Ask(Call kind) noexcept {
    Fault* fault = s_current;
    while (fault != nullptr && fault->m_kind != kind) fault = fault->m_outer;
    return fault == nullptr ? Verdict::Succeeds : fault->Take();
  }
  static bool Hits(Call kind) noexcept { return Ask(kind) != Verdict::Succeeds; }

 private:
  Verdict Take() noexcept {
    ++m_calls;
    if (m_isLasting && WasMet()) return Verdict::FailsForGood;
    return m_calls == m_number ? Verdict::FailsOnce : Verdict::Succeeds;
  }

  static inline Fault* s_current = nullptr;

  Call m_kind;
  int m_number;
  bool m_isLasting;
  int m_calls = 0;
  Fault* m_outer;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_FAULTS_FAULT_H_
