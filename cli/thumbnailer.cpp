// The program penwick-thumbnailer, which file managers run: penwick-thumbnailer FILE OUT.png SIZE
#include <new>

#include "cli/report.h"
#include "cli/terminal_text.h"
#include "cli/thumbnail.h"
#include "platform/standard_streams.h"
#include "text/numbers.h"

namespace {

using cli::ExitStatus;

ExitStatus runThumbnailer(int count, char** words) {
  if (count != 4) return cli::wrongUsage("usage: penwick-thumbnailer FILE OUT.png SIZE");
  const auto size = text::wholeNumber<int>(words[3]);
  if (!size || *size < cli::kSmallestThumbnail || *size > cli::kLargestThumbnail) {
    return cli::wrongUsage(cli::inQuotes(words[3]) + " is not a size in pixels from 1 to 4096");
  }
  return cli::makeThumbnail(cli::pathOf(words[1]), cli::pathOf(words[2]), *size);
}

}  // namespace

int main(int count, char** words) {
  if (!platform::openClosedStandardStreams()) return static_cast<int>(ExitStatus::failed);
  try {
    return static_cast<int>(runThumbnailer(count, words));
  } catch (const std::bad_alloc&) {
    cli::reportNotEnoughMemory();
  } catch (const std::exception& error) {
    cli::reportError(error.what());
  }
  return static_cast<int>(ExitStatus::failed);
}
