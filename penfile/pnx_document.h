// The drawing of a pen recording.
#pragma once

#include "model/document.h"
#include "penfile/packets.h"

namespace Orvo {

/// The drawing of a pen recording, with the three header packets of the file. Of several packets of
/// one kind it has the last one.
class PnxDocument final : public Document {
 public:
  FileDescriptor fileDescriptor;
  PhysicalParams physicalParams;
  FileDateTime dateTime;
};

}  // namespace Orvo
