// Text made safe for a terminal, and compared.
#pragma once

#include <string>
#include <string_view>

namespace cli {

/// `text` made safe to print on one line of a terminal: control characters (C0, DEL and C1),
/// line and paragraph separators, marks that change the direction of writing, the byte-order mark,
/// and bytes that are not UTF-8 each become '?'.
std::string printable(std::string_view text);

/// The same for text of several lines: line feeds and tabs stay.
std::string printableLines(std::string_view text);

/// The first 80 characters of `text` (code points, or bytes that are not UTF-8), followed by
/// "..." where it has more.
std::string shortened(std::string_view text);

/// `text` with its ASCII letters in lower case.
std::string lowerCased(std::string_view text);

/// A word of the command line for a message: shortened, and between single quotation marks.
std::string inQuotes(std::string_view word);

}  // namespace cli
