// Objects of the host that the plug-in holds by handle and releases.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "embedded/handles.h"

namespace embedded {

/// Owns the objects. A handle is never reused, so using one after its object was removed is
/// noticed.
template <class Thing, HandleKind kind>
class Store {
 public:
  void* add(Thing thing) {
    things_.push_back(std::make_unique<Thing>(std::move(thing)));
    ++live_;
    return toHandle<void*>(kind, things_.size());
  }

  /// Null when the handle is null, of another kind, or of an object that was removed.
  Thing* find(const void* handle) const {
    const std::size_t number = numberOf(handle, kind);
    return number == 0 || number > things_.size() ? nullptr : things_[number - 1].get();
  }

  /// True for the handle of an object that was removed.
  bool wasRemoved(const void* handle) const {
    const std::size_t number = numberOf(handle, kind);
    return number != 0 && number <= things_.size() && things_[number - 1] == nullptr;
  }

  void remove(const void* handle) {
    if (find(handle) == nullptr) return;
    things_[numberOf(handle, kind) - 1].reset();
    --live_;
  }

  std::size_t live() const { return live_; }

 private:
  std::vector<std::unique_ptr<Thing>> things_;
  std::size_t live_ = 0;
};

}  // namespace embedded
