#include "Tool.h"

#include <exception>
#include <new>
#include <string_view>

#include "CommandLine.h"
#include "Commands.h"
#include "FileList.h"
#include "LumidexObject.h"
#include "Progress.h"
#include "ResultNames.h"
#include "Text.h"
#include "base/Guarded.h"
#include "write/WriteCommands.h"

namespace tool {
namespace {

template <class Output>
void ReportError(Output& output, std::string_view text) {
  output.Err(Concat({"lumidex: ", text, "\n"}));
}

void ReportFailure(Progress& output, const std::string& file, HRESULT result) {
  ReportError(output, Concat({Printable(CleanUtf8(file)), ": ", DescribeResult(result)}));
}

// The files that the command runs on one by one.
std::vector<std::string> FilesOf(const Options& options, Progress& progress) {
  if (WritesFile(options.command)) return {options.output};
  if (options.command == Command::Xmp) return {options.source};
  const auto wanted = options.command == Command::Mark ? FolderFiles::Jpegs : FolderFiles::Images;
  return ListFiles(options.files, wanted, progress);
}

int RunOnFiles(const Options& options, ILumidex& lumidex, Progress& progress) {
  const auto files = FilesOf(options, progress);
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
  return RunOnFiles(options, *lumidex, progress);
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
