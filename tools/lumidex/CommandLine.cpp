#include "CommandLine.h"

#include <charconv>
#include <memory>
#include <string_view>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "Text.h"

namespace tool {
namespace {

constexpr const char* kVersion = "lumidex " LUMIDEX_VERSION;

constexpr const char* kFooter =
    "A folder stands for the photographs in it and below it. Exit codes: 0 success, 1 some file\n"
    "failed, 2 wrong usage.";

constexpr const char* kShowFooter =
    "Without --json and --records: everything that the files hold, each value marked by whether a\n"
    "host gets it from Open, or, with --mask, from a parse with that mask.\n"
    "Categories: 0x001 image basics, 0x002 IFD0, 0x004 EXIF, 0x008 GPS, 0x010 IPTC, 0x020 dates,\n"
    "0x040 XMP, 0x080 maker-note summary, 0x200 IFD1, 0x400 maker note, 0x800 ICC profile;\n"
    "0x80000000 keeps values from being merged. Open uses 0x4DF.";

void AddFiles(CLI::App& command, Options& options) {
  command.add_option("FILE", options.files, "photographs, or folders of photographs")
      ->required()
      ->type_name("");
}

void AddCommand(CLI::App& app, const char* name, const char* description, Command command,
                Options& options) {
  CLI::App* added = app.add_subcommand(name, description);
  added->callback([&options, command] { options.command = command; });
  AddFiles(*added, options);
}

void AddShow(CLI::App& app, Options& options) {
  CLI::App* show = app.add_subcommand("show", "Print what photographs hold and what a host gets");
  show->callback([&options] { options.command = Command::Show; });
  show->footer(kShowFooter);
  AddFiles(*show, options);
  CLI::Option* records =
      show->add_flag("--records", options.records, "Print the result records alone");
  CLI::Option* json =
      show->add_flag("--json", options.json, "Print one JSON object a line for every file");
  json->excludes(records);
  show->add_flag("--raw", options.raw, "With --json: add the exact bytes of every record")
      ->needs(json);
  show->add_flag("--store", options.store, "With --json: add everything that the store holds")
      ->needs(json);
  show->add_flag("--trace", options.trace, "Add the lines of the module's debug log")
      ->excludes(records);
  show->add_option_function<std::string>(
          "--mask", [&options](const std::string& text) { options.mask = ParseMask(text); },
          "The categories to read and to list (default 0xEFF, all)")
      ->type_name("N")
      ->check([](const std::string& text) {
        return ParseMask(text) ? std::string() : Concat({"'", text, "' is no 32-bit number"});
      });
}

std::unique_ptr<CLI::App> MakeApp(Options& options) {
  auto app = std::make_unique<CLI::App>("Reads the metadata of photographs.", "lumidex");
  // A path may begin with a slash on every platform; options do not.
  app->allow_windows_style_options(false);
  app->set_version_flag("--version", kVersion, "Print the version and exit");
  app->set_help_flag("-h,--help", "Print this help and exit");
  app->require_subcommand(1);
  app->footer(kFooter);
  AddShow(*app, options);
  AddCommand(*app, "type", "Print the file type that a host is told", Command::Type, options);
  AddCommand(*app, "panorama", "Print the panorama flag and the pose angles", Command::Panorama,
             options);
  AddCommand(*app, "mark", "Append the fixed 64-byte trailer block to JPEG files", Command::Mark,
             options);
  return app;
}

const CLI::App& ChosenApp(const CLI::App& app) {
  const auto chosen = app.get_subcommands();
  return chosen.empty() ? app : *chosen.front();
}

int ReportUsageError(const CLI::App& app, const CLI::ParseError& error, Console& console) {
  const CLI::App& chosen = ChosenApp(app);
  const std::string command = &chosen == &app ? "lumidex" : "lumidex " + chosen.get_name();
  console.Err(Concat({"lumidex: ", Printable(error.what()), "; see ", command, " --help\n"}));
  return kExitUsage;
}

}  // namespace

std::optional<std::uint32_t> ParseMask(const std::string& text) {
  const bool isHex = text.starts_with("0x") || text.starts_with("0X");
  const std::string_view digits = std::string_view(text).substr(isHex ? 2 : 0);
  const char* last = digits.data() + digits.size();
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), last, value, isHex ? 16 : 10);
  if (error != std::errc() || end != last) return std::nullopt;
  return value;
}

std::optional<int> ParseCommandLine(const std::vector<std::string>& arguments, Console& console,
                                    Options& options) {
  const auto app = MakeApp(options);
  try {
    // The library takes the arguments from the end of the list.
    app->parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    return std::nullopt;
  } catch (const CLI::CallForHelp&) {
    console.Out(app->help());
    return kExitOk;
  } catch (const CLI::CallForVersion&) {
    console.Out(std::string(kVersion) + "\n");
    return kExitOk;
  } catch (const CLI::ParseError& error) {
    return ReportUsageError(*app, error, console);
  }
}

}  // namespace tool
