#include "makernote/VendorTable.h"

#include <array>

#include "makernote/ParserSamsung.h"

namespace {

template <class Parser>
std::unique_ptr<CParserBase> Create() {
  return std::make_unique<Parser>();
}

struct VendorRow {
  std::string_view mark;  // stands somewhere in the make, in these very letters
  std::unique_ptr<CParserBase> (*create)();
};

// The first row that fits wins.
// clang-format off
constexpr std::array kVendors = {
    VendorRow{"SAMSUNG", Create<CParserSamsung>},
};
// clang-format on

}  // namespace

std::unique_ptr<CParserBase> CreateVendorParser(std::string_view make) {
  for (const VendorRow& row : kVendors) {
    if (make.find(row.mark) != std::string_view::npos) return row.create();
  }
  return nullptr;
}
