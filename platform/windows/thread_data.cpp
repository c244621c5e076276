// What the C++ run time keeps for each thread, such as the exceptions in flight, and what it does
// once. Its own way, libgcc's emutls.c on top of winpthreads, takes an index of thread-local
// storage and 2 KB at every loading of the module and gives neither back, and a process has only
// 1088 such indices: a program that loads the module anew for each file would end at the 1084th.
// The linker puts these two functions in their place (--wrap).
#include "platform/windows/thread_data.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <windows.h>

namespace {

// A thread-local variable as the compiler describes it: libgcc's struct __emutls_object.
struct Variable {
  std::size_t size;
  std::size_t alignment;  // At most 16, which every allocation has.
  void* unused;
  const void* initial;  // Null for zeros.
};

// A variable's value in one thread; its bytes follow.
struct alignas(16) Value {
  const Variable* variable;
  Value* nextOfThread;
  Value* nextOfAll;

  void* bytes() { return this + 1; }
};

std::atomic<DWORD> threadIndex{TLS_OUT_OF_INDEXES};
std::atomic<Value*> allValues{nullptr};

// The index at which each thread keeps its list of values.
DWORD indexOfThisModule() {
  DWORD index = threadIndex.load();
  if (index != TLS_OUT_OF_INDEXES) return index;
  const DWORD made = TlsAlloc();
  if (made == TLS_OUT_OF_INDEXES) std::abort();
  if (threadIndex.compare_exchange_strong(index, made)) return made;
  TlsFree(made);
  return index;
}

Value* makeValue(const Variable& variable, Value* nextOfThread) {
  auto* value = static_cast<Value*>(std::calloc(1, sizeof(Value) + variable.size));
  if (value == nullptr) std::abort();
  value->variable = &variable;
  value->nextOfThread = nextOfThread;
  if (variable.initial != nullptr) std::memcpy(value->bytes(), variable.initial, variable.size);
  value->nextOfAll = allValues.load();
  while (!allValues.compare_exchange_weak(value->nextOfAll, value)) {
  }
  return value;
}

// Keeps Windows' last error, which reading thread-local storage sets to 0.
class LastErrorKept {
 public:
  LastErrorKept() = default;
  ~LastErrorKept() { SetLastError(error_); }
  LastErrorKept(const LastErrorKept&) = delete;
  LastErrorKept& operator=(const LastErrorKept&) = delete;

 private:
  DWORD error_ = GetLastError();
};

enum Once : long { notDone, runs, done };

}  // namespace

// The address of the calling thread's value of a variable.
extern "C" void* __wrap___emutls_get_address(void* object) {
  const LastErrorKept kept;
  const auto& variable = *static_cast<const Variable*>(object);
  const DWORD index = indexOfThisModule();
  auto* const first = static_cast<Value*>(TlsGetValue(index));
  for (Value* value = first; value != nullptr; value = value->nextOfThread) {
    if (value->variable == &variable) return value->bytes();
  }
  Value* const value = makeValue(variable, first);
  if (TlsSetValue(index, value) == 0) std::abort();
  return value->bytes();
}

// Runs `work` if it never ran to its end, and waits where another thread runs it. What it throws
// passes through, and the next call tries again.
extern "C" int __wrap_pthread_once(long* state, void (*work)()) {
  std::atomic_ref<long> once(*state);
  for (;;) {
    long seen = notDone;
    if (once.compare_exchange_strong(seen, runs)) break;
    if (seen == done) return 0;
    SwitchToThread();
  }
  struct Ending {
    std::atomic_ref<long>& once;
    long end = notDone;
    ~Ending() { once.store(end); }
  } ending{once};
  work();
  ending.end = done;
  return 0;
}

void releaseThreadData() {
  for (Value* value = allValues.exchange(nullptr); value != nullptr;) {
    Value* const next = value->nextOfAll;
    std::free(value);
    value = next;
  }
  const DWORD index = threadIndex.exchange(TLS_OUT_OF_INDEXES);
  if (index != TLS_OUT_OF_INDEXES) TlsFree(index);
}
