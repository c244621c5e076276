#include "cli/inkml_failure.h"

#include <cctype>
#include <fstream>
#include <optional>
#include <system_error>

#include "cli/file_content.h"
#include "cli/inkml_words.h"
#include "cli/sentences.h"
#include "penfile/packets.h"

namespace cli {

namespace {

using Orvo::InkFailure;
using Orvo::InkProblem;
using Orvo::InkReport;

// The tag of the file descriptor, with which a pen recording begins; no XML does.
constexpr int kFirstByteOfRecording = static_cast<int>(Orvo::PacketTag::fileDescriptor);

std::string explainUnreadable(const std::filesystem::path& file) {
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) return kThisIsAFolder;
  return "the file could not be read to its end: the system reports a read error; copy it from its "
         "device and try the copy";
}

std::string explainRoot(const InkReport& report) {
  const std::string start = "this is not an ink document: ";
  if (report.rootName.empty()) {
    const InkProblem* first = report.problems.empty() ? nullptr : &report.problems.front();
    const char* end = first == nullptr ? nullptr : whatStopsReading(first->kind);
    if (end == nullptr) return start + "it has no root element";
    return start + "reading stops at " + end + " before its root element" + atLine(first->line) +
           "; remove it";
  }
  std::string sentence = start + "its root element is " + quoted(report.rootName) + ", not \"ink\"";
  if (!report.rootName.ends_with(":ink")) return sentence;
  return sentence + "; " + kAdviceToTranslate;
}

std::string explainXml(const InkReport& report) {
  std::string words = report.libraryText;
  if (!words.empty()) words.front() = static_cast<char>(std::tolower(words.front()));
  while (words.ends_with('.'))
    words.pop_back();
  std::string sentence = "its XML is broken: " + words;
  if (report.line != 0) return sentence + atLine(report.line, report.column);
  // The library came to the end of the text, or to a NUL.
  if (report.nulLine != 0) return sentence + ", at a NUL byte" + atLine(report.nulLine);
  return sentence + (report.isCut ? ", at its end; it may be cut off: try an older copy"
                                  : ", at its end; a tag, quotation or comment is not closed");
}

/// What a file is that is not an ink document; nothing where its first bytes do not tell.
std::optional<std::string> describeForeign(const std::filesystem::path& file) {
  if (std::ifstream(file, std::ios::binary).get() != kFirstByteOfRecording) {
    return describeContent(file);
  }
  return "this is not an ink document; it looks like a pen recording, which opens when its name "
         "ends in .pnx or .eli, or with --as pen";
}

}  // namespace

std::string explainFailure(const std::filesystem::path& file, const InkReport& report) {
  const bool isReadable = report.failure == InkFailure::cutCharacter ||
                          report.failure == InkFailure::brokenXml ||
                          report.failure == InkFailure::noInk;
  if (isReadable) {
    if (const auto foreign = describeForeign(file)) return *foreign;
    if (!report.encoding.empty()) return explainEncoding(report) + "; save it as UTF-8";
  }
  switch (report.failure) {
    case InkFailure::none:
      return "the ink document is whole";
    case InkFailure::cannotOpen:
      return explainOpening(file);
    case InkFailure::unreadable:
      return explainUnreadable(file);
    case InkFailure::tooLarge:
      return "the file has 2 GiB or more, and ink documents are read below that size only; split "
             "it";
    case InkFailure::tooDeep:
      return "elements are nested more than 500 deep" + atLine(report.line) +
             "; no ink document needs that";
    case InkFailure::tooManyAttributes:
      return "an element has more than 10,000 attributes" + atLine(report.line) +
             "; no ink document needs so many";
    case InkFailure::cutCharacter:
      return "the file ends inside a character" + atLine(report.line) + "; its end was lost";
    case InkFailure::brokenXml:
      return report.size == 0 ? "the file is empty (0 bytes)" : explainXml(report);
    case InkFailure::noInk:
      return explainRoot(report);
  }
  return "the file could not be read";
}

}  // namespace cli
