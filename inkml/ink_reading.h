// Reads an ink document and reports how that went.
#pragma once

#include <cstdio>
#include <memory>
#include <string_view>

#include "inkml/definitions.h"
#include "inkml/ink_elements.h"
#include "inkml/ink_report.h"
#include "model/document.h"

namespace Orvo {

/// An ink file as `DocumentSerializer` reads it, with a report of how that went. Nothing is printed
/// or logged.
struct InkReading {
  std::unique_ptr<Document> document;             ///< Never null; complete if there is no failure.
  std::unique_ptr<InkMLDefinitions> definitions;  ///< Never null.
  InkReport report;
};

/// Reads the file at `path` (wide, zero-terminated).
InkReading readInk(const wchar_t* path);

/// The same, and calls `visit` with every element of a file that the XML library takes.
InkReading readInk(const wchar_t* path, const VisitInkElement& visit);

/// Reads an open file, from its start, and leaves it open.
InkReading readInk(std::FILE* file);

/// Reads the bytes of a file.
InkReading readInk(std::string_view bytes);

}  // namespace Orvo
