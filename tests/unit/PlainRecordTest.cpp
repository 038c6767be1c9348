// A record's answer read straight from its text has to give what the document model's tree gives,
// and leave every answer it does not fully understand to the tree.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "RecordRequests.h"

namespace {

// The record's fields by its key table, one text to compare.
template <class Record>
std::string shown(const Record& record) {
  std::ostringstream out;
  for (const auto& row : HuaweiKeys::keysOf<Record>()) {
    std::visit(
        [&](auto member) {
          using Field = std::decay_t<decltype(record.*member)>;
          if constexpr (std::is_same_v<Field, std::list<std::string>>) {
            for (const std::string& item : record.*member) out << item << ';';
          } else if constexpr (std::is_base_of_v<HuaweiApi::Values, Field>) {
            out << (record.*member).getValue();
          } else {
            out << record.*member;
          }
        },
        row.member);
    out << '|';
  }
  return out.str();
}

// The result and the record that an answer gives, or what the tree missed; with `plain` false the
// text is declined, so that the tree reads every answer.
template <class Record>
std::string outcome(const std::string& answer, const Record& sent, HuaweiKeys::Keys keys, bool plain,
                    bool& storedPlainly) {
  Record record = sent;
  HuaweiKeys::PlainKeys<Record> staged(keys);
  const HuaweiResponse::ReadingRules rules{HuaweiResponse::ParserLog{"Reading"}, HuaweiResponse::WithoutData::Fatal,
                                           HuaweiResponse::StatusReport(), keys};
  jsonxx::ContainedReads contained;
  try {
    const bool read = HuaweiResponse::readObjectAnswer(
        0, answer, rules, [&](jsonxx::PlainReader& in) { return plain && staged.read(in); },
        [&] {
          storedPlainly = true;
          staged.store(record);
        },
        [&](const jsonxx::Object& data) {
          HuaweiKeys::readKeys(data, record, keys);
          return true;
        });
    return (read ? "read " : "refused ") + shown(record);
  } catch (const jsonxx::MissingRequiredValue& missing) {
    return missing.what();
  }
}

struct Row {
  const char* name;
  std::string answer;
  bool plain;  // whether the text is read without the tree
};

template <class Record>
void expectSameAsTree(const Row& row, const Record& sent = Record(), HuaweiKeys::Keys keys = HuaweiKeys::Keys::All) {
  SCOPED_TRACE(row.name);
  bool plainly = false, never = false;
  EXPECT_EQ(outcome(row.answer, sent, keys, true, plainly), outcome(row.answer, sent, keys, false, never));
  EXPECT_EQ(plainly, row.plain);
}

std::string answer(const std::string& data) { return R"({"data":)" + data + R"(,"error":{"code":0,"description":"0"}})"; }

const std::string kSystem = R"("ID":"2102351","HEALTHSTATUS":"1","NAME":"OceanStor","PRODUCTVERSION":"V6","RUNNINGSTATUS":"1")";

TEST(PlainRecord, SystemAnswersReadAsTheTreeReadsThem) {
  const Row rows[] = {
      {"ordinary", answer("{" + kSystem + R"(,"TYPE":201,"wwn":"x","extra":[{"a":null},true]})"), true},
      {"other order and white space",
       "\n{ \"error\" :{\"code\":0},\t\"data\":{\"RUNNINGSTATUS\":\"1\" ,\"NAME\":\"n\",\"PRODUCTVERSION\":\"V\","
       "\"HEALTHSTATUS\":\"1\",\r\"ID\":\"7\"} }\n",
       true},
      {"non-ASCII and raw control bytes", answer("{" + kSystem + ",\"NAME\":\"\xc3\xa9t\xc3\xa9\x01\xff\"}"), true},
      {"repeated key: the last counts", answer("{\"NAME\":\"first\"," + kSystem + "}"), true},
      {"escapes in other keys only", answer("{" + kSystem + R"(,"DESCRIPTION":"a\"b\u00e9\\"})"), true},
      {"escaped quote in a read key", answer(R"({"ID":"1","HEALTHSTATUS":"1","NAME":"a\"b","PRODUCTVERSION":"V",
          "RUNNINGSTATUS":"1"})"), false},
      {"unicode escape in a read key", answer(R"({"ID":"1","HEALTHSTATUS":"1","NAME":"\u00e9\u0041","PRODUCTVERSION":"V",
          "RUNNINGSTATUS":"1"})"), false},
      {"required key absent", answer(R"({"ID":"1","HEALTHSTATUS":"1","PRODUCTVERSION":"V","RUNNINGSTATUS":"1"})"), false},
      {"required key a number", answer(R"({"ID":1,"HEALTHSTATUS":"1","NAME":"n","PRODUCTVERSION":"V","RUNNINGSTATUS":"1"})"),
       false},
      {"required key an object", answer("{" + kSystem + R"(,"NAME":{"a":[1]}})"), false},
      {"data twice", answer("{" + kSystem + "}," + R"("data":{"ID":"2"})"), false},
      {"data a list", answer("[{" + kSystem + "}]"), false},
      {"no data, an error object", R"({"error":{"code":1077949061,"description":"refused"}})", false},
      {"cut short", answer("{" + kSystem + "}").substr(0, 90), false},
      {"text behind the answer", answer("{" + kSystem + "}") + "{}", false},
      {"number beyond 64 bits elsewhere", answer("{" + kSystem + R"(,"TOTAL":18446744073709551616})"), false},
      {"fraction elsewhere", answer("{" + kSystem + R"(,"TOTAL":1.5e3})"), false},
      {"single quotes", answer("{" + kSystem + R"(,'NAME':'x'})"), false},
  };
  for (const Row& row : rows) expectSameAsTree<_HuaweiSystemInformation>(row);
}

TEST(PlainRecord, OptionalKeysFlagsNumbersAndPartialReadings) {
  const std::string ndmp = R"("ip":"1.2.3.4","isEnabled":"false","isSupportSnapshot":"yes","port":"10000","version":"4")";
  _HuaweiNDMPServiceSettings sent;
  sent.vstoreId = "7";
  sent.vstoreName = "kept";
  expectSameAsTree(Row{"optional of another kind", answer("{" + ndmp + R"(,"vstoreId":{"x":1},"vstoreName":"v"})"), true},
                   sent);
  expectSameAsTree(Row{"required keys only", answer("{" + ndmp + R"(,"vstoreId":"9"})"), true}, sent,
                   HuaweiKeys::Keys::RequiredOnly);
  expectSameAsTree(Row{"every key optional", answer(R"({"ip":5,"isEnabled":"true"})"), true}, sent,
                   HuaweiKeys::Keys::AllOptional);

  const std::string change = R"("inode":18446744073709551615,"changeType":-1,"fType":4294967297,"filePath":"/a b",)"
                             R"("crTime":-0,"cTime":007,"mTime":-9223372036854775808,"aTime":0,"owner":4294967295,)"
                             R"("group":-2147483649,"size":2,"links":1)";
  expectSameAsTree<_HuaweiSnapshotChangeList>(Row{"numbers at their edges", answer("{" + change + R"(,"dosAttr":-1})"), true});
  expectSameAsTree<_HuaweiSnapshotChangeList>(Row{"a number as text", answer("{" + change + R"(,"dosAttr":"1"})"), false});

  expectSameAsTree<_HuaweiLUNInfo>(Row{"a list in a string, values of a vocabulary",
                                       answer(R"({"ID":"1","NAME":"l","PARENTID":"0","RUNNINGSTATUS":"27",)"
                                              R"("ALLOCTYPE":"1","SPLITMIRRORIDS":"[\"3\",\"4\"]"})"),
                                       false});
  expectSameAsTree<_HuaweiLUNInfo>(Row{"values of a vocabulary",
                                       answer(R"({"ID":"1","NAME":"l","PARENTID":"0","RUNNINGSTATUS":"27",)"
                                              R"("ALLOCTYPE":"1","SPLITMIRRORIDS":"[]"})"),
                                       true});
}

}  // namespace
