#include "Tool.h"

#include <exception>
#include <new>
#include <optional>
#include <string_view>

#include "CommandLine.h"
#include "Commands.h"
#include "FileList.h"
#include "LumidexObject.h"
#include "PathList.h"
#include "Progress.h"
#include "ResultNames.h"
#include "Text.h"
#include "base/Guarded.h"
#include "show/Photo.h"
#include "write/WriteCommands.h"

namespace tool {
namespace {

template <class Output>
void ReportError(Output& output, std::string_view text) {
  output.Err(Concat({"lumidex: ", text, "\n"}));
}

void ReportFailure(Progress& output, const std::string& file, HRESULT result) {
  const WideString path = PathOf(file);
  const std::string cut =
      IsCut(path)
          ? Concat({"; the path is too long, with ", std::to_string(path.size()), " characters"})
          : std::string();
  ReportError(output, Concat({Printable(CleanUtf8(file)), ": ", DescribeResult(result), cut}));
}

// The paths that the user named, those of lists included; nothing when a list could not be read.
std::optional<std::vector<std::string>> NamedPaths(const Options& options, Console& console,
                                                   Progress& progress) {
  std::vector<std::string> paths;
  const auto append = [&](const std::string& list) {
    const HRESULT result = AppendList(list, console, paths);
    if (FAILED(result)) ReportFailure(progress, list, result);
    return SUCCEEDED(result);
  };
  for (const std::string& file : options.files) {
    if (file != kStandardInput) {
      paths.push_back(file);
    } else if (!append(file)) {
      return std::nullopt;
    }
  }
  for (const std::string& list : options.lists) {
    if (!append(list)) return std::nullopt;
  }
  return paths;
}

// The files that the command runs on one by one.
std::optional<std::vector<std::string>> FilesOf(const Options& options, Console& console,
                                                Progress& progress) {
  if (WritesFile(options.command)) return std::vector{options.output};
  if (options.command == Command::Xmp) return std::vector{options.source};
  const auto paths = NamedPaths(options, console, progress);
  if (!paths) return std::nullopt;
  const auto wanted = options.command == Command::Mark ? FolderFiles::Jpegs : FolderFiles::Images;
  return ListFiles(*paths, wanted, progress);
}

int RunOnFiles(const Options& options, ILumidex& lumidex, Console& console, Progress& progress) {
  const auto listed = FilesOf(options, console, progress);
  if (!listed) return kExitFailed;
  const std::vector<std::string>& files = *listed;
  bool failed = false;
  for (std::size_t i = 0; i < files.size(); ++i) {
    progress.Working(i + 1, files.size(), files[i]);
    const HRESULT result = Guarded([&] { return RunOnFile(options, lumidex, files[i], progress); });
    if (SUCCEEDED(result)) continue;
    failed = true;
    ReportFailure(progress, files[i], result);
  }
  return failed ? kExitFailed : kExitOk;
}

int RunCommand(const Options& options, Console& console) {
  ComReference<ILumidex> lumidex;
  const HRESULT created = CreateLumidex(lumidex);
  if (FAILED(created)) {
    ReportError(console, DescribeResult(created));
    return kExitFailed;
  }
  Progress progress(console);
  if (WritesFile(options.command)) {
    std::string file;
    const HRESULT written = Guarded([&] { return WriteFile(options, *lumidex, file); });
    if (FAILED(written)) {
      ReportFailure(progress, file, written);
      return kExitFailed;
    }
  }
  return RunOnFiles(options, *lumidex, console, progress);
}

}  // namespace

int RunTool(const std::vector<std::string>& arguments, Console& console) {
  try {
    Options options;
    const auto exitCode = ParseCommandLine(arguments, console, options);
    return exitCode ? *exitCode : RunCommand(options, console);
  } catch (const std::bad_alloc&) {
    ReportError(console, DescribeResult(E_OUTOFMEMORY));
  } catch (const std::exception& error) {
    ReportError(console, Printable(CleanUtf8(error.what())));
  }
  return kExitFailed;
}

}  // namespace tool
