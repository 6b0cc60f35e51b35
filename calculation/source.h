#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace calculation {

// A place in a source, in code units.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;
};

// A calculation is wrong. what() is one clause for the user.
class Error : public std::runtime_error {
 public:
  Error(Span place, const std::string& what) : std::runtime_error(what), place_(place) {}

  Span place() const { return place_; }

 private:
  Span place_;
};

// The source ends while a text, a comment, a bracket or a block of steps is open. What follows it
// may set it right.
class Unfinished : public Error {
 public:
  using Error::Error;
};

// What calculations are read from, with the name under which messages speak of it.
class Source {
 public:
  // `utf8` may begin with a byte-order mark. `first_line` is the number of its first line.
  Source(std::string name, std::string_view utf8, std::size_t first_line = 1);

  // More of the source, from the beginning of a character on.
  void Append(std::string_view utf8);

  // Throws Error if the source is not UTF-8.
  void CheckEncoding() const;

  const std::u16string& text() const { return text_; }

  // Both count from 1, columns in characters.
  struct Position {
    std::size_t line;
    std::size_t column;
  };

  Position PositionOf(std::size_t unit) const;

  // "name, line 3, column 5", without the name if it has none.
  std::string NamePosition(std::size_t unit) const;

  // "name, line 3, column 5: what", then the line with its place underlined. Columns count
  // characters from 1; CR, LF and CR LF end a line.
  std::string Explain(const Error& error) const;

 private:
  std::string name_;
  std::size_t first_line_;
  std::u16string text_;  // with U+FFFD in place of what is not UTF-8
  std::optional<std::size_t> not_utf8_;
};

constexpr bool IsLineBreak(char16_t unit) { return unit == u'\r' || unit == u'\n'; }

}  // namespace calculation
