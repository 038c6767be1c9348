// What an operation does when the array refuses its request: a table of rows, each naming one of
// the array's codes (or every other code) and the operation's reaction to it. The table is plain
// data, written with the operation's values before the send; the frame of the operation's
// generation finds the row of a refusal, tells its lines and turns its reaction into the
// generation's result.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

// The code of the row that answers every code no earlier row names, a lost connection too.
constexpr unsigned long long kEveryOtherCode = ~0ULL;

enum class Reaction {
  // The generation's usual failure of a refused send, as if no row named the code.
  Usual,
  // The work is done already: the operation succeeds and reads no answer.
  Done,
  // The operation fails in the row's words.
  OwnWords,
  // The operation fails in the array's words, behind the row's words.
  ArrayWords,
  // The object of the same name is looked up and taken as the one asked for (create-or-adopt).
  Adopt,
};

// How a text from outside (the array's words, an inner result's text) becomes a failure's text:
// as written, or rendered once as a format without arguments ("%%" gives "%").
enum class Rendering { AsWritten, AsFormat };

// A line told when a row applies.
struct ReactionLine {
  int level;
  std::string text;
  // With " [ERRORCODE: [<code>]] [MESSAGE: [<the array's words>]]" behind the text (alone when the
  // text is empty).
  bool withArrayDetail;
};

class CodeReaction {
 public:
  explicit CodeReaction(unsigned long long code) : m_code(code) {}

  // Lines are told in the order they are given, before the reaction.
  CodeReaction& line(int level, std::string text) { return addLine(level, std::move(text), false); }
  CodeReaction& detailedLine(int level, std::string text) { return addLine(level, std::move(text), true); }
  // An out flag of the operation, set when the row applies.
  CodeReaction& setting(bool& flag) { return m_flag = &flag, *this; }

  CodeReaction& done() { return react(Reaction::Done); }
  // The words are the failure's text; a generation that only logs its failures logs them at `level`.
  CodeReaction& fails(std::string words, int level = -1) {
    m_words = std::move(words);
    m_level = level;
    return react(Reaction::OwnWords);
  }
  CodeReaction& failsInArrayWords(std::string prefix = std::string(), Rendering rendering = Rendering::AsWritten) {
    m_words = std::move(prefix);
    m_rendering = rendering;
    return react(Reaction::ArrayWords);
  }
  CodeReaction& adopts() { return react(Reaction::Adopt); }

  unsigned long long code() const { return m_code; }
  Reaction reaction() const { return m_reaction; }
  const std::vector<ReactionLine>& lines() const { return m_lines; }
  bool* flag() const { return m_flag; }
  const std::string& words() const { return m_words; }
  int level() const { return m_level; }
  Rendering rendering() const { return m_rendering; }

 private:
  CodeReaction& addLine(int level, std::string text, bool withArrayDetail) {
    m_lines.push_back(ReactionLine{level, std::move(text), withArrayDetail});
    return *this;
  }
  CodeReaction& react(Reaction reaction) { return m_reaction = reaction, *this; }

  unsigned long long m_code;
  Reaction m_reaction = Reaction::Usual;
  std::vector<ReactionLine> m_lines;
  bool* m_flag = nullptr;
  std::string m_words;
  int m_level = -1;
  Rendering m_rendering = Rendering::AsWritten;
};

// The row of one code, and the row of every other code.
inline CodeReaction on(unsigned long long code) { return CodeReaction(code); }
inline CodeReaction otherwise() { return CodeReaction(kEveryOtherCode); }

class CodeReactions {
 public:
  CodeReactions() = default;
  CodeReactions(std::initializer_list<CodeReaction> rows) : m_rows(rows) {}

  // A row after the others.
  CodeReactions& add(CodeReaction row) {
    m_rows.push_back(std::move(row));
    return *this;
  }
  // A line told for every refusal that a row answers, before the row's own lines.
  CodeReactions& everyRefusalTold(int level, std::string text) {
    m_lines.push_back(ReactionLine{level, std::move(text), false});
    return *this;
  }
  // The code of a refusal is the one of this send's own answer, never one the transport classified
  // before it: for an operation that sends again on a code, which a stale code must not repeat.
  CodeReactions& countingOnlyThisAnswer() { return m_onlyThisAnswer = true, *this; }

  // The row that answers `code`: the first that names it, else the one of every other code; none
  // when the table has neither.
  const CodeReaction* rowFor(unsigned long long code) const {
    const CodeReaction* other = nullptr;
    for (const CodeReaction& row : m_rows) {
      if (row.code() == code) return &row;
      if (row.code() == kEveryOtherCode && other == nullptr) other = &row;
    }
    return other;
  }
  const std::vector<ReactionLine>& lines() const { return m_lines; }
  bool onlyThisAnswer() const { return m_onlyThisAnswer; }
  bool empty() const { return m_rows.empty(); }

 private:
  std::vector<CodeReaction> m_rows;
  std::vector<ReactionLine> m_lines;
  bool m_onlyThisAnswer = false;
};
