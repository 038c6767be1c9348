// The frame of second-generation operations: each failure becomes a CXoError made by
// YbErrorUtil::ErrorErrNo with error number -1, located at the operation's signature.
//
// An operation is a description read by run(): its guard, its required arguments, the request it
// sends with the texts of each failing step, its reactions to the array's codes, and the reader of
// a completed answer.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "AssociationResource.h"
#include "CXoError.h"
#include "CodeReactions.h"
#include "ExactRecord.h"
#include "FailureTexts.h"
#include "FormatArguments.h"
#include "HuaweiArrayCodes.h"
#include "OperationLog.h"
#include "PlainCall.h"
#include "YbString.h"

// A second-generation operation's texts; unnamed ones are the frame's "[ERROR] " texts. Lookups
// give the guard's text bare, every other operation behind "[ERROR] ".
class SecondGenerationTexts : public FailureTexts<SecondGenerationTexts> {
 public:
  explicit SecondGenerationTexts(std::string requestFailed)
      : FailureTexts(std::move(requestFailed), std::string("[ERROR] ") + kBuildFailedText,
                     std::string("[ERROR] ") + kEmptyResponseText, kErrorParseFailedText) {}
  // Lookups speak of the empty answer and the parse failure with the "[ERROR] " prefix; changes
  // without it, and with other words for the empty answer. Neither prefixes the build failure.
  static SecondGenerationTexts lookup(std::string requestFailed);
  static SecondGenerationTexts change(std::string requestFailed);
  // The lookups of LUN groups and mapping views prefix the build failure too.
  static SecondGenerationTexts prefixedLookup(std::string requestFailed);
  // Deletions prefix every text, and speak of the empty answer as changes do.
  static SecondGenerationTexts deletion(std::string requestFailed);

  // The same, the refused send's words a format of the operation's values.
  template <typename First, typename... Rest>
  static SecondGenerationTexts lookup(const char* format, const First& first, const Rest&... rest) {
    return lookup(formatted(format, first, rest...));
  }
  template <typename First, typename... Rest>
  static SecondGenerationTexts prefixedLookup(const char* format, const First& first, const Rest&... rest) {
    return prefixedLookup(formatted(format, first, rest...));
  }
  template <typename First, typename... Rest>
  static SecondGenerationTexts deletion(const char* format, const First& first, const Rest&... rest) {
    return deletion(formatted(format, first, rest...));
  }

  const char* guardPrefix() const { return m_bareGuard ? "" : "[ERROR] "; }

 private:
  bool m_bareGuard = false;
};

// Create-or-adopt: how a create operation looks up the object that holds its name already, and
// takes it as the one asked for.
class Adoption {
 public:
  // Finds the object; `id` stays empty when there is none.
  virtual CXoError lookUp(std::string& id) = 0;
  // Makes the caller's record the object found.
  virtual void take(const std::string& id) = 0;
  // How the lookup's failure text becomes the operation's.
  virtual Rendering rendering() const = 0;

 protected:
  ~Adoption() = default;
};

// The words of a change's refusals that no row answers: told at level 3, then the failure's text.
// Most say both alike.
struct RefusalWords {
  RefusalWords(std::string words) : told(words), failure(std::move(words)) {}
  RefusalWords(std::string toldAs, std::string failsAs) : told(std::move(toldAs)), failure(std::move(failsAs)) {}
  std::string told;
  std::string failure;
};

// Which of the records a lookup lists is the one asked for: any whose key matches exactly, or only
// the sole record of the list.
enum class Listed { Any, Sole };

// What a call's lines are tagged with, taken from its signature: the operation's name
// ("deleteLunGroup") or that name with its class ("ZrManageHuawei::deleteLunGroup").
enum class LogName { Operation, Qualified };

// The log a call writes under the operation's name; a base of its own, so that it is made before
// the frame that writes to it. A call is never moved, so the log may point into the name it holds.
class OwnLog {
 protected:
  OwnLog(TkDebug& debug, std::string name, unsigned long long jobId)
      : m_name(std::move(name)), m_ownLog(OperationLog::facade(debug, m_name.c_str(), jobId)) {}
  const std::string m_name;
  OperationLog m_ownLog;
};

class SecondGenerationCall : private OwnLog, public PlainCallBase {
 public:
  // operation is the operation's whole signature as text, e.g.
  // "CXoError ZrManageHuawei::deleteLunGroup(const string&, std::string)": errors are located at it,
  // and lines go through `debug` under the name in it, as `naming` says. The guard names the operation without
  // "ZrManageHuawei::".
  SecondGenerationCall(HuaweiRestAPI& transport, bool sessionOpen, TkDebug& debug, const char* operation,
                       LogName naming, unsigned long long jobId);

