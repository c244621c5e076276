// The channels that traces are declared to have.
#pragma once

#include <list>
#include <string>

#include "inkml/channel.h"

namespace Orvo {

/// The channels that a trace is declared to have, element "traceFormat". It does not affect traces:
/// their points always have seven values.
class TraceFormat : public std::list<Channel>, public IXmlSerializable {
 public:
  TraceFormat() : IXmlSerializable("traceFormat") {}

  bool write(TiXmlNode& parent) const override;

  /// False without the attribute "id". The "channel" elements beside `element`, not those in it,
  /// are read and dropped, so a format from a file never has channels.
  bool read(const TiXmlNode* element) override;

  /// Reads only the attribute "id"; false when there is none.
  bool readId(const TiXmlNode* element);

  std::string id;
};

}  // namespace Orvo
