// Jobs that are carried out in processes of their own.
#pragma once

#include <cstddef>
#include <string>

namespace platform {

/// Whether the system can carry out jobs in processes of their own. Without them every job is
/// carried out in this one, one after another.
#if defined(_WIN32) || defined(__EMSCRIPTEN__)
inline constexpr bool kHasWorkers = false;
#else
inline constexpr bool kHasWorkers = true;
#endif

/// How a job ended.
struct JobEnd {
  enum class Kind {
    answered,
    crashed,    ///< its process ended before it answered
    outOfTime,  ///< it took more than its time
    killed,     ///< somebody else, such as a system that is short of memory, ended its process
    notBegun,   ///< there is no process for it
  };
  Kind kind = Kind::answered;
  std::string text;  ///< The answer; otherwise what the system says about the end.
};

/// What is done about jobs, which are known by their numbers from 0.
class Jobs {
 public:
  virtual ~Jobs() = default;

  /// Carries out a job and gives its answer. Runs in a process of its own; nothing but the answer
  /// gets back.
  virtual std::string carryOut(std::size_t job) = 0;
  /// A job begins.
  virtual void begun(std::size_t job) = 0;
  /// A job has ended; they end in any order.
  virtual void ended(std::size_t job, const JobEnd& end) = 0;
  /// Called a few times each second while nothing else happens.
  virtual void wait() = 0;
  /// A signal ends this process as soon as this returns.
  virtual void interrupted() = 0;
};

struct WorkerOptions {
  std::size_t processes = 1;  ///< At most so many at a time; 0: the jobs run in this process.
  double timeLimit = 0;       ///< Processor time for each job in seconds; 0: any.
  bool keepsStreams = false;  ///< Otherwise standard streams lead nowhere in the processes.
};

/// The processors that this process may use, at least 1; always 1 where there are no workers.
std::size_t countProcessors();

/// Carries out `count` jobs, each to its end. A process takes one job after another; where one
/// crashes or is ended, the job that it was at is lost and another process goes on with the next.
/// A signal that ends this process first ends the others, and waits for them.
void runJobs(Jobs& jobs, std::size_t count, const WorkerOptions& options);

}  // namespace platform
