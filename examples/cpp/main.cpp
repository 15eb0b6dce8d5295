// A host in C++ with the wrapper: loads the module by its path, prints what a photograph holds, and
// names an artist in it.
//
//   lumidex_cpp_example MODULE PHOTO [ARTIST]
//
// MODULE is LumidexMgr.dll or LumidexMgr.so; on Windows it may be "-" for the one that the system
// activates. With ARTIST the photograph is changed: it is replaced in one step by a new file that
// was read back, and keeps its times.

#include <exception>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include <lumidex/Lumidex.hpp>

namespace {

namespace fs = std::filesystem;

// One overload for each type of value.
void Print(const std::string& text) {
  std::cout << ' ' << text;
}
void Print(const std::u16string& text) {
  std::cout << ' ' << text.size() << " UTF-16 units";
}
void Print(const std::vector<std::uint8_t>& bytes) {
  std::cout << std::hex << std::setfill('0');
  for (const unsigned byte : bytes) std::cout << ' ' << std::setw(2) << byte;
  std::cout << std::dec;
}
template <class Integer>
void PrintItem(const lumidex::BasicRational<Integer>& value) {
  std::cout << value.numerator << '/' << value.denominator;
}
template <class Number>
void PrintItem(Number value) {
  std::cout << value;
}
template <class Item>
void Print(const std::vector<Item>& items) {
  for (const Item& item : items) {
    std::cout << ' ';
    PrintItem(item);
  }
}

void PrintAngle(const char* name, const std::optional<float>& angle) {
  if (angle) std::cout << name << ": " << *angle << '\n';
}

void Show(const lumidex::Photo& photo) {
  std::cout << "panorama: " << (photo.IsPanorama() ? "yes" : "no") << '\n';
  const lumidex::Pose pose = photo.Pose();
  PrintAngle("heading", pose.heading);
  PrintAngle("pitch", pose.pitch);
  PrintAngle("roll", pose.roll);
  if (photo.XmpPacket()) std::cout << "packet: yes\n";
  for (const lumidex::Record& record : photo.Records()) {
    std::cout << record.group << ' ' << record.id << ':';
    std::visit([](const auto& value) { Print(value); }, record.value);
    std::cout << '\n';
  }
}

void NameArtist(const lumidex::Module& module, const fs::path& photo, const std::string& artist) {
  constexpr std::uint32_t kArtist = 315;
  lumidex::Edit edit;
  edit.records.push_back({LMD_GROUP_IFD0, kArtist, artist});
  lumidex::SaveOptions options;
  options.keepTimes = true;
  lumidex::Save(module, photo, edit, options);
}

lumidex::Module LoadModule(const std::string& path) {
#ifdef _WIN32
  if (path == "-") return lumidex::Module::Activate();
#endif
  return lumidex::Module::Load(path);
}

}  // namespace

// On Windows these arguments are in the system's code page; a program for every name has wmain.
int main(int argc, char** argv) {
  if (argc != 3 && argc != 4) {
    std::cerr << "usage: lumidex_cpp_example MODULE PHOTO [ARTIST]\n";
    return 2;
  }
#ifdef _WIN32
  // Only the activation by the system needs an apartment.
  CoInitializeEx(nullptr, COINIT_MULTITHREADED);
#endif
  try {
    const lumidex::Module module = LoadModule(argv[1]);
    Show(module.Open(argv[2]));
    if (argc == 4) NameArtist(module, argv[2], argv[3]);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  return 0;
}
