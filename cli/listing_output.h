// Lines for standard output, many of them.
#pragma once

#include <string>
#include <string_view>

namespace cli {

/// Collects lines and passes them on in parts.
class ListingOutput {
 public:
  ListingOutput() = default;
  ~ListingOutput() { flush(); }
  ListingOutput(const ListingOutput&) = delete;
  ListingOutput& operator=(const ListingOutput&) = delete;

  void add(std::string_view line);

  /// Passes on what was collected. False when nobody takes it any more.
  bool flush();

  bool isOpen() const { return isOpen_; }

 private:
  std::string lines_;
  bool isOpen_ = true;
};

/// Whether whoever read standard output has closed it, as `head` does.
bool readerHasGone();

}  // namespace cli
