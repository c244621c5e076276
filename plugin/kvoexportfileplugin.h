// The plug-in itself: opens pen recordings and ink documents as art.
//
// One object lives from the host's "Startup" to its "Shutdown". Host calls whose result is checked
// throw: ai::Error where the user is to read the host's code, a plain AIErr while paths are built.
// The dispatcher turns both into the answer to the host.
#pragma once

#include <vector>

#include "hostapi/ai_document_suite.h"
#include "hostapi/ai_path_suite.h"
#include "hostapi/ai_tablet_data_suite.h"
#include "model/document.h"
#include "penfile/shared_ref.h"
#include "plugin/document_setup.h"
#include "plugin/page_map.h"
#include "plugin/plugin.h"

// The class and its fields bear the names that the system gives them.
// NOLINTBEGIN(readability-identifier-naming)
class kvoexportfileplugin : public Plugin {
 public:
  explicit kvoexportfileplugin(hostapi::SPPluginRef self);
  ~kvoexportfileplugin() override = default;

  /// The frame's dispatcher inside `guarded`: no exception leaves the module.
  hostapi::SPErr message(std::string_view caller, std::string_view selector, void* record) override;

  /// Starts the frame, prints the host's version and registers the file format.
  hostapi::SPErr startupPlugin(hostapi::SPInterfaceMessage* record) override;

 protected:
  /// Opens one file: reads it by its extension and builds its art in the current document. For a
  /// file that cannot be read to its end it draws nothing and gives 0.
  hostapi::SPErr goFileFormat(void* record) override;

 private:
  // import driver
  void registerFileFormat(hostapi::SPInterfaceMessage* record);

  // brush style library
  void loadBrushStyle();

  // art builder
  void buildArt(const Orvo::SharedRef<Orvo::Document>& ink);
  void takeBounds(const Orvo::Document& ink);
  void setupPage();
  hostapi::AILayerHandle firstHostLayer();
  hostapi::AILayerHandle newHostLayer();
  void buildStrokePath(const Orvo::Stroke& stroke, hostapi::AILayerHandle layer,
                       const PageMap& map);
  void fillSegments(const Orvo::Stroke& stroke, const PageMap& map);
  hostapi::AIErr applyArtStyle();

  hostapi::AIFileFormatHandle fileFormat = nullptr;
  std::int32_t appMajorVersion = 0;
  std::int32_t appMinorVersion = 0;
  hostapi::AIArtStyleHandle namedStyle = nullptr;  ///< of the opened document
  hostapi::AIDocumentHandle brushDocument = nullptr;
  hostapi::AIArtStyleHandle brushStyle = nullptr;  ///< of brushDocument
  hostapi::AIDocumentSetup documentSetup{};
  float inkWidth = 0;  ///< ink units
  float inkHeight = 0;
  Orvo::BoundingBox inkBounds;
  DocumentSetupCalls setupCalls_;

  // One path's arrays, kept for the next.
  std::vector<hostapi::AIPathSegment> segments_;
  std::vector<hostapi::AITabletProfile> profiles_;
};
// NOLINTEND(readability-identifier-naming)
