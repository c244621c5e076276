// Where the bundled plug-in module is.
#pragma once

#include <filesystem>

namespace cli {

/// The plug-in module that belongs to this program: beside it (a build tree, and Windows), or in
/// the library folder of an installation (bin/penwick and lib/penwick/kvoexportfile.aip).
std::filesystem::path findModule();

}  // namespace cli
