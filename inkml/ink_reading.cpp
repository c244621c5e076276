#include "inkml/ink_reading.h"

#include <algorithm>
#include <string>
#include <tinyxml.h>
#include <utility>

#include "inkml/document_serializer.h"
#include "inkml/file_check.h"
#include "inkml/file_text.h"
#include "inkml/ink_problems.h"
#include "inkml/spellings.h"
#include "platform/file.h"

namespace Orvo {
namespace {

InkFailure failureOf(FileRefusal refusal) {
  switch (refusal) {
    case FileRefusal::none:
      return InkFailure::none;
    case FileRefusal::unreadable:
      return InkFailure::unreadable;
    case FileRefusal::tooLarge:
      return InkFailure::tooLarge;
    case FileRefusal::tooDeep:
      return InkFailure::tooDeep;
    case FileRefusal::tooManyAttributes:
      return InkFailure::tooManyAttributes;
    case FileRefusal::cutCharacter:
      return InkFailure::cutCharacter;
  }
  return InkFailure::unreadable;
}

// Whether the scan stopped at the place that is the reason.
bool hasLine(FileRefusal refusal) {
  return refusal == FileRefusal::tooDeep || refusal == FileRefusal::tooManyAttributes ||
         refusal == FileRefusal::cutCharacter;
}

InkReading nothingRead() {
  InkReading reading;
  reading.document = std::make_unique<Document>();
  reading.definitions = std::make_unique<InkMLDefinitions>();
  return reading;
}

bool isLoaded(const TiXmlDocument& xml, InkReport& report) {
  if (!xml.Error()) return true;
  report.failure = InkFailure::brokenXml;
  report.libraryText = xml.ErrorDesc();
  report.line = xml.ErrorRow();
  report.column = xml.ErrorCol();
  return false;
}

// Where the library gives no line, it came to the end of the text or to a NUL.
void describeEnd(const std::string& text, InkReport& report) {
  const std::size_t nul = text.find('\0');
  report.isCut = nul == std::string::npos && endsEarly(text);
  if (nul == std::string::npos) return;
  report.nulLine = 1 + static_cast<int>(std::count(
                           text.begin(), text.begin() + static_cast<std::ptrdiff_t>(nul), '\n'));
}

void describeRoot(const TiXmlDocument& xml, InkReport& report) {
  const TiXmlElement* root = xml.RootElement();
  if (root == nullptr) return;
  report.rootName = root->ValueStr();
  const char* nameSpace = root->Attribute("xmlns");
  if (nameSpace != nullptr) report.nameSpace = nameSpace;
}

void readChecked(FileCheck check, InkReading& reading, const VisitInkElement& visit = {}) {
  InkReport& report = reading.report;
  report.size = check.size;
  report.failure = failureOf(check.refusal);
  const int scanLine = check.line();
  if (hasLine(check.refusal)) report.line = scanLine;
  report.encoding = foreignEncoding(check.text);
  describeEnd(check.text, report);
  if (report.failure != InkFailure::none) return;
  TiXmlDocument xml;
  // The text is gone before the document is made.
  xml.Parse(std::string(std::move(check.text)).c_str(), nullptr, TIXML_ENCODING_UTF8);
  if (!isLoaded(xml, report)) return;
  describeRoot(xml, report);
  DocumentSerializer serializer(reading.document.get());
  if (!serializer.read(xml, *reading.definitions)) report.failure = InkFailure::noInk;
  report.traces = countTraces(xml);
  report.problems = findProblems(xml, *reading.definitions, check.scan, scanLine);
  if (visit) visitElements(xml, *reading.definitions, visit);
}

}  // namespace

InkReading readInk(const wchar_t* path) {
  return readInk(path, {});
}

InkReading readInk(const wchar_t* path, const VisitInkElement& visit) {
  InkReading reading = nothingRead();
  if (const platform::File file = platform::openFile(path, "rb")) {
    readChecked(checkFile(file.get(), XmlEncoding::utf8), reading, visit);
  } else {
    reading.report.failure = InkFailure::cannotOpen;
  }
  return reading;
}

InkReading readInk(std::FILE* file) {
  InkReading reading = nothingRead();
  readChecked(checkFile(file, XmlEncoding::utf8), reading);
  return reading;
}

InkReading readInk(std::string_view bytes) {
  InkReading reading = nothingRead();
  readChecked(checkBytes(std::string(bytes), XmlEncoding::utf8), reading);
  return reading;
}

}  // namespace Orvo