  // A guard that names operationName, where the operation is known by another name.
  SecondGenerationCall& guard(const char* operationName) { return m_guardName = operationName, *this; }
  // For an operation that leaves the session to the operations it calls.
  SecondGenerationCall& unguarded() { return m_guardName = nullptr, *this; }
  // A value that must not be empty, with the operation's text for when it is.
  template <typename Value>
  SecondGenerationCall& required(const Value& value, const char* text) {
    m_required.push_back(Requirement{value.empty(), text});
    return *this;
  }
  // Values that must not be empty, with "[ERROR] Invalid input parameters" for when one is.
  SecondGenerationCall& required(std::initializer_list<const std::string*> values);
  // Texts not given are the changes' texts with no words for a refused send.
  SecondGenerationCall& sends(HuaweiJSONBase& request, PlainCall call,
                              SecondGenerationTexts texts = SecondGenerationTexts::change(""));
  template <class Request, Generic<Request> = 0>
  SecondGenerationCall& sends(Request&& request, PlainCall call,
                              SecondGenerationTexts texts = SecondGenerationTexts::change("")) {
    return sends(keep(std::move(request), m_ownLog.jobId()), std::move(call), std::move(texts));
  }
  // A change whose refusals that no row of `reactions` answers are told and fail in `words`.
  template <class Request>
  SecondGenerationCall& sendsRefusedAs(Request&& request, PlainCall call, RefusalWords words,
                                       CodeReactions reactions = {}) {
    sends(std::forward<Request>(request), std::move(call), SecondGenerationTexts::change(words.failure));
    return reacting(std::move(reactions.add(otherwise().line(3, std::move(words.told)))));
  }
  // A change whose refusals that no row of `reactions` answers fail in the array's words behind
  // "[ERROR] "; every refusal is told at level 3 in `told` first, where one is given.
  template <class Request>
  SecondGenerationCall& sendsInArrayWords(Request&& request, PlainCall call, CodeReactions reactions,
                                          std::string told = std::string()) {
    sends(std::forward<Request>(request), std::move(call));
    reactions.add(otherwise().failsInArrayWords("[ERROR] "));
    if (!told.empty()) reactions.everyRefusalTold(3, std::move(told));
    return reacting(std::move(reactions));
  }
  // The list of what an owner holds, whose identifier is required: refusals are told and fail in
  // `failure`, a format of that identifier.
  template <class Request>
  SecondGenerationCall& listsHeldBy(Request&& request, const HeldObjects& held, int opType, const char* failure) {
    m_ownerId = &held.ownerId;
    required({&held.ownerId});
    return sendsRefusedAs(std::forward<Request>(request), PlainCalls::get(held.resource(), opType),
                          formatted(failure, held.ownerId));
  }
  // Refused sends that no row answers fail in the texts' words, told nowhere.
  SecondGenerationCall& reacting(CodeReactions reactions) { return m_reactions = std::move(reactions), *this; }
  // Create-or-adopt, after the reactions: a name in use is told at level 3 in `told`, and the
  // object of that name is taken by `adoption` (an AdoptionByName).
  template <class ByName>
  SecondGenerationCall& adoptingNamed(std::string told, ByName adoption) {
    m_adoption = std::make_shared<ByName>(std::move(adoption));
    m_reactions.add(on(HuaweiArrayCode::NAME_ALREADY_IN_USE).line(3, std::move(told)).adopts());
    return *this;
  }
  // Values of the answer told at level 3 behind runTelling's success line, each in its format;
  // they are read when they are told.
  struct ToldValue {
    const char* format;
    const std::string& value;
  };
  SecondGenerationCall& alsoTelling(std::initializer_list<ToldValue> values) {
    for (const ToldValue& told : values) m_alsoTold.emplace_back(told.format, &told.value);
    return *this;
  }
  // The body is told at level 0 before the send.
  SecondGenerationCall& bodyTold() { return m_bodyTold = true, *this; }

  // A line of the operation's log, with the job identifier.
  template <typename... Arguments>
  void line(int level, const char* format, Arguments... arguments) {
    if constexpr (sizeof...(Arguments) == 0) {
      m_log.line(level, "%s", format);
    } else {
      m_log.line(level, format, FormatArgument::of(arguments)...);
    }
  }

  // The guard and the required values alone, for an operation that sends through others.
  CXoError checked() const;
  // The whole description. A completed exchange is read by `read`, given this call, which answers
  // the operation's result, or nothing for success.
  template <typename Read>
  CXoError run(Read&& read) {
    bool completed = false;
    const CXoError result = exchange(completed);
    if (!completed) return result;
    if constexpr (std::is_void_v<std::invoke_result_t<Read, SecondGenerationCall&>>) {
      read(*this);
      return CXoError::Success();
    } else {
      return read(*this);
    }
  }

