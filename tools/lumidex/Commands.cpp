#include "Commands.h"

#include <array>

#include "ResultNames.h"
#include "Text.h"
#include "base/Guarded.h"
#include "core/VxMetadataWrapper.h"
#include "names/Names.h"
#include "show/Show.h"
#include "write/WriteCommands.h"

namespace tool {
namespace {

std::string Label(const std::string& file) {
  return Printable(CleanUtf8(file)) + ": ";
}

std::string ShowText(Photo& photo, const Options& options, bool colour) {
  if (options.json) return JsonLine(photo, options);
  return options.records ? RecordList(photo, options) : Report(photo, options, colour);
}

// A line of JSON comes out for every file; the other forms have nothing to say about one that could
// not be opened.
HRESULT Show(const Options& options, ILumidex& lumidex, const std::string& file, Progress& output) {
  Photo photo;
  const HRESULT read = Guarded([&] {
    ReadPhoto(photo, lumidex, file, options.MaskOr(kFullMask), options.trace);
    return S_OK;
  });
  if (FAILED(read)) photo.result = read;
  if (options.json || SUCCEEDED(photo.result)) {
    output.Out(ShowText(photo, options, output.OutIsTerminal()));
  }
  return photo.result;
}

// A type of 0 alone does not tell a file of another kind from one that is not there.
HRESULT Type(ILumidex& lumidex, const std::string& file, Progress& output) {
  const WideString path = PathOf(file);
  const std::int32_t type = lumidex.GetFileType(path.c_str());
  if (type == FILETYPE_UNKNOWN && lumidex.Open(path.c_str()) == LMD_E_SRC_NOT_FOUND) {
    return LMD_E_SRC_NOT_FOUND;
  }
  output.Out(Label(file) + FileTypeName(type) + " (" + std::to_string(type) + ")\n");
  return S_OK;
}

struct PoseAngle {
  const char* name;
  HRESULT (STDMETHODCALLTYPE ILumidex::*getter)(float*);
};

constexpr std::array<PoseAngle, 3> kPoseAngles = {{
    {"heading", &ILumidex::GetPoseHeading},
    {"pitch", &ILumidex::GetPosePitch},
    {"roll", &ILumidex::GetPoseRoll},
}};

std::string PoseText(ILumidex& lumidex) {
  std::string out;
  for (const PoseAngle& angle : kPoseAngles) {
    float degrees = 0;
    if (FAILED((lumidex.*angle.getter)(&degrees))) continue;
    out += Concat({", ", angle.name, " ", Number(degrees, 4), "°"});
  }
  return out;
}

// That a photograph is no panorama is an answer, not a failure.
HRESULT Panorama(ILumidex& lumidex, const std::string& file, Progress& output) {
  const HRESULT opened = lumidex.Open(PathOf(file).c_str());
  if (FAILED(opened)) return opened;
  // The flag of a JPEG is among its records; a PNG would be looked for by the cut path.
  const WideString path = PathOf(file);
  if (IsCut(path) && lumidex.GetFileType(path.c_str()) == FILETYPE_PNG) return LMD_E_OPEN_FAILED;
  std::uint32_t flag = 0;
  const HRESULT result = lumidex.IsPanorama(&flag);
  const bool isAnswer =
      SUCCEEDED(result) || result == LMD_E_NOT_PANORAMA || result == LMD_E_NOT_FOUND;
  if (!isAnswer) return result;
  const std::string reason =
      SUCCEEDED(result) ? std::string() : Concat({", ", DescribeResult(result)});
  output.Out(Concat(
      {Label(file), flag == 1 ? "panorama" : "no panorama", reason, PoseText(lumidex), "\n"}));
  return S_OK;
}

HRESULT Mark(ILumidex& lumidex, const std::string& file, Progress& output) {
  const HRESULT result = lumidex.AppendTrailer(PathOf(file).c_str());
  if (SUCCEEDED(result)) output.Out(Label(file) + "marked\n");
  return result;
}

// What there is to say about a file that a command wrote.
HRESULT Written(const Options& options, ILumidex& lumidex, const std::string& file,
                Progress& output) {
  if (options.showOutput) return Show(options, lumidex, file, output);
  output.Out(Label(file) + "written\n");
  return S_OK;
}

}  // namespace

HRESULT RunOnFile(const Options& options, ILumidex& lumidex, const std::string& file,
                  Progress& output) {
  switch (options.command) {
    case Command::Show:
      return Show(options, lumidex, file, output);
    case Command::Type:
      return Type(lumidex, file, output);
    case Command::Panorama:
      return Panorama(lumidex, file, output);
    case Command::Mark:
      return Mark(lumidex, file, output);
    case Command::Xmp:
      return PrintPacket(lumidex, file, output);
    case Command::Embed:
    case Command::Write:
      return Written(options, lumidex, file, output);
  }
  return E_UNEXPECTED;
}

}  // namespace tool
