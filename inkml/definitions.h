#pragma once

#include <list>
#include <string>

#include "inkml/brush.h"
#include "inkml/trace_format.h"

namespace Orvo {

/// Binds a brush to a trace format. It owns neither; both are elements of the same definitions, or
/// null.
struct InkContext {
  Property<TraceFormat*> traceFormat;
  Property<Brush*> brush;
  std::string id;  ///< Without "#".
};

/// What an ink document declares before its traces, element "definitions". A brush or format must
/// stay as long as a context refers to it.
class InkMLDefinitions : public IXmlSerializable {
 public:
  InkMLDefinitions() : IXmlSerializable("definitions") {}
  InkMLDefinitions(const InkMLDefinitions&) = delete;
  InkMLDefinitions& operator=(const InkMLDefinitions&) = delete;

  /// Writes all formats, then all brushes, then all contexts.
  bool write(TiXmlNode& parent) const override;

  /// Adds the formats and brushes that can be read and skips the others; then the contexts, up to
  /// the first that fails: one without "id", with a reference that does not begin with "#", or
  /// whose brush or format is not found (the first of its id counts, an absent reference asks for
  /// the empty id). That fails the whole read; what was added stays. A null element adds nothing.
  bool read(const TiXmlNode* element) override;

  std::list<Brush> brushes;
  std::list<TraceFormat> traceFormats;
  std::list<InkContext> contexts;

 private:
  void readTraceFormats(const TiXmlNode* element);
  void readBrushes(const TiXmlNode* element);
  bool readContexts(const TiXmlNode* element);
};

}  // namespace Orvo
