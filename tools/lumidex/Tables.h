#ifndef LUMIDEX_TOOL_TABLES_H_
#define LUMIDEX_TOOL_TABLES_H_

#include <cstddef>

namespace tool {

// The first row of a table that fits, or null.
template <class Table, class Fits>
constexpr auto FindInTable(const Table& table, Fits fits) -> decltype(&*table.begin()) {
  for (const auto& row : table) {
    if (fits(row)) return &row;
  }
  return nullptr;
}

// Whether the ids of a table's rows rise from row to row, so that none stands twice.
template <class Table>
constexpr bool IsAscending(const Table& table) {
  for (std::size_t i = 1; i < table.size(); ++i) {
    if (table[i - 1].id >= table[i].id) return false;
  }
  return true;
}

}  // namespace tool

#endif  // LUMIDEX_TOOL_TABLES_H_
