// Reads XML of any origin, element by element, within limits.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace translate {

inline constexpr int kDeepestNesting = 500;     ///< InkML of programs nests about ten deep.
inline constexpr int kMostAttributes = 10'000;  ///< On one element; traces have seven at most.
inline constexpr int kMostEntities = 200;       ///< Declared by the document. Few have one.

/// Is told what a document holds, in order. All texts are UTF-8 and live only for the call.
class XmlSink {
 public:
  XmlSink() = default;
  XmlSink(const XmlSink&) = delete;
  XmlSink& operator=(const XmlSink&) = delete;
  virtual ~XmlSink() = default;

  /// The attributes are names and values by turns, ended by a null. False ends the reading.
  virtual bool start(std::string_view name, const char* const* attributes, int line) = 0;
  virtual void end() = 0;
  virtual void text(std::string_view part) = 0;
};

struct XmlOutcome {
  std::string
      problem;   ///< Why it was not read to its end; empty if it was, or if the sink ended it.
  int line = 0;  ///< Where; 0 when not known.
  std::uint64_t outsideTexts = 0;  ///< References to text outside the document; none is fetched.
  std::string encoding;            ///< As declared; empty without.
};

/// Reads a document in UTF-8, UTF-16, Latin-1, Windows-1252 or US-ASCII.
XmlOutcome readXml(std::string_view bytes, XmlSink& sink);

}  // namespace translate
