// A fresh folder for the files a test writes, removed after it, and the
// bytes of files read and written whole.
#pragma once
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

struct ScratchFolder {
  std::filesystem::path dir;
  // Made under the system's temporary folder, unique to the process and call.
  void make_folder(const char* prefix) {
    static int n = 0;
    dir = std::filesystem::temp_directory_path() / (prefix + std::to_string(getpid()) + "_" + std::to_string(++n));
    std::filesystem::create_directories(dir);
  }
  void remove_folder() { std::filesystem::remove_all(dir); }
  std::string at(const std::string& name) const { return (dir / name).string(); }
  static std::vector<uint8_t> file(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    return std::vector<uint8_t>((std::istreambuf_iterator<char>(f)), {});
  }
  static void put(const std::string& path, const std::vector<uint8_t>& b) {
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(b.data()), static_cast<long>(b.size()));
  }
};
