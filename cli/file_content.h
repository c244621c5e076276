// What a file is that is not a recording, by its first bytes.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace cli {

/// What a file is that is neither a pen recording nor an ink document, such as a picture, an
/// archive or text: one sentence and, where possible, what to do. Nothing for recordings, for other
/// XML, and where the first bytes do not show it.
std::optional<std::string> describeContent(const std::filesystem::path& file);

/// Whether a file begins as an XML document does.
bool looksLikeXml(const std::filesystem::path& file);

}  // namespace cli
