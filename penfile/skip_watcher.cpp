#include "penfile/skip_watcher.h"

#include "penfile/pnx_parser.h"

namespace Orvo {

EndlessSkipGuard::EndlessSkipGuard(PnxParser& parser) : parser_(parser) {
  parser.watchSkips(*this);
}

void EndlessSkipGuard::skippedTo(std::int64_t position) {
  times_ = position == place_ ? times_ + 1 : 1;
  place_ = position;
  if (times_ == kMostSkipsToOnePlace) parser_.finished = true;
}

}  // namespace Orvo
