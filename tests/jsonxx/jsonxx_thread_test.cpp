// Trees on several threads. The blocks of a tree come from per-thread free
// lists, and a block freed on another thread joins that thread's lists; none
// of this may mix up two trees, lose memory without bound, or break when
// trees outlive the thread that built them or the process's own teardown.
#include "WrittenText.h"
#include "jsonxx.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using jsonxx::Array;
using jsonxx::Object;
using jsonxx::Value;

// A change-list page of `entries` records; `seed` makes each page differ.
std::string page(int entries, int seed) {
  std::string text = R"({"data":{"changeList":[)";
  char entry[512];
  for (int i = 0; i < entries; ++i) {
    std::snprintf(entry, sizeof entry,
                  R"(%s{"inode":%d,"changeType":%d,"fType":%d,"filePath":"/export/seed%d/dir%d/a file with a long name %d.txt",)"
                  R"("crTime":%d,"cTime":%d,"mTime":%d,"aTime":%d,"owner":%d,"group":%d,"size":%d,"links":1,"dosAttr":32,)"
                  R"("tags":["t%d",%d,null,true,{"k":"v%d"}]})",
                  i == 0 ? "" : ",", seed * 100000 + i, i % 4, i % 3, seed, i % 50, i, 1700000000 + i, 1700000001 + i,
                  1700000002 + i, 1700000003 + i, 1000 + seed, 100 + i % 7, i * 4096, i, seed, i);
    text += entry;
  }
  text += R"(],"numChanges":")" + std::to_string(entries) + R"("},"error":{"code":0,"description":"0"}})";
  return text;
}

// A page's text and its tree as written after a parse on the main thread.
std::pair<std::string, std::string> expected_page(int entries, int seed) {
  Object object;
  EXPECT_TRUE(object.parse(page(entries, seed)));
  return {page(entries, seed), written(object)};
}

// A queue of trees from producer threads to consumer threads.
class TreeQueue {
 public:
  void push(std::unique_ptr<Object> tree) {
    const std::lock_guard<std::mutex> lock(mutex_);
    trees_.push_back(std::move(tree));
    ready_.notify_one();
  }

  // nullptr once closed and empty.
  std::unique_ptr<Object> pop() {
    std::unique_lock<std::mutex> lock(mutex_);
    ready_.wait(lock, [this] { return closed_ || !trees_.empty(); });
    if (trees_.empty()) return nullptr;
    auto tree = std::move(trees_.front());
    trees_.pop_front();
    return tree;
  }

  void close() {
    const std::lock_guard<std::mutex> lock(mutex_);
    closed_ = true;
    ready_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable ready_;
  std::deque<std::unique_ptr<Object>> trees_;
  bool closed_ = false;
};

TEST(Threads, TreesMoveBetweenThreads) {
  const std::vector<std::pair<std::string, std::string>> pages = {expected_page(300, 1), expected_page(300, 2)};
  TreeQueue queue;
  // Producers build trees and end before most of them are freed; consumers
  // check each tree, change it (blocks from their own lists join it), and
  // free it.
  std::vector<std::thread> producers;
  for (int p = 0; p < 2; ++p) {
    producers.emplace_back([&, p] {
      for (int i = 0; i < 15; ++i) {
        auto tree = std::make_unique<Object>();
        tree->parse(pages[p].first);
        queue.push(std::move(tree));
      }
    });
  }
  int checked = 0, wrong = 0;
  std::mutex counts;
  std::vector<std::thread> consumers;
  for (int c = 0; c < 2; ++c) {
    consumers.emplace_back([&] {
      while (auto tree = queue.pop()) {
        const std::string text = written(*tree);
        const bool known = text == pages[0].second || text == pages[1].second;
        tree->get<Object>("data").get<Array>("changeList").get<Object>(0).import("added", Value("on the consumer"));
        const bool changed = tree->get<Object>("data").get<Array>("changeList").get<Object>(0).has<jsonxx::String>("added");
        const std::lock_guard<std::mutex> lock(counts);
        ++checked;
        if (!known || !changed) ++wrong;
      }
    });
  }
  for (auto& producer : producers) producer.join();
  queue.close();
  for (auto& consumer : consumers) consumer.join();
  EXPECT_EQ(checked, 30);
  EXPECT_EQ(wrong, 0);
}

// One thread only parses, another only frees: the freeing thread keeps a
// bounded amount and the parsing one takes the rest up again, rather than
// carving new memory for every page.
TEST(Threads, MemoryStaysBoundedWhenOneThreadParsesAndAnotherFrees) {
  const auto [text, tree_text] = expected_page(1000, 3);
  TreeQueue to_free, freed;
  std::thread freeing([&] {
    while (auto tree = to_free.pop()) {
      tree.reset();
      freed.push(nullptr);
    }
  });
  std::size_t in_use_after_warm_up = 0;
  bool all_equal = true;
  for (int round = 0; round < 60; ++round) {
    auto tree = std::make_unique<Object>();
    tree->parse(text);
    all_equal = all_equal && written(*tree) == tree_text;
    to_free.push(std::move(tree));
    freed.pop();  // one page in flight at a time
    if (round == 15) in_use_after_warm_up = mallinfo2().uordblks;
  }
  to_free.close();
  freeing.join();
  const std::size_t in_use = mallinfo2().uordblks;
  EXPECT_TRUE(all_equal);
  // A page's tree is about 2 MiB; carving anew for each would add some 90 MiB.
  EXPECT_LT(in_use, in_use_after_warm_up + (std::size_t{16} << 20));
}

// Trees that outlive their thread's lists: a thread-local tree built after
// the thread's first block and destroyed after its lists were handed back,
// and a static tree destroyed during exit(). (Trees built on an ended thread
// and freed on another are the consumers' in TreesMoveBetweenThreads.)
TEST(ProcessExitDeathTest, TreesFreedAfterTheirThreadsListsAreGone) {
  EXPECT_EXIT(
      {
        static Object kept_until_exit;
        kept_until_exit.parse(page(50, 7));
        thread_local Object per_main_thread;
        per_main_thread.parse(page(50, 8));
        std::thread([] {
          thread_local Object per_thread;
          per_thread.parse(page(50, 9));
        }).join();
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
