// Prints docs/advice.md: all advice, from its own table.

#include <iostream>
#include <string>
#include <string_view>

#include "advice/advice.h"

namespace {

constexpr const char* kIntroduction =
    R"(<!-- make pages writes this page; a test holds it and the program together. -->

# All advice

What `tarvo explain`, and `tarvo eval` and `tarvo run` with `--advise`, say of dialogs that look wrong, by the names that
`--only`, `--except` and comments use; see [testing-dialogs.md](testing-dialogs.md). Each example gets the advice.
)";

// "it is": a sentence that begins with a small letter.
std::string AsSentence(std::string_view clause) {
  std::string sentence(clause);
  if (sentence.front() >= 'a' && sentence.front() <= 'z') {
    sentence.front() = static_cast<char>(sentence.front() - 'a' + 'A');
  }
  return sentence + ".";
}

}  // namespace

int main() {
  std::cout << kIntroduction;
  for (const advice::Advice& advice : advice::AllAdvice()) {
    std::cout << "\n## " << advice.name << "\n\n"
              << advice.sentence << ". " << AsSentence(advice.reason) << "\n\n```\n"
              << advice.example << "\n```\n";
  }
}
