// The definitions of an ink document: trace formats, brushes and contexts.
#pragma once

#include <list>
#include <string>

#include "inkml/brush.h"
#include "inkml/trace_format.h"

namespace Orvo {

/// Binds a brush to a trace format. It owns neither: each belongs to the same definitions as the
/// context, or is null.
struct InkContext {
  Property<TraceFormat*> traceFormat;
  Property<Brush*> brush;
  std::string id;  ///< Without "#".
};

/// What an ink document declares before its traces, element "definitions". A brush or format must
/// not be removed while a context refers to it.
class InkMLDefinitions : public IXmlSerializable {
 public:
  InkMLDefinitions() : IXmlSerializable("definitions") {}
  InkMLDefinitions(const InkMLDefinitions&) = delete;
  InkMLDefinitions& operator=(const InkMLDefinitions&) = delete;

  /// Writes all formats, then all brushes, then all contexts.
  bool write(TiXmlNode& parent) const override;

  /// Adds the formats and brushes that can be read, and skips the others. Then adds the contexts,
  /// up to the first that fails: one without "id", with a reference that does not begin with "#",
  /// or whose brush or format does not exist. (Of several with one id the first is taken; a missing
  /// reference stands for the empty id.) A context that fails makes the result false, but what was
  /// added stays. A null element adds nothing.
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
