#ifndef LUMIDEX_COM_FILEPATHS_H_
#define LUMIDEX_COM_FILEPATHS_H_

// What the interface's methods ask of a path before they open it.

#include <initializer_list>
#include <span>

#include "platform/Win32.h"

// Whether a new file may be made at a path: nothing stands there. Where the system cannot tell, the
// path must at least not lead to one of the sources. Not for a null one.
bool IsFree(const WCHAR* path, std::initializer_list<const WCHAR*> sources);

// Whether a path may be used as a source: it exists and is an ordinary file.
bool IsUsableFile(const WCHAR* path);

// Keeps as much of a path as fits, always terminated; a null one as the empty text.
void KeepPath(std::span<WCHAR> kept, const WCHAR* path);

#endif  // LUMIDEX_COM_FILEPATHS_H_
