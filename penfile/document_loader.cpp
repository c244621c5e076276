#include "penfile/document_loader.h"

#include "inkml/definitions.h"
#include "inkml/document_serializer.h"
#include "penfile/pnx_parser.h"
#include "penfile/skip_watcher.h"

namespace Orvo {
namespace {

SharedRef<Document> loadPenFile(const wchar_t* path) {
  PnxParser parser(path);
  EndlessSkipGuard guard(parser);
  parser.parse();
  if (!parser.document->complete.value) return {};
  return parser.document.handOut();
}

SharedRef<Document> loadInk(const wchar_t* path) {
  const SharedRef<Document> document(new Document());
  const SharedRef<InkMLDefinitions> definitions(new InkMLDefinitions());
  DocumentSerializer reader(document.get());
  reader.read(path, *definitions);
  if (!document->complete.value) return {};
  dumpPointCounts(*document);
  return document;
}

}  // namespace

std::uint32_t fileKind = kPenFile;

SharedRef<Document> loadDocument(const wchar_t* path) {
  switch (fileKind) {
    case kPenFile:
      return loadPenFile(path);
    case kInkML:
      return loadInk(path);
    default:
      return {};
  }
}

}  // namespace Orvo
