// Documents that are packed with gzip.
#pragma once

#include <string>
#include <string_view>

namespace translate {

/// Whether the bytes begin as gzip does.
bool isPacked(std::string_view bytes);

struct Unpacked {
  std::string bytes;
  std::string problem;  ///< Why it could not be unpacked; empty if it could.
};

/// Unpacks every member. Refuses what is damaged or cut, what grows beyond 2 GiB, and what grows
/// more than a hundredfold and beyond 8 MiB.
Unpacked unpack(std::string_view bytes);

}  // namespace translate
