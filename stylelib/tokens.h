// Native text as tokens and nested blocks.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stylelib {

/// A piece of native text.
struct Token {
  enum class Kind { word, string, mark } kind;
  std::string_view text;  ///< of a string: between its parentheses, escapes included
  /// For the ":" that opens a block: how many tokens further on its ";" is; 0 when the block is
  /// never closed.
  std::size_t toEndOfBlock = 0;

  bool isWord(std::string_view word) const { return kind == Kind::word && text == word; }
  bool isString(std::string_view string) const { return kind == Kind::string && text == string; }
  bool isMark(std::string_view start) const {
    return kind == Kind::mark && text.starts_with(start);
  }
};

using TokenRange = std::span<const Token>;

/// Reads native text as words, strings in parentheses, and "%AI..." marks. "%_" only hides what
/// follows from other readers and is skipped; any other comment is left out.
class TokenReader {
 public:
  /// The text must outlive the tokens.
  explicit TokenReader(std::string_view text) : text_(text) {}

  /// The next token, or nothing at the end.
  std::optional<Token> next();

  /// How many bytes of the text have been read.
  std::size_t position() const { return at_; }

 private:
  std::optional<Token> readComment();
  Token readString();
  Token readWord();

  std::string_view text_;
  std::size_t at_ = 0;
};

/// All tokens of a text; the ends of blocks are not yet found.
std::vector<Token> tokensOf(std::string_view text);

/// Finds the end of every block. False when blocks are nested deeper than `kDeepestNesting`.
bool closeBlocks(std::span<Token> tokens);

/// The contents of the block that "NAME :" opens at `at`; nothing when it is never closed.
std::optional<TokenRange> blockAt(TokenRange tokens, std::size_t at);

/// The contents of the first block with a name; empty when there is none.
TokenRange findBlock(TokenRange tokens, std::string_view name);

/// The text of a string, with its escapes resolved.
std::string unescaped(std::string_view text);

}  // namespace stylelib
