// Pictures that need other libraries: these are there in the native build only.
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

/// Whether this build writes PDF and PNG; where it does not, both are refused with a sentence.
bool writesPages();

/// One page: the outlines as vectors, each layer of the document an optional-content layer, those
/// that are not visible switched off.
Picture toPdf(const art::Document& document, const Options& options = {});

/// The visible layers as a bitmap with its resolution in it. Refused when it would be larger than
/// 30,000 pixels in one direction, or when `dpi` or `size` make no picture.
Picture toPng(const art::Document& document, const Options& options = {});

}  // namespace render
