#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/thread.h"

namespace Orvo {

/// A counted reference to an object on the heap; the last one deletes it through its virtual
/// destructor. All copies of a reference form a group with one counter and one lock, so copies may
/// be made and released in several threads; the object itself is not guarded.
///
/// An object whose destructor releases or assigns references, be it the very one that is being
/// released, is safe: a reference lets go of its group before the object is deleted.
template <typename T>
class SharedRef {
 public:
  /// A group around nothing.
  SharedRef() : SharedRef(nullptr) {}

  /// A new group that owns `object`.
  explicit SharedRef(T* object) {
    std::unique_ptr<T> owned(object);
    auto count = std::make_unique<std::uint32_t>(1);
    lock_ = std::make_unique<platform::CriticalSection>().release();
    count_ = count.release();
    object_ = owned.release();
  }

  SharedRef(const SharedRef& other) { join(other); }

  /// A reference to the same object as its base class.
  template <typename U>
  requires std::convertible_to<U*, T*> SharedRef(const SharedRef<U>& other) { join(other); }

  SharedRef& operator=(const SharedRef& other) {
    if (this == &other) return *this;
    // Joining first keeps alive what `other` refers to, even if it is part of the old object.
    SharedRef old(other);
    std::swap(count_, old.count_);
    std::swap(object_, old.object_);
    std::swap(lock_, old.lock_);
    return *this;
  }

  ~SharedRef() {
    // The object that is deleted may assign this reference anew.
    while (lock_ != nullptr)
      release();
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /// Hands the object out into a fresh group; this reference, which must be the only one of its
  /// group, then points at nothing.
  SharedRef handOut() {
    SharedRef fresh;
    fresh.object_ = std::exchange(object_, nullptr);
    return fresh;
  }

 private:
  template <typename U>
  friend class SharedRef;

  template <typename U>
  void join(const SharedRef<U>& other) {
    if (other.lock_ == nullptr) return;
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete): the count, not followed there, keeps it.
    const std::lock_guard guard(*other.lock_);
    ++*other.count_;
    count_ = other.count_;
    object_ = other.object_;
    lock_ = other.lock_;
  }

  void release() {
    std::uint32_t* count = std::exchange(count_, nullptr);
    T* object = std::exchange(object_, nullptr);
    platform::CriticalSection* lock = std::exchange(lock_, nullptr);
    if (lock == nullptr) return;

    lock->lock();
    const bool last = --*count == 0;
    if (last) {
      delete count;
      delete object;
    }
    lock->unlock();
    if (last) delete lock;
  }

  // All three are null only while the reference is being released.
  std::uint32_t* count_ = nullptr;
  T* object_ = nullptr;
  platform::CriticalSection* lock_ = nullptr;
};

}  // namespace Orvo
