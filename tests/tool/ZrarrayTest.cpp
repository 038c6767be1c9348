// zrarray end to end: the executable run as its own process against the simulator over HTTPS,
// its JSON parsed, its exit status and standard error read as an operator or a script would.
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <regex>
#include <sstream>
#include <thread>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "SimulatorEnvironment.h"
#include "ToolProcess.h"

namespace zrtest {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using namespace std::chrono_literals;

std::string LastLine(std::string text) {
  while (!text.empty() && text.back() == '\n') text.pop_back();
  return text.substr(text.rfind('\n') + 1);  // npos + 1 is 0
}

class Zrarray : public SimulatorTest {
 protected:
  void SetUp() override {
    SimulatorTest::SetUp();
    std::string pattern = testing::TempDir() + "zrarray-XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr) << std::strerror(errno);
    directory_ = pattern;
    passwordFile_ = writeFile("password", std::string(arraysim::SimulatorOptions::kDefaultPassword) + "\n", 0600);
  }
  void TearDown() override {
    std::error_code ignored;
    if (!directory_.empty()) std::filesystem::remove_all(directory_, ignored);
  }

  // A file in this test's own directory, which goes with the test.
  std::string writeFile(const std::string& name, const std::string& text, mode_t mode) {
    const std::string path = directory_ + "/" + name;
    std::ofstream(path, std::ios::trunc) << text;
    chmod(path.c_str(), mode);
    return path;
  }

  // The tool pointed at the simulator, trusting its CA, the password from a private file.
  std::vector<std::string> command(std::vector<std::string> arguments, std::vector<std::string> credentials = {}) {
    if (credentials.empty()) credentials = {"--password-file", passwordFile_};
    std::vector<std::string> all = {"--address", sim().address(), "--user", "admin",
                                    "--ca-bundle", sim().caCertPath()};
    all.insert(all.end(), credentials.begin(), credentials.end());
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
  }
  ToolRun zrarray(std::vector<std::string> arguments, const ToolInput& input = {},
                  std::vector<std::string> credentials = {}) {
    return RunZrarray(command(std::move(arguments), std::move(credentials)), input);
  }

