// Building blocks of messages.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace cli {

/// "1 stroke", "2 strokes".
std::string counted(std::uint64_t count, const std::string& one, const std::string& many);
std::string counted(std::uint64_t count, const std::string& thing);

/// Adds a part to a sentence, after "; " unless it is the first.
void addPart(std::string& sentence, const std::string& part);
/// A sentence with a part behind it that may be empty.
std::string joined(std::string sentence, const std::string& part);

inline constexpr char kThisIsAFolder[] = "this is a folder; name the recordings in it";

/// Why the system does not open a file: it is missing, a folder, unreadable, or whatever the system
/// says.
std::string explainOpening(const std::filesystem::path& file);

}  // namespace cli
