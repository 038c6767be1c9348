// The frame of first-generation operations: they answer bool and tell the reason only in the log.
// An operation describes itself to its call (guard, checks of the arguments, request, texts,
// reactions to the array's codes) and run() carries it out, handing a complete answer to the
// operation's reader.
#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "CodeReactions.h"
#include "FailureTexts.h"
#include "FormatArguments.h"
#include "OperationLog.h"
#include "PlainCall.h"
#include "RequiredValueContainment.h"

// A first-generation operation's texts: a refused send is told in the operation's own words (in
// none when it has none), the other steps in the frame's unless the operation says otherwise. The
// words alone stand for the texts where the other steps keep the frame's.
class FirstGenerationTexts : public FailureTexts<FirstGenerationTexts> {
 public:
  explicit FirstGenerationTexts(StepText requestFailed = StepText(""))
      : FailureTexts(std::move(requestFailed), kBuildFailedText, kEmptyResponseText, kParseFailedText) {}
  FirstGenerationTexts(const char* requestFailed) : FirstGenerationTexts(StepText(requestFailed)) {}  // NOLINT
  FirstGenerationTexts(std::string requestFailed)                                                     // NOLINT
      : FirstGenerationTexts(StepText(std::move(requestFailed))) {}
};

class FirstGenerationCall;

// Create-or-adopt: the object whose name is in use, found by one of the facade's lookups and
// taken as the one asked for (AdoptionByLookup.h). The adoption tells its outcome itself, in the
// call's log.
class FirstGenerationAdoption {
 public:
  // Whether the object was found and taken.
  virtual bool adopt(FirstGenerationCall& call) = 0;

 protected:
  ~FirstGenerationAdoption() = default;
};

// The log a call writes under the operation's name; a base of its own, so that it is made before
// the frame that writes to it.
class FirstGenerationLog {
 protected:
  FirstGenerationLog(LogKind kind, TkDebug& debug, const char* name, unsigned long long jobId)
      : m_ownLog(OperationLog::of(kind, debug, name, jobId)) {}
  OperationLog m_ownLog;
};

class FirstGenerationCall : private FirstGenerationLog, public PlainCallBase {
 public:
  // Lines go under logName through the log `kind` names. The guard names the operation as the log
  // does, without "ZrManageHuawei::".
  FirstGenerationCall(HuaweiRestAPI& transport, bool sessionOpen, LogKind kind, TkDebug& debug, const char* logName,
                      unsigned long long jobId);

  // A guard that names guardName, where the operation is known by another name.
  FirstGenerationCall& guard(const char* guardName) { return m_guardName = guardName, *this; }
  // The guard's line begins with `prefix`.
  FirstGenerationCall& guardPrefixed(const char* prefix) { return m_guardPrefix = prefix, *this; }
  // For an operation that leaves the session to the operations it calls.
  FirstGenerationCall& unguarded() { return m_guardName = nullptr, *this; }
  // Fails with "The input parameter [<label>] is empty" when `value` is empty.
  FirstGenerationCall& required(const std::string& value, const char* label);
  // Fails with `text` when `refused` holds. Checks are made in the order given, after the guard.
  FirstGenerationCall& refusing(bool refused, std::string text);
  FirstGenerationCall& sends(HuaweiJSONBase& request, PlainCall call,
                             FirstGenerationTexts texts = FirstGenerationTexts());
  template <class Request, Generic<Request> = 0>
  FirstGenerationCall& sends(Request&& request, PlainCall call, FirstGenerationTexts texts = FirstGenerationTexts()) {
    return sends(keep(std::move(request), m_log.jobId()), std::move(call), std::move(texts));
  }
  // The rows that answer the array's codes; a refusal that none answers is told in the texts'
  // words for a refused send.
  FirstGenerationCall& reacting(CodeReactions reactions) { return m_reactions = std::move(reactions), *this; }
  // What the row that reacts with Reaction::Adopt runs.
  FirstGenerationCall& adopting(FirstGenerationAdoption& adoption) { return m_adoption = &adoption, *this; }
  // A refusal that no row answers is read as the answer, for the request's parser to judge.
  FirstGenerationCall& readingRefusals() { return m_readingRefusals = true, *this; }

  // A line of the operation's log, with the job identifier; values as they are.
  template <typename... Arguments>
  void line(int level, const char* format, const Arguments&... arguments) {
    if constexpr (sizeof...(Arguments) == 0) {
      m_log.line(level, "%s", format);
    } else {
      m_log.line(level, format, FormatArgument::of(arguments)...);
    }
  }
  // A failure line of the operation's log; answers false, the operation's result.
  template <typename... Arguments>
  bool failure(const char* format, const Arguments&... arguments) {
    if constexpr (sizeof...(Arguments) == 0) {
      m_log.failure("%s", format);
    } else {
      m_log.failure(format, FormatArgument::of(arguments)...);
    }
    return false;
  }

  // The whole description, for an operation whose complete answer tells only its success line,
  // at level 0, in the log. The values are read when the line is told.
  template <typename... Arguments>
  bool runTelling(const char* format, const Arguments&... arguments) {
    return run([&](FirstGenerationCall& call) { call.line(0, format, arguments...); });
  }

  // The whole description, for an operation that answers one value of the answer: `value`, read
  // once the answer is complete, goes to `out` before the success line is told at `level`.
  template <typename... Arguments>
  bool runTaking(std::string& out, const std::string& value, int level, const char* format,
                 const Arguments&... arguments) {
    return run([&](FirstGenerationCall& call) {
      out = value;
      call.line(level, format, arguments...);
    });
  }

  // The whole description, for a list output whose count, the one value of `format`, is told at
  // `level`. A failure empties the list, unless a missing required value failed the operation.
  template <class List>
  bool runListing(List& list, int level, const char* format) {
    return run([&](FirstGenerationCall& call) { call.line(level, format, list.size()); }) ||
           RequiredValueContainment::failEmptying(list);
  }

  // The guard and the checks alone, logged, for an operation that looks something up first.
  bool checked();
  // The whole description. A complete answer is read by `read`, given this call, which logs the
  // success line and, when it returns bool, answers the operation's result; a refusal that a row
  // makes a success is not read.
  template <typename Read>
  bool run(Read&& read) {
    const Outcome outcome = exchange();
    if (outcome != Outcome::Answered) return outcome == Outcome::Succeeded;
    if constexpr (std::is_void_v<std::invoke_result_t<Read, FirstGenerationCall&>>) {
      read(*this);
      return true;
    } else {
      return read(*this);
    }
  }

 private:
  // Answered: the answer waits for the reader. Succeeded: a row took the refusal for success.
  enum class Outcome { Failed, Answered, Succeeded };

  struct Check {
    bool refused;
    std::string text;
  };

  Outcome exchange();
  Outcome refused();
  Outcome failedAt(FrameStep step);
  void tell(int level, const std::string& text);

  const char* m_guardName = nullptr;
  const char* m_guardPrefix = "";
  std::vector<Check> m_checks;
  HuaweiJSONBase* m_request = nullptr;
  PlainCall m_call{HUAWEI_REQ_GET, "", 0};
  FirstGenerationTexts m_texts;
  CodeReactions m_reactions;
  FirstGenerationAdoption* m_adoption = nullptr;
  bool m_readingRefusals = false;
};