  // A success says nothing on standard error, whatever the library logged on the way.
  json answer(const std::vector<std::string>& arguments) {
    const ToolRun run = zrarray(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    return run.out.empty() ? json() : json::parse(run.out);
  }

  std::string directory_;
  std::string passwordFile_;
};

TEST_F(Zrarray, PrintsRecordsAsObjectsListsAsArraysAndTablesForPeople) {
  sim().system().setSystemField("NAME", "lab array");
  sim().fileSystems().create("projects");
  sim().fileSystems().create("home");
  arraysim::FileSystemInfo tenants;
  tenants.vstoreId = "3";
  sim().fileSystems().create("tenant data", tenants);
  sim().fileSystems().create("tenant logs", tenants);

  EXPECT_EQ(answer({"system", "info"})["name"], "lab array");
  const json fileSystems = answer({"fs", "list"});
  ASSERT_EQ(fileSystems.size(), 4u);
  EXPECT_EQ(fileSystems[0]["name"], "projects");

  // Global options may follow the subcommand; --vstore reaches the query.
  const ToolRun table = zrarray({"fs", "list", "--format", "table", "--vstore", "3"});
  EXPECT_EQ(table.status, 0) << table.err;
  EXPECT_THAT(table.outLines(), testing::ElementsAre(testing::MatchesRegex("id +name +healthStatus"),
                                                    testing::MatchesRegex("3 +tenant data +1"),
                                                    testing::MatchesRegex("4 +tenant logs +1")));
  EXPECT_EQ(sim().requests().matching("GET", "filesystem").back().resource, "filesystem?vstoreId=3");
}

// Each failure is one line on standard error that says what failed and why: the operation's own
// text, the connection's cause, the array's code and its own words in quotes, or what its answer lacks.
TEST_F(Zrarray, EachFailureSaysItsCauseOnItsOneLine) {
  const std::string wrong = writeFile("wrong", "not-the-password", 0600);
  const std::string login = "zrarray: login to " + sim().address() + " as admin failed: ";
  const std::string unsent = login + "Error while sending the request: ";
  struct Row {
    std::string name;
    std::vector<std::string> arguments;
    std::string line;  // the one line, as a regular expression
    json out = json();  // what a flagged failure prints besides
  };
  const auto at = [this](const std::string& address, const std::string& password, std::vector<std::string> more) {
    std::vector<std::string> all = {"--address", address, "--user", "admin", "--password-file", password};
    all.insert(all.end(), more.begin(), more.end());
    all.insert(all.end(), {"system", "info"});
    return all;
  };
  const std::string ca = sim().caCertPath(), pin = "sha256//AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA=";
  arraysim::AnswerStyle withoutData;  // the library's failure ends the operation, never the process
  withoutData.omitData = true;
  sim().answerStyles().set("GET", "system/", withoutData);
  const std::string fileSystem = sim().fileSystems().create("projects");
  const std::vector<std::string> initiator = {"host", "initiator-create", "--initiator-id", "iqn.2024-01.lab:web1"};
  EXPECT_EQ(answer(initiator)["alreadyExists"], false);
  const std::vector<Row> rows = {
      {"closed port", at("127.0.0.99", passwordFile_, {"--ca-bundle", ca}),
       "zrarray: login to 127.0.0.99 as admin failed: Error while sending the request: Couldn't connect to server "
       "\\(Failed to connect to 127.0.0.99 port 8088 .*\\)"},
      {"unknown CA", at(sim().address(), passwordFile_, {}), unsent + ".*certificate.*"},
      {"wrong pin", at(sim().address(), passwordFile_, {"--ca-bundle", ca, "--pin", pin}), unsent + ".*pinned.*"},
      {"wrong password", at(sim().address(), wrong, {"--ca-bundle", ca}),
       login + "Unable to get the base token information \\(array code 1077949061: "
               "\"The user name or password is incorrect.\"\\)"},
      {"absent snapshot", command({"snapshot", "info", "--id", "9@9"}),
       "zrarray: snapshot info failed: Unable to get the snapshot information. \\(array code 1073754118: "
       "\"The snapshot does not exist.\"\\)"},
      {"refused value", command({"lungroup", "delete", "--lun-group-id", "../lun/1"}),
       "zrarray: lungroup delete failed: \\[ERROR\\] Unable to build the request body: The input parameter "
       "\\[lunGroupId\\] cannot be placed in the request: it holds a path separator"},
      {"answer without data", command({"system", "info"}),
       "zrarray: system info failed: The array's answer lacks a required value: .*"},
      // An array that finds nothing answers without data, or the library says nothing at all.
      {"absent host", command({"host", "id", "--host-name", "nosuch"}),
       "zrarray: host id failed: not found: host 'nosuch'"},
      {"absent file system name", command({"fs", "id", "--name", "nosuch"}),
       "zrarray: fs id failed: not found: file system 'nosuch'"},
      {"absent file system", command({"fs", "info", "--id", "77"}),
       "zrarray: fs info failed: not found: file system '77'"},
      {"absent NFS share", command({"share", "nfs-of-fs", "--file-system-id", fileSystem}),
       "zrarray: share nfs-of-fs failed: not found: NFS share of file system '" + fileSystem + "'"},
      // The array's refusal is the failure, and the flag says why.
      {"existing initiator", command(initiator),
       "zrarray: host initiator-create failed: The initiator with ID\\[iqn.2024-01.lab:web1\\] already exists "
       "\\(array code 1077948997: \"The initiator already exists.\"\\)",
       {{"alreadyExists", true}}},
      // The operation's flag alone, without the flags of the record it did not find.
      {"absent LUN snapshot", command({"lun", "snapshot-info", "--snapshot-id", "99"}),
       "zrarray: lun snapshot-info failed: .* \\(array code 1077937880: \"The snapshot does not exist.\"\\)",
       {{"notExist", true}}},
  };
  for (const Row& row : rows) {
    const ToolRun run = RunZrarray(row.arguments);
    EXPECT_EQ(run.status, 1) << row.name;
    EXPECT_EQ(run.out.empty() ? json() : json::parse(run.out), row.out) << row.name;
    EXPECT_THAT(run.err, testing::MatchesRegex(row.line + "\n")) << row.name;
  }
}

// A subcommand of each kind of group makes an object; the array's store holds it as told. Host
// groups, LUN groups and mapping views take only a name, as hosts do. Successes are quiet.
TEST_F(Zrarray, EachGroupReachesTheArray) {
  for (int twice = 0; twice < 2; ++twice) answer({"host", "create", "--host-name", "web1"});
  answer({"share", "find", "--protocol", "cifs", "--name", "nosuch"});  // the library's lines need --log-level
  const std::string fileSystem = sim().fileSystems().create("projects");
  sim().store().insert("storagepool", {{"ID", "0"}, {"NAME", "pool1"}, {"PARENTID", "0"}});
  sim().store().insert("lun", {{"ID", "5"}, {"NAME", "db"}, {"PARENTID", "0"}, {"RUNNINGSTATUS", "27"}});
  sim().store().insert("cifshare", {{"ID", "9"}, {"NAME", "home"}, {"SHAREPATH", "/projects/"}});
  struct Row {
    std::vector<std::string> arguments;
    std::string type, field, value;
  };
  const std::vector<Row> rows = {
      {{"share", "cifs-create", "--name", "docs", "--path", "/projects/", "--file-system-id", fileSystem},
       "cifshare", "NAME", "docs"},
      {{"lun", "create", "--name", "vol", "--pool-id", "0", "--capacity", "1024", "--controller", "0A"},
       "lun", "ALLOCTYPE", "1"},
      // A word given for a grant reaches the array as its number.
      {{"share", "cifs-grant", "--share-id", "9", "--name", "ann", "--domain-type", "0", "--permission", "read-write"},
       "CIFS_SHARE_AUTH_CLIENT", "PERMISSION", "5"},
      {{"clone", "create", "--name", "db-clone", "--primary-lun-id", "5"}, "splitmirror", "PRILUNID", "5"},
  };
  for (const Row& row : rows) {
    const json made = answer(row.arguments);
    ASSERT_TRUE(made.contains("id")) << row.type << made;
    const auto stored = sim().store().get(row.type, made["id"].get<std::string>());
    ASSERT_TRUE(stored) << row.type << made;
    EXPECT_EQ((*stored)[row.field], row.value) << row.type;
  }
  const json snapshot = answer({"snapshot", "create", "--file-system-id", fileSystem, "--name", "nightly"});
  EXPECT_EQ(answer({"snapshot", "info", "--id", snapshot["id"].get<std::string>()})["name"], "nightly");
  // An empty list, which the array answers without data and the library reports as a parse failure.
  EXPECT_EQ(answer({"lun", "groups", "--lun-id", "5"}), json::array());
}

// --insecure is explicit and loud; without it an unknown CA fails (the failure table's row).
TEST_F(Zrarray, InsecureSaysSo) {
  const std::vector<std::string> insecure = {"--insecure", "--address", sim().address(), "--user", "admin",
                                       "--password-file", passwordFile_, "system", "info"};
  const ToolRun loud = RunZrarray(insecure);
  EXPECT_EQ(loud.status, 0) << loud.err;
  EXPECT_THAT(loud.err, HasSubstr("WARNING: --insecure"));
}

TEST_F(Zrarray, PasswordOnlyFromPrivateFileStandardInputOrANamedVariable) {
  const std::string password = arraysim::SimulatorOptions::kDefaultPassword;
  for (const mode_t mode : {0644, 0640, 0604, 0660}) {
    const ToolRun refused =
        zrarray({"system", "info"}, {}, {"--password-file", writeFile("shared", password, mode)});
    EXPECT_EQ(refused.status, 2) << std::oct << mode;
    EXPECT_THAT(refused.err, HasSubstr("chmod 600")) << std::oct << mode;
  }
  EXPECT_TRUE(sim().requests().all().empty()) << "a refused password was sent";

  EXPECT_EQ(zrarray({"system", "info"}, {password + "\n", {}, false, {}}, {"--password-stdin"}).status, 0);
  const ToolInput secret{"", {{"ARRAY_SECRET", password}}, false, {}};
  EXPECT_EQ(zrarray({"system", "info"}, secret, {"--password-env", "ARRAY_SECRET"}).status, 0);
  const ToolRun unset = zrarray({"system", "info"}, {}, {"--password-env", "ARRAY_SECRET"});
  EXPECT_EQ(unset.status, 2);
  EXPECT_THAT(unset.err, HasSubstr("ARRAY_SECRET is not set"));

  const ToolRun none = RunZrarray({"--address", sim().address(), "--user", "admin", "system", "info"});
  EXPECT_EQ(none.status, 2);
  EXPECT_THAT(none.err, HasSubstr("no password"));
  const ToolRun onArgv = RunZrarray({"--address", sim().address(), "--password", password, "system", "info"});
  EXPECT_EQ(onArgv.status, 2);

  // Even requests and responses in the log leave the password out.
  const ToolRun verbose = zrarray({"--log-level", "7", "system", "info"});
  EXPECT_EQ(verbose.status, 0);
  EXPECT_THAT(verbose.err, HasSubstr("sessions"));
  EXPECT_THAT(verbose.err + verbose.out, Not(HasSubstr(password)));
}

// Every group and every subcommand answers --help, and the bash completion names each.
TEST_F(Zrarray, HelpAndCompletionOnEveryLevel) {
  const auto subcommands = [](const std::string& help) {
    std::vector<std::string> names;
    const size_t listed = help.find("Subcommands:");
    const std::string section = listed == std::string::npos ? "" : help.substr(listed);
    const std::regex line(R"(\n  (\S+))");
    for (std::sregex_iterator it(section.begin(), section.end(), line), end; it != end; ++it) {
      names.push_back((*it)[1]);
    }
    return names;
  };
  const ToolRun top = RunZrarray({"--help"});
  ASSERT_EQ(top.status, 0);
  EXPECT_THAT(top.out, HasSubstr("--password-file"));
  EXPECT_THAT(top.out, Not(testing::ContainsRegex("--password[ =]")));
  const std::vector<std::string> groups = subcommands(top.out);
  EXPECT_THAT(groups, testing::IsSupersetOf({"system", "fs", "snapshot", "changelist", "share", "lun", "host",
                                             "hostgroup", "lungroup", "mappingview", "clone"}));
  const ToolRun completion = RunZrarray({"completion", "bash"});
  ASSERT_EQ(completion.status, 0) << completion.err;
  const std::string script = writeFile("zrarray.bash", completion.out, 0600);
  EXPECT_EQ(std::system(("bash -n " + script).c_str()), 0) << completion.out;
  // What bash offers for the words typed so far, the last one being completed.
  const auto offered = [this, &script](const std::string& typed) {
    const std::string driver = writeFile("drive.bash", "source " + script + "\nCOMP_WORDS=(" + typed +
                                                           ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_zrarray\n"
                                                           "echo \"${COMPREPLY[*]}\"\n", 0600);
    std::unique_ptr<FILE, int (*)(FILE*)> shell(popen(("bash " + driver).c_str(), "r"), &pclose);
    std::array<char, 4096> line{};
    return shell && fgets(line.data(), line.size(), shell.get()) ? std::string(line.data()) : std::string();
  };
  EXPECT_EQ(offered("zrarray -a 192.0.2.1 --format table sh"), "share\n");  // option values are no group
  EXPECT_EQ(offered("zrarray share cifs-grant --share-id 4 --permission read-"), "read-only read-write\n");
  EXPECT_EQ(offered("zrarray --format ''"), "json table\n");
  for (const std::string& group : groups) {
    const ToolRun groupHelp = RunZrarray({group, "--help"});
    ASSERT_EQ(groupHelp.status, 0) << group;
    EXPECT_THAT(completion.out, HasSubstr("\"" + group + "\") echo")) << group;
    for (const std::string& command : subcommands(groupHelp.out)) {
      const ToolRun help = RunZrarray({group, command, "--help"});
      EXPECT_EQ(help.status, 0) << group << " " << command;
      EXPECT_THAT(completion.out, HasSubstr("\"" + group + " " + command + "\") echo")) << group << " " << command;
    }
  }
}

// Mistakes on the command line exit 2 before anything is sent, named plainly in the operator's words.
TEST_F(Zrarray, CommandLineMistakesSayWhatIsWrong) {
  struct Row {
    std::vector<std::string> arguments;
    int status;
    std::string line;  // the last line of standard error, as a regular expression
  };
  const std::vector<Row> rows = {
      {{}, 2, ".+"},
      {{"snapshot", "info"}, 2, ".+"},
      {{"lun", "frobnicate"}, 2, "zrarray: lun: no subcommand 'frobnicate'; `zrarray lun --help` lists them"},
      {{"--connect-timeout", "0", "fs", "list"}, 2,
       "zrarray: --connect-timeout: '0' is not a number of seconds from 0.001 to 86400, such as 10 or 0.5 "
       "\\(--help shows the usage\\)"},
      {{"lun", "create", "--name", "a", "--pool-id", "0", "--capacity", "5", "--controller", "0A", "--alloc-type",
        "medium"},
       2, "zrarray: --alloc-type: 'medium' is not one of thick\\|thin .*"},
      {{"lun", "create", "--name", "a", "--pool-id", "0", "--capacity", "lots", "--controller", "0A"}, 2,
       "zrarray: --capacity: 'lots' is not a number .*"},
      {{"share", "cifs-grant", "--share-id", "1", "--name", "a", "--domain-type", "0", "--permission", "all"}, 2,
       "zrarray: --permission: 'all' is not one of forbidden\\|full-control\\|read-only\\|read-write nor the "
       "array's number .*"},
      {{"--simulator", "--simulator-address", sim().address(), "fs", "list"}, 1,
       "zrarray: starting the simulator on " + sim().address() + " failed: port 8088 of " + sim().address() +
           ": Address already in use \\(another --simulator run\\? .*\\)"},
  };
  for (const Row& row : rows) {
    const ToolRun run = row.status == 2 ? zrarray(row.arguments) : RunZrarray(row.arguments);
    EXPECT_EQ(run.status, row.status) << testing::PrintToString(row.arguments) << run.err;
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(LastLine(run.err), testing::MatchesRegex(row.line)) << testing::PrintToString(row.arguments);
  }
  EXPECT_TRUE(sim().requests().all().empty());

  EXPECT_THAT(RunZrarray({"--version"}).out, testing::MatchesRegex("zrarray [0-9]+\\.[0-9]+\\.[0-9]+\n"));
  // --simulator needs no array nor password; an exported address belongs to the array, not to it.
  const ToolInput exported{"", {{"ZRARRAY_ADDRESS", "192.0.2.1"}}, false, {}};
  const ToolRun simulated = RunZrarray({"--simulator", "--simulator-address=127.0.0.26", "fs", "list"}, exported);
  ASSERT_EQ(simulated.status, 0) << simulated.err;
  EXPECT_EQ(json::parse(simulated.out)[0]["name"], "projects");
}

class ZrarrayWalk : public Zrarray {
 protected:
  void SetUp() override {
    Zrarray::SetUp();
    fileSystem_ = sim().fileSystems().create("projects");
    sim().files(fileSystem_).writeFile("/docs/a.txt", 10).writeFile("/docs/b.txt", 20).writeFile("/old/c.txt", 1);
    base_ = sim().fileSystemSnapshots().take(fileSystem_, "base");
    sim().files(fileSystem_).writeFile("/docs/a.txt", 11).remove("/old").makeDirectory("/new dir");
    for (int i = 0; i < 9; ++i) sim().files(fileSystem_).writeFile("/new dir/f" + std::to_string(i), i);
    incremental_ = sim().fileSystemSnapshots().take(fileSystem_, "incremental");
    sim().changeLists().setPageSize(3);
  }

