#include "web/contact_sheet.h"

#include <string_view>

#include "text/base64.h"
#include "web/card_words.h"
#include "web/embedded_texts.h"
#include "web/page.h"

namespace web {

namespace {

std::string pictureOf(const Card& card) {
  if (card.picture.empty()) return "<div class=\"paper\">no picture</div>";
  return "<div class=\"paper\"><img loading=\"lazy\" decoding=\"async\" width=\"" +
         std::to_string(card.width) + "\" height=\"" + std::to_string(card.height) +
         "\" alt=\"the drawing of " + escaped(card.name) + "\" src=\"data:image/png;base64," +
         text::base64(card.picture) + "\"></div>";
}

std::string titleOf(const Card& card) {
  if (card.link.empty()) return "<b>" + escaped(card.name) + "</b>";
  return "<a href=\"" + escaped(card.link) + "\">" + escaped(card.name) + "</a>";
}

// Each fact as a paragraph; the last one says whether the recording is sound.
std::string paragraphsOf(const Card& card) {
  const std::vector<std::string> facts = factsOf(card);
  std::string out;
  for (const std::string& fact : facts) {
    const bool isProblem = !card.problem.empty() && &fact == &facts.back();
    out += (isProblem ? "<p class=\"bad\">" : "<p>") + escaped(fact) + "</p>";
  }
  return out;
}

std::string itemOf(const Card& card) {
  return "<li data-name=\"" + escaped(card.name) + "\" data-date=\"" + escaped(card.date) +
         "\" data-strokes=\"" + std::to_string(card.strokes) + "\" data-bad=\"" +
         (card.problem.empty() ? "0" : "1") + "\">" + pictureOf(card) + "<div class=\"facts\">" +
         titleOf(card) + paragraphsOf(card) + "</div></li>\n";
}

constexpr std::string_view kControls =
    "<span id=\"controls\"><label>Search <input id=\"search\" type=\"search\"></label>\n"
    "<label>Sort by <select id=\"order\"><option value=\"place\">folder</option>"
    "<option value=\"name\">name</option><option value=\"newest\">newest first</option>"
    "<option value=\"strokes\">most strokes first</option>"
    "<option value=\"problems\">problems first</option></select></label></span>\n";

bool isPlainInUrl(char character) {
  const bool isLetter =
      (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
  const bool isDigit = character >= '0' && character <= '9';
  return isLetter || isDigit || std::string_view("-._~/").find(character) != std::string_view::npos;
}

}  // namespace

std::string contactSheet(const std::vector<Card>& cards, const std::string& title) {
  std::string page = pageStart(title, kContactSheetCss, "data:");
  page += "<body>\n<header><h1>" + escaped(title) + "</h1>\n";
  page += kControls;
  page += "<span id=\"count\" role=\"status\">" + counted(cards.size(), "recording") +
          "</span></header>\n<main><ul id=\"cards\">\n";
  for (const Card& card : cards)
    page += itemOf(card);
  page.append("</ul></main>\n<script>\n")
      .append(kSheetOrderJs)
      .append(kContactSheetJs)
      .append("</script>\n</body>\n</html>\n");
  return page;
}

std::string urlOf(const std::string& path) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string url;
  for (const char character : path) {
    if (isPlainInUrl(character)) {
      url += character;
      continue;
    }
    const auto byte = static_cast<unsigned char>(character);
    url += '%';
    url += kDigits[byte >> 4U];
    url += kDigits[byte & 15U];
  }
  return url;
}

}  // namespace web
