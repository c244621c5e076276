// Hosts that lack something, refuse something, or have another layout: one builder for the tests.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "embedded/options.h"
#include "hostapi/types.h"

namespace test {

/// Options of an ordinary host, changed step by step:
///
///     HostWithFaults().lacking("AI Runtime Suite").refusingSuite(3)
class HostWithFaults {
 public:
  HostWithFaults& lacking(std::string suite) {
    options_.lackingSuites.insert(std::move(suite));
    return *this;
  }

  HostWithFaults& offering(const std::string& suite, std::int32_t version) {
    options_.suiteVersions[suite] = version;
    return *this;
  }

  HostWithFaults& withNullSlot(std::string suite, std::size_t slot) {
    options_.nullSlots.push_back({std::move(suite), slot});
    return *this;
  }

  /// Answers the k-th call of the function with the code, carried out or not; 0: every call.
  HostWithFaults& answering(std::string suite, std::string function, std::size_t call,
                            hostapi::AIErr code,
                            embedded::FaultMoment moment = embedded::FaultMoment::instead) {
    options_.faults.push_back({std::move(suite), std::move(function), call, code, moment});
    return *this;
  }

  /// Refuses the k-th suite that is asked for.
  HostWithFaults& refusingSuite(std::size_t position, hostapi::AIErr code) {
    return answering("SP Basic Suite", "AcquireSuite", position, code);
  }

  HostWithFaults& withUnicodeStringLayout(embedded::UnicodeStringLayout layout) {
    options_.unicodeStringLayout = layout;
    return *this;
  }

  HostWithFaults& withDocumentLayout(embedded::DocumentLayout layout) {
    options_.documentLayout = layout;
    return *this;
  }

  HostWithFaults& withMessageLayout(embedded::MessageLayout layout) {
    options_.messageLayout = layout;
    return *this;
  }

  HostWithFaults& withArtSetNumbers(embedded::ArtSetNumbers width) {
    options_.artSetNumbers = width;
    return *this;
  }

  HostWithFaults& withLayerGroup(embedded::LayerGroup group) {
    options_.layerGroup = group;
    return *this;
  }

  /// Reports a null handle as misuse where a handle is needed.
  HostWithFaults& namingNullHandles() {
    options_.nullHandles = embedded::NullHandles::misuse;
    return *this;
  }

  HostWithFaults& refusingFlatPages() {
    options_.flatPages = embedded::FlatPages::refused;
    return *this;
  }

  HostWithFaults& fillingOutsOfFailedCalls() {
    options_.failedOuts = embedded::FailedOuts::filled;
    return *this;
  }

  HostWithFaults& whileImporting(std::function<void()> act) {
    options_.whileImporting = std::move(act);
    return *this;
  }

  HostWithFaults& tellingAtBorder(std::function<void(bool)> tell) {
    options_.atBorder = std::move(tell);
    return *this;
  }

  HostWithFaults& answeringMissingStyles(embedded::MissingStyle answer) {
    options_.missingStyle = answer;
    return *this;
  }

  HostWithFaults& ofVersion(std::int32_t major, std::int32_t minor) {
    options_.appMajorVersion = major;
    options_.appMinorVersion = minor;
    return *this;
  }

  HostWithFaults& withoutLibrary() {
    options_.builtInLibrary = false;
    return *this;
  }

  HostWithFaults& withLibraryAt(std::string path) {
    options_.libraryPath = std::move(path);
    return *this;
  }

  HostWithFaults& withoutChecksums() {
    options_.journalChecksums = false;
    return *this;
  }

  HostWithFaults& lettingOutputThrough() {
    options_.captureOutput = false;
    return *this;
  }

  const embedded::Options& options() const { return options_; }
  operator embedded::Options() const { return options_; }  // NOLINT: it is the options

 private:
  embedded::Options options_;
};

}  // namespace test
