// A document as PDF or PNG. Both need other libraries, which only the native build has.
#pragma once

#include <optional>
#include <string>

#include "art/document.h"
#include "render/options.h"

namespace render {

/// The bytes of a file, or one sentence that says why there are none.
struct Picture {
  std::string bytes;
  std::optional<std::string> refusal;
};

/// One page: the outlines as vectors, each layer of the document an optional-content layer, those
/// that are not visible switched off. A build without the libraries always refuses.
Picture toPdf(const art::Document& document, const Options& options = {});

/// The visible layers as a bitmap with its resolution in it. Refused when it would be larger than
/// 30,000 pixels in one direction, or when `dpi` or `size` make no picture. A build without the
/// libraries always refuses.
Picture toPng(const art::Document& document, const Options& options = {});

}  // namespace render
