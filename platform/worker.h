// A process that carries out jobs, and the line to it. Not for Windows.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <sys/types.h>

#include "platform/descriptor.h"
#include "platform/worker_processes.h"

namespace platform {

/// What a worker does until its parent closes the line: an order is a job's number, an answer its
/// size and then its bytes. The system ends the process where a job takes more processor time than
/// `timeLimit` seconds; 0 is any.
[[noreturn]] void workFor(Jobs& jobs, int socket, double timeLimit);

/// A process that carries out jobs, as its parent sees it.
class Worker {
 public:
  /// Owns both: the process is waited for, and the socket closed.
  Worker(pid_t process, int socket) : process_(process), socket_(socket) {}
  /// Waits until the process has ended, which it does between two jobs.
  ~Worker();
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  /// What it works on.
  const std::optional<std::size_t>& job() const { return job_; }
  int socket() const { return socket_.number(); }
  /// Whether the process has ended.
  bool isGone() const { return process_ == 0; }

  /// Gives it a job; false where it can take none.
  bool give(std::size_t job);
  /// Takes in what has come, without waiting; gives the end of the job where that is it.
  std::optional<JobEnd> receive();
  /// Asks the process to end.
  void end() const;
  /// Leaves the process to itself, in a copy of the parent that is not its parent.
  void forget() { process_ = 0; }

 private:
  int waitForEnd();
  JobEnd endOfProcess();

  pid_t process_;
  Descriptor socket_;
  std::optional<std::size_t> job_;
  std::string received_;
};

}  // namespace platform
