// A record's answer read straight from its text gives what the document model's tree gives, and
// leaves every answer it does not fully understand to the tree.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "RecordRequests.h"

namespace {

using HuaweiKeys::Keys;

// The result and the record's fields that an answer gives, or what the tree missed. With `plain`
// false the text is declined, so the tree reads it.
template <class Record>
std::string outcome(const std::string& answer, Record record, Keys keys, bool plain, bool& storedPlainly) {
  HuaweiKeys::PlainKeys<Record> staged(keys);
  jsonxx::ContainedReads contained;
  std::ostringstream out;
  try {
    out << HuaweiResponse::readObjectAnswer(
        0, answer, {HuaweiResponse::ParserLog{"Reading"}, HuaweiResponse::WithoutData::Fatal, {}, keys},
        [&](jsonxx::PlainReader& in) { return plain && staged.read(in); },
        [&] { staged.store(record), storedPlainly = true; },
        [&](const jsonxx::Object& data) { return HuaweiKeys::readKeys(data, record, keys), true; });
  } catch (const jsonxx::MissingRequiredValue& missing) {
    return missing.what();
  }
  for (const auto& row : HuaweiKeys::keysOf<Record>()) {
    std::visit([&](auto member) {
      if constexpr (std::is_base_of_v<HuaweiApi::Values, std::decay_t<decltype(record.*member)>>) {
        out << '|' << (record.*member).getValue();
      } else if constexpr (!std::is_same_v<std::decay_t<decltype(record.*member)>, std::list<std::string>>) {
        out << '|' << record.*member;
      }
    }, row.member);
  }
  return out.str();
}

// `plain`: whether the answer is read without the tree.
template <class Record>
void expectSameAsTree(const char* name, const std::string& answer, bool plain, const Record& sent = Record(),
                      Keys keys = Keys::All) {
  SCOPED_TRACE(name);
  bool plainly = false, never = false;
  EXPECT_EQ(outcome(answer, sent, keys, true, plainly), outcome(answer, sent, keys, false, never));
  EXPECT_EQ(plainly, plain);
}

std::string answer(const std::string& data) { return R"({"data":{)" + data + R"(},"error":{"code":0,"description":"0"}})"; }

TEST(PlainRecord, SystemAnswersReadAsTheTreeReadsThem) {
  const std::string system = R"("ID":"21","HEALTHSTATUS":"1","NAME":"Ocean","PRODUCTVERSION":"V6","RUNNINGSTATUS":"1")";
  const struct {
    const char* name;
    std::string answer;
    bool plain;
  } rows[] = {
      {"ordinary", answer(system + R"(,"TYPE":201,"wwn":"x","extra":[{"a":null},true])"), true},
      {"other order, white space", "\n{ \"error\" :{\"code\":0},\t\"data\":{\"RUNNINGSTATUS\":\"1\" ,\"NAME\":\"n\","
                                   "\"PRODUCTVERSION\":\"V\",\"HEALTHSTATUS\":\"1\",\r\"ID\":\"7\"} }\n", true},
      {"non-ASCII, raw control bytes", answer(system + ",\"NAME\":\"\xc3\xa9t\xc3\xa9\x01\xff\""), true},
      {"repeated key: the last counts", answer("\"NAME\":\"first\"," + system), true},
      {"escapes in other keys only", answer(system + R"(,"DESCRIPTION":"a\"b\u00e9\\")"), true},
      {"escapes in a read key", answer(system + R"(,"NAME":"a\"b\u00e9")"), false},
      {"required key absent", answer(R"("ID":"1","HEALTHSTATUS":"1","PRODUCTVERSION":"V","RUNNINGSTATUS":"1")"), false},
      {"required key of another kind", answer(system + R"(,"NAME":{"a":[1]})"), false},
      {"data twice", answer(system + R"(},"data":{"ID":"2")"), false},
      {"an error object alone", R"({"error":{"code":1077949061,"description":"refused"}})", false},
      {"cut short", answer(system).substr(0, 90), false},
      {"text behind the answer", answer(system) + "{}", false},
      {"number beyond 64 bits elsewhere", answer(system + R"(,"TOTAL":18446744073709551616)"), false},
  };
  for (const auto& row : rows) expectSameAsTree<_HuaweiSystemInformation>(row.name, row.answer, row.plain);
}

TEST(PlainRecord, OptionalKeysFlagsNumbersAndPartialReadings) {
  const std::string ndmp = R"("ip":"1.2.3.4","isEnabled":"false","isSupportSnapshot":"yes","port":"1","version":"4")";
  _HuaweiNDMPServiceSettings sent;
  sent.vstoreId = "7";
  sent.vstoreName = "kept";
  expectSameAsTree("optional of another kind", answer(ndmp + R"(,"vstoreId":{"x":1},"vstoreName":"v")"), true, sent);
  expectSameAsTree("required keys only", answer(ndmp + R"(,"vstoreId":"9")"), true, sent, Keys::RequiredOnly);
  expectSameAsTree("every key optional", answer(R"("ip":5,"isEnabled":"true")"), true, sent, Keys::AllOptional);

  const std::string change = R"("inode":18446744073709551615,"changeType":-1,"fType":4294967297,"filePath":"/a",)"
                             R"("crTime":-0,"cTime":007,"mTime":-9223372036854775808,"aTime":0,"owner":4294967295,)"
                             R"("group":-2147483649,"size":2,"links":1)";
  expectSameAsTree<_HuaweiSnapshotChangeList>("numbers at their edges", answer(change + R"(,"dosAttr":-1)"), true);
  expectSameAsTree<_HuaweiSnapshotChangeList>("a number as text", answer(change + R"(,"dosAttr":"1")"), false);
  expectSameAsTree<_HuaweiLUNInfo>("values of a vocabulary", answer(R"("ID":"1","NAME":"l","PARENTID":"0",)"
                                   R"("RUNNINGSTATUS":"27","ALLOCTYPE":"1")"), true);
}

}  // namespace
