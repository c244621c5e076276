#include "cli/rescuing.h"

#include <algorithm>
#include <cstdint>

#include "cli/file_content.h"
#include "cli/ink_translation.h"
#include "cli/inkml_words.h"
#include "cli/sentences.h"
#include "cli/whole_file.h"
#include "rescue/ink_rescue.h"
#include "rescue/pen_rescue.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

// A rescue takes the longer the larger a file is; advice about one must not.
constexpr std::uintmax_t kMostBytesForAdvice = 64U << 20U;

constexpr char kNoPoints[] = "nothing could be saved: no points can be made out in it";

std::vector<std::string> repairsOf(const rescue::PenRescue& rescue) {
  std::vector<std::string> repairs;
  switch (rescue.transfer) {
    case rescue::TextTransfer::none:
      break;
    case rescue::TextTransfer::carriageReturnsAdded:
      repairs.emplace_back("carriage returns that a transfer put in taken out");
      break;
    case rescue::TextTransfer::carriageReturnsRemoved:
      repairs.emplace_back("carriage returns that a transfer took out put back");
      break;
    case rescue::TextTransfer::highBytesReplaced:
      repairs.emplace_back("tags put back that a transfer turned into question marks");
      break;
  }
  if (rescue.descriptorMended) repairs.emplace_back("file descriptor put right");
  if (rescue.furtherRecordings > 0) {
    repairs.push_back(counted(rescue.furtherRecordings, "further recording") + " made layers");
  }
  return repairs;
}

std::vector<std::string> repairsOf(const rescue::InkRescue& rescue) {
  std::vector<std::string> repairs;
  const auto add = [&repairs](std::size_t count, const std::string& thing, const char* what) {
    if (count > 0) repairs.push_back(counted(count, thing) + what);
  };
  if (rescue.encoding) {
    repairs.push_back("converted from " + std::string(nameOf(*rescue.encoding)) + " to UTF-8");
  }
  add(rescue.furtherDocuments, "further document", " made layers");
  add(rescue.definitionsMended, "definition", " put right");
  add(rescue.definitionsPutIn, "definition", " put in");
  add(rescue.definitionsRenamed, "definition", " given another id");
  add(rescue.pointsRounded, "point", " rounded to whole units");
  return repairs;
}

std::string explainNothingSaved(const fs::path& file, std::string_view bytes) {
  if (bytes.empty()) return "the file is empty (0 bytes)";
  if (const auto foreign = describeContent(file)) return *foreign;
  return kNoPoints;
}

void rescuePen(const fs::path& file, std::string_view bytes, rescue::Mend mend, Rescued& result) {
  rescue::PenRescue pen = rescue::rescuePenRecording(bytes, mend);
  result.repairs = repairsOf(pen);
  static_cast<rescue::Rescued&>(result) = std::move(pen);
  if (!result.saved) result.problem = explainNothingSaved(file, bytes);
}

std::string explainNothingSaved(const fs::path& file) {
  const Recording recording(file, FileKind::inkml);
  return recording.complete() ? kNoPoints : recording.explainFailure();
}

// Whether another program wrote it, in whatever encoding.
bool isForeign(std::string_view bytes) {
  const auto encoding = rescue::encodingOf(bytes);
  return needsTranslation(encoding ? rescue::Utf8Copy(bytes, *encoding).text() : bytes);
}

void rescueInk(const fs::path& file, std::string_view bytes, rescue::Mend mend, Rescued& result) {
  if (isForeign(bytes)) {
    result.problem = "this is InkML of another program; ";
    result.problem += kAdviceToTranslate;
    return;
  }
  rescue::InkRescue ink = rescue::rescueInkDocument(bytes, mend);
  result.repairs = repairsOf(ink);
  static_cast<rescue::Rescued&>(result) = std::move(ink);
  if (!result.sound && result.pointsKept == 0) {
    // Elements without any points are not worth a file.
    result.saved = false;
    result.problem = explainNothingSaved(file);
  }
}

// "bytes 10-22, 40-51 and 3 more", counted from 0 and with the last byte of each.
std::string placesOf(const std::vector<rescue::Stretch>& stretches) {
  constexpr std::size_t kMost = 3;
  const bool isOneByte = stretches.size() == 1 && stretches[0].end == stretches[0].begin + 1;
  std::string places = isOneByte ? "byte " : "bytes ";
  for (std::size_t i = 0; i < std::min(kMost, stretches.size()); ++i) {
    if (i > 0) places += ", ";
    places += std::to_string(stretches[i].begin);
    if (stretches[i].end > stretches[i].begin + 1) {
      places += "-" + std::to_string(stretches[i].end - 1);
    }
  }
  if (stretches.size() > kMost) {
    places += " and " + std::to_string(stretches.size() - kMost) + " more";
  }
  return places;
}

std::string pointsOf(const Rescued& rescued) {
  if (rescued.pointsKept == rescued.pointsAbout) return counted(rescued.pointsKept, "point");
  return std::to_string(rescued.pointsKept) + " of about " + counted(rescued.pointsAbout, "point");
}

// Stretches that touch one another, for whatever reasons each was left out, as one.
std::vector<rescue::Stretch> merged(const std::vector<rescue::Stretch>& stretches) {
  std::vector<rescue::Stretch> all;
  for (const rescue::Stretch& stretch : stretches) {
    if (!all.empty() && stretch.begin <= all.back().end) {
      all.back().end = std::max(all.back().end, stretch.end);
    } else {
      all.push_back(stretch);
    }
  }
  return all;
}

}  // namespace

Rescued rescueRecording(const fs::path& file, FileKind kind, rescue::Mend mend) {
  Rescued result;
  result.kind = kind;
  const WholeFile all = readWholeFile(file);
  if (!all.problem.empty()) {
    result.problem = all.problem;
  } else if (kind == FileKind::inkml) {
    rescueInk(file, all.bytes, mend, result);
  } else {
    rescuePen(file, all.bytes, mend, result);
  }
  return result;
}

std::string describe(const Rescued& rescued) {
  std::string sentence = pointsOf(rescued) + " kept";
  for (const std::string& repair : rescued.repairs)
    sentence += ", " + repair;
  if (rescued.leftOut.empty()) return sentence;
  const std::vector<rescue::Stretch> stretches = merged(rescued.leftOut);
  return sentence + ", " + counted(stretches.size(), "stretch", "stretches") + " left out (" +
         placesOf(stretches) + ")";
}

std::string withRescue(std::string sentence, const fs::path& file, FileKind kind) {
  std::error_code error;
  if (fs::file_size(file, error) > kMostBytesForAdvice && !error) return sentence;
  if (sentence.empty()) return sentence;
  const Rescued rescued = rescueRecording(file, kind);
  if (rescued.saved && !rescued.sound) {
    addPart(sentence, "penwick rescue would save " + pointsOf(rescued));
  }
  return sentence;
}

std::string omissionsOf(const Recording& recording, const fs::path& file) {
  std::string omissions = recording.explainOmissions();
  if (!recording.looksDamaged()) return omissions;
  return withRescue(std::move(omissions), file, recording.kind());
}

}  // namespace cli
