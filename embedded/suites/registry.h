// The suites of one host, with everything that its options change about them.
#pragma once

#include <vector>

#include "embedded/host_state.h"
#include "embedded/options.h"

namespace embedded {

/// All suites but those that the options lack, at the versions and with the null slots they ask
/// for.
std::vector<OfferedSuite> makeSuites(const Options& options);

/// The basic suite, which comes with each message; its null slots too.
hostapi::SPBasicSuite makeBasicSuite(const Options& options);

}  // namespace embedded
