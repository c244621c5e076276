// Recordings and ink documents of every kind, for tests that break something in the middle of them.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/plugin/plugin_in_host.h"
#include "tests/support/pen/text_file.h"

namespace plugintest {

/// A file to open: its name, which says what it is, and its bytes.
struct SampleFile {
  std::string name;
  std::string bytes;
  bool opens = true;

  bool isInk() const { return name.ends_with(".kvo") || name.ends_with(".inkml"); }
  /// So large that each case takes long.
  bool isLarge() const { return bytes.size() > 4096; }
  /// What a test of this file is called.
  std::string title() const {
    std::string text = name;
    for (char& character : text)
      if (character == '.' || character == '-') character = '_';
    return text;
  }
};

inline void PrintTo(const SampleFile& file, std::ostream* out) {
  *out << file.name;
}

inline std::string textOf(const PenFileBuilder& recording) {
  return {recording.data().begin(), recording.data().end()};
}

/// A recording in which everything changes: pressure, tilt, time, layers, and a point that is left
/// out.
inline PenFileBuilder variedRecording() {
  PenFileBuilder recording = PenFileBuilder()
                                 .descriptor()
                                 .physical({1, 2, 3, 4, 5, 6, 7})
                                 .dateTime({20, 12, 5, 31, 14, 7, 9});
  for (int layer = 0; layer < 3; ++layer) {
    recording.status(0x80).unknown(0x77, 5, {97, 6, 1});
    for (int stroke = 0; stroke < 4; ++stroke) {
      recording.status(0).status(1).coordinate(300 + stroke, 400).pressure(1, 4000);
      recording.tilt(-20, 30).time(17, 0, 1, 0x80).coordinate(310, 420 + layer);
      recording.coordinate(-5, -3).coordinate(20 * stroke, 30).pressure(6, 900).coordinate(7, 8);
    }
  }
  return recording;
}

inline std::string inkOf(const std::string& groups) {
  return "<?xml version=\"1.0\" ?>\n<ink><definitions><traceFormat id=\"f\"/><brush id=\"b\">"
         "<annotationXML><color>R&amp;&#x41;\xC3\xA9</color></annotationXML></brush>"
         "<context id=\"c\" brushRef=\"#b\" traceFormatRef=\"#f\"/></definitions>"
         "<annotation type=\"t\">T</annotation>" +
         groups + "</ink>\n";
}

inline std::string groupOf(int number, int traces) {
  std::string group = "<tracegroup id=\"layer" + std::to_string(number) + "\">";
  for (int trace = 0; trace < traces; ++trace) {
    group += "<trace contextRef=\"#c\">10 20 0 512 0 0 1,30 " + std::to_string(40 + trace) +
             " 0 700 -5 6 9,50 60 0 1023 0 0 17</trace>";
  }
  return group + "</tracegroup>";
}

/// Fourteen small files and two samples. The first layer of each that is drawn has a stroke.
inline std::vector<SampleFile> sampleFiles() {
  const std::string varied = textOf(variedRecording());
  const std::string small = inkOf(groupOf(0, 2));
  return {
      {"stroke.pnx", textOf(oneStroke())},
      {"layers.pnx", textOf(twoLayers(3))},
      {"varied.eli", varied},
      {"many.pnx", textOf(twoLayers(20))},
      {"nothing-drawn.pnx", textOf(PenFileBuilder().descriptor())},
      {"cut.pnx", varied.substr(0, varied.size() - 3)},
      {"broken.pnx", varied + std::string("\x01\x06\x00", 3), false},
      {"empty.pnx", "", false},
      {"small.kvo", small},
      {"layers.inkml", inkOf(groupOf(0, 3) + groupOf(1, 2))},
      {"empty-layer.kvo", inkOf(groupOf(0, 1) + groupOf(1, 0))},
      {"no-layer.kvo", inkOf("")},
      {"many.kvo", inkOf(groupOf(0, 20) + groupOf(1, 10))},
      {"broken.kvo", small.substr(0, small.size() - 9), false},
      {"signature.pnx", pentest::readText(std::string(PENWICK_SAMPLES) + "/signature.pnx")},
      {"melody.kvo", pentest::readText(std::string(PENWICK_SAMPLES) + "/melody.kvo")},
  };
}

}  // namespace plugintest
