#pragma once

#include <cstring>

#include "hostapi/messages.h"
#include "plugin/suites.h"

namespace plugintest {

/// The suite that the plug-in holds, in which a test replaces functions of the host. The destructor
/// restores the host's own table.
///
///     ChangedSuite<hostapi::AILayerSuite> layers;
///     layers->CountLayers = [](std::int32_t*) { return fourCC("TEST"); };
template <class Suite>
class ChangedSuite {
 public:
  ChangedSuite() : host_(heldSuite<Suite>), table_(*host_) { heldSuite<Suite> = &table_; }
  ~ChangedSuite() { heldSuite<Suite> = host_; }
  ChangedSuite(const ChangedSuite&) = delete;
  ChangedSuite& operator=(const ChangedSuite&) = delete;

  Suite* operator->() { return &table_; }
  const Suite& hostsOwn() const { return *host_; }

 private:
  const Suite* host_;
  Suite table_;
};

}  // namespace plugintest
