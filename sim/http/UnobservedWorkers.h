// Worker threads of a test HTTPS server whose memory accesses ThreadSanitizer ignores. The servers
// are not under test, and the prebuilt, uninstrumented part of cpp-httplib hides its own
// synchronisation from the tool, which then reports races inside it that are none. Elsewhere
// these are plain httplib workers.
#pragma once

#include <httplib.h>

#include <functional>
#include <utility>

#if defined(__SANITIZE_THREAD__)
extern "C" void __tsan_ignore_thread_begin();
extern "C" void __tsan_ignore_thread_end();
#endif

namespace arraysim {

class UnobservedWorkers : public httplib::ThreadPool {
 public:
  explicit UnobservedWorkers(size_t count) : httplib::ThreadPool(count) {}

  void enqueue(std::function<void()> job) override {
    httplib::ThreadPool::enqueue([job = std::move(job)] {
#if defined(__SANITIZE_THREAD__)
      __tsan_ignore_thread_begin();
      job();
      __tsan_ignore_thread_end();
#else
      job();
#endif
    });
  }
};

}  // namespace arraysim