  // The whole description, for an operation whose completed answer tells only its success line,
  // at level 0 unless another is given. The values are read when the line is told.
  template <typename... Arguments>
  CXoError runTelling(int level, const char* format, const Arguments&... arguments) {
    return run([&](SecondGenerationCall& call) {
      call.line(level, format, arguments...);
      for (const auto& told : m_alsoTold) call.line(3, told.first, *told.second);
    });
  }
  template <typename... Arguments>
  CXoError runTelling(const char* format, const Arguments&... arguments) {
    return runTelling(0, format, arguments...);
  }

  // The whole description, for the list of listsHeldBy: `none` for an empty list, else `counted`
  // with the count, both at level 0 and with the owner's identifier.
  template <class Records>
  CXoError runCounting(const Records& records, const char* none, const char* counted) {
    return run([&](SecondGenerationCall& call) {
      if (records.empty()) {
        call.line(0, none, *m_ownerId);
      } else {
        call.line(0, counted, *m_ownerId, static_cast<unsigned long long>(records.size()));
      }
    });
  }

  // The whole description, for whether an owner holds an object, asked after the checks of the
  // facade's `list` of what the owner holds. A failed or empty list fails in the list's text,
  // rendered as `rendering` says; an object not listed fails in `missing`; else `told` is told.
  template <class Facade, class Record>
  CXoError runHolding(Facade& facade, CXoError (Facade::*list)(const std::string&, std::vector<Record>&, std::string),
                      const std::string& ownerId, const std::string& vstoreId, const std::string& objectId,
                      Rendering rendering, const std::string& missing, const std::string& told) {
    if (CXoError failed = checked(); failed.IsError()) return failed;
    std::vector<Record> held;
    const CXoError listed = (facade.*list)(ownerId, held, vstoreId);
    if (listed.IsError() || held.empty()) return error(listed.AsString(), rendering);
    if (exactRecord(held, &Record::id, objectId) == nullptr) return error(missing);
    line(0, told.c_str());
    return CXoError::Success();
  }

  // The whole description, for a lookup: the record whose `key` is exactly `value` goes to `out`
  // (its identifier, or the whole record) and is told at level 0 in `told`, a format of its
  // `fields`; none is an error in `missing`'s words.
  template <class Record, class Out, class... Text>
  CXoError runFinding(const std::vector<Record>& records, std::string Record::*key, const std::string& value,
                      Listed listed, const std::string& missing, Out& out, const char* told, Text Record::*... fields) {
    return run([&](SecondGenerationCall& call) {
      const Record* record = exactRecord(records, key, value);
      if (record == nullptr || (listed == Listed::Sole && records.size() != 1)) return call.error(missing);
      takeFound(out, *record);
      call.line(0, told, (*record).*fields...);
      return CXoError::Success();
    });
  }
  // The same, for a lookup by name; `missing` is a format of the name.
  template <class Record, class Out, class... Text>
  CXoError runFinding(const std::vector<Record>& records, const std::string& name, const char* missing, Out& out,
                      const char* told, Text Record::*... fields) {
    return runFinding(records, &Record::name, name, Listed::Any, formatted(missing, name), out, told, fields...);
  }

  // An error of this operation with the given text.
  CXoError error(const std::string& text) const;
  template <typename First, typename... Rest>
  CXoError error(const char* format, First first, Rest... rest) const {
    return error(formatted(format, first, rest...));
  }
  // An error in words from outside, as written or rendered as a format; rendering gives "%" for
  // "%%", and any other directive stands as written (YbString::Format(std::string)).
  CXoError error(const std::string& words, Rendering rendering) const;

 private:
  struct Requirement {
    bool missing;
    const char* text;
  };

  // Checks, build, send, check and parse; `completed` tells whether an answer is there to read.
  CXoError exchange(bool& completed);
  CXoError refused();
  CXoError adopt();
  template <class Record>
  static void takeFound(std::string& id, const Record& found) {
    id = found.id;
  }
  template <class Record>
  static void takeFound(Record& out, const Record& found) {
    out = found;
  }

  const std::string m_signature;
  const char* m_guardName = nullptr;
  std::vector<Requirement> m_required;
  HuaweiJSONBase* m_request = nullptr;
  PlainCall m_call{HUAWEI_REQ_GET, "", 0};
  SecondGenerationTexts m_texts{std::string()};
  CodeReactions m_reactions;
  std::shared_ptr<Adoption> m_adoption;
  bool m_bodyTold = false;
  std::vector<std::pair<const char*, const std::string*>> m_alsoTold;
  const std::string* m_ownerId = nullptr;
};
