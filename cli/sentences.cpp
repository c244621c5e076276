#include "cli/sentences.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace cli {

namespace fs = std::filesystem;

std::string counted(std::uint64_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string counted(std::uint64_t count, const std::string& thing) {
  return counted(count, thing, thing + "s");
}

void addPart(std::string& sentence, const std::string& part) {
  if (!sentence.empty()) sentence += "; ";
  sentence += part;
}

std::string joined(std::string sentence, const std::string& part) {
  if (!part.empty()) addPart(sentence, part);
  return sentence;
}

std::string explainOpening(const fs::path& file) {
  std::error_code error;
  const fs::file_status status = fs::status(file, error);
  if (status.type() == fs::file_type::not_found)
    return "there is no such file; check its name and folder";
  if (fs::is_directory(status)) return kThisIsAFolder;
  errno = 0;
  const std::ifstream probe(file, std::ios::binary);
  const int reason = errno;
  if (!probe && reason == EACCES)
    return "permission to read the file is denied; check its permissions";
  return "the file could not be opened: " +
         std::generic_category().message(reason != 0 ? reason : error.value());
}

}  // namespace cli
