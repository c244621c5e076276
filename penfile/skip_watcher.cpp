#include "penfile/skip_watcher.h"

#include "penfile/pnx_parser.h"

namespace Orvo {

EndlessSkipGuard::EndlessSkipGuard(PnxParser& parser, std::uint32_t most)
    : parser_(parser), most_(most) {
  parser.watchSkips(*this);
}

void EndlessSkipGuard::skippedTo(std::int64_t position) {
  times_ = position == place_ ? times_ + 1 : 1;
  place_ = position;
  if (times_ == most_) parser_.finished = true;
}

}  // namespace Orvo
