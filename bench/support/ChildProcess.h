// Processes that benchmarks start beside themselves: the array simulator, so that its threads do
// not compete with the client's inside one process, and the benchmark itself once per size when
// a peak has to be measured from a fresh process.
#pragma once

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

extern char** environ;

namespace zrbench {

// A child process whose standard output we read line by line.
class Child {
 public:
  explicit Child(const std::vector<std::string>& arguments) {
    int fds[2];
    if (pipe(fds) != 0) throw std::runtime_error("pipe failed");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fds[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, fds[0]);
    posix_spawn_file_actions_addclose(&actions, fds[1]);
    std::vector<char*> argv;
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const int failed = posix_spawn(&pid_, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(fds[1]);
    if (failed) throw std::runtime_error("cannot start " + arguments[0] + ": " + std::strerror(failed));
    out_ = fdopen(fds[0], "r");
  }
  ~Child() {
    stop(SIGTERM);
    if (out_) std::fclose(out_);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // The next line without its end, or false at the end of the output.
  bool readLine(std::string& line) {
    line.clear();
    for (int c; (c = std::fgetc(out_)) != EOF;) {
      if (c == '\n') return true;
      line += static_cast<char>(c);
    }
    return !line.empty();
  }
  // Sends the signal (none: just waits) and answers the exit status.
  int stop(int signal) {
    if (pid_ <= 0) return status_;
    if (signal) kill(pid_, signal);
    waitpid(pid_, &status_, 0);
    pid_ = -1;
    return status_;
  }
  pid_t pid() const { return pid_; }

 private:
  pid_t pid_ = -1;
  int status_ = 0;
  FILE* out_ = nullptr;
};

// The value of "key=value" among blank-separated words of a line.
inline std::string Field(const std::string& line, const std::string& key) {
  std::istringstream words(line);
  for (std::string word; words >> word;) {
    if (word.compare(0, key.size() + 1, key + "=") == 0) return word.substr(key.size() + 1);
  }
  return std::string();
}

// The simulator as a process of its own; lines it prints before "ready" go to `onLine`.
class SimulatorProcess {
 public:
  template <class OnLine>
  SimulatorProcess(const std::vector<std::string>& arguments, OnLine onLine) : child_(arguments) {
    for (std::string line; caPath_.empty() && child_.readLine(line);) {
      if (line.rfind("ready ", 0) == 0) {
        caPath_ = Field(line, "ca");
      } else {
        onLine(line);
      }
    }
    if (caPath_.empty()) throw std::runtime_error("the simulator did not become ready");
  }
  explicit SimulatorProcess(const std::vector<std::string>& arguments)
      : SimulatorProcess(arguments, [](const std::string&) {}) {}

  const std::string& caPath() const { return caPath_; }
  pid_t pid() const { return child_.pid(); }
  int stop() { return child_.stop(SIGTERM); }

 private:
  Child child_;
  std::string caPath_;
};

// The path of the running program, to start it again.
inline std::string SelfPath() {
  char self[4096];
  const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
  if (length <= 0) throw std::runtime_error("cannot read /proc/self/exe");
  return std::string(self, static_cast<std::size_t>(length));
}

}  // namespace zrbench
