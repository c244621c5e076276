#include "embedded/host.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "embedded/host_state.h"
#include "embedded/suites/registry.h"
#include "embedded/text.h"
#include "stylelib/library.h"

namespace embedded {

using namespace hostapi;

namespace {

// The suites are plain functions: this is how they find their host.
HostState* active = nullptr;

// If a plug-in misbehaves at every stroke, the first sentences say enough.
constexpr std::size_t kMostMisuse = 100;

}  // namespace

HostState& activeHost() {
  if (active == nullptr) throw std::logic_error("no embedded host is active");
  return *active;
}

HostState* activeHostIfAny() {
  return active;
}

HostState::HostState(Options wanted)
    : options(std::move(wanted)),
      journal(options.journalChecksums),
      basic(makeBasicSuite(options)),
      suites(makeSuites(options)),
      faultCalls(options.faults.size(), 0),
      pluginName(options.pluginName),
      libraryPath(fromNativePath(options.libraryPath.value_or(stylelib::defaultLibraryPath()))) {}

void HostState::misbehaves(const std::string& what) {
  if (misuse.size() < kMostMisuse) misuse.push_back("plug-in misbehaving: " + what);
}

void HostState::note(const std::string& text) {
  if (std::ranges::find(notes, text) == notes.end()) notes.push_back(text);
}

Host::Host(Options options) {
  if (active != nullptr) throw std::logic_error("an embedded host is already active");
  state_ = std::make_unique<HostState>(std::move(options));
  active = state_.get();
}

Host::~Host() {
  active = nullptr;
}

const Options& Host::options() const {
  return state_->options;
}
const SPBasicSuite* Host::basic() const {
  return &state_->basic;
}
SPPluginRef Host::plugin() const {
  return toHandle<SPPluginRef>(HandleKind::plugin, 1);
}
void Host::setPluginName(std::string name) {
  state_->pluginName = std::move(name);
}

AIDocumentHandle Host::newDocument() {
  return state_->documents.makeCurrent()->handle;
}

bool Host::hasDocument() const {
  return state_->documents.current() != nullptr;
}

art::Document Host::document() const {
  DocumentNode* current = state_->documents.current();
  return current == nullptr ? art::Document() : plainDocument(*current, false);
}

art::Document Host::takeDocument() {
  DocumentNode* current = state_->documents.current();
  if (current == nullptr) return {};
  art::Document document = plainDocument(*current, true);
  state_->documents.closeCurrent();
  return document;
}

bool Host::builderRan() const {
  const DocumentNode* current = state_->documents.current();
  return current != nullptr && current->setupAsked;
}

FilePathBody Host::makeFilePath(const std::string& native) {
  ++state_->messagePaths;
  return {state_->paths.add({fromNativePath(native)})};
}

void Host::freeFilePath(FilePathBody& path) {
  if (state_->paths.find(path.inside) == nullptr) {
    state_->misbehaves("the message's file path was deleted");
  }
  state_->paths.remove(path.inside);
  path.inside = nullptr;
  --state_->messagePaths;
}

const std::vector<Host::Format>& Host::formats() const {
  return state_->formats;
}
const std::vector<Host::Notifier>& Host::notifiers() const {
  return state_->notifiers;
}
Journal& Host::journal() {
  return state_->journal;
}
const Journal& Host::journal() const {
  return state_->journal;
}
const std::vector<std::string>& Host::alerts() const {
  return state_->alerts;
}
const std::vector<std::string>& Host::misuse() const {
  return state_->misuse;
}
void Host::addMisuse(const std::string& what) {
  state_->misbehaves(what);
}
const std::vector<std::string>& Host::notes() const {
  return state_->notes;
}

void Host::checkSuitesReleased() {
  for (const OfferedSuite& suite : state_->suites) {
    if (suite.acquired == 0) continue;
    state_->misbehaves(std::string("\"") + suite.id.name + "\" " +
                       std::to_string(suite.id.version) + " was not released");
  }
}

std::size_t Host::liveStrings() const {
  return state_->strings.live();
}
std::size_t Host::livePaths() const {
  const std::size_t live = state_->paths.live();
  return live - std::min(live, state_->messagePaths);
}
std::size_t Host::liveBlocks() const {
  return state_->blocks.size();
}
std::size_t Host::accessCount() const {
  return state_->accessCount;
}

std::size_t Host::acquiredSuites() const {
  std::size_t count = 0;
  for (const OfferedSuite& suite : state_->suites)
    count += suite.acquired;
  return count;
}

}  // namespace embedded
