#ifndef LUMIDEX_XMP_XMPSIGNATURE_H_
#define LUMIDEX_XMP_XMPSIGNATURE_H_

// What an XMP segment of a JPEG file begins with (XMP part 3, section 1.1.3).

#include <string_view>

// The namespace URI of the XMP basic schema.
inline constexpr std::string_view kXmpNamespace = "http://ns.adobe.com/xap/1.0/";
static_assert(kXmpNamespace.size() == 28);

// Its first four characters tell such a segment from an EXIF one.
inline constexpr std::string_view kXmpScheme = kXmpNamespace.substr(0, 4);

#endif  // LUMIDEX_XMP_XMPSIGNATURE_H_
