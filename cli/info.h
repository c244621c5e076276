// What `penwick info` tells about a recording.
#pragma once

#include <optional>
#include <string>

#include "cli/examination.h"
#include "cli/prepared_input.h"
#include "facts/drawing_facts.h"

namespace cli {

struct Info {
  std::string file;  ///< Its name, as the person gave it.
  /// What was made of a document of another program; the rest is about that.
  std::optional<TranslatedInk> translation;
  Examination found;
  facts::DrawingFacts drawing;
  std::optional<facts::ClockFacts> clock;
  std::optional<facts::Date> date;  ///< Of a pen recording.
};

/// What there is to tell. The times in the recording become the pen's own count.
Info infoOf(std::string name, const PreparedInput& input);

/// A table of several lines, safe for a terminal, without the last line feed.
std::string infoToText(const Info& info);

/// One line, without its line feed:
///
///     {"file":s,"kind":"pen"|"inkml","opens":b,"sound":b,"problem":s|null,
///      "translation":{"groups":n,"traces":n,"remarks":[s,...]},
///      "drawing":{"left":mm,"top":mm,"width":mm,"height":mm}|null,
///      "layers":[{"name":s|null,"strokes":n,"points":n},...],
///      "strokes":n,"points":n,"singlePoints":n,"longestStroke":n,"inkLength":m,
///      "pressure":[least,most]|null,"tiltX":[least,most]|null,"tiltY":[least,most]|null,
///      "clock":{"penDown":n,"whole":n}|null,
///      "date":"2012-05-17T10:07:16"|null,"unknownPackets":[{"tag":n,"count":n,"bytes":n},...],
///      "zeroBytes":n,"header":{...}}
///
/// The last four for pen recordings only; the header as in `inkToJson`. "translation" for InkML
/// of other programs only; all that follows it is then about the translated document.
std::string infoToJson(const Info& info);

}  // namespace cli
