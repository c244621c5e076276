#include "web/card_words.h"

#include "text/utf8.h"

namespace web {

namespace {

// The bytes of the first `letters` characters.
std::size_t lengthOf(std::string_view words, std::size_t letters) {
  std::size_t length = 0;
  for (; letters > 0 && length < words.size(); --letters) {
    const text::Utf8Character character = text::firstCharacter(words.substr(length));
    length += character ? character.length : 1;
  }
  return length;
}

}  // namespace

std::string counted(std::size_t count, const char* thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::vector<std::string> factsOf(const Card& card) {
  std::vector<std::string> facts;
  if (!card.date.empty()) facts.push_back(card.date);
  if (!card.picture.empty()) {
    facts.push_back(std::to_string(card.widthInMm) + " × " + std::to_string(card.heightInMm) +
                    " mm, " + counted(card.layers, "layer") + ", " +
                    counted(card.strokes, "stroke"));
  }
  facts.push_back(card.problem.empty() ? "sound" : card.problem);
  return facts;
}

std::vector<std::string> inLines(std::string_view words, std::size_t letters, std::size_t most) {
  std::vector<std::string> lines;
  while (!words.empty()) {
    if (lines.size() == most) {
      lines.back().resize(lengthOf(lines.back(), letters - 1));
      lines.back() += "…";
      return lines;
    }
    std::size_t length = lengthOf(words, letters);
    if (length < words.size() && words[length] != ' ') {
      const std::size_t blank = words.substr(0, length).rfind(' ');
      if (blank != std::string_view::npos && blank > 0) length = blank;
    }
    lines.emplace_back(words.substr(0, length));
    words.remove_prefix(length);
    if (words.starts_with(' ')) words.remove_prefix(1);
  }
  return lines;
}

}  // namespace web
