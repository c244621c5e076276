#include "plugin/document_setup.h"

#include "plugin/suites.h"

using namespace hostapi;

namespace {

// Slot 40 either changes the three numbers or, being a function without arguments, leaves them.
bool slot40IsTargeting() {
  constexpr std::int16_t kUntouched = 0x7FFF;
  std::int16_t type = kUntouched;
  std::int16_t x = kUntouched;
  std::int16_t y = kUntouched;
  call(&AIDocumentSuite::GetDocumentTargeting, &type, &x, &y);
  return type != kUntouched || x != kUntouched || y != kUntouched;
}

}  // namespace

AIErr DocumentSetupCalls::get(AIDocumentSetup& setup) {
  return call(
      older() ? &AIDocumentSuite::OlderGetDocumentSetup : &AIDocumentSuite::GetDocumentSetup,
      &setup);
}

AIErr DocumentSetupCalls::set(const AIDocumentSetup& setup) {
  return call(
      older() ? &AIDocumentSuite::OlderSetDocumentSetup : &AIDocumentSuite::SetDocumentSetup,
      &setup);
}

bool DocumentSetupCalls::older() {
  if (layout_ == Layout::notAsked) layout_ = slot40IsTargeting() ? Layout::older : Layout::newer;
  return layout_ == Layout::older;
}
