#ifndef LUMIDEX_TOOL_RESULTNAMES_H_
#define LUMIDEX_TOOL_RESULTNAMES_H_

#include <string>

#include <lumidex/ComTypes.h>

namespace tool {

// "0x8004C022".
std::string ResultNumber(HRESULT result);

// "LMD_E_BAD_FORMAT", or "HRESULT" for a code that has no name here.
std::string ResultName(HRESULT result);

// What a code means, in a few words.
std::string ResultMeaning(HRESULT result);

// "LMD_E_BAD_FORMAT (0x8004C022): the file type is not supported here".
std::string DescribeResult(HRESULT result);

}  // namespace tool

#endif  // LUMIDEX_TOOL_RESULTNAMES_H_
