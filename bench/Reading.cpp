#include "Reading.h"

#include "Files.h"
#include "Floor.h"
#include "Measure.h"
#include "Module.h"
#include "Peers.h"

namespace bench {
namespace {

constexpr Patience kPatience = {std::chrono::seconds(10), 11, 501};

void ParseBasic(ILumidex& lumidex, const WCHAR* path) {
  IImageInfo* info = nullptr;
  static_cast<void>(lumidex.ParseBasic(path, &info));
  if (info != nullptr) info->Release();
}

// One object serves all files, as in a host that reads a folder: an Open also releases what the
// Open before it has made.
Subject SubjectOf(const File& file, ILumidex& lumidex) {
  const WCHAR* const path = file.path.c_str();
  const char* const name = file.name.c_str();
  Subject subject = {file.name, {}};
  subject.operations.push_back({"floor", [=] { ReadStart(path); }});
  subject.operations.push_back({"Open", [=, &lumidex] { lumidex.Open(path); }});
  subject.operations.push_back({"ParseBasic", [=, &lumidex] { ParseBasic(lumidex, path); }});
  for (const Peer& peer : AllPeers()) {
    subject.operations.push_back({peer.name, [=, read = peer.read] { read(name); }});
  }
  return subject;
}

}  // namespace

void MeasureReading(const std::string& module, const std::string& folder) {
  const auto lumidex = CreateFromModule(module);
  const std::vector<File> files = PhotographsOf(folder, *lumidex);
  std::vector<Subject> subjects;
  for (const File& file : files) subjects.push_back(SubjectOf(file, *lumidex));
  Measure(subjects, kPatience);
}

}  // namespace bench
