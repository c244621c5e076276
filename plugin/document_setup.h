// The document set-up, wherever the host's Document suite has it.
#pragma once

#include "hostapi/ai_document_suite.h"

/// Suite version 13 has the set-up at slots 10 and 11 or at 13 and 14. The first call asks the host
/// which, in the one way that does no harm.
class DocumentSetupCalls {
 public:
  hostapi::AIErr get(hostapi::AIDocumentSetup& setup);
  hostapi::AIErr set(const hostapi::AIDocumentSetup& setup);

 private:
  enum class Layout { notAsked, newer, older };

  bool older();

  Layout layout_ = Layout::notAsked;
};
