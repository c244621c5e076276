#pragma once

#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "embedded/session.h"
#include "hostapi/codes.h"
#include "penfile/document_loader.h"
#include "tests/support/pen/debugger_text.h"
#include "tests/support/pen/pen_file_builder.h"
#include "tests/support/pen/temporary_folder.h"

extern "C" hostapi::SPErr PluginMain(const char* caller, const char* selector, void* message);

namespace plugintest {

using hostapi::fourCC;
using pentest::PenFileBuilder;

/// The plug-in, linked into this program, in its own host, which reports null handles as misuse;
/// the log goes to its own folder.
class PluginInHost {
 public:
  explicit PluginInHost(embedded::Options options = {},
                        hostapi::PluginMainFunction entry = &PluginMain)
      : inside_(folder_.path()),
        session_(embedded::Module::ofEntry(entry, "kvoexportfile"),
                 namingNullHandles(std::move(options))) {
    Orvo::fileKind = Orvo::kPenFile;
  }

  embedded::Session* operator->() { return &session_; }
  embedded::Session& session() { return session_; }
  const embedded::Host& host() const { return session_.host(); }

  /// Writes the recording into the folder and opens it.
  embedded::Opening open(const PenFileBuilder& recording, const std::string& name = "drawing.pnx") {
    recording.write(folder_ / name);
    return session_.open((folder_ / name).string());
  }

  /// What the plug-in prints for the debugger while it opens the recording.
  std::string debuggerTextOfOpening(const PenFileBuilder& recording) {
    std::string printed;
    const std::string told =
        pentest::debuggerTextOf([&] { printed = open(recording).output.standardError; });
    return told + printed;
  }

  /// Writes a text into the folder and returns its path.
  std::string writeText(const std::string& name, const std::string& text) {
    std::ofstream(folder_ / name, std::ios::binary) << text;
    return path(name);
  }

  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  std::size_t calls(std::string_view suite, std::string_view function) const {
    return host().journal().count(suite, function);
  }

 private:
  static embedded::Options namingNullHandles(embedded::Options options) {
    options.nullHandles = embedded::NullHandles::misuse;
    return options;
  }

  pentest::TemporaryFolder folder_;
  pentest::CurrentFolder inside_;
  embedded::Session session_;
};

/// A recording of one stroke of three points.
inline PenFileBuilder oneStroke() {
  return PenFileBuilder().descriptor().status(1).coordinate(-5, 0).coordinate(995, 500).coordinate(
      1995, 100);
}

/// A recording of two layers, each of the same number of strokes of three points.
inline PenFileBuilder twoLayers(int strokes) {
  PenFileBuilder recording;
  recording.descriptor();
  for (int layer = 0; layer < 2; ++layer) {
    recording.status(0x80);
    for (int stroke = 0; stroke < strokes; ++stroke) {
      recording.status(0)
          .status(1)
          .coordinate(10, 20)
          .coordinate(30, 40 + stroke)
          .coordinate(50, 60 + layer);
    }
  }
  return recording;
}

/// An ink document of one layer without strokes.
inline constexpr char kEmptyInkLayer[] = "<ink><tracegroup id=\"layer0\"></tracegroup></ink>";

/// The path at `index`, from the bottom, of a layer.
inline const art::Path& pathAt(const art::Document& document, std::size_t layer,
                               std::size_t index) {
  return std::get<art::Path>(document.layers.at(layer).art.at(index).value);
}

/// Makes the host answer the k-th call of a function with a code.
inline embedded::Options failing(const std::string& suite, const std::string& function,
                                 hostapi::AIErr code, std::size_t call = 1) {
  embedded::Options options;
  options.faults.push_back({.suite = suite, .function = function, .call = call, .code = code});
  return options;
}

}  // namespace plugintest
