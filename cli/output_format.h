// The formats that `penwick open` writes.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace cli {

/// What `open` can write.
enum class OutputFormat { svg, pdf, png, html, json };

inline constexpr std::array kOutputFormats{OutputFormat::svg, OutputFormat::pdf, OutputFormat::png,
                                           OutputFormat::html, OutputFormat::json};

/// The name of a format, which is also the ending of its files without the dot.
std::string_view nameOf(OutputFormat format);

/// The format of this name, in any case of letters; nothing where there is none.
std::optional<OutputFormat> parseOutputFormat(std::string_view name);

/// The names of all formats: "svg, pdf, png, html, json".
std::string listOutputFormats();

}  // namespace cli
