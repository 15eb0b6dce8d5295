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

namespace tool {
namespace {

template <class Output>
void ReportError(Output& output, std::string_view text) {
  output.Err(Concat({"lumidex: ", text, "\n"}));
}

int RunCommand(const Options& options, Console& console) {
  ComReference<ILumidex> lumidex;
  const HRESULT created = CreateLumidex(lumidex);
  if (FAILED(created)) {
    ReportError(console, DescribeResult(created));
    return kExitFailed;
  }
  Progress progress(console);
  const auto wanted = options.command == Command::Mark ? FolderFiles::Jpegs : FolderFiles::Images;
  const auto files = ListFiles(options.files, wanted, progress);
  bool failed = false;
  for (std::size_t i = 0; i < files.size(); ++i) {
    progress.Working(i + 1, files.size(), files[i]);
    const HRESULT result =
        Guarded([&] { return RunOnFile(options, *lumidex, files[i], progress); });
    if (SUCCEEDED(result)) continue;
    failed = true;
    const std::string file = Printable(CleanUtf8(files[i]));
    ReportError(progress, Concat({file, ": ", DescribeResult(result)}));
  }
  return failed ? kExitFailed : kExitOk;
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
