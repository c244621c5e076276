#include "cli/ink_translation.h"

#include "cli/inkml_words.h"
#include "cli/read_back.h"
#include "cli/recording.h"
#include "cli/sentences.h"
#include "inkml/document_serializer.h"
#include "translate/document_form.h"
#include "translate/translation.h"

namespace cli {

std::string describe(const TranslatedInk& ink) {
  return counted(ink.groups, "group") + ", " + counted(ink.traces, "trace");
}

TranslatedInk translateTo(const std::filesystem::path& file, std::string_view document,
                          const InkTreatment& treatment, std::string& problem) {
  const translate::Translation made =
      translate::translateInk(document, {.millimetresPerUnit = treatment.millimetresPerUnit});
  TranslatedInk ink{.groups = made.groups, .traces = made.traces, .remarks = {}};
  if (!made.problem.empty()) {
    problem = "it cannot be translated: " + made.problem + atLine(made.line);
    return {};
  }
  const std::wstring name = wideName(file);
  if (!Orvo::DocumentSerializer(made.document.get()).write(name.c_str(), *made.definitions)) {
    problem = "there is no space for a temporary copy of its translation";
    return ink;
  }
  const Orvo::InkReading readBack = Orvo::readInk(name.c_str());
  if (const auto unusable = explainUnusable(readBack.report)) {
    problem = "its translation " + *unusable;
    return ink;
  }
  for (const translate::Remark& remark : made.remarks)
    ink.remarks.push_back(translate::describe(remark));
  const std::string changes =
      describe(compareReadBack(*made.document, *made.definitions, readBack));
  if (!changes.empty()) ink.remarks.push_back("some values change: " + changes);
  return ink;
}

bool needsTranslation(std::string_view document) {
  if (translate::formOf(document) != translate::DocumentForm::other) return false;
  const translate::Translation made = translate::translateInk(document);
  return made.problem.empty() && made.traces > 0;
}

}  // namespace cli
