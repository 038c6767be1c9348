#include "ToolProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace zrtest {

namespace {

void Check(bool ok, const char* what) {
  if (!ok) throw std::runtime_error(std::string(what) + " failed: errno " + std::to_string(errno));
}

struct Pipe {
  int read = -1;
  int write = -1;
  Pipe() {
    int ends[2];
    Check(pipe2(ends, O_CLOEXEC) == 0, "pipe");
    read = ends[0];
    write = ends[1];
  }
};

[[noreturn]] void ExecTool(const std::vector<std::string>& arguments, const ToolInput& input, int in, int out,
                           int err) {
  dup2(in, STDIN_FILENO);
  dup2(out, STDOUT_FILENO);
  dup2(err, STDERR_FILENO);
  for (const char* inherited : {"ZRARRAY_ADDRESS", "ZRARRAY_USER", "ZRARRAY_CA_BUNDLE"}) unsetenv(inherited);
  for (const auto& [name, value] : input.environment) setenv(name.c_str(), value.c_str(), 1);
  std::vector<char*> argv;
  for (const std::string& argument : input.runThrough) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(const_cast<char*>(ZRARRAY_PATH));
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  execv(argv.front(), argv.data());
  _exit(127);
}

// Reads both streams to their end. A terminal's master side reports EIO once the child is gone.
void Drain(int out, int err, ToolRun& run) {
  pollfd streams[2] = {{out, POLLIN, 0}, {err, POLLIN, 0}};
  std::string* texts[2] = {&run.out, &run.err};
  int open = 2;
  while (open > 0) {
    if (poll(streams, 2, -1) < 0) {
      Check(errno == EINTR, "poll");
      continue;
    }
    for (int i = 0; i < 2; ++i) {
      if (streams[i].fd < 0 || streams[i].revents == 0) continue;
      char buffer[65536];
      const ssize_t got = read(streams[i].fd, buffer, sizeof buffer);
      if (got > 0) {
        texts[i]->append(buffer, static_cast<size_t>(got));
      } else if (got == 0 || errno != EINTR) {
        close(streams[i].fd);
        streams[i].fd = -1;
        --open;
      }
    }
  }
}

}  // namespace

std::vector<std::string> ToolRun::outLines() const {
  std::vector<std::string> lines;
  std::istringstream stream(out);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

ToolProcess::ToolProcess(const std::vector<std::string>& arguments, const ToolInput& input) {
  Pipe in, out, err;
  int terminal = -1, terminalChild = -1;
  if (input.errorOnTerminal) {
    Check(openpty(&terminal, &terminalChild, nullptr, nullptr, nullptr) == 0, "openpty");
    fcntl(terminal, F_SETFD, FD_CLOEXEC);
  }
  child_ = fork();
  Check(child_ >= 0, "fork");
  if (child_ == 0) ExecTool(arguments, input, in.read, out.write, input.errorOnTerminal ? terminalChild : err.write);

  close(in.read);
  close(out.write);
  close(err.write);
  if (input.errorOnTerminal) {
    close(terminalChild);
    close(err.read);
  }
  // Small inputs fit the pipe's buffer, so writing before reading cannot block.
  if (!input.standardInput.empty()) {
    Check(write(in.write, input.standardInput.data(), input.standardInput.size()) ==
              static_cast<ssize_t>(input.standardInput.size()),
          "write");
  }
  in_ = in.write;
  out_ = out.read;
  err_ = input.errorOnTerminal ? terminal : err.read;
}

ToolRun ToolProcess::finish() {
  close(in_);
  ToolRun run;
  Drain(out_, err_, run);
  int status = 0;
  Check(waitpid(child_, &status, 0) == child_, "waitpid");
  child_ = -1;
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  run.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  return run;
}

bool PseudoTerminalOpens() {
  int terminal = -1, child = -1;
  if (openpty(&terminal, &child, nullptr, nullptr, nullptr) != 0) return false;
  close(terminal);
  close(child);
  return true;
}

ToolRun RunZrarray(const std::vector<std::string>& arguments, const ToolInput& input) {
  return ToolProcess(arguments, input).finish();
}

}  // namespace zrtest
