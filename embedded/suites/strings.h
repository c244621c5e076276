// The host's strings, for the suites that accept or give them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "embedded/suites/call.h"
#include "hostapi/types.h"

namespace embedded {

/// The string's text, empty for one that was never initialised; nothing for anything that is not a
/// string, which is reported as misuse. Valid until the string changes.
std::optional<std::u32string_view> textOf(Call& call, const hostapi::UnicodeStringBody& string);

/// Sets the string's text; a body that was never initialised gets an inside of its own.
hostapi::AIErr assign(Call& call, hostapi::UnicodeStringBody& string, std::u32string text);

}  // namespace embedded
