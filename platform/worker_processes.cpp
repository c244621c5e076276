#include "platform/worker_processes.h"

#if !defined(_WIN32) && !defined(__EMSCRIPTEN__)
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>
#ifdef __linux__
#include <sys/prctl.h>
#endif

#include "platform/descriptor.h"
#include "platform/ending_signals.h"
#include "platform/worker.h"
#endif

namespace platform {

namespace {

void runHere(Jobs& jobs, std::size_t count) {
  for (std::size_t job = 0; job < count; ++job) {
    jobs.begun(job);
    jobs.ended(job, {JobEnd::Kind::answered, jobs.carryOut(job)});
  }
}

}  // namespace

#if defined(_WIN32) || defined(__EMSCRIPTEN__)

std::size_t countProcessors() {
  return 1;
}

void runJobs(Jobs& jobs, std::size_t count, const WorkerOptions&) {
  runHere(jobs, count);
}

#else

namespace {

void closeStreams() {
  const Descriptor nowhere(::open("/dev/null", O_RDWR | O_CLOEXEC));
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    ::dup2(nowhere.number(), stream);
}

class Crew {
 public:
  Crew(Jobs& jobs, std::size_t count, const WorkerOptions& options)
      : jobs_(jobs), count_(count), options_(options) {}

  void run() {
    while (next_ < count_ || !workers_.empty()) {
      giveJobs();
      if (EndingSignals::noted() != 0) return endAll();
      if (!workers_.empty()) takeAnswers();
    }
  }

 private:
  // Every worker is busy afterwards, and none is kept that has nothing left to do.
  void giveJobs() {
    for (auto& worker : workers_) {
      if (!worker->job() && next_ < count_ && worker->give(next_)) jobs_.begun(next_++);
    }
    std::erase_if(workers_, [](const auto& worker) { return !worker->job(); });
    while (next_ < count_ && workers_.size() < options_.processes && startWorker()) {
    }
    if (workers_.empty() && next_ < count_) {
      jobs_.ended(next_++, {JobEnd::Kind::notBegun, std::generic_category().message(errno)});
    }
  }

  bool startWorker() {
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return false;
    Descriptor mine(ends[0]);
    Descriptor other(ends[1]);
    // Or what is buffered would be written twice. A failure stays marked in its stream.
    static_cast<void>(std::fflush(nullptr));
    const pid_t parent = ::getpid();
    const pid_t process = ::fork();
    if (process < 0) return false;
    if (process == 0) {
      mine.close();
      beWorker(parent, other.number());
    }
    workers_.push_back(std::make_unique<Worker>(process, mine.release()));
    if (!workers_.back()->give(next_)) return false;
    jobs_.begun(next_++);
    return true;
  }

  [[noreturn]] void beWorker(pid_t parent, int socket) {
    // Held open here, the sockets of the others would keep them waiting for ever.
    for (auto& worker : workers_)
      worker->forget();
    workers_.clear();
    signals_.leaveToParent();
#ifdef __linux__
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
    if (::getppid() != parent) ::_exit(0);
    if (!options_.keepsStreams) closeStreams();
    workFor(jobs_, socket, options_.timeLimit);
  }

  void takeAnswers() {
    std::vector<pollfd> sockets;
    sockets.reserve(workers_.size());
    for (const auto& worker : workers_)
      sockets.push_back({worker->socket(), POLLIN, 0});
    const timespec quarter{0, 250'000'000};
    const int ready = ::ppoll(sockets.data(), sockets.size(), &quarter, &signals_.mask());
    if (ready == 0) jobs_.wait();
    if (ready <= 0 || EndingSignals::noted() != 0) return;
    for (std::size_t i = 0; i < sockets.size(); ++i) {
      if (sockets[i].revents != 0) takeAnswer(*workers_[i]);
    }
    std::erase_if(workers_, [](const auto& worker) { return worker->isGone(); });
  }

  void takeAnswer(Worker& worker) {
    const std::optional<std::size_t> job = worker.job();
    const std::optional<JobEnd> end = worker.receive();
    if (job && end) jobs_.ended(*job, *end);
  }

  void endAll() {
    const int signal = EndingSignals::noted();
    EndingSignals::forget();
    for (const auto& worker : workers_)
      worker->end();
    signals_.letIn();
    workers_.clear();
    jobs_.interrupted();
    signals_.restore();
    static_cast<void>(std::raise(signal));
  }

  Jobs& jobs_;
  std::size_t count_;
  WorkerOptions options_;
  std::size_t next_ = 0;
  std::vector<std::unique_ptr<Worker>> workers_;
  EndingSignals signals_;
};

}  // namespace

std::size_t countProcessors() {
  return std::max(1U, std::thread::hardware_concurrency());
}

void runJobs(Jobs& jobs, std::size_t count, const WorkerOptions& options) {
  if (options.processes == 0) {
    runHere(jobs, count);
  } else {
    Crew(jobs, count, options).run();
  }
}

#endif

}  // namespace platform
