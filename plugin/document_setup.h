// The document set-up functions, in whichever slots the host's Document suite has them.
#pragma once

#include "hostapi/ai_document_suite.h"

/// Suite version 13 has the set-up functions in slots 10 and 11 or in 13 and 14. The host is asked
/// which, in the one way that does no harm, until it gives a clear answer; until then slots 10 and
/// 11 are used.
class DocumentSetupCalls {
 public:
  hostapi::AIErr get(hostapi::AIDocumentSetup& setup);
  /// Uses the layout that the last `get` used.
  hostapi::AIErr set(const hostapi::AIDocumentSetup& setup);

 private:
  enum class Layout { unknown, newer, older };

  static Layout askHost();

  Layout layout_ = Layout::unknown;
};
