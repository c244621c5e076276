// A recording made ready to be read: mended, translated, or as it is.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "cli/ink_translation.h"
#include "cli/ink_view.h"
#include "cli/private_copy.h"

namespace cli {

/// A recording to read: the file itself, or a private copy of what could be saved of it where it is
/// damaged and that is asked for, of its translation where another program wrote it, or of the same
/// document in UTF-8.
class PreparedInput {
 public:
  PreparedInput(std::filesystem::path file, const InkTreatment& treatment,
                bool isToBeMended = false);

  /// Where nothing could be saved or translated this is the file itself: its reader says what is
  /// wrong.
  const std::filesystem::path& path() const { return path_; }
  /// Why there is no copy, in one sentence.
  const std::optional<std::string>& problem() const { return problem_; }
  /// What was done to it, or nothing where the file is read as it is.
  const std::string& summary() const { return summary_; }
  /// Nothing where it is not translated.
  const std::optional<TranslatedInk>& translation() const { return translation_; }

 private:
  bool prepareInk(const InkTreatment& treatment);
  bool convert(std::string_view document);
  bool translate(std::string_view document, const InkTreatment& treatment);
  void mend();
  bool makeCopy(std::string_view bytes, FileKind kind);

  std::unique_ptr<PrivateCopy> copy_;
  std::filesystem::path path_;
  std::string summary_;
  std::optional<TranslatedInk> translation_;
  std::optional<std::string> problem_;
};

}  // namespace cli
