// make_fuzz_seeds FOLDER: writes the seeds of every target into FOLDER/TARGET, without what stood
// there before.

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "Seeds.h"

namespace {

struct Target {
  const char* name;
  fuzz::Seeds (*makeSeeds)();
};

// clang-format off
constexpr Target kTargets[] = {
    {"container",      fuzz::ContainerSeeds},
    {"tiff",           fuzz::TiffSeeds},
    {"xmp",            fuzz::XmpSeeds},
    {"iptc",           fuzz::IptcSeeds},
    {"photoshop",      fuzz::PhotoshopSeeds},
    {"icc",            fuzz::IccSeeds},
    {"maker_note",     fuzz::MakerNoteSeeds},
    {"jpeg_locator",   fuzz::JpegLocatorSeeds},
    {"png_locator",    fuzz::PngLocatorSeeds},
    {"embed_xmp",      fuzz::EmbedXmpSeeds},
    {"write_metadata", fuzz::WriteMetadataSeeds},
    {"getters",        fuzz::GettersSeeds},
};
// clang-format on

bool Write(const std::filesystem::path& path, const test::Bytes& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  file.close();
  return file.good();
}

bool WriteSeeds(const std::filesystem::path& folder, const fuzz::Seeds& seeds) {
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  for (const auto& [name, bytes] : seeds) {
    if (Write(folder / name, bytes)) continue;
    std::fprintf(stderr, "make_fuzz_seeds: cannot write %s\n", (folder / name).string().c_str());
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: make_fuzz_seeds FOLDER\n", stderr);
    return 2;
  }
  for (const Target& target : kTargets) {
    if (!WriteSeeds(std::filesystem::path(argv[1]) / target.name, target.makeSeeds())) return 1;
  }
  return 0;
}