  std::vector<std::string> walk() {
    return {"changelist", "walk", "--file-system-id", fileSystem_, "--base", base_, "--incremental", incremental_};
  }

  std::string fileSystem_, base_, incremental_;
};

TEST_F(ZrarrayWalk, StreamsTheArraysDifferenceAsJsonLines) {
  const ToolRun run = zrarray(walk());
  ASSERT_EQ(run.status, 0) << run.err;
  const std::vector<arraysim::Change> truth = sim().changeLists().difference(base_, incremental_);
  const std::vector<std::string> lines = run.outLines();
  ASSERT_EQ(lines.size(), truth.size());
  for (size_t i = 0; i < truth.size(); ++i) {  // the fields themselves are the change-list suite's
    EXPECT_EQ(json::parse(lines[i])["filePath"], truth[i].path);
  }
  EXPECT_THAT(run.err, Not(HasSubstr("entries/s")));  // no progress line into a pipe
  EXPECT_TRUE(sim().changeLists().openSessions().empty());

  // The same entries into a file, a summary on standard output, the progress line on a terminal.
  const std::string output = directory_ + "/walk.jsonl";
  std::vector<std::string> toFile = walk();
  toFile.insert(toFile.end(), {"--output", output});
  const bool terminal = PseudoTerminalOpens();
  const ToolRun filed = zrarray(toFile, {"", {}, terminal, {}});
  ASSERT_EQ(filed.status, 0) << filed.err;
  std::stringstream written;
  written << std::ifstream(output).rdbuf();
  EXPECT_EQ(written.str(), run.out);
  const json summary = {{"entries", truth.size()}, {"pages", (truth.size() + 2) / 3}, {"output", output}};
  EXPECT_EQ(json::parse(filed.out), summary);
  if (!terminal) GTEST_SKIP() << "no pseudo-terminal can be opened here: the progress line goes unchecked";
  EXPECT_THAT(filed.err, testing::ContainsRegex("[0-9]+ pages, " + std::to_string(truth.size()) +
                                                " entries, array [0-9]+%, [0-9]+ entries/s"));
}

// A walk that cannot deliver its entries stops and deletes its session on the array.
TEST_F(ZrarrayWalk, StopsAndClosesTheSessionWhenTheEntriesCannotBeWritten) {
  std::vector<std::string> toFull = walk();
  toFull.insert(toFull.end(), {"--output", "/dev/full"});
  const ToolRun run = zrarray(toFull);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("changelist walk failed: writing the entries failed"));
  EXPECT_TRUE(sim().changeLists().openSessions().empty());
  EXPECT_EQ(sim().requests().all().back().method, "DELETE");
}

// A stop signal while a request is in flight: the request is answered, the session closed, the
// cookie file removed, and the process ends as the signal ends it. A second signal stops waiting.
TEST_F(Zrarray, StopSignalsEndTheCommandTidily) {
  const auto loggedIn = [this] {  // for at most five seconds
    for (int tries = 0; tries < 500 && sim().sessions().open().empty(); ++tries) std::this_thread::sleep_for(10ms);
    return !sim().sessions().open().empty();
  };
  const std::string runs = directory_ + "/runs";
  std::filesystem::create_directory(runs);
  const ToolInput input{"", {{"XDG_RUNTIME_DIR", ""}, {"TMPDIR", runs}}, false, {}};
  const std::string tidy = "; logged out, cookie file removed";
  const std::vector<std::tuple<int, int, std::string>> rows = {  // signal, how many, what it says
      {SIGINT, 1, "zrarray: system info stopped by SIGINT" + tidy},
      {SIGTERM, 1, "zrarray: system info stopped by SIGTERM" + tidy},
      {SIGHUP, 1, "zrarray: system info stopped by SIGHUP" + tidy},
      {SIGINT, 2, "stopping at once"},  // last: it leaves its session open on the array
  };
  for (const auto& [signal, times, said] : rows) {
    SCOPED_TRACE(said);
    sim().faults().add(arraysim::FaultRule::On("GET", "system/").delayed(4s));
    ToolProcess tool(command({"system", "info"}), input);
    ASSERT_TRUE(loggedIn());
    std::this_thread::sleep_for(200ms);
    const auto start = std::chrono::steady_clock::now();
    for (int sent = 0; sent < times; ++sent, std::this_thread::sleep_for(100ms)) kill(tool.pid(), signal);
    const ToolRun run = tool.finish();
    EXPECT_EQ(run.signal, signal) << run.err;
    EXPECT_THAT(run.err, HasSubstr(said));
    EXPECT_EQ(std::chrono::steady_clock::now() - start < 3s, times == 2) << "only a second signal stops waiting";
    EXPECT_EQ(sim().sessions().open().empty(), times == 1);
    EXPECT_TRUE(std::filesystem::is_empty(runs));
  }
}

// Any user may run the tool: the run's files go to a private directory of the user's, made through
// the library's cookie-directory setting, which goes with the run.
TEST_F(Zrarray, RunsAsAnOrdinaryUser) {
  if (geteuid() != 0) GTEST_SKIP() << "becoming another user needs root";
  if (access("/usr/bin/setpriv", X_OK) != 0) GTEST_SKIP() << "setpriv (util-linux) is not installed";
  ToolInput asNobody;
  asNobody.runThrough = {"/usr/bin/setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups", "--"};
  if (RunZrarray({"--help"}, asNobody).status != 0) GTEST_SKIP() << "the build tree is out of nobody's reach";

  const struct passwd* nobody = getpwnam("nobody");
  ASSERT_NE(nobody, nullptr);
  chmod(directory_.c_str(), 0755);
  const auto made = [&](const std::string& name, uid_t owner) {
    const std::string path = directory_ + "/" + name;
    std::filesystem::create_directory(path);
    EXPECT_EQ(chown(path.c_str(), owner, static_cast<gid_t>(-1)), 0);
    chmod(path.c_str(), 0700);
    return path;
  };
  const std::string runtime = made("runtime", nobody->pw_uid), temporary = made("temporary", nobody->pw_uid);
  // XDG_RUNTIME_DIR, TMPDIR, where the run's directory is made.
  const std::vector<std::array<std::string, 3>> rows = {{"", "", "/tmp"}, {runtime, temporary, runtime}};
  for (const auto& [runtimeDirectory, temporaryDirectory, parent] : rows) {
    ToolInput input = asNobody;
    input.environment = {{"XDG_RUNTIME_DIR", runtimeDirectory}, {"TMPDIR", temporaryDirectory}};
    const ToolRun run =
        RunZrarray({"--simulator", "--simulator-address", "127.0.0.26", "--log-level", "5", "fs", "list"}, input);
    ASSERT_EQ(run.status, 0) << run.err;
    std::smatch cookie;
    const std::regex removed(R"(Removing the cookie file \[((.*)/zrarray-\w+)/HUAWEI-)");
    ASSERT_TRUE(std::regex_search(run.err, cookie, removed)) << parent;
    EXPECT_EQ(cookie[2], parent);
    EXPECT_FALSE(std::filesystem::exists(cookie[1].str())) << "the run's directory is left";
  }
}

}  // namespace
}  // namespace zrtest
