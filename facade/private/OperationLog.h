// Where an operation writes its lines. Operations log under their own name through either a TkEvent
// made for the call or the facade's TkDebug; some of the latter write their failures by Error().
#pragma once

#include "TkDebug.h"

// Which of the three an operation logs through, for the frames that make the log themselves.
enum class LogKind { Event, Facade, FacadeErrors };

class OperationLog {
 public:
  // Lines through a TkEvent local to the call.
  static OperationLog event(const char* name, unsigned long long jobId) { return OperationLog(nullptr, name, jobId, false); }
  // Lines through the facade's TkDebug, failures at level -1.
  static OperationLog facade(TkDebug& debug, const char* name, unsigned long long jobId) {
    return OperationLog(&debug, name, jobId, false);
  }
  // Lines through the facade's TkDebug, failures through its Error().
  static OperationLog facadeErrors(TkDebug& debug, const char* name, unsigned long long jobId) {
    return OperationLog(&debug, name, jobId, true);
  }
  static OperationLog of(LogKind kind, TkDebug& debug, const char* name, unsigned long long jobId) {
    return OperationLog(kind == LogKind::Event ? nullptr : &debug, name, jobId, kind == LogKind::FacadeErrors);
  }
  OperationLog(const OperationLog&) = delete;
  OperationLog& operator=(const OperationLog&) = delete;

  // A failure line: level -1 with the job identifier, or an Error() line.
  void failure(const char* format, ...) __attribute__((format(printf, 2, 3)));
  // A line at the given level, with the job identifier.
  void line(int level, const char* format, ...) __attribute__((format(printf, 3, 4)));
  // A line at the given level, in the form without job identifier.
  void lineWithoutJob(int level, const char* format, ...) __attribute__((format(printf, 3, 4)));

  const char* name() const { return m_name; }
  unsigned long long jobId() const { return m_jobId; }

 private:
  OperationLog(TkDebug* facadeDebug, const char* name, unsigned long long jobId, bool failuresByError)
      : m_facadeDebug(facadeDebug), m_name(name), m_jobId(jobId), m_failuresByError(failuresByError) {}
  TkDebug& target() { return m_facadeDebug != nullptr ? *m_facadeDebug : m_event; }

  TkEvent m_event;
  TkDebug* m_facadeDebug;
  const char* m_name;
  unsigned long long m_jobId;
  bool m_failuresByError;
};
