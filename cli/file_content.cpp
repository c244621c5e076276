#include "cli/file_content.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <string_view>
#include <system_error>

namespace cli {

namespace {

using namespace std::string_view_literals;

struct Signature {
  std::string_view start;
  const char* name;
  const char* advice = "";
};

constexpr char kUnpack[] = "; unpack it and open what is in it";

constexpr std::array kSignatures{
    Signature{"\x89PNG\r\n\x1A\n"sv, "a PNG picture"},
    Signature{"\xFF\xD8\xFF"sv, "a JPEG picture"},
    Signature{"GIF8"sv, "a GIF picture"},
    Signature{"%PDF-"sv, "a PDF document"},
    Signature{"%!PS"sv, "a PostScript document"},
    Signature{"PK\x03\x04"sv, "a ZIP archive", kUnpack},
    Signature{"\x1F\x8B"sv, "compressed with gzip", kUnpack},
    Signature{"\xFF\xFE"sv, "text in UTF-16", "; save ink documents in UTF-8"},
    Signature{"\xFE\xFF"sv, "text in UTF-16", "; save ink documents in UTF-8"},
    Signature{"<\0"sv, "text in UTF-16", "; save ink documents in UTF-8"},
    Signature{"\0<"sv, "text in UTF-16", "; save ink documents in UTF-8"},
};

constexpr std::string_view kWhiteSpace = " \t\r\n";

std::string startOf(const std::filesystem::path& file) {
  std::error_code error;
  // Opening a pipe would wait for its writer.
  if (!std::filesystem::is_regular_file(file, error)) return {};
  constexpr std::size_t kEnough = 4096;
  std::string start(kEnough, '\0');
  std::ifstream stream(file, std::ios::binary);
  stream.read(start.data(), kEnough);
  start.resize(static_cast<std::size_t>(stream.gcount()));
  return start;
}

std::string_view withoutMarkAndWhiteSpace(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  return text;
}

/// Removes the start of `text` up to and including `end`.
void skipTo(std::string_view end, std::string_view& text) {
  const std::size_t place = text.find(end);
  text.remove_prefix(place == text.npos ? text.size() : place + end.size());
}

/// The name of the first element, without its prefix, in lower case.
std::string firstElement(std::string_view text) {
  for (text = withoutMarkAndWhiteSpace(text); text.starts_with("<!") || text.starts_with("<?");
       text = withoutMarkAndWhiteSpace(text)) {
    skipTo(text.starts_with("<!--") ? "-->" : ">", text);
  }
  if (!text.starts_with('<')) return {};
  text = text.substr(1, text.find_first_of(" \t\r\n/>", 1) - 1);
  std::string name(text.substr(text.rfind(':') + 1));
  std::ranges::transform(name, name.begin(), [](unsigned char letter) {
    return static_cast<char>(std::tolower(letter));
  });
  return name;
}

bool isTextByte(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte >= 0x20 || kWhiteSpace.find(character) != kWhiteSpace.npos || character == '\f';
}

std::string sentence(std::string_view name, std::string_view advice) {
  return "this is " + std::string(name) + ", not a recording" + std::string(advice);
}

}  // namespace

std::optional<std::string> describeContent(const std::filesystem::path& file) {
  const std::string start = startOf(file);
  for (const Signature& signature : kSignatures) {
    if (start.starts_with(signature.start)) return sentence(signature.name, signature.advice);
  }
  if (start.empty()) return {};
  const std::string_view text = withoutMarkAndWhiteSpace(start);
  if (text.empty()) return "the file contains only white space";
  const std::string element = firstElement(text);
  if (element == "svg") return sentence("an SVG picture", "");
  if (element == "html") return sentence("an HTML page", "");
  if (text.starts_with('<') || !std::ranges::all_of(start, isTextByte)) return {};
  return sentence("a text file", "");
}

bool looksLikeXml(const std::filesystem::path& file) {
  return withoutMarkAndWhiteSpace(startOf(file)).starts_with('<');
}

}  // namespace cli
