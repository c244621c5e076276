// The suites of one host, as its options modify them.
#pragma once

#include <vector>

#include "embedded/host_state.h"
#include "embedded/options.h"

namespace embedded {

/// All suites except those that the options leave out, with the versions and null slots that they
/// ask for.
std::vector<OfferedSuite> makeSuites(const Options& options);

/// The basic suite, which comes with each message, with the null slots of the options.
hostapi::SPBasicSuite makeBasicSuite(const Options& options);

}  // namespace embedded
