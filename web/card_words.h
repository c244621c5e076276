// The words below the pictures of a contact sheet.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "web/contact_sheet.h"

namespace web {

/// "1 stroke", "2 strokes".
std::string counted(std::size_t count, const char* thing);

/// Date, size and counts, as far as they are known: a line each.
std::vector<std::string> factsOf(const Card& card);

/// UTF-8 in lines of at most `letters` characters, broken at blanks where there are any. Where it
/// takes more than `most` lines, the last one ends in "…".
std::vector<std::string> inLines(std::string_view words, std::size_t letters, std::size_t most);

}  // namespace web
