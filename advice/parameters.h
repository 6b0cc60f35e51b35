#pragma once

// What the plug-in's functions read of their parameters.

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace advice {

struct Parameter {
  std::string_view function;
  bool has_limit;                           // of kMostUnits
  std::span<const std::string_view> items;  // what each holds; one: the text is not split
  std::string_view numbers;  // for each item: # if it is read as a number, ? as a switch, else .
};

// In UTF-16 code units.
constexpr std::size_t kMostUnits = 1024;

// Null if the function reads nothing of its parameter, or is none of the plug-in's.
const Parameter* FindParameter(std::string_view function);

// The parameter's items as the function reads them, UTF-8, with those that are surplus.
std::vector<std::string> SplitItems(std::string_view function, std::string_view parameter);

// The parts of the text between the separators.
std::vector<std::string> Split(std::string_view text, char separator);

// Whether the text begins with a whole number, as the functions read one.
bool HasNumber(std::string_view text);

// The whole number that the text begins with; 0 if it does not.
int NumberOf(std::string_view text);

// How many UTF-16 code units the UTF-8 text takes.
std::size_t UnitsOf(std::string_view text);

// The text in quotes, on one line.
std::string Quoted(std::string text);

}  // namespace advice
