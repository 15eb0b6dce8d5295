#include "xmp/TextSearch.h"

#include <algorithm>

std::size_t FindFarByte(std::string_view text, char wanted, std::size_t from) noexcept {
  return std::min(text.find(wanted, from), text.size());
}
