// The one place where exceptions of the plug-in's operations become codes for the host.
#pragma once

#include "hostapi/codes.h"
#include "plugin/error.h"
#include "plugin/plugin.h"

template <class Operation>
hostapi::SPErr Plugin::guarded(std::string_view caller, std::string_view selector,
                               Operation operation) {
  hostapi::SPErr result = hostapi::kNoErr;
  try {
    result = operation();
  } catch (const ai::Error& error) {
    result = error;
  } catch (...) {
    result = hostapi::kCantHappenErr;
  }
  if (result == hostapi::kNoErr || result == hostapi::kUnhandledMsgErr) return hostapi::kNoErr;
  reportError(result, caller, selector);
  return result;
}
