#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ArraySimulator.h"
#include "SimClient.h"

namespace {

using arraysim::ChangeType;
using arraysim::FileType;
using nlohmann::json;
using simtest::SimClient;

constexpr const char* kFirstCursor = "posType=255&posObj=0&posOffset=0&linkPosType=255&linkPos=18446744073709551614";

std::string PageResource(const std::string& session, const std::string& cursor) {
  return "fs_snapchangelist_result?sessionID=" + session + "&parentType=40&" + cursor;
}

std::string CursorOf(const json& data) {
  return "posType=" + data["posType"].get<std::string>() + "&posObj=" + data["posObj"].get<std::string>() +
         "&posOffset=" + data["posOffset"].get<std::string>() + "&linkPosType=" +
         data["linkPosType"].get<std::string>() + "&linkPos=" + data["linkPos"].get<std::string>();
}

class ChangeListTest : public ::testing::Test {
 protected:
  ChangeListTest() : sim(simtest::FreePortOptions()), client(Started(sim)) {
    client.login();
    fs = sim.fileSystems().create("fs1");
  }

  static arraysim::ArraySimulator& Started(arraysim::ArraySimulator& sim) {
    sim.start();
    return sim;
  }

  std::string openSession(const std::string& base, const std::string& incremental) {
    const auto body = "{\"parentID\":\"" + fs + "\", \"baseSnapshotId\":\"" + base + "\", \"incrementalSnapshotId\":\"" +
                      incremental + "\", \"parentType\":\"40\" }";
    return SimClient::Envelope(client.send("POST", "fs_snapchangelist_session", body))["data"].value("id", "");
  }

  // Every page's data up to and including the closing empty page at progress "100".
  std::vector<json> walk(const std::string& session) {
    std::vector<json> pages;
    std::string cursor = kFirstCursor;
    for (int guard = 0; guard < 1000; ++guard) {
      const auto envelope = SimClient::Envelope(client.send("GET", PageResource(session, cursor)));
      EXPECT_EQ(envelope["error"]["code"], 0) << envelope.dump();
      const auto& data = envelope["data"];
      pages.push_back(data);
      if (json::parse(data["changeList"].get<std::string>()).empty() && data["progress"] == "100") break;
      cursor = CursorOf(data);
    }
    return pages;
  }

