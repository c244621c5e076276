#include "inkml/ink_reading.h"

#include "inkml/document_serializer.h"
#include "inkml/file_check.h"
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
    case FileRefusal::cutCharacter:
      return InkFailure::cutCharacter;
  }
  return InkFailure::unreadable;
}

InkReading nothingRead() {
  return {std::make_unique<Document>(), std::make_unique<InkMLDefinitions>(), {}};
}

bool load(std::FILE* file, TiXmlDocument& xml, InkReport& report) {
  if (xml.LoadFile(file, TIXML_ENCODING_UTF8)) return true;
  report.failure = InkFailure::brokenXml;
  report.libraryText = xml.ErrorDesc();
  report.line = xml.ErrorRow();
  report.column = xml.ErrorCol();
  return false;
}

void describeRoot(const TiXmlDocument& xml, InkReport& report) {
  const TiXmlElement* root = xml.RootElement();
  if (root == nullptr) return;
  report.rootName = root->ValueStr();
  const char* nameSpace = root->Attribute("xmlns");
  if (nameSpace != nullptr) report.nameSpace = nameSpace;
}

void readFile(std::FILE* file, InkReading& reading) {
  InkReport& report = reading.report;
  FileCheck check = checkFile(file, XmlEncoding::utf8);
  report.size = check.size;
  report.failure = failureOf(check.refusal);
  const int scanLine = check.line();
  if (check.refusal == FileRefusal::tooDeep || check.refusal == FileRefusal::cutCharacter) {
    report.line = scanLine;
  }
  check.text = {};
  TiXmlDocument xml;
  if (report.failure != InkFailure::none || !load(file, xml, report)) return;
  describeRoot(xml, report);
  DocumentSerializer serializer(reading.document.get());
  if (!serializer.read(xml, *reading.definitions)) report.failure = InkFailure::noInk;
  report.problems = findProblems(xml, *reading.definitions, check.scan, scanLine);
}

}  // namespace

InkReading readInk(const wchar_t* path) {
  const platform::File file = platform::openFile(path, "rb");
  if (!file) {
    InkReading reading = nothingRead();
    reading.report.failure = InkFailure::cannotOpen;
    return reading;
  }
  return readInk(file.get());
}

InkReading readInk(std::FILE* file) {
  InkReading reading = nothingRead();
  readFile(file, reading);
  return reading;
}

}  // namespace Orvo
