// A way for tests to step in while a tree is read.
#pragma once

#include <functional>
#include <tinyxml.h>
#include <utility>

namespace inktest {

/// An element of a tree in memory that calls a function whenever a reader asks what kind of node it
/// is, so that a test can step in while the tree is read.
class ElementWithHook : public TiXmlElement {
 public:
  ElementWithHook(const char* name, std::function<void()> hook)
      : TiXmlElement(name), hook_(std::move(hook)) {}

  const TiXmlElement* ToElement() const override {
    hook_();
    return this;
  }
  TiXmlElement* ToElement() override {
    hook_();
    return this;
  }

 private:
  std::function<void()> hook_;
};

}  // namespace inktest
