// A virtual printer for an example: started when no port is named, behind COM1, and shown at the end.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>

class VirtualPrinter {
 public:
  VirtualPrinter() {
    std::string name = (std::filesystem::temp_directory_path() / "zentaro-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder can be made");
    folder_ = name;
    const auto link = folder_ / "printer";
    program_ = popen(
        ("zentaro-printer --quiet --link " + link.string() + " --paper " + paper().string() + " >/dev/null")
            .c_str(),
        "w");
    for (int tries = 0; !std::filesystem::exists(link); ++tries) {
      if (tries == 100) throw std::runtime_error("zentaro-printer does not start; is it in PATH?");
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    std::ofstream(settings()) << "[Config\\ModComm]\nCOM1=" << link.string() << "\n";
    setenv("ZENTARO_SETTINGS", settings().c_str(), 1);
    setenv("ZENTARO_BOOKS", (folder_ / "books.db").c_str(), 1);
  }
  ~VirtualPrinter() {
    std::fputs("quit\n", program_);
    pclose(program_);
    std::cout << std::ifstream(paper()).rdbuf();
    std::filesystem::remove_all(folder_);
  }
  VirtualPrinter(const VirtualPrinter&) = delete;
  VirtualPrinter& operator=(const VirtualPrinter&) = delete;

 private:
  std::filesystem::path paper() const { return folder_ / "paper.txt"; }
  std::filesystem::path settings() const { return folder_ / "settings.ini"; }

  std::filesystem::path folder_;
  FILE* program_ = nullptr;
};
