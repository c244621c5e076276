// Replays the files of folders through one fuzz target, as an ordinary program: replay_TARGET
// FOLDER... A target ends the program where it finds something wrong; the last name printed is then
// that of the file.

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Paths = std::vector<std::filesystem::path>;

// The files of the folders, in order; none where one of the folders has none. A target may change
// the current folder, so their paths are absolute.
Paths filesOf(std::span<char*> folders) {
  Paths files;
  for (const char* folder : folders) {
    const std::size_t before = files.size();
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::absolute(folder)))
      files.push_back(entry.path());
    if (files.size() == before) return {};
  }
  std::ranges::sort(files);
  return files;
}

void replay(const std::filesystem::path& path) {
  std::cerr << path.string() << std::endl;
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int count, char** words) {
  const Paths files = filesOf(std::span(words, static_cast<std::size_t>(count)).subspan(1));
  for (const std::filesystem::path& file : files)
    replay(file);
  std::cerr << files.size() << " files replayed\n";
  return files.empty() ? 1 : 0;
}
