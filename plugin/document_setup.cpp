#include "plugin/document_setup.h"

#include "plugin/suites.h"

using namespace hostapi;

// A version number is no larger than this; the host's error codes are larger or negative.
static constexpr std::int32_t kHighestVersion = 99;

AIErr DocumentSetupCalls::get(AIDocumentSetup& setup) {
  if (layout_ == Layout::unknown) layout_ = askHost();
  return call(layout_ == Layout::older ? &AIDocumentSuite::OlderGetDocumentSetup
                                       : &AIDocumentSuite::GetDocumentSetup,
              &setup);
}

AIErr DocumentSetupCalls::set(const AIDocumentSetup& setup) {
  return call(layout_ == Layout::older ? &AIDocumentSuite::OlderSetDocumentSetup
                                       : &AIDocumentSuite::SetDocumentSetup,
              &setup);
}

// Slot 40 either changes at least one of the three numbers, or it is the function without arguments
// that gives a version number. Anything else, such as a failed call, leaves the layout unknown.
DocumentSetupCalls::Layout DocumentSetupCalls::askHost() {
  const auto slot40 = heldFunction(&AIDocumentSuite::GetDocumentTargeting);
  if (slot40 == nullptr) return Layout::unknown;
  constexpr std::int16_t kUntouched = 0x7FFF;
  std::int16_t type = kUntouched;
  std::int16_t x = kUntouched;
  std::int16_t y = kUntouched;
  const AIErr answer = slot40(&type, &x, &y);
  if (type != kUntouched || x != kUntouched || y != kUntouched) return Layout::older;
  return answer > 0 && answer <= kHighestVersion ? Layout::newer : Layout::unknown;
}
