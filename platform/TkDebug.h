// Debug log objects. Every line carries a log name, a level and, in most forms, the job
// identifier; lines go to the process-wide sink of TkLogSink.h.
// Levels: -1 error, 0 progress, 3-4 detail, 5 requests and tokens, 6 rewritten names, 7 noise.
#pragma once

#define TK_PRINTF_LIKE(fmt, args) __attribute__((format(printf, fmt, args)))

class TkDebugFileInstance;  // a log file of the host product; the system always passes null

class TkDebug {
 public:
  explicit TkDebug(TkDebugFileInstance* file = nullptr);
  virtual ~TkDebug();

  // (this is argument 1 of the format attributes)
  void DebugLvl(const char* name, int level, long long jobId, const char* format, ...) TK_PRINTF_LIKE(5, 6);
  void DebugLvl(const char* name, int level, const char* format, ...) TK_PRINTF_LIKE(4, 5);
  // An error line (level -1) without job identifier.
  void Error(const char* name, const char* format, ...) TK_PRINTF_LIKE(3, 4);

 private:
  [[maybe_unused]] TkDebugFileInstance* file_;  // kept for the interface; lines go to the sink
};

// The same service, made locally by the operations that log per call.
class TkEvent : public TkDebug {
 public:
  TkEvent();
};
