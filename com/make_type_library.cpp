// Makes the type libraries and manifests of the server for both widths: make_type_library FOLDER.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "com/manifest.h"
#include "com/slot_offsets.h"
#include "com/type_library.h"

namespace {

void correctSlotOffsets(const std::filesystem::path& path) {
  std::ifstream input(path, std::ios::binary);
  std::string library(std::istreambuf_iterator<char>(input), {});
  input.close();
  zentaro::com::correctSlotOffsets(library);
  std::ofstream(path, std::ios::binary) << library;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 2) {
    std::fputs("make_type_library FOLDER\n", stderr);
    return 2;
  }
  const std::wstring folder = arguments[1];
  ::CoInitialize(nullptr);
  try {
    zentaro::com::makeTypeLibrary(SYS_WIN64, folder + L"/Zentaro64.tlb");
    zentaro::com::makeTypeLibrary(SYS_WIN32, folder + L"/Zentaro32.tlb");
    correctSlotOffsets(folder + L"/Zentaro32.tlb");
    for (const char* const processor : {"amd64", "x86"})
      std::ofstream(std::filesystem::path(folder) / (std::string("Zentaro.") + processor + ".manifest"),
                    std::ios::binary)
          << zentaro::com::serverManifest(processor);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "type library: %s\n", error.what());
    return 1;
  }
  return 0;
}