  arraysim::ArraySimulator sim;
  SimClient client;
  std::string fs;
};

TEST_F(ChangeListTest, DifferenceReportsCreatedModifiedDeletedFilesAndDirectories) {
  auto files = sim.files(fs);
  files.writeFile("/keep.txt", 1).writeFile("/mod.txt", 1).writeFile("/gone.txt", 1).writeFile("/dir/a.txt", 1);
  files.writeFile("/olddir/x.txt", 1).writeFile("/swap", 1);
  const auto base = sim.snapshots().take(fs, "base");
  const auto movedInode = files.attributes("/dir/a.txt")->inode;
  const auto goneAttributes = *files.attributes("/gone.txt");

  files.writeFile("/mod.txt", 99).remove("/gone.txt").writeFile("/new.txt", 2).writeFile("/newdir/y.txt", 3);
  files.remove("/olddir").rename("/dir/a.txt", "/dir/b.txt").remove("/swap").makeDirectory("/swap");
  const auto incremental = sim.snapshots().take(fs, "incremental");

  struct Expected {
    ChangeType change;
    FileType type;
    const char* path;
  };
  const Expected expected[] = {
      {ChangeType::Modified, FileType::Directory, "/dir"}, {ChangeType::Deleted, FileType::File, "/dir/a.txt"},
      {ChangeType::Created, FileType::File, "/dir/b.txt"}, {ChangeType::Deleted, FileType::File, "/gone.txt"},
      {ChangeType::Modified, FileType::File, "/mod.txt"},  {ChangeType::Created, FileType::File, "/new.txt"},
      {ChangeType::Created, FileType::Directory, "/newdir"}, {ChangeType::Created, FileType::File, "/newdir/y.txt"},
      {ChangeType::Deleted, FileType::Directory, "/olddir"}, {ChangeType::Deleted, FileType::File, "/olddir/x.txt"},
      {ChangeType::Deleted, FileType::File, "/swap"},      {ChangeType::Created, FileType::Directory, "/swap"},
  };
  const auto truth = sim.changeLists().difference(base, incremental);
  ASSERT_EQ(truth.size(), std::size(expected));
  for (std::size_t i = 0; i < truth.size(); ++i) {
    EXPECT_EQ(truth[i].changeType, expected[i].change) << expected[i].path;
    EXPECT_EQ(truth[i].fileType, expected[i].type) << expected[i].path;
    EXPECT_EQ(truth[i].path, expected[i].path);
  }
  EXPECT_EQ(truth[1].attributes.inode, movedInode);
  EXPECT_EQ(truth[2].attributes.inode, movedInode) << "a rename keeps the inode";
  EXPECT_EQ(truth[3].attributes, goneAttributes) << "a deletion reports what the base held";
  EXPECT_EQ(truth[4].attributes.size, 99u);
  EXPECT_TRUE(sim.changeLists().difference(base, base).empty());
}

TEST_F(ChangeListTest, PagesWalkTheWholeDifferenceToTheClosingEmptyPage) {
  sim.changeLists().setPageSize(5);
  const auto base = sim.snapshots().take(fs, "base");
  auto files = sim.files(fs);
  for (int i = 0; i < 12; ++i) files.writeFile("/f" + std::to_string(10 + i), i);
  const auto incremental = sim.snapshots().take(fs, "incremental");
  const auto truth = sim.changeLists().difference(base, incremental);
  ASSERT_EQ(truth.size(), 12u);

  const auto session = openSession(base, incremental);
  ASSERT_FALSE(session.empty());
  const auto pages = walk(session);
  ASSERT_EQ(pages.size(), 4u);
  const char* progress[] = {"41", "83", "100", "100"};
  const char* counts[] = {"5", "5", "2", "0"};
  std::size_t next = 0;
  for (std::size_t p = 0; p < pages.size(); ++p) {
    EXPECT_EQ(pages[p]["progress"], progress[p]);
    EXPECT_EQ(pages[p]["numChanges"], counts[p]);
    for (const auto& item : pages[p].items()) EXPECT_TRUE(item.value().is_string()) << item.key();
    for (const auto& entry : json::parse(pages[p]["changeList"].get<std::string>())) {
      ASSERT_LT(next, truth.size());
      const auto& change = truth[next++];
      EXPECT_EQ(entry["filePath"], change.path);
      EXPECT_EQ(entry["changeType"], static_cast<int>(change.changeType));
      EXPECT_EQ(entry["fType"], static_cast<int>(change.fileType));
      EXPECT_EQ(entry["inode"], change.attributes.inode);
      EXPECT_EQ(entry["size"], change.attributes.size);
      EXPECT_EQ(entry["mTime"], change.attributes.mTime);
      EXPECT_EQ(entry["dosAttr"], change.attributes.dosAttr);
    }
  }
  EXPECT_EQ(next, truth.size());
  EXPECT_EQ(sim.changeLists().pagesServed(session), 4u);

  EXPECT_EQ(SimClient::Code(client.send("DELETE", "fs_snapchangelist_session/" + session)), 0);
  EXPECT_NE(SimClient::Code(client.send("GET", PageResource(session, kFirstCursor))), 0);
  EXPECT_NE(SimClient::Code(client.send("DELETE", "fs_snapchangelist_session/" + session)), 0);
}

TEST_F(ChangeListTest, EmptyDifferenceAnswersTheClosingPageAtOnce) {
  const auto base = sim.snapshots().take(fs, "base");
  const auto incremental = sim.snapshots().take(fs, "incremental");
  const auto pages = walk(openSession(base, incremental));
  ASSERT_EQ(pages.size(), 1u);
  EXPECT_EQ(pages[0]["changeList"], "[]");
}

TEST_F(ChangeListTest, CursorsAreCheckedAndBelongToTheirSession) {
  sim.changeLists().setPageSize(1);
  sim.files(fs).writeFile("/a", 1);
  const auto base = sim.snapshots().take(fs, "base");
  sim.files(fs).writeFile("/b", 1).writeFile("/c", 1);
  const auto incremental = sim.snapshots().take(fs, "incremental");
  const auto first = openSession(base, incremental);
  const auto second = openSession(base, incremental);

  const auto page = SimClient::Envelope(client.send("GET", PageResource(first, kFirstCursor)))["data"];
  const auto cursor = CursorOf(page);
  EXPECT_EQ(SimClient::Code(client.send("GET", PageResource(first, cursor))), 0);
  EXPECT_EQ(SimClient::Code(client.send("GET", PageResource(first, cursor))), 0) << "a page may be asked again";

  auto tampered = page;
  tampered["posObj"] = "0";
  const std::string wrong[] = {PageResource(second, cursor), PageResource(first, CursorOf(tampered)),
                               PageResource("nosuchsession", kFirstCursor),
                               "fs_snapchangelist_result?sessionID=" + first + "&parentType=40"};
  for (const auto& resource : wrong) EXPECT_NE(SimClient::Code(client.send("GET", resource)), 0) << resource;
}

TEST_F(ChangeListTest, SessionsNeedKnownSnapshotsOfTheNamedFileSystem) {
  const auto base = sim.snapshots().take(fs, "base");
  const auto other = sim.fileSystems().create("fs2");
  const auto foreign = sim.snapshots().take(other, "foreign");
  EXPECT_TRUE(openSession(base, "1@99").empty());
  EXPECT_TRUE(openSession(base, foreign).empty());
  EXPECT_TRUE(sim.changeLists().openSessions().empty());
}

TEST_F(ChangeListTest, WireFormatEncodesNamesAndKeepsWideNumbersExact) {
  const auto base = sim.snapshots().take(fs, "base");
  arraysim::FileAttributes huge;
  huge.inode = UINT64_MAX;
  huge.size = (1ULL << 63) + 1;
  huge.mTime = UINT64_MAX - 1;
  sim.files(fs).createFile("/big", huge).writeFile("/a&b(1)'s <x>.txt", 1).writeFile("/caf\xc3\xa9", 1);
  const auto incremental = sim.snapshots().take(fs, "incremental");

  const auto result = client.send("GET", PageResource(openSession(base, incremental), kFirstCursor));
  ASSERT_TRUE(result);
  EXPECT_NE(result->body.find("\"changeList\":\"[{\\\"inode\\\":"), std::string::npos) << result->body;
  EXPECT_NE(result->body.find("\\\"inode\\\":18446744073709551615,"), std::string::npos);
  EXPECT_NE(result->body.find("caf\xc3\xa9"), std::string::npos) << "UTF-8 goes out raw";

  const auto entries = json::parse(SimClient::Envelope(result)["data"]["changeList"].get<std::string>());
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0]["filePath"], "/a&amp;b&#40;1&#41;&#39;s &lt;x&gt;.txt");
  EXPECT_EQ(entries[1]["filePath"], "/big");
  EXPECT_EQ(entries[1]["inode"].get<std::uint64_t>(), UINT64_MAX);
  EXPECT_EQ(entries[1]["size"].get<std::uint64_t>(), huge.size);
  EXPECT_EQ(entries[1]["mTime"].get<std::uint64_t>(), huge.mTime);
  EXPECT_EQ(entries[2]["filePath"], "/caf\xc3\xa9");
}

}  // namespace
