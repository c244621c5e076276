#include "stylelib/tokens.h"

#include <algorithm>

#include "stylelib/limits.h"

namespace stylelib {

namespace {

bool isBlank(char character) {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

}  // namespace

std::optional<Token> TokenReader::next() {
  while (at_ < text_.size()) {
    const char character = text_[at_];
    if (isBlank(character)) {
      ++at_;
    } else if (character == '%') {
      if (const std::optional<Token> mark = readComment()) return mark;
    } else {
      return character == '(' ? readString() : readWord();
    }
  }
  return {};
}

std::optional<Token> TokenReader::readComment() {
  const std::string_view rest = text_.substr(at_);
  if (rest.starts_with("%_")) {
    at_ += 2;
    return {};
  }
  const std::string_view line = rest.substr(0, rest.find_first_of("\r\n"));
  at_ += line.size();
  if (!line.starts_with("%AI")) return {};
  return Token{Token::Kind::mark, line};
}

Token TokenReader::readString() {
  std::size_t depth = 0;
  std::size_t end = at_;
  for (; end < text_.size(); ++end) {
    if (text_[end] == '\\') {
      ++end;
    } else if (text_[end] == '(') {
      ++depth;
    } else if (text_[end] == ')' && --depth == 0) {
      break;
    }
  }
  end = std::min(end, text_.size());
  const std::size_t start = at_ + 1;
  at_ = std::min(end + 1, text_.size());
  return {Token::Kind::string, text_.substr(start, end - start)};
}

Token TokenReader::readWord() {
  const std::string_view rest = text_.substr(at_);
  const std::string_view word = rest.substr(0, rest.find_first_of(" \t\r\n("));
  at_ += word.size();
  return {Token::Kind::word, word};
}

std::vector<Token> tokensOf(std::string_view text) {
  std::vector<Token> tokens;
  TokenReader reader(text);
  while (const std::optional<Token> token = reader.next())
    tokens.push_back(*token);
  return tokens;
}

bool closeBlocks(std::span<Token> tokens) {
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].isWord(":")) {
      open.push_back(i);
      if (open.size() > kDeepestNesting) return false;
    } else if (tokens[i].isWord(";") && !open.empty()) {
      tokens[open.back()].toEndOfBlock = i - open.back();
      open.pop_back();
    }
  }
  return true;
}

std::optional<TokenRange> blockAt(TokenRange tokens, std::size_t at) {
  const std::size_t length = tokens[at + 1].toEndOfBlock;
  if (length == 0) return {};
  return tokens.subspan(at + 2, length - 1);
}

TokenRange findBlock(TokenRange tokens, std::string_view name) {
  for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
    if (tokens[i].isWord(name) && tokens[i + 1].isWord(":")) {
      return blockAt(tokens, i).value_or(TokenRange());
    }
  }
  return {};
}

std::string unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) ++i;
    plain += text[i];
  }
  return plain;
}

}  // namespace stylelib
