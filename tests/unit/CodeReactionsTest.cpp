// A refusal meets the row that names its code, wherever the row of every other code stands, and no
// row at all when the table names neither.
#include <gtest/gtest.h>

#include "CodeReactions.h"

namespace {

TEST(CodeReactions, TheFirstRowNamingTheCodeAnswersItElseTheRowOfEveryOtherCode) {
  const CodeReactions table{otherwise().fails("other"), on(5).fails("five"), on(5).fails("five again"), on(7).done()};
  const CodeReactions named{on(5).fails("five")};
  const struct {
    const CodeReactions* table;
    unsigned long long code;
    const char* words;  // nullptr: no row
    Reaction reaction;
  } rows[] = {
      {&table, 5, "five", Reaction::OwnWords}, {&table, 7, "", Reaction::Done},
      {&table, 9, "other", Reaction::OwnWords}, {&table, ~0ULL, "other", Reaction::OwnWords},
      {&named, 5, "five", Reaction::OwnWords}, {&named, 9, nullptr, Reaction::Usual},
      {&named, ~0ULL, nullptr, Reaction::Usual},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.code);
    const CodeReaction* found = row.table->rowFor(row.code);
    if (row.words == nullptr) {
      EXPECT_EQ(found, nullptr);
      continue;
    }
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->words(), row.words);
    EXPECT_EQ(found->reaction(), row.reaction);
  }
}

}  // namespace
