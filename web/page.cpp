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

}  // namespace web
