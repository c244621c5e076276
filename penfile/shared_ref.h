// A counted reference to an object on the heap.
#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>

#include "platform/thread.h"

namespace Orvo {

/// A counted reference to an object on the heap; the last one deletes it through its virtual
/// destructor. All copies of a reference form a group with one counter and one lock, so copies may
/// be made and released in several threads; the object itself is not guarded.
///
/// The destructor of an object may release or assign references, even the one that is being
/// released: a reference leaves its group before the object is deleted.
///
/// T must have a virtual destructor.
template <class T>
class SharedRef {
 public:
  /// Points at nothing, in a new group.
  SharedRef() requires std::has_virtual_destructor_v<T> : SharedRef(nullptr) {}

  /// A new group that owns `object`, which is deleted if there is no memory for the group.
  explicit SharedRef(T* object) requires std::has_virtual_destructor_v<T> {
    std::unique_ptr<T> owned(object);
    auto count = std::make_unique<std::uint32_t>(1);
    lock_ = std::make_unique<platform::CriticalSection>().release();
    count_ = count.release();
    object_ = owned.release();
  }

  SharedRef(const SharedRef& other) { join(other); }

  /// A reference to the same object as its base class.
  template <class U>
  requires std::convertible_to<U*, T*> && std::has_virtual_destructor_v<T> SharedRef(
      const SharedRef<U>& other) {
    join(other);
  }

  SharedRef& operator=(const SharedRef& other) {
    if (this == &other) return *this;
    // Joining first keeps alive what `other` refers to, even if it is part of the old object.
    SharedRef old(other);
    swap(old);
    return *this;
  }

  ~SharedRef() {
    // The destructor of the object may assign this reference again.
    while (lock_ != nullptr)
      release();
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /// Returns a reference to the object; this one then points at nothing, in a new group. Others
  /// that hold the object go on sharing it with the returned one.
  SharedRef handOut() {
    SharedRef out;
    swap(out);
    return out;
  }

 private:
  template <class U>
  friend class SharedRef;

  template <class U>
  void join(const SharedRef<U>& other) {
    if (other.lock_ == nullptr) return;
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete): the count keeps it, unseen there.
    const std::lock_guard guard(*other.lock_);
    ++*other.count_;
    count_ = other.count_;
    object_ = other.object_;
    lock_ = other.lock_;
  }

  void swap(SharedRef& other) noexcept {
    std::swap(count_, other.count_);
    std::swap(object_, other.object_);
    std::swap(lock_, other.lock_);
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
