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

using translate::DocumentForm;

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
  if (isInk && treatment.view != InkView::asSubset && prepareInk(treatment)) return;
  if (isToBeMended) mend();
}

/// False where the file is to be read as it is.
bool PreparedInput::prepareInk(const InkTreatment& treatment) {
  if (isTooLarge(path_)) return false;
  const WholeFile document = readWholeFile(path_);
  if (!document.problem.empty()) {
    // Nobody knows whose it is: read as it is, it may have nothing to draw.
    problem_ = document.problem;
    return true;
  }
  if (treatment.view == InkView::byContent) {
    if (convert(document.bytes)) return true;
    if (translate::formOf(document.bytes) != DocumentForm::other) return false;
  }
  return translate(document.bytes, treatment);
}

/// Of a document that the plug-in would read whole if it were not in UTF-16: a copy in UTF-8.
bool PreparedInput::convert(std::string_view document) {
  const auto encoding = rescue::encodingOf(document);
  if (!encoding || !rescue::isUtf16(*encoding)) return false;
  const rescue::Utf8Copy copy(document, *encoding);
  const bool isReadWhole = translate::formOf(copy.text()) == DocumentForm::subset &&
                           rescue::isSoundInkDocument(copy.text());
  if (!isReadWhole) return false;
  if (makeCopy(copy.text(), FileKind::inkml)) summary_ = "converted from UTF-16 to UTF-8";
  return true;
}

/// False where the document is to be read without a translation.
bool PreparedInput::translate(std::string_view document, const InkTreatment& treatment) {
  const bool isForced = treatment.view == InkView::translated;
  const std::filesystem::path file = path_;
  if (!makeCopy({}, FileKind::inkml)) return true;
  std::string problem;
  translation_ = translateTo(path_, document, treatment, problem);
  // What does not say whose it is, and holds nothing to translate, is left to the plug-in.
  const bool isSettled = isForced || translation_->traces > 0 || isForeignForCertain(document);
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
