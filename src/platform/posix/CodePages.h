#ifndef LUMIDEX_PLATFORM_POSIX_CODEPAGES_H_
#define LUMIDEX_PLATFORM_POSIX_CODEPAGES_H_

// Code-page conversion between byte texts and UTF-16. Two code pages are known: CP_ACP, which is
// windows-1252 here, and CP_UTF8. An unknown code page, a null text or a length below 1 gives 0.

#include <lumidex/ComTypes.h>

inline constexpr UINT CP_ACP = 0;
inline constexpr UINT CP_UTF8 = 65001;

// Converts `length` bytes. With capacity 0 returns the number of code units needed; otherwise
// writes them and returns their number, or 0 when they do not fit. Each maximal ill-formed part of
// a UTF-8 text becomes one U+FFFD; a byte that windows-1252 leaves undefined becomes the code unit
// of the same number. `flags` is 0, or the answer is.
int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, WCHAR* out,
                        int capacity);

// Converts `length` code units, with the same use of `capacity`. For CP_ACP a code unit that
// windows-1252 cannot represent becomes "?"; for CP_UTF8 an unpaired surrogate becomes U+FFFD.
// `flags` is 0 and the last two arguments are null, or the answer is 0.
int WideCharToMultiByte(UINT codePage, DWORD flags, const WCHAR* text, int length, char* out,
                        int capacity, const char* defaultCharacter, BOOL* usedDefault);

#endif  // LUMIDEX_PLATFORM_POSIX_CODEPAGES_H_
