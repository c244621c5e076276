// A document as SVG.
#pragma once

#include <string>

#include "art/document.h"
#include "render/drawing.h"
#include "render/options.h"

namespace render {

/// The document as SVG: each layer a group that editors show as a layer, bottom to top; each path
/// one filled outline of what the brush covers, or its plain centre line. The picture is the page,
/// grown where strokes reach beyond it; its size is in millimetres, its units are points, or tenths
/// of points where no line is wider than a hairline. At most two decimals; the same bytes in every
/// locale.
std::string toSvg(const art::Document& document, const Options& options = {});

/// The same, where the document's drawing was already made with these options.
std::string toSvg(const Drawing& drawing, const Options& options);

}  // namespace render
