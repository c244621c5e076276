// What the C++ run time needs for threads, made of Windows' own locks and of the thread-local
// storage that the loader provides. With these functions in the module, libgcc's emulated
// thread-local storage and winpthreads are not linked in. Those allocate when a thread or a lock is
// first used, even while std::bad_alloc is being thrown, and end the process where there is no
// memory. They also take an index of thread-local storage at every loading of the module and never
// give it back, though a process has only 1088: a program that loads the module anew for each file
// would end at the 1084th.
#include <atomic>
#include <cstdint>
#include <cxxabi.h>
#include <pthread.h>
#include <windows.h>

// From the compiler's start-up code: the bytes of which the loader gives every thread a copy, and
// the module's place among the copies that a thread has.
extern "C" const IMAGE_TLS_DIRECTORY _tls_used;
extern "C" const ULONG _tls_index;

namespace {

// A thread's exceptions in flight, as the C++ ABI lays them out.
struct ExceptionGlobals {
  void* caughtExceptions;
  unsigned int uncaughtExceptions;
};

// Only a place in the bytes that are copied: each thread uses its copy.
[[gnu::section(".tls$"), gnu::used]] ExceptionGlobals exceptionGlobals{};

// A lock or a condition is one word, which winpthreads' initialisers set to -1, -2 or -3. Windows'
// own begin with 0 and are never negative.
template <class Native>
Native* native(std::intptr_t* object) {
  static_assert(sizeof(Native) == sizeof *object);
  const std::atomic_ref<std::intptr_t> word(*object);
  std::intptr_t seen = word.load();
  if (seen < 0) word.compare_exchange_strong(seen, 0);
  return reinterpret_cast<Native*>(object);
}

enum Once : long { notDone, runs, done };

}  // namespace

namespace __cxxabiv1 {

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept {
  char* const* copies = nullptr;
  asm("movq %%gs:0x58, %0" : "=r"(copies));  // A field of the block that describes the thread.
  const auto place = reinterpret_cast<ULONG_PTR>(&exceptionGlobals);
  char* const own = copies[_tls_index] + (place - _tls_used.StartAddressOfRawData);
  return reinterpret_cast<__cxa_eh_globals*>(own);
}

extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept {
  return __cxa_get_globals();
}

}  // namespace __cxxabiv1

extern "C" {

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* /*attributes*/) {
  *mutex = 0;
  return 0;
}

int pthread_mutex_destroy(pthread_mutex_t* /*mutex*/) {
  return 0;
}

int pthread_mutex_lock(pthread_mutex_t* mutex) {
  AcquireSRWLockExclusive(native<SRWLOCK>(mutex));
  return 0;
}

int pthread_mutex_unlock(pthread_mutex_t* mutex) {
  ReleaseSRWLockExclusive(native<SRWLOCK>(mutex));
  return 0;
}

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
  SleepConditionVariableSRW(native<CONDITION_VARIABLE>(condition), native<SRWLOCK>(mutex), INFINITE,
                            0);
  return 0;
}

int pthread_cond_broadcast(pthread_cond_t* condition) {
  WakeAllConditionVariable(native<CONDITION_VARIABLE>(condition));
  return 0;
}

// Runs `work` if it never ran to its end, and waits where another thread runs it. What it throws
// passes through, and the next call tries again.
int pthread_once(pthread_once_t* state, void (*work)()) {
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

}  // extern "C"
