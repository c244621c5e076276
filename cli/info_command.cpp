#include "cli/info_command.h"

#include "cli/batch.h"
#include "cli/info.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

class Teller {
 public:
  explicit Teller(const InfoOptions& options) : options_(options), batch_(options, "") {}

  bool tellAll() {
    return batch_.run([this](const fs::path& file, const fs::path&) { return tell(file); });
  }

 private:
  bool tell(const fs::path& file) {
    const PreparedInput input(file, options_.ink);
    if (input.problem()) return batch_.fail(file, *input.problem());
    const Info info = infoOf(nativeName(batch_.nameOf(file)), input);
    const bool isWhole = info.found.failure.empty();
    if (!isWhole) batch_.fail(file, info.found.failure);
    if (isWhole || info.drawing.points > 0) {
      batch_.sayLine(options_.json ? infoToJson(info) : infoToText(info));
    }
    return isWhole;
  }

  const InfoOptions& options_;
  Batch batch_;
};

}  // namespace

ExitStatus tellAboutFiles(const InfoOptions& options) {
  return Teller(options).tellAll() ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace cli
