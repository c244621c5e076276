#include "cli/listing_output.h"

#include <cerrno>
#include <cstdio>

namespace cli {

namespace {

bool hasGone = false;

}  // namespace

void ListingOutput::add(std::string_view line) {
  constexpr std::size_t kPart = 65536;
  lines_.append(line) += '\n';
  if (lines_.size() >= kPart) flush();
}

bool ListingOutput::flush() {
  if (!isOpen_ || lines_.empty()) return isOpen_;
  errno = 0;
  isOpen_ = std::fwrite(lines_.data(), 1, lines_.size(), stdout) == lines_.size() &&
            std::fflush(stdout) == 0;
  if (!isOpen_ && errno == EPIPE) hasGone = true;
  lines_.clear();
  return isOpen_;
}

bool readerHasGone() {
  return hasGone;
}

}  // namespace cli
