// SIGINT, SIGTERM and SIGHUP end every command by its own road: the request in flight is answered,
// a long walk stops after its page, the facade logs out and removes its cookie file, and only then
// does the process end as the signal ends it (a shell sees 128 + the signal's number).
//
// The signals are blocked in every thread and taken by a thread of their own, so that no thread
// is cut off in the middle of the library. Outside a session a signal ends the process at once;
// inside, a second signal, or a grace period without an end, gives up waiting: the cookie files
// are removed and the session is left to expire on the array.
#pragma once

#include <functional>

namespace zrarray {

class StopSignals {
 public:
  // Call first, before any thread is started: threads made later inherit the blocked signals.
  // A signal that the process was started to ignore (nohup) stays ignored.
  static void Install();

  // The signal that asked the command to stop, 0 while none did.
  static int Received();
  static bool Requested() { return Received() != 0; }
  // "SIGINT", "SIGTERM", "SIGHUP".
  static const char* Name(int signal);

  // Ends the process as the received signal does by default. Call after tidying up.
  [[noreturn]] static void EndAsReceived();

  // The span in which a session may be open. `abandon` removes what must not outlive the process
  // when the waiting is given up; it runs on the signal thread.
  class Session {
   public:
    explicit Session(std::function<void()> abandon);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
  };
};

}  // namespace zrarray
