#include "SecondGenerationCall.h"

#include "HuaweiJSONBase.h"
#include "OperationLog.h"
#include "YbErrorUtil.h"

namespace {
const char kSourceFile[] = "ZrManageHuawei.cpp";
const char kFacade[] = "ZrManageHuawei::";

const char kSignatureStart[] = "CXoError ZrManageHuawei::";

// "name" out of "CXoError ZrManageHuawei::name(<parameters>)", with the facade's class in front
// where `naming` asks for it.
std::string logNameOf(const std::string& signature, LogName naming) {
  std::string::size_type start = signature.rfind(kSignatureStart, 0) == 0 ? sizeof kSignatureStart - 1 : 0;
  const std::string name = signature.substr(start, signature.find('(') - start);
  return naming == LogName::Qualified ? kFacade + name : name;
}
}  // namespace

SecondGenerationTexts SecondGenerationTexts::lookup(std::string requestFailed) {
  SecondGenerationTexts texts = prefixedLookup(std::move(requestFailed));
  texts.buildFailureSays(kBuildFailedText);
  return texts;
}

SecondGenerationTexts SecondGenerationTexts::change(std::string requestFailed) {
  SecondGenerationTexts texts(std::move(requestFailed));
  texts.buildFailureSays(kBuildFailedText).emptyResponseSays("Empty response returned from the array");
  texts.parseFailureSays(kParseFailedText);
  return texts;
}

SecondGenerationTexts SecondGenerationTexts::prefixedLookup(std::string requestFailed) {
  SecondGenerationTexts texts(std::move(requestFailed));
  texts.emptyResponseSays("[ERROR] Empty response is returned from the array");
  texts.m_bareGuard = true;
  return texts;
}

SecondGenerationTexts SecondGenerationTexts::deletion(std::string requestFailed) {
  SecondGenerationTexts texts(std::move(requestFailed));
  texts.emptyResponseSays("[ERROR] Empty response returned from the array");
  return texts;
}

CXoError SecondGenerationCall::error(const std::string& text) const {
  return YbErrorUtil::ErrorErrNo(YbCodeLocation(kSourceFile, m_signature.c_str(), __LINE__), -1, "%s", text.c_str());
}

CXoError SecondGenerationCall::error(const std::string& words, Rendering rendering) const {
  return error(rendering == Rendering::AsFormat ? YbString::Format(words) : words);
}

SecondGenerationCall::SecondGenerationCall(HuaweiRestAPI& transport, bool sessionOpen, TkDebug& debug,
                                           const char* operation, LogName naming, unsigned long long jobId)
    : OwnLog(debug, logNameOf(operation, naming), jobId),
      PlainCallBase(transport, sessionOpen, m_ownLog),
      m_signature(operation),
      m_guardName(operationName(m_name.c_str())) {}

SecondGenerationCall& SecondGenerationCall::required(std::initializer_list<const std::string*> values) {
  for (const std::string* value : values)
    m_required.push_back(Requirement{value->empty(), "[ERROR] Invalid input parameters"});
  return *this;
}

SecondGenerationCall& SecondGenerationCall::sends(HuaweiJSONBase& request, PlainCall call,
                                                  SecondGenerationTexts texts) {
  m_request = &request;
  m_call = std::move(call);
  m_texts = std::move(texts);
  return *this;
}

CXoError SecondGenerationCall::checked() const {
  if (m_guardName != nullptr && !m_sessionOpen) {
    return error(m_texts.guardPrefix() + guardText(m_guardName));
  }
  for (const Requirement& requirement : m_required) {
    if (requirement.missing) return error(std::string(requirement.text));
  }
  return CXoError::Success();
}

CXoError SecondGenerationCall::exchange(bool& completed) {
  completed = false;
  if (CXoError refused = checked(); refused.IsError()) return refused;
  if (m_bodyTold) {
    std::string body;
    if (!m_request->buildRequest(body) || body.empty()) return error(m_texts.buildFailed());
    m_log.line(0, "REQUESSTT:[%s]", body.c_str());
  }
  switch (exchangeLogged(*m_request, m_call)) {
    case FrameStep::Completed:
      completed = true;
      return CXoError::Success();
    case FrameStep::BuildFailed:
      return error(m_texts.buildFailed());
    case FrameStep::SendFailed:
      return refused();
    case FrameStep::EmptyResponse:
      return error(m_texts.emptyResponse());
    case FrameStep::ParseFailed:
      return error(m_texts.parseFailed());
    case FrameStep::MissingValue:
      reportMissingValue();
      return error(RequiredValueContainment::failureText());
  }
  return error(m_texts.requestFailed());
}

CXoError SecondGenerationCall::refused() {
  const CodeReaction* row = reactToRefusal(m_reactions);
  switch (row == nullptr ? Reaction::Usual : row->reaction()) {
    case Reaction::Usual:
      break;
    case Reaction::Done:
      return CXoError::Success();
    case Reaction::OwnWords:
      return error(row->words());
    case Reaction::ArrayWords:
      return error(row->words() + arrayDescription(), row->rendering());
    case Reaction::Adopt:
      return adopt();
  }
  return error(m_texts.requestFailed());
}

// Any failure of the lookup, or a lookup that finds nothing, fails in the lookup's words.
CXoError SecondGenerationCall::adopt() {
  std::string id;
  const CXoError lookup = m_adoption->lookUp(id);
  if (lookup.IsError() || id.empty()) return error(lookup.AsString(), m_adoption->rendering());
  m_adoption->take(id);
  return CXoError::Success();
}
