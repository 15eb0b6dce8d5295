#ifndef LUMIDEX_TOOL_VALUES_EXPOSURETEXT_H_
#define LUMIDEX_TOOL_VALUES_EXPOSURETEXT_H_

// Exposure numbers in words, whether they come from a directory or from a text. Not-a-number and
// what no camera can mean give an empty text.

#include <string>

namespace tool {

std::string SecondsText(double seconds);
std::string ShutterApexText(double apex);
std::string ApertureApexText(double apex);
std::string ExposureValueText(double steps);

}  // namespace tool

#endif  // LUMIDEX_TOOL_VALUES_EXPOSURETEXT_H_
