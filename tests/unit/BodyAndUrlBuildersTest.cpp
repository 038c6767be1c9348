#include <gtest/gtest.h>

#include "HandBuiltBody.h"
#include "HuaweiJSONChangeListRequests.h"
#include "HuaweiJSONGetTokenInfo.h"
#include "HuaweiJSONSnapshotRequests.h"
#include "HuaweiVstore.h"
#include "PasswordMask.h"
#include "RequestUrl.h"
#include "ResourcePath.h"

namespace {

TEST(HandBuiltBodies, LoginBodyKeepsItsBlanksAndEscapesItsValues) {
  HuaweiJSONGetTokenInfo login(1, "u", "p");
  std::string body = "stale";
  ASSERT_TRUE(login.buildRequest(body));
  EXPECT_EQ(body, "{\"username\":\"u\", \"password\":\"p\", \"scope\":\"0\" }");

  HuaweiJSONGetTokenInfo quoted(1, "a\"b", "c\\d");
  ASSERT_TRUE(quoted.buildRequest(body));
  EXPECT_EQ(body, "{\"username\":\"a\\\"b\", \"password\":\"c\\\\d\", \"scope\":\"0\" }");
}

TEST(HandBuiltBodies, LoginWithoutUserOrPasswordBuildsNothing) {
  std::string body = "stale";
  HuaweiJSONGetTokenInfo noUser(1, "", "p");
  EXPECT_FALSE(noUser.buildRequest(body));
  EXPECT_EQ(body, "");
  HuaweiJSONGetTokenInfo noPassword(1, "u", "");
  EXPECT_FALSE(noPassword.buildRequest(body));
}

struct SnapshotBodyCase {
  const char* label;
  bool snapDiff;
  const char* vstore;
  const char* expected;
};

inline void PrintTo(const SnapshotBodyCase& row, std::ostream* out) { *out << row.label; }

class SnapshotCreationBody : public testing::TestWithParam<SnapshotBodyCase> {};

TEST_P(SnapshotCreationBody, IsConcatenatedFromItsPieces) {
  HuaweiJSONCreateSnapshot request(1, 7, "s1", GetParam().snapDiff, GetParam().vstore);
  std::string body;
  ASSERT_TRUE(request.buildRequest(body));
  EXPECT_EQ(body, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SnapshotCreationBody,
    testing::Values(
        SnapshotBodyCase{"VstoreAndSnapDiff", true, "3",
                         "{\"NAME\":\"s1\", \"PARENTID\":\"7\", \"PARENTTYPE\":\"40\", \"vstoreId\":\"3\", "
                         "\"ENABLESNAPDIFF\":\"true\" }"},
        SnapshotBodyCase{"NoVstoreNoSnapDiff", false, "-12345",
                         "{\"NAME\":\"s1\", \"PARENTID\":\"7\", \"PARENTTYPE\":\"40\", \"ENABLESNAPDIFF\":\"false\" }"}),
    [](const testing::TestParamInfo<SnapshotBodyCase>& info) { return std::string(info.param.label); });

TEST(HandBuiltBodies, SnapshotWithoutNameAndSessionWithoutSnapshotsBuildNothing) {
  std::string body = "stale";
  HuaweiJSONCreateSnapshot unnamed(1, 7, "", true, "-12345");
  EXPECT_FALSE(unnamed.buildRequest(body));
  EXPECT_EQ(body, "");
  HuaweiJSONGetChangeListSession noBase(1, "", "9", "7");
  EXPECT_FALSE(noBase.buildRequest(body));
  HuaweiJSONGetChangeListSession noIncremental(1, "8", "", "7");
  EXPECT_FALSE(noIncremental.buildRequest(body));
}

TEST(HandBuiltBodies, ChangeListSessionAlwaysNamesAFileSystem) {
  HuaweiJSONGetChangeListSession request(1, "base", "incr", "");
  std::string body;
  ASSERT_TRUE(request.buildRequest(body));
  EXPECT_EQ(body,
            "{\"parentID\":\"\", \"baseSnapshotId\":\"base\", \"incrementalSnapshotId\":\"incr\", \"parentType\":\"40\" }");
}

TEST(RequestUrls, LoginUsesTheFixedSessionsPathAndOthersTheDevice) {
  EXPECT_EQ(HuaweiTransport::formRequestUrl("10.0.0.5", "dev", "ignored", 1),
            "https://10.0.0.5:8088/deviceManager/rest/xxxxx/sessions");
  EXPECT_EQ(HuaweiTransport::formRequestUrl("array", "2102", "lungroup/7?vstoreId=4", 24),
            "https://array:8088/deviceManager/rest/2102/lungroup/7?vstoreId=4");
  EXPECT_EQ(HuaweiTransport::formRequestUrl("h", "", "x y", 7), "https://h:8088/deviceManager/rest//x y");
}

struct PathCase {
  const char* label;
  ResourcePath built;
  std::string expected;
};

inline void PrintTo(const PathCase& row, std::ostream* out) { *out << row.label; }

class ResourcePaths : public testing::TestWithParam<PathCase> {};

TEST_P(ResourcePaths, RenderTheArraysForms) { EXPECT_EQ(GetParam().built.str(), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    Rows, ResourcePaths,
    testing::Values(
        PathCase{"NoVstoreAddsNothing", ResourcePath("filesystem").vstore("-12345"), "filesystem"},
        PathCase{"VstoreOpensTheQuery", ResourcePath("filesystem").vstore("3"), "filesystem?vstoreId=3"},
        PathCase{"VstoreExtendsTheQuery",
                 ResourcePath("fssnapshot/1").add("DELINCREMENTALBACKUPSNAP", "true").vstore("3"),
                 "fssnapshot/1?DELINCREMENTALBACKUPSNAP=true&vstoreId=3"},
        PathCase{"EmptyVstoreIsAVstoreOfThePlainRequests", ResourcePath("lun/1").vstore(""), "lun/1?vstoreId="},
        PathCase{"BareVstoreHasNoKey",
                 ResourcePath("nfshare").add("filter", "FSID:12").add("range", "[0-1]").bareVstore("7"),
                 "nfshare?filter=FSID:12&range=[0-1]&7"},
        PathCase{"BareVstoreNone", ResourcePath("nfshare").add("filter", "FSID:12").bareVstore("-12345"),
                 "nfshare?filter=FSID:12"},
        PathCase{"OpenQueryKeepsTheQuestionMark", ResourcePath("lun").id("", "lunId").openQuery(), "lun?"},
        PathCase{"OpenQueryThenPieces",
                 ResourcePath("storagepool").openQuery().raw("filter=NAME::pool 1").add("vstoreId", "2"),
                 "storagepool?&filter=NAME::pool 1&vstoreId=2"},
        PathCase{"IdIntoThePath", ResourcePath("lun").id("12", "lunId").openQuery(), "lun/12?"}),
    [](const testing::TestParamInfo<PathCase>& info) { return std::string(info.param.label); });

struct MaskCase {
  const char* label;
  std::string body;
  std::string password;
  std::string expected;
};

inline void PrintTo(const MaskCase& row, std::ostream* out) { *out << row.label; }

class PasswordMasking : public testing::TestWithParam<MaskCase> {};

TEST_P(PasswordMasking, HidesTheValueAndKeepsTheLength) {
  std::string body = GetParam().body;
  HuaweiTransport::maskPassword(body, GetParam().password);
  EXPECT_EQ(body, GetParam().expected);
  EXPECT_EQ(body.size(), GetParam().body.size());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PasswordMasking,
    testing::Values(
        MaskCase{"LoginBody", "{\"username\":\"u\", \"password\":\"abc\", \"scope\":\"0\" }", "abc",
                 "{\"username\":\"u\", \"password\":\"***\", \"scope\":\"0\" }"},
        MaskCase{"EmptyPassword", "{\"username\":\"u\", \"password\":\"\", \"scope\":\"0\" }", "",
                 "{\"username\":\"u\", \"password\":\"\", \"scope\":\"0\" }"},
        MaskCase{"NoPasswordKey", "{\"NAME\":\"x\"}", "abc", "{\"NAME\":\"x\"}"},
        MaskCase{"NoScopeKeyButTheKnownPassword", "{\"password\":\"abc\"} abc", "abc", "{\"password\":\"***\"} ***"},
        MaskCase{"UserNameHoldingTheClosingText",
                 "{\"username\":\"u\", \"scope\"\", \"password\":\"secret\", \"scope\":\"0\" }", "secret",
                 "{\"username\":\"u\", \"scope\"\", \"password\":\"******\", \"scope\":\"0\" }"},
        // The walk stops at the first closing text, inside the value; the known password covers the rest.
        MaskCase{"PasswordHoldingTheClosingText",
                 "{\"username\":\"u\", \"password\":\"a\", \"scope\"b\", \"scope\":\"0\" }", "a\", \"scope\"b",
                 "{\"username\":\"u\", \"password\":\"************\", \"scope\":\"0\" }"}),
    [](const testing::TestParamInfo<MaskCase>& info) { return std::string(info.param.label); });

}  // namespace
