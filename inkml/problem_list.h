// The problems that are found in one ink file, counted by kind.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "inkml/ink_report.h"

class TiXmlElement;
class TiXmlNode;

namespace Orvo {

class ProblemList {
 public:
  /// Line and detail are kept of the first problem of each kind.
  void add(InkProblemKind kind, int line, std::string_view detail = {}, std::uint64_t count = 1);

  /// Adds a group that is not read, and the number of traces in it.
  void addGroup(InkProblemKind kind, const TiXmlElement& group, std::string_view detail = {});

  /// Adds a text that is read only up to a NUL; nothing for one without.
  void addNul(const TiXmlNode& text);

  /// At most one of each kind, in the order of the kinds.
  std::vector<InkProblem> all() const;

 private:
  std::map<InkProblemKind, InkProblem> problems_;
};

}  // namespace Orvo
