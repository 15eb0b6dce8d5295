#ifndef LUMIDEX_MAKERNOTE_VENDORTABLE_H_
#define LUMIDEX_MAKERNOTE_VENDORTABLE_H_

#include <memory>
#include <string_view>

#include "makernote/ParserBase.h"

// A new parser for the camera's make, or null when no vendor class serves it.
std::unique_ptr<CParserBase> CreateVendorParser(std::string_view make);

#endif  // LUMIDEX_MAKERNOTE_VENDORTABLE_H_
