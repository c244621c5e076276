#include "cli/output_format.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace cli {

std::string_view nameOf(OutputFormat format) {
  switch (format) {
    case OutputFormat::svg:
      return "svg";
    case OutputFormat::pdf:
      return "pdf";
    case OutputFormat::png:
      return "png";
    case OutputFormat::html:
      return "html";
    case OutputFormat::json:
      return "json";
  }
  throw std::logic_error("an output format without a name");
}

std::optional<OutputFormat> parseOutputFormat(std::string_view name) {
  const auto isSameLetter = [](unsigned char one, unsigned char other) {
    return std::tolower(one) == other;
  };
  for (const OutputFormat format : kOutputFormats) {
    if (std::ranges::equal(name, nameOf(format), isSameLetter)) return format;
  }
  return {};
}

std::string listOutputFormats() {
  std::string list;
  for (const OutputFormat format : kOutputFormats)
    list.append(list.empty() ? "" : ", ").append(nameOf(format));
  return list;
}

}  // namespace cli
