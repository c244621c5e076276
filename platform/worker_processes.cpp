#include "platform/worker_processes.h"

#ifndef _WIN32
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>
#ifdef __linux__
#include <sys/prctl.h>
#endif

#include "platform/descriptor.h"
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

#ifdef _WIN32

void runJobs(Jobs& jobs, std::size_t count, const WorkerOptions&) {
  runHere(jobs, count);
}

#else

namespace {

constexpr std::array kEndingSignals{SIGHUP, SIGINT, SIGQUIT, SIGTERM};

volatile std::sig_atomic_t caughtSignal = 0;

extern "C" void noteSignal(int signal) {
  caughtSignal = signal;
}

// While it lives, signals that would end this process are only noted, and come in only where the
// process waits with the mask from before.
class NotedSignals {
 public:
  NotedSignals() {
    caughtSignal = 0;
    sigset_t noted;
    ::sigemptyset(&noted);
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i) {
      ::sigaddset(&noted, kEndingSignals[i]);
      ::sigaction(kEndingSignals[i], nullptr, &before_[i]);
      if (before_[i].sa_handler == SIG_IGN) continue;
      struct sigaction action {};
      action.sa_handler = noteSignal;
      ::sigaction(kEndingSignals[i], &action, nullptr);
    }
    ::pthread_sigmask(SIG_BLOCK, &noted, &mask_);
  }
  ~NotedSignals() { restore(); }
  NotedSignals(const NotedSignals&) = delete;
  NotedSignals& operator=(const NotedSignals&) = delete;

  /// The signals that were blocked before.
  const sigset_t& mask() const { return mask_; }

  void restore() const {
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i)
      ::sigaction(kEndingSignals[i], &before_[i], nullptr);
    ::pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
  }

  // A terminal sends its signals to every process, but which of them end is for this one to say.
  void leaveToParent() const {
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i) {
      struct sigaction action {};
      action.sa_handler = kEndingSignals[i] == SIGTERM ? SIG_DFL : SIG_IGN;
      ::sigaction(kEndingSignals[i], &action, nullptr);
    }
    ::pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
  }

 private:
  std::array<struct sigaction, kEndingSignals.size()> before_{};
  sigset_t mask_{};
};

bool readAll(int socket, void* bytes, std::size_t size) {
  return ::recv(socket, bytes, size, MSG_WAITALL) == static_cast<ssize_t>(size);
}

bool sendAll(int socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

template <class Number>
std::string_view bytesOf(const Number& number) {
  return {reinterpret_cast<const char*>(&number), sizeof number};
}

// Has the system end this process after so much more processor time; 0 ends the limit.
void limitTime(double seconds) {
  itimerval timer{};
  timer.it_value.tv_sec = static_cast<time_t>(seconds);
  timer.it_value.tv_usec =
      static_cast<suseconds_t>((seconds - static_cast<double>(timer.it_value.tv_sec)) * 1e6);
  ::setitimer(ITIMER_PROF, &timer, nullptr);
}

void closeStreams() {
  const Descriptor nowhere(::open("/dev/null", O_RDWR | O_CLOEXEC));
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    ::dup2(nowhere.number(), stream);
}

// What a worker does: an order is a job's number, an answer its size and then its bytes.
[[noreturn]] void work(Jobs& jobs, int socket, double timeLimit) {
  std::size_t job = 0;
  while (readAll(socket, &job, sizeof job)) {
    limitTime(timeLimit);
    const std::string answer = jobs.carryOut(job);
    limitTime(0);
    const std::uint64_t size = answer.size();
    if (!sendAll(socket, bytesOf(size)) || !sendAll(socket, answer)) break;
  }
  ::_exit(0);
}

// A process that carries out jobs, as its parent sees it.
class Worker {
 public:
  Worker(pid_t process, int socket) : process_(process), socket_(socket) {}
  ~Worker() {
    socket_.close();
    if (process_ > 0) waitForEnd();
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  const std::optional<std::size_t>& job() const { return job_; }
  int socket() const { return socket_.number(); }
  void signal(int number) const { ::kill(process_, number); }

  bool give(std::size_t job) {
    received_.clear();
    if (!sendAll(socket_.number(), bytesOf(job))) return false;
    job_ = job;
    return true;
  }

  /// Takes in what has come; gives the end of the job where that is it. Afterwards the worker is
  /// free, unless `isGone`.
  std::optional<JobEnd> receive() {
    std::array<char, 65536> bytes;
    const ssize_t count = ::recv(socket_.number(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return {};
    if (count <= 0) return endOfProcess();
    received_.append(bytes.data(), static_cast<std::size_t>(count));
    std::uint64_t size = 0;
    if (received_.size() < sizeof size) return {};
    std::memcpy(&size, received_.data(), sizeof size);
    if (received_.size() - sizeof size < size) return {};
    job_.reset();
    return JobEnd{JobEnd::Kind::answered, received_.substr(sizeof size)};
  }

  bool isGone() const { return process_ == 0; }

  /// Leaves the process to itself, in a copy of the parent that is not its parent.
  void forget() { process_ = 0; }

 private:
  int waitForEnd() {
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
      // A second signal does not wait.
      if (caughtSignal != 0) signal(SIGKILL);
    }
    process_ = 0;
    return status;
  }

  JobEnd endOfProcess() {
    const int status = waitForEnd();
    if (!WIFSIGNALED(status)) {
      return {JobEnd::Kind::crashed, "exit " + std::to_string(WEXITSTATUS(status))};
    }
    const int number = WTERMSIG(status);
    if (number == SIGPROF) return {JobEnd::Kind::outOfTime, {}};
    const bool isCrash = number != SIGKILL && number != SIGTERM;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): there is one thread.
    return {isCrash ? JobEnd::Kind::crashed : JobEnd::Kind::killed, ::strsignal(number)};
  }

  pid_t process_;
  Descriptor socket_;
  std::optional<std::size_t> job_;
  std::string received_;
};

class Crew {
 public:
  Crew(Jobs& jobs, std::size_t count, const WorkerOptions& options)
      : jobs_(jobs), count_(count), options_(options) {}

  void run() {
    while (next_ < count_ || !workers_.empty()) {
      giveJobs();
      if (caughtSignal != 0) return endAll();
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
    std::fflush(nullptr);  // or what is buffered would be written twice
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
    work(jobs_, socket, options_.timeLimit);
  }

  void takeAnswers() {
    std::vector<pollfd> sockets;
    sockets.reserve(workers_.size());
    for (const auto& worker : workers_)
      sockets.push_back({worker->socket(), POLLIN, 0});
    const timespec quarter{0, 250'000'000};
    const int ready = ::ppoll(sockets.data(), sockets.size(), &quarter, &signals_.mask());
    if (ready == 0) jobs_.wait();
    if (ready <= 0 || caughtSignal != 0) return;
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
    const int signal = caughtSignal;
    caughtSignal = 0;
    for (const auto& worker : workers_)
      worker->signal(SIGTERM);
    ::pthread_sigmask(SIG_SETMASK, &signals_.mask(), nullptr);
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
  NotedSignals signals_;
};

}  // namespace

void runJobs(Jobs& jobs, std::size_t count, const WorkerOptions& options) {
  if (options.processes == 0) {
    runHere(jobs, count);
  } else {
    Crew(jobs, count, options).run();
  }
}

#endif

}  // namespace platform
