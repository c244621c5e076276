#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace cli {

/// "1 stroke", "2 strokes".
std::string counted(std::uint64_t count, const std::string& one, const std::string& many);
std::string counted(std::uint64_t count, const std::string& thing);

/// Adds a part to a sentence, behind "; " where it is not the first.
void addPart(std::string& sentence, const std::string& part);

inline constexpr char kThisIsAFolder[] = "this is a folder; name the recordings in it";

/// Why what is there cannot be read as a recording: a pipe or a device, whose bytes come only once.
std::optional<std::string> refusalToRead(const std::filesystem::path& file);

/// Why the system does not open a file: it is missing, a folder, not for reading, or what the
/// system says.
std::string explainOpening(const std::filesystem::path& file);

}  // namespace cli
