#include "render/pages.h"

namespace render {

bool writesPages() {
  return false;
}

Picture toPdf(const art::Document&, const Options&) {
  return {{}, "this build of the program writes no PDF; write SVG, which editors turn into PDF"};
}

Picture toPng(const art::Document&, const Options&) {
  return {{}, "this build of the program writes no PNG; write SVG, which editors turn into PNG"};
}

}  // namespace render
