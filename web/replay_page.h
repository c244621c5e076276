// A page that shows a drawing and replays how it was drawn.
#pragma once

#include <string>
#include <vector>

#include "art/document.h"
#include "render/options.h"
#include "web/replay_times.h"

namespace web {

/// What a replay page tells of a drawing besides the drawing itself.
struct ReplayFacts {
  std::string name;   ///< Of the recording: UTF-8 that may hold any character.
  StrokeTimes times;  ///< Of every path, in the order of the paths; empty where none are known.
  /// Whether strokes may be replayed in another order than that of the paths, by their times.
  bool followsClock = false;
  std::vector<std::string> messages{};  ///< What to know about the recording, a sentence each.
};

/// One HTML page that works offline and loads nothing. It holds the SVG that `render::toSvg` makes,
/// which is there without scripts, and what it takes to replay it: about a fifth of its size.
std::string replayPage(const art::Document& document, const render::Options& options,
                       const ReplayFacts& facts);

}  // namespace web
