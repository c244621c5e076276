#include "inkml/problem_list.h"

#include <tinyxml.h>

#include "inkml/spellings.h"

namespace Orvo {

void ProblemList::add(InkProblemKind kind, int line, std::string_view detail, std::uint64_t count) {
  const auto [entry, isNew] = problems_.try_emplace(kind, InkProblem{kind, 0, line, {}, 0});
  if (isNew) entry->second.detail = detail;
  entry->second.count += count;
}

void ProblemList::addGroup(InkProblemKind kind, const TiXmlElement& group,
                           std::string_view detail) {
  add(kind, group.Row(), detail);
  problems_.at(kind).traces += countTraces(group);
}

void ProblemList::addNul(const TiXmlNode& text) {
  if (text.ValueStr().find('\0') == std::string::npos) return;
  add(InkProblemKind::textsWithNul, text.Row());
}

std::vector<InkProblem> ProblemList::all() const {
  std::vector<InkProblem> problems;
  for (const auto& [kind, problem] : problems_)
    problems.push_back(problem);
  return problems;
}

}  // namespace Orvo
