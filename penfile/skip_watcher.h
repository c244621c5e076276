// Watching the packets that the parser skips.
#pragma once

#include <cstdint>

namespace Orvo {

class PnxParser;

/// Is told where the parser continues whenever it has skipped a packet.
class SkipWatcher {
 public:
  /// `position`: where the next packet will be read, in bytes from the start of the file.
  virtual void skippedTo(std::int64_t position) = 0;

 protected:
  ~SkipWatcher() = default;
};

/// Stops a parser that would read one packet of length 0 for ever: the 65,536th skip in a row to
/// the same place sets the parser's `finished`, and the drawing up to that point is complete.
class EndlessSkipGuard final : public SkipWatcher {
 public:
  /// Watches `parser` from now on, as long as both live.
  explicit EndlessSkipGuard(PnxParser& parser);

  void skippedTo(std::int64_t position) override;

 private:
  static constexpr std::uint32_t kMostSkipsToOnePlace = 65'536;

  PnxParser& parser_;
  std::int64_t place_ = -1;
  std::uint32_t times_ = 0;
};

}  // namespace Orvo
