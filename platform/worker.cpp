#ifndef _WIN32
#include "platform/worker.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/ending_signals.h"

namespace platform {

namespace {

bool readAll(int socket, char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t received = ::recv(socket, bytes, size, 0);
    if (received < 0 && errno == EINTR) continue;
    if (received <= 0) return false;
    bytes += received;
    size -= static_cast<std::size_t>(received);
  }
  return true;
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
  constexpr double kMicroseconds = 1e6;
  itimerval timer{};
  timer.it_value.tv_sec = static_cast<time_t>(seconds);
  const double rest = seconds - static_cast<double>(timer.it_value.tv_sec);
  timer.it_value.tv_usec = static_cast<suseconds_t>(rest * kMicroseconds);
  ::setitimer(ITIMER_PROF, &timer, nullptr);
}

}  // namespace

void workFor(Jobs& jobs, int socket, double timeLimit) {
  std::size_t job = 0;
  while (readAll(socket, reinterpret_cast<char*>(&job), sizeof job)) {
    limitTime(timeLimit);
    const std::string answer = jobs.carryOut(job);
    limitTime(0);
    const std::uint64_t size = answer.size();
    if (!sendAll(socket, bytesOf(size)) || !sendAll(socket, answer)) break;
  }
  ::_exit(0);
}

Worker::~Worker() {
  socket_.close();
  if (!isGone()) waitForEnd();
}

bool Worker::give(std::size_t job) {
  received_.clear();
  if (!sendAll(socket_.number(), bytesOf(job))) return false;
  job_ = job;
  return true;
}

std::optional<JobEnd> Worker::receive() {
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

void Worker::end() const {
  ::kill(process_, SIGTERM);
}

int Worker::waitForEnd() {
  int status = 0;
  while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    // Somebody who asks a second time does not want to wait.
    if (EndingSignals::noted() != 0) ::kill(process_, SIGKILL);
  }
  process_ = 0;
  return status;
}

// A worker that cannot be heard any more may still wait for a job: the closed socket ends it.
JobEnd Worker::endOfProcess() {
  socket_.close();
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

}  // namespace platform
#endif
