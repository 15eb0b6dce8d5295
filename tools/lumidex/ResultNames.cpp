#include "ResultNames.h"

#include <array>

#include <lumidex/ResultCodes.h>

#include "Tables.h"
#include "Text.h"

namespace tool {
namespace {

struct ResultRow {
  HRESULT code;
  const char* name;
  const char* meaning;
};

constexpr auto kModuleCodes = std::to_array<ResultRow>({
#define LUMIDEX_RESULT_ROW(name, value, meaning) {name, #name, meaning},
    LMD_RESULT_CODES(LUMIDEX_RESULT_ROW)
#undef LUMIDEX_RESULT_ROW
});

// clang-format off
constexpr std::array<ResultRow, 9> kSystemCodes = {{
    {S_OK,                      "S_OK",                      "success"},
    {S_FALSE,                   "S_FALSE",                   "nothing to do"},
    {E_NOTIMPL,                 "E_NOTIMPL",                 "not available in this version"},
    {E_NOINTERFACE,             "E_NOINTERFACE",             "the object has no such interface"},
    {E_POINTER,                 "E_POINTER",                 "a pointer is null, or the parser could not be created"},
    {E_FAIL,                    "E_FAIL",                    "the operation failed"},
    {E_OUTOFMEMORY,             "E_OUTOFMEMORY",             "out of memory"},
    {E_UNEXPECTED,              "E_UNEXPECTED",              "an unexpected failure"},
    {CLASS_E_CLASSNOTAVAILABLE, "CLASS_E_CLASSNOTAVAILABLE", "the module does not have the class"},
}};
// clang-format on

const ResultRow* FindResult(HRESULT result) {
  const auto matches = [&](const ResultRow& row) { return row.code == result; };
  const ResultRow* row = FindInTable(kModuleCodes, matches);
  return row != nullptr ? row : FindInTable(kSystemCodes, matches);
}

}  // namespace

std::string ResultNumber(HRESULT result) {
  return HexNumber(static_cast<std::uint32_t>(result), 8);
}

std::string ResultName(HRESULT result) {
  const ResultRow* row = FindResult(result);
  return row != nullptr ? row->name : "HRESULT";
}

std::string ResultMeaning(HRESULT result) {
  const ResultRow* row = FindResult(result);
  return row != nullptr ? row->meaning : "a code without a description";
}

std::string DescribeResult(HRESULT result) {
  return ResultName(result) + " (" + ResultNumber(result) + "): " + ResultMeaning(result);
}

}  // namespace tool
