#include "render/picture.h"

#include "render/svg.h"

namespace render {

Picture toPicture(const art::Document& document, Format format, const Options& options) {
  switch (format) {
    case Format::pdf:
      return toPdf(document, options);
    case Format::png:
      return toPng(document, options);
    case Format::svg:
      break;
  }
  return {toSvg(document, options), std::nullopt};
}

}  // namespace render
