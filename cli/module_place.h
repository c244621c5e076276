// Where the bundled plug-in module is, and how a module is loaded.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/module.h"

namespace cli {

/// The plug-in module that belongs to this program: beside it (a build tree, and Windows), or in
/// the library folder of an installation (bin/penwick and lib/penwick/kvoexportfile.aip). Empty
/// where it is part of this program, as in the browser.
std::filesystem::path findModule();

/// Loads the module at `place`, which `findModule` gave or somebody named. Null on failure;
/// `problem` is then one sentence with the path and the cause.
std::unique_ptr<embedded::Module> loadModule(const std::filesystem::path& place,
                                             std::string& problem);

}  // namespace cli
