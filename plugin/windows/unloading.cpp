// Frees what the C++ runtime, which is linked into the module, keeps for itself.

namespace __gnu_cxx {
// The runtime's own function: frees the memory reserved for exceptions thrown when memory runs out.
void __freeres();
}  // namespace __gnu_cxx

namespace {

struct Unloading {
  ~Unloading() { __gnu_cxx::__freeres(); }
};

// Constructed before every other object of the module, so that it is destroyed last.
[[maybe_unused, gnu::init_priority(101)]] const Unloading unloading;

}  // namespace
