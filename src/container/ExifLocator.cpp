#include "container/ExifLocator.h"

#include <lumidex/ResultCodes.h>

#include "container/JpegWalk.h"

HRESULT LocateJpegExif(FileStream& stream, std::uint64_t* position) {
  if (!BeginJpegWalk(stream)) return LMD_E_BAD_FORMAT;
  *position = stream.Position();
  JpegSegment segment;
  while (ReadJpegSegment(stream, &segment)) {
    if (IsExifSegment(stream, segment)) {
      *position = segment.start;
      return LMD_E_HAS_EXIF;
    }
    stream.Seek(segment.next);
  }
  return S_OK;
}
