// Times of day as documents write them.
#pragma once

#include <map>
#include <optional>
#include <string_view>

#include "translate/contexts.h"
#include "translate/trace_format.h"

namespace translate {

/// Milliseconds from 1970 in UTC of a date as in "2011-02-22T00:21:40.232+01:00"; the zone may be
/// missing (then it is UTC), the time too. Nothing for other texts.
std::optional<double> timeOfDay(std::string_view text);

/// The moments that a document's timestamps name. What it is given must outlive it.
class Clock {
 public:
  Clock(const InkTree& tree, Contexts& contexts, Remarks& remarks)
      : tree_(tree), contexts_(contexts), remarks_(remarks) {}

  /// In ms; nothing for kNone and for a timestamp that names no time.
  std::optional<double> momentOf(InkTree::Index timestamp);

  /// That of the timestamp with an id.
  std::optional<double> momentOf(std::string_view reference);

 private:
  static constexpr int kLongestChain = 100;

  std::optional<double> read(InkTree::Index timestamp, int chain);

  const InkTree& tree_;
  Contexts& contexts_;
  Remarks& remarks_;
  std::map<InkTree::Index, std::optional<double>> known_;
};

}  // namespace translate
