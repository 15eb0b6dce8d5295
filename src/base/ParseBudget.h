#ifndef LUMIDEX_BASE_PARSEBUDGET_H_
#define LUMIDEX_BASE_PARSEBUDGET_H_

// What one parse may cost. A small file can ask for endless work: a list of a billion SubIFDs,
// hundreds of pointers to one directory, hundreds of large values with no data behind them. When a
// budget is used up, a value stays without data and a walk ends.

#include <cstdint>

// A photograph stores a few hundred kilobytes, most of it thumbnail, preview and ICC profile;
// previews of several megabytes are known.
inline constexpr std::uint64_t kMaxStoredBytes = 16U * 1024 * 1024;
static_assert(kMaxStoredBytes <= UINT32_MAX, "a value that the budget allows has a 32-bit size");

// No file stores much more than it has: a value of the maker note and its copy, a text as UTF-16,
// the colour curves of a profile that share their bytes. The first of the two is for any file,
// however small, also one that was cut and has lost its values.
inline constexpr std::uint64_t kStoredBytesOfAnyFile = 2U * 1024 * 1024;
inline constexpr std::uint64_t kStoredBytesForEachByte = 4;

// A photograph has some hundred directory entries; raw-style files with many SubIFDs reach a
// thousand.
inline constexpr std::uint32_t kMaxWalkedEntries = 65536;

class FileStream;

class ParseBudget {
 public:
  ParseBudget() = default;

  // For an open file, which outlives its use. Its size is asked for when it begins to matter.
  explicit ParseBudget(FileStream& file) noexcept
      : m_bytesLeft(kStoredBytesOfAnyFile), m_file(&file) {}

  // False when `count` more stored bytes are too many.
  [[nodiscard]] bool TakeBytes(std::uint64_t count) {
    if (count > m_bytesLeft) AddForSize();
    if (count > m_bytesLeft) return false;
    m_bytesLeft -= count;
    return true;
  }

  // False when one more entry is too many.
  [[nodiscard]] bool TakeEntry() noexcept {
    if (m_entriesLeft == 0) return false;
    --m_entriesLeft;
    return true;
  }

 private:
  void AddForSize();

  std::uint64_t m_bytesLeft = kMaxStoredBytes;
  FileStream* m_file = nullptr;  // whose size is not counted yet
  std::uint32_t m_entriesLeft = kMaxWalkedEntries;
};

#endif  // LUMIDEX_BASE_PARSEBUDGET_H_
