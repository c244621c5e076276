// The embedded host: the suites that a plug-in acquires, over an art document in memory.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "art/document.h"
#include "embedded/journal.h"
#include "embedded/options.h"
#include "hostapi/types.h"

namespace hostapi {
struct SPBasicSuite;
}

namespace embedded {

struct HostState;

/// One host with its documents, suites, strings and paths.
///
/// 1. The suites are tables of plain functions without a context, so one host at a time is active
///    in the process: making a second one throws std::logic_error.
/// 2. Whatever a suite gives out (tables, strings, handles) is valid until the host is destroyed.
/// 3. Single-threaded, like the interface.
/// 4. What the plug-in does wrong is answered with a code and reported: see `misuse`.
class Host {
 public:
  explicit Host(Options options = {});
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  const Options& options() const;
  const hostapi::SPBasicSuite* basic() const;
  /// The plug-in's own reference.
  hostapi::SPPluginRef plugin() const;
  /// What GetPluginName answers.
  void setPluginName(std::string name);

  // ---- documents ----

  /// A new document with one editable layer, "Layer 1", on an A4 page of 595.276 by 841.89 points
  /// whose lower left corner is the origin. It becomes the current one; the previous one is closed.
  hostapi::AIDocumentHandle newDocument();
  bool hasDocument() const;
  /// A copy of the current document.
  art::Document document() const;
  /// Takes the current document out of the host and closes it: its handles are no longer valid.
  art::Document takeDocument();
  /// True when the current document's set-up was asked for, which shows that the plug-in's builder
  /// ran.
  bool builderRan() const;

  // ---- for the messages ----

  /// A file path for a message, from native bytes taken unchanged; owned by the host.
  hostapi::FilePathBody makeFilePath(const std::string& native);
  void freeFilePath(hostapi::FilePathBody& path);

  struct Format {
    hostapi::AIFileFormatHandle handle;
    std::string name;
    std::string title;
    std::string extensions;
    std::int32_t options;
  };
  const std::vector<Format>& formats() const;

  struct Notifier {
    hostapi::AINotifierHandle handle;
    std::string name;
    std::string type;
  };
  const std::vector<Notifier>& notifiers() const;

  // ---- what happened ----

  Journal& journal();
  const Journal& journal() const;
  /// The texts of the error alerts, in order, as UTF-8.
  const std::vector<std::string>& alerts() const;
  /// What the plug-in did wrong, as sentences that begin "plug-in misbehaving: ", in order; only
  /// the first 100 are kept.
  const std::vector<std::string>& misuse() const;
  /// Adds a sentence to `misuse`.
  void addMisuse(const std::string& what);
  /// Anything else the user may want to know, such as a style library that was not read.
  const std::vector<std::string>& notes() const;
  /// Reports as misuse every suite that was acquired and not released.
  void checkSuitesReleased();

  /// Strings and paths that the plug-in made and did not destroy.
  std::size_t liveStrings() const;
  std::size_t livePaths() const;
  /// Blocks of the basic suite that were not freed.
  std::size_t liveBlocks() const;
  /// Uses of its own module that the plug-in acquired and did not release.
  std::size_t accessCount() const;
  /// Acquisitions that were not released, over all suites.
  std::size_t acquiredSuites() const;

 private:
  std::unique_ptr<HostState> state_;
};

}  // namespace embedded
