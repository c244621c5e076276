// What runs when the module is unloaded.
#pragma once

namespace platform {

/// Calls `function` when the module that this is linked into is unloaded, or when the program ends.
/// What is registered last runs first, together with the destructors of static objects; a function
/// that is registered while these run is called, too. Any thread may call this.
void atUnload(void (*function)());

}  // namespace platform
