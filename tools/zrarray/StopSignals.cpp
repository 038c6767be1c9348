#include "StopSignals.h"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <mutex>
#include <string>
#include <thread>

namespace zrarray {

namespace {

constexpr int kStopSignals[] = {SIGINT, SIGTERM, SIGHUP};
// Long enough for any answer of a working array, short enough for a service manager's patience.
const timespec kGrace = {10, 0};

struct State {
  std::mutex mutex;
  sigset_t watched;
  bool inSession = false;
  std::function<void()> abandon;
};

// Never destroyed: the signal thread may use it while the process ends.
State& state() {
  static State* shared = new State;
  return *shared;
}

std::atomic<int> g_received{0};

void Say(const std::string& text) {
  // A progress line may be standing on a terminal: the notice takes its place.
  std::fprintf(stderr, "%szrarray: %s\n", isatty(STDERR_FILENO) == 1 ? "\r\033[K" : "", text.c_str());
  std::fflush(stderr);
}

[[noreturn]] void EndBy(int signal) {
  std::signal(signal, SIG_DFL);
  raise(signal);  // pending on this thread while blocked, delivered when unblocked
  sigset_t one;
  sigemptyset(&one);
  sigaddset(&one, signal);
  pthread_sigmask(SIG_UNBLOCK, &one, nullptr);
  _exit(128 + signal);  // not reached
}

int WaitFor(const sigset_t& signals, const timespec* timeout) {
  for (;;) {
    const int signal = timeout ? sigtimedwait(&signals, nullptr, timeout) : sigwaitinfo(&signals, nullptr);
    if (signal > 0 || errno != EINTR) return signal;
  }
}

void Watch() {
  State& s = state();
  for (;;) {
    const int signal = WaitFor(s.watched, nullptr);
    if (signal <= 0) continue;
    std::unique_lock<std::mutex> lock(s.mutex);
    if (!s.inSession) EndBy(signal);  // nothing on the array or on disk to tidy
    g_received = signal;
    Say(std::string(StopSignals::Name(signal)) +
        ": stopping after the request in flight, then logging out (send it again to stop at once)");
    lock.unlock();
    const int again = WaitFor(s.watched, &kGrace);
    lock.lock();
    if (!s.inSession) continue;  // the command ended by itself and ends the process now
    Say(again > 0 ? "stopping at once: the cookie file is removed, the session on the array is left to expire"
                  : "the array did not answer in time: the cookie file is removed, the session on the array is "
                    "left to expire");
    if (s.abandon) s.abandon();
    EndBy(signal);
  }
}

}  // namespace

void StopSignals::Install() {
  State& s = state();
  sigemptyset(&s.watched);
  for (const int signal : kStopSignals) {
    struct sigaction current {};
    if (sigaction(signal, nullptr, &current) == 0 && current.sa_handler != SIG_IGN) sigaddset(&s.watched, signal);
  }
  pthread_sigmask(SIG_BLOCK, &s.watched, nullptr);
  std::thread(Watch).detach();
}

int StopSignals::Received() { return g_received.load(); }

const char* StopSignals::Name(int signal) {
  switch (signal) {
    case SIGINT: return "SIGINT";
    case SIGTERM: return "SIGTERM";
    case SIGHUP: return "SIGHUP";
    default: return "a signal";
  }
}

void StopSignals::EndAsReceived() { EndBy(Received()); }

StopSignals::Session::Session(std::function<void()> abandon) {
  State& s = state();
  std::lock_guard<std::mutex> lock(s.mutex);
  s.inSession = true;
  s.abandon = std::move(abandon);
}

StopSignals::Session::~Session() {
  State& s = state();
  std::lock_guard<std::mutex> lock(s.mutex);
  s.inSession = false;
  s.abandon = nullptr;
}

}  // namespace zrarray
