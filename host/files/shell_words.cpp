#include "host/files/shell_words.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace host::files {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kOperators = "\n;&|()";
constexpr std::string_view kWordEnds = " \t\n;&|()<>";
constexpr std::string_view kPatternCharacters = "*?[";

// After these a program's name is still to come.
constexpr std::string_view kReservedWords[] = {"!",    "{",     "}",     "if", "then", "elif",
                                               "else", "while", "until", "do", "done", "fi"};

// They take a symbolic link for itself, never for what it points to.
constexpr std::string_view kRemovers[] = {"rm", "rmdir", "unlink"};

constexpr bool contains(std::string_view characters, char c) {
  return characters.find(c) != characters.npos;
}

template <typename Range>
bool isOneOf(std::string_view text, const Range& words) {
  return std::find(std::begin(words), std::end(words), text) != std::end(words);
}

bool isNumber(std::string_view text) {
  return text.find_first_not_of("0123456789") == text.npos;
}

bool isAssignment(std::string_view text) {
  const auto name = text.substr(0, text.find('='));
  return name.size() < text.size() && !name.empty() && !isNumber(name.substr(0, 1)) &&
         std::all_of(name.begin(), name.end(), [](char c) {
           return c == '_' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                  (c >= '0' && c <= '9');
         });
}

// A word without its quotes, and which of its characters they protected.
struct Word {
  std::string text;
  std::vector<bool> quoted;

  void add(char c, bool is_quoted) {
    text += c;
    quoted.push_back(is_quoted);
  }
  std::size_t findPattern(std::size_t from) const {
    while (from < text.size() && (quoted[from] || !contains(kPatternCharacters, text[from])))
      ++from;
    return from;
  }
  std::string shellText(std::size_t from) const {
    std::string result;
    for (; from < text.size(); ++from) {
      if (quoted[from])
        result += quotedForShell(text.substr(from, 1));
      else
        result += text[from];
    }
    return result;
  }
};

// Takes the word that `rest` begins with off it; none when a quote isn't closed or when the shell
// would expand something in it, whose outcome nobody knows beforehand.
std::optional<Word> takeWord(std::string_view& rest) {
  Word word;
  char quote = 0;
  std::size_t i = 0;
  for (; i < rest.size() && (quote != 0 || !contains(kWordEnds, rest[i])); ++i) {
    const char c = rest[i];
    if (c == quote) {
      quote = 0;
    } else if (quote == '\'') {
      word.add(c, true);
    } else if (c == '$' || c == '`' || (c == '~' && i == 0)) {
      return std::nullopt;
    } else if (c == '\\' && i + 1 < rest.size() &&
               (quote == 0 || contains("$`\"\\\n", rest[i + 1]))) {
      if (rest[++i] != '\n') word.add(rest[i], true);
    } else if (quote == 0 && (c == '"' || c == '\'')) {
      quote = c;
    } else {
      word.add(c, quote != 0 || c == '\\');
    }
  }
  if (quote != 0) return std::nullopt;
  rest.remove_prefix(i);
  return word;
}

std::optional<PathWord> pathWord(const Word& word, bool removed) {
  const auto pattern = word.findPattern(0);
  if (pattern == word.text.size()) return PathWord{word.text, "", removed};
  // The shell follows the links that match in the middle, and most programs those at the end.
  if (!removed || word.text.find('/', pattern) != word.text.npos) return std::nullopt;
  const auto last = word.text.rfind('/', pattern) + 1;
  return PathWord{word.text.substr(0, last), word.shellText(last), removed};
}

class Rewriting {
 public:
  Rewriting(std::string_view command, const NameInShell& name) : rest_(command), name_(name) {}

  std::optional<std::string> run() {
    while (!rest_.empty()) {
      const char c = rest_.front();
      if (contains(kBlanks, c)) {
        copy(1);
      } else if (contains(kOperators, c)) {
        copy(1);
        place_ = Place::kProgram;
        into_file_ = false;
      } else if (c == '<' || c == '>') {
        copy(std::min(rest_.find_first_not_of("<>&|-"), rest_.size()));
        into_file_ = true;
      } else if (c == '#') {
        copy(std::min(rest_.find('\n'), rest_.size()));
      } else if (!rewriteWord()) {
        return std::nullopt;
      }
    }
    return std::move(result_);
  }

 private:
  enum class Place { kProgram, kArgument, kArgumentOfRemover };

  void copy(std::size_t count) {
    result_ += rest_.substr(0, count);
    rest_.remove_prefix(count);
  }

  bool rewriteWord() {
    const std::string_view before = rest_;
    const auto word = takeWord(rest_);
    if (!word) return false;
    const auto raw = before.substr(0, before.size() - rest_.size());
    const bool is_file = std::exchange(into_file_, false);
    if (!is_file && place_ == Place::kProgram) {
      result_ += raw;
      const bool is_descriptor = isNumber(raw) && rest_.find_first_of("<>") == 0;
      if (!is_descriptor && !isAssignment(raw) && !isOneOf(raw, kReservedWords)) {
        const auto name = std::string_view(word->text).substr(word->text.rfind('/') + 1);
        place_ = isOneOf(name, kRemovers) ? Place::kArgumentOfRemover : Place::kArgument;
      }
      return true;
    }
    // /dev/null holds nothing of anybody's, and commands count on it.
    if (!word->text.starts_with('/') || word->text == "/dev/null") {
      result_ += raw;
      return true;
    }
    const auto path = pathWord(*word, !is_file && place_ == Place::kArgumentOfRemover);
    const auto named = path ? name_(*path) : std::nullopt;
    if (named) result_ += *named;
    return named.has_value();
  }

  std::string_view rest_;
  const NameInShell& name_;
  std::string result_;
  Place place_ = Place::kProgram;
  bool into_file_ = false;  // the next word is where a redirection leads
};

}  // namespace

std::optional<std::string> rewriteDevicePaths(std::string_view command, const NameInShell& name) {
  return Rewriting(command, name).run();
}

std::string quotedForShell(std::string_view text) {
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'')
      result += "'\\''";
    else
      result += c;
  }
  return result += '\'';
}

std::string wordForShell(std::string_view text) {
  constexpr std::string_view kPlain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_./+:,@%=";
  const bool isPlain = !text.empty() && text.find_first_not_of(kPlain) == text.npos;
  return isPlain ? std::string(text) : quotedForShell(text);
}

}  // namespace host::files
