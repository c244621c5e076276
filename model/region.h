// An ordered container with a box around its elements: what strokes, layers and documents are.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "model/bounding_box.h"
#include "model/sequence.h"
#include "model/visitors.h"

namespace Orvo {

/// An ordered container of T by value with a box that grows as elements arrive. T is `Point`,
/// `Stroke` or `Layer`. Changing a stored element later does not change the box. A region belongs
/// to one thread at a time.
template <class T>
class Region {
 public:
  using iterator = typename Sequence<T>::iterator;
  using const_iterator = typename Sequence<T>::const_iterator;

  virtual ~Region() = default;

  /// Adds a copy at the back and widens the box. After `std::bad_alloc` the elements are unchanged,
  /// but the box may already be wider.
  virtual void append(const T& element) {
    includeInBounds(element);
    elements_.pushBack(element);
  }

  /// Calls `append`.
  virtual void add(const T& element) { append(element); }

  /// Adds a copy at the front and widens the box, as `append` does.
  virtual void prepend(const T& element) = 0;

  /// Rotates every element, then the box, about the origin. An angle of 0 changes nothing.
  virtual void rotate(float radians) {
    if (radians == 0.0F) return;
    Rotator<T> rotator(radians);
    accept(rotator);
    rotateBox(bounds_, radians);
  }

  /// Moves every element, then the box.
  virtual void shift(double dx, double dy) {
    Shifter<T> shifter(dx, dy);
    accept(shifter);
    shiftBox(bounds_, dx, dy);
  }

  /// Widens the box to include the element: a point, or the box of a child.
  virtual void extendBounds(const T& element) = 0;

  std::size_t size() const { return elements_.size(); }

  /// The last element, which must exist.
  T& back() { return *elements_.last(); }
  const T& back() const { return *elements_.last(); }

  /// The last element; null if there is none.
  T* last() { return elements_.last(); }

  /// Assigns element `index`, counted from the front, to `out`. False, with `out` unchanged, when
  /// there is no such element.
  bool at(std::size_t index, T& out) const {
    if (index >= size()) return false;
    out = elements_[index];
    return true;
  }

  /// Visits the stored elements front to back; stops at the first false and returns it.
  bool accept(RegionVisitor<T>& visitor) {
    for (T& element : elements_) {
      if (!visitor.visit(element)) return false;
    }
    return true;
  }

  BoundingBox& bounds() { return bounds_; }
  const BoundingBox& bounds() const { return bounds_; }

  iterator begin() { return elements_.begin(); }
  iterator end() { return elements_.end(); }
  const_iterator begin() const { return elements_.begin(); }
  const_iterator end() const { return elements_.end(); }

 protected:
  // Only whole objects may be copied and assigned: through a base they would be sliced.
  Region() = default;
  Region(const Region&) = default;
  Region(Region&&) noexcept = default;
  Region& operator=(const Region&) = default;

  void pushFront(const T& element) {
    includeInBounds(element);
    elements_.pushFront(element);
  }

 private:
  void includeInBounds(const T& element);

  BoundingBox bounds_;
  Sequence<T> elements_;
};

/// A region of strokes or layers with annotations: free-form texts by type, in ascending byte order
/// of the types.
template <class T>
class AnnotatedRegion : public Region<T> {
 public:
  using Annotations = std::map<std::string, std::string>;

  Annotations& annotations() { return annotations_; }
  const Annotations& annotations() const { return annotations_; }

 protected:
  AnnotatedRegion() = default;
  AnnotatedRegion(const AnnotatedRegion&) = default;
  AnnotatedRegion(AnnotatedRegion&&) noexcept = default;
  AnnotatedRegion& operator=(const AnnotatedRegion&) = default;

 private:
  Annotations annotations_;
};

/// What an element adds to the box of its container: a point itself, or the box of a child.
inline const Point& extent(const Point& point) {
  return point;
}
template <class T>
const BoundingBox& extent(const Region<T>& child) {
  return child.bounds();
}

template <class T>
void Region<T>::includeInBounds(const T& element) {
  if (elements_.empty()) {
    startBox(bounds_, extent(element));
  } else {
    extendBounds(element);
  }
}

}  // namespace Orvo
