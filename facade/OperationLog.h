// Where an operation writes its lines. Operations log under their own name through a TkEvent made
// for the call or through the facade's TkDebug; some of the latter write their failures by Error().
// The three are made by name: OperationLog::event, ::facade and ::facadeErrors.
#pragma once

#include "TkDebug.h"

class OperationLog {
 public:
  // A TkEvent local to the call; failures at level -1 with the job identifier.
  static OperationLog event(const char* name, unsigned long long jobId) {
    return OperationLog(nullptr, name, jobId, Failures::AtLevelMinusOne);
  }
  // The facade's TkDebug; failures at level -1 with the job identifier.
  static OperationLog facade(TkDebug& debug, const char* name, unsigned long long jobId) {
    return OperationLog(&debug, name, jobId, Failures::AtLevelMinusOne);
  }
  // The facade's TkDebug; failures through Error(), which carries no level or job identifier.
  static OperationLog facadeErrors(TkDebug& debug, const char* name, unsigned long long jobId) {
    return OperationLog(&debug, name, jobId, Failures::ThroughError);
  }
  OperationLog(const OperationLog&) = delete;
  OperationLog& operator=(const OperationLog&) = delete;

  // A failure line, in the form the log was made for.
  void failure(const char* format, ...) __attribute__((format(printf, 2, 3)));
  // A line at the given level, with the job identifier.
  void line(int level, const char* format, ...) __attribute__((format(printf, 3, 4)));
  // A line at the given level in the form without job identifier.
  void lineWithoutJob(int level, const char* format, ...) __attribute__((format(printf, 3, 4)));

  const char* name() const { return m_name; }
  unsigned long long jobId() const { return m_jobId; }

 private:
  enum class Failures { AtLevelMinusOne, ThroughError };
  OperationLog(TkDebug* facadeDebug, const char* name, unsigned long long jobId, Failures failures)
      : m_facadeDebug(facadeDebug), m_name(name), m_jobId(jobId), m_failures(failures) {}

  TkDebug& target() { return m_facadeDebug != nullptr ? *m_facadeDebug : m_event; }

  TkEvent m_event;
  TkDebug* m_facadeDebug;
  const char* m_name;
  unsigned long long m_jobId;
  Failures m_failures;
};
