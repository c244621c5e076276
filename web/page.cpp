#include "web/page.h"

#include "render/text.h"
#include "web/embedded_texts.h"

namespace web {

std::string escaped(std::string_view words) {
  std::string out;
  render::appendEscaped(out, render::plainText(words));
  return out;
}

std::string pageStart(std::string_view title, std::string_view style, std::string_view images) {
  std::string page = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
  page += "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; ";
  if (!images.empty()) page.append("img-src ").append(images).append("; ");
  page +=
      "style-src 'unsafe-inline'; script-src 'unsafe-inline'; base-uri 'none'; form-action "
      "'none'\">\n";
  page += "<meta name=\"viewport\" content=\"width=device-width\">\n<title>" + escaped(title) +
          "</title>\n<style>\n" + kPageCss;
  return page.append(style).append("</style>\n</head>\n");
}

std::string messageList(const std::vector<std::string>& messages) {
  if (messages.empty()) return {};
  std::string list = "<ul id=\"messages\">\n";
  for (const std::string& message : messages)
    list += "<li>" + escaped(message) + "</li>\n";
  return list += "</ul>\n";
}

std::string messagePage(std::string_view name, const std::vector<std::string>& messages) {
  std::string page = pageStart(name, "", "");
  page += "<body>\n<header><h1>" + escaped(name) + "</h1></header>\n<main>\n";
  return page += messageList(messages) + "</main>\n</body>\n</html>\n";
}

}  // namespace web
