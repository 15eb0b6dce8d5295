#include "CommandLine.h"

#include <charconv>
#include <memory>
#include <string_view>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "Text.h"
#include "write/Assignments.h"

namespace tool {
namespace {

constexpr const char* kVersion = "lumidex " LUMIDEX_VERSION;

constexpr const char* kFooter =
    "A folder stands for the photographs in it and below it. Exit codes: 0 success, 1 some file\n"
    "failed, 2 wrong usage. Examples:\n"
    "  lumidex show photo.jpg\n"
    "  lumidex show --json photos > photos.ndjson\n"
    "  find . -name '*.jpg' | lumidex panorama -\n"
    "  lumidex write photo.jpg copy.jpg --set GPSPosition=48.8584,2.2945";

constexpr const char* kShowFooter =
    "Without --json and --records: everything that the files hold, each value marked by whether a\n"
    "host gets it from Open, or, with --mask, from a parse with that mask.\n"
    "Categories: 0x001 image basics, 0x002 IFD0, 0x004 EXIF, 0x008 GPS, 0x010 IPTC, 0x020 dates,\n"
    "0x040 XMP, 0x080 maker-note summary, 0x200 IFD1, 0x400 maker note, 0x800 ICC profile;\n"
    "0x80000000 keeps values from being merged. Open uses 0x4DF.";

constexpr const char* kXmpFooter =
    "The packet is looked for where embed puts it: behind the EXIF segment or the start of a "
    "JPEG,\n"
    "and, in a PNG, in a text chunk of a panorama.";

constexpr const char* kEmbedFooter =
    "A JPEG that holds a packet already is refused, and so is a PNG that holds one of a panorama.";

constexpr const char* kWriteFooter =
    "NAME is the name of a tag as show prints it; of two values of one tag the later counts. "
    "VALUE:\n"
    "  numbers     ISOs and codes as whole numbers, others as 2.8 or 28/10, with the unit that\n"
    "              show prints or without: 1/250, f/2.8, 50 mm; several separated by commas\n"
    "  dates       2024:05:01 12:00:00, 2024:05:01 for GPSDateStamp, 12:00:00 for GPSTimeStamp\n"
    "  texts       UTF-8 as it stands\n"
    "  versions    0232 for ExifVersion, 2.3.0.0 for GPSVersionID\n"
    "GPSPosition=48.8584,2.2945 sets latitude, longitude and their references; south and west are\n"
    "negative. The EXIF segment of SRC is kept behind the new one, so that show, which reads "
    "both,\n"
    "still sees its values.";

void AddFiles(CLI::App& command, Command which, Options& options) {
  command
      .add_option("FILE", options.files,
                  "photographs, or folders of photographs; - for a list of them on stdin")
      ->type_name("");
  command.add_option("-@", options.lists, "A file with a list of paths, one a line, in UTF-8")
      ->type_name("LIST")
      ->allow_extra_args(false);
  command.callback([&options, which] {
    options.command = which;
    if (options.files.empty() && options.lists.empty()) throw CLI::RequiredError("FILE or -@");
  });
}

void AddCommand(CLI::App& app, const char* name, const char* description, Command command,
                Options& options) {
  CLI::App* added = app.add_subcommand(name, description);
  AddFiles(*added, command, options);
}

void AddShow(CLI::App& app, Options& options) {
  CLI::App* show = app.add_subcommand("show", "Print what photographs hold and what a host gets");
  show->footer(kShowFooter);
  AddFiles(*show, Command::Show, options);
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
  show->add_option("--cut", options.cut, "Cut values that are longer than N characters")
      ->type_name("N")
      ->check(CLI::PositiveNumber)
      ->excludes(json);
  show->add_option_function<std::string>(
          "--mask", [&options](const std::string& text) { options.mask = ParseMask(text); },
          "The categories to read and to list (default 0xEFF, all)")
      ->type_name("N")
      ->check([](const std::string& text) {
        return ParseMask(text) ? std::string() : Concat({"'", text, "' is no 32-bit number"});
      });
}

void AddPath(CLI::App& command, const char* name, std::string& path, const char* description) {
  command.add_option(name, path, description)->required()->type_name("");
}

void AddShowOutput(CLI::App& command, Options& options) {
  command.add_flag("--show", options.showOutput, "Print the written file like show does");
}

void AddXmp(CLI::App& app, Options& options) {
  CLI::App* xmp = app.add_subcommand("xmp", "Print the XMP packet of a JPEG or PNG, byte by byte");
  xmp->callback([&options] { options.command = Command::Xmp; });
  xmp->footer(kXmpFooter);
  AddPath(*xmp, "FILE", options.source, "the photograph");
}

void AddEmbed(CLI::App& app, Options& options) {
  CLI::App* embed =
      app.add_subcommand("embed", "Write a copy of a JPEG or PNG with an XMP packet from a file");
  embed->callback([&options] { options.command = Command::Embed; });
  embed->footer(kEmbedFooter);
  AddPath(*embed, "FILE", options.source, "the photograph");
  embed->add_option("XMP", options.packet, "the file with the packet")->required()->type_name("");
  AddPath(*embed, "OUT", options.output, "the new file; FILE itself only for a PNG");
  AddShowOutput(*embed, options);
}

void SetRecords(const std::vector<std::string>& assignments, Options& options) {
  for (const std::string& text : assignments) {
    const std::string error = AddAssignment(text, options.newRecords);
    if (!error.empty()) throw CLI::ValidationError("--set", error);
  }
}

void AddWrite(CLI::App& app, Options& options) {
  CLI::App* write = app.add_subcommand("write", "Write a copy of a JPEG with new EXIF values");
  write->callback([&options] {
    options.command = Command::Write;
    if (options.newRecords.empty() && !options.packet) throw CLI::RequiredError("--set or --xmp");
  });
  write->footer(kWriteFooter);
  AddPath(*write, "SRC", options.source, "the photograph");
  AddPath(*write, "DST", options.output, "the new file");
  // One value each, so that paths may follow.
  CLI::Option* set = write->add_option_function<std::vector<std::string>>(
      "--set", [&options](const auto& texts) { SetRecords(texts, options); },
      "A value to write; may be given again and again");
  set->type_name("NAME=VALUE")->allow_extra_args(false);
  write->add_option("--thumbnail", options.thumbnail, "A JPEG to write as the thumbnail")
      ->type_name("JPEG")
      ->needs(set);
  write->add_option("--xmp", options.packet, "A file with an XMP packet to embed")
      ->type_name("FILE");
  write->add_flag("--overwrite", options.overwrite,
                  "Replace DST, and accept an SRC that has an EXIF segment");
  AddShowOutput(*write, options);
}

std::unique_ptr<CLI::App> MakeApp(Options& options) {
  auto app = std::make_unique<CLI::App>("Reads and writes the metadata of photographs.", "lumidex");
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
  AddXmp(*app, options);
  AddEmbed(*app, options);
  AddWrite(*app, options);
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
