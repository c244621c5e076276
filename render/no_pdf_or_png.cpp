#include "render/pdf_and_png.h"

namespace render {

Picture toPdf(const art::Document&, const Options&) {
  return {{}, "this build of the program writes no PDF; write SVG, which editors turn into PDF"};
}

Picture toPng(const art::Document&, const Options&) {
  return {{}, "this build of the program writes no PNG; write SVG, which editors turn into PNG"};
}

}  // namespace render
