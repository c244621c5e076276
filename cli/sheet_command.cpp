#include "cli/sheet_command.h"

#include "cli/batch.h"
#include "cli/log_folder.h"
#include "cli/module_place.h"
#include "cli/output_file.h"
#include "cli/prepared_input.h"
#include "cli/sentences.h"
#include "cli/sheet_card.h"
#include "cli/terminal_text.h"
#include "web/contact_sheet_pdf.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

class SheetMaker {
 public:
  explicit SheetMaker(const SheetOptions& options) : options_(options), batch_(options, "drawn") {
    run_.module = findModule();
    run_.logFolder = makeOwnLogFolder();
  }

  bool make() {
    if (const auto refusal = refusalOfOutput()) return batch_.fail(options_.output, *refusal);
    const bool allDrawn =
        batch_.run([this](const fs::path& file, const fs::path&) { return draw(file); });
    return write() && allDrawn;
  }

 private:
  std::optional<std::string> refusalOfOutput() const {
    for (const Input& input : batch_.inputs()) {
      auto refusal = refusalToOverwrite(input.file, options_.output, options_.replaceRecordings);
      if (refusal) return refusal;
    }
    return {};
  }

  bool draw(const fs::path& file) {
    const PreparedInput input(file, options_.ink);
    if (input.problem()) return failCard(file, *input.problem());
    if (input.translation()) batch_.mentionAll(file, input.translation()->remarks);
    const web::Card card = cardOf(input.path(), run_);
    batch_.give(toBytes(card));
    if (card.picture.empty()) return batch_.fail(file, card.problem);
    batch_.mention(file, card.problem);
    return true;
  }

  bool failCard(const fs::path& file, const std::string& problem) {
    web::Card card;
    card.problem = problem;
    batch_.give(toBytes(card));
    return batch_.fail(file, problem);
  }

  std::vector<web::Card> cards() const {
    std::vector<web::Card> cards;
    for (std::size_t i = 0; i < batch_.inputs().size(); ++i) {
      const Input& input = batch_.inputs()[i];
      const std::string& product = batch_.reports()[i].product;
      std::optional<web::Card> card = product.empty() ? std::nullopt : cardFromBytes(product);
      if (!card) {
        card.emplace();
        card->problem = "could not be read";
      }
      card->name = nativeName(input.below / input.file.filename());
      card->link = linkTo(input.file);
      cards.push_back(std::move(*card));
    }
    return cards;
  }

  // From where the sheet lies; standard input has no place.
  std::string linkTo(const fs::path& file) const {
    if (file == "-") return {};
    std::error_code error;
    const fs::path folder = options_.output == "-" ? fs::path(".") : options_.output.parent_path();
    const fs::path place = fs::proximate(file, folder.empty() ? fs::path(".") : folder, error);
    return web::urlOf((error ? file : place).generic_string());
  }

  bool write() {
    const bool isWritten =
        options_.format == SheetFormat::html
            ? batch_.write(options_.output, web::contactSheet(cards(), options_.title))
            : writePages();
    if (isWritten && !options_.quiet && !isStandardOutput(options_.output)) {
      batch_.sayLine("a contact sheet of " + counted(batch_.inputs().size(), "recording") + " -> " +
                     printable(nativeName(options_.output)));
    }
    return isWritten;
  }

  bool writePages() {
    const web::SheetPages pages = web::contactSheetPdf(cards(), options_.title);
    if (!pages.problem.empty()) return batch_.fail(options_.output, pages.problem);
    if (pages.cardsWithGaps > 0) {
      batch_.mention(
          options_.output,
          counted(pages.cardsWithGaps, "recording has", "recordings have") +
              " a name with characters that the font of the PDF lacks, each becomes \"?\"; "
              "an HTML sheet shows them");
    }
    return batch_.write(options_.output, pages.bytes);
  }

  const SheetOptions& options_;
  PluginRunOptions run_;
  Batch batch_;
};

}  // namespace

ExitStatus makeSheet(const SheetOptions& options) {
  return SheetMaker(options).make() ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace cli
