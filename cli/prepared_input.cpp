#include "cli/prepared_input.h"

#include <cstdint>
#include <system_error>

#include "cli/rescuing.h"
#include "cli/whole_file.h"
#include "inkml/ink_reading.h"
#include "rescue/ink_rescue.h"
#include "translate/document_form.h"

namespace cli {

namespace {

/// Whether no reader takes the file, so that there is no need to read it.
bool isTooLarge(const std::filesystem::path& file) {
  constexpr std::uintmax_t kMostBytes = std::uintmax_t{1} << 31;
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  return !error && size >= kMostBytes;
}

/// Whether the document is another program's for certain, so that a rescue would read it wrongly,
/// too.
bool isForeignForCertain(std::string_view document) {
  return Orvo::readInk(document).report.rootName.ends_with(":ink") ||
         rescue::rescueInkDocument(document).isOtherForm;
}

}  // namespace

PreparedInput::PreparedInput(std::filesystem::path file, const InkTreatment& treatment,
                             bool isToBeMended)
    : path_(std::move(file)) {
  const bool isInk = kindByName(path_) == FileKind::inkml;
  if (isInk && treatment.view != InkView::asSubset && translate(treatment)) return;
  if (isToBeMended) mend();
}

/// False where the file is to be read without a translation.
bool PreparedInput::translate(const InkTreatment& treatment) {
  if (isTooLarge(path_)) return false;
  const WholeFile document = readWholeFile(path_);
  if (!document.problem.empty()) return false;
  const bool isForced = treatment.view == InkView::translated;
  if (!isForced && translate::formOf(document.bytes) != translate::DocumentForm::other) {
    return false;
  }
  const std::filesystem::path file = path_;
  if (!makeCopy({}, FileKind::inkml)) return true;
  std::string problem;
  translation_ = translateTo(path_, document.bytes, treatment, problem);
  // What does not say whose it is, and holds nothing to translate, is left to the plug-in.
  const bool isSettled = isForced || (problem.empty() && translation_->traces > 0) ||
                         isForeignForCertain(document.bytes);
  if (isSettled && problem.empty()) {
    summary_ = "translated from InkML of another program: " + describe(*translation_);
    return true;
  }
  translation_.reset();
  copy_.reset();
  path_ = file;
  if (!isSettled) return false;
  problem_ = (isForced ? "" : "this is InkML of another program, and ") + problem;
  return true;
}

void PreparedInput::mend() {
  const Rescued rescued = rescueRecording(path_, kindByName(path_));
  if (rescued.sound || !rescued.saved) return;
  if (makeCopy(rescued.bytes, rescued.kind)) summary_ = "rescued: " + describe(rescued);
}

bool PreparedInput::makeCopy(std::string_view bytes, FileKind kind) {
  copy_ = std::make_unique<PrivateCopy>(bytes, kind);
  if (copy_->path().empty()) {
    problem_ = kNoSpaceForCopy;
    return false;
  }
  path_ = copy_->path();
  return true;
}

}  // namespace cli
