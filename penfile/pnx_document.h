#pragma once

#include "model/document.h"
#include "penfile/packets.h"

namespace Orvo {

/// The drawing of a pen recording with the three header packets of the file; of each kind of header
/// the last one in the file.
class PnxDocument final : public Document {
 public:
  FileDescriptor fileDescriptor;
  PhysicalParams physicalParams;
  FileDateTime dateTime;
};

}  // namespace Orvo
