// A value that is assigned only when it differs.
#pragma once

#include <utility>

namespace Orvo {

/// A value with a virtual equality test. It always holds a value; there is no unset state.
template <class T>
class Property {
 public:
  Property() = default;
  Property(T initial) : value(std::move(initial)) {}

  /// Assigns to a default T, so that T's own assignment decides what is copied: for `Point`, field
  /// by field.
  Property(const Property& other) { value = other.value; }

  /// Writes only when the two compare unequal: an equal value is never rewritten, so assigning 0.0
  /// to -0.0 leaves -0.0.
  Property& operator=(const Property& other) {
    if (this != &other && !(*this == other)) value = other.value;
    return *this;
  }

  /// True when the values are equal by the rules of T: IEEE for double, identity for pointers, and
  /// a deliberately partial rule for `Point` (see there).
  virtual bool operator==(const Property& other) const { return value == other.value; }

  virtual ~Property() = default;

  T value{};
};

}  // namespace Orvo
