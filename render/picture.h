// A document as a picture, in memory: what the command calls.
#pragma once

#include "art/document.h"
#include "render/options.h"
#include "render/pages.h"

namespace render {

enum class Format { svg, pdf, png };

/// The document in the given format. Never throws for what is in the document: what cannot be
/// written is refused with a sentence.
Picture toPicture(const art::Document& document, Format format, const Options& options = {});

}  // namespace render
