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
  static constexpr std::uint32_t kMostSkipsToOnePlace = 65'536;

  /// Watches `parser` from now on, as long as both live. A program that reads many small files may
  /// allow fewer skips in a row.
  explicit EndlessSkipGuard(PnxParser& parser, std::uint32_t most = kMostSkipsToOnePlace);

  void skippedTo(std::int64_t position) override;

 private:
  PnxParser& parser_;
  std::uint32_t most_;
  std::int64_t place_ = -1;
  std::uint32_t times_ = 0;
};

}  // namespace Orvo
