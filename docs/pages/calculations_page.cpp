// Prints docs/calculations.md: what the calculation language of tarvo knows, from its own table,
// with each example's result as it comes out here and now.

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include "calculation/built_ins.h"
#include "calculation/evaluator.h"
#include "calculation/parser.h"
#include "calculation/unicode.h"

namespace {

using calculation::BuiltIn;
using calculation::ToUtf8;

constexpr const char* kIntroduction =
    R"(<!-- make pages writes this page; a test holds it and the program together. -->

# Calculations

`tarvo` evaluates calculations as FileMaker does, so that they can be pasted here unchanged. This page lists
what it knows. What FileMaker has beyond it, it knows by name and refuses: *FileMaker has this, the workbench
does not*.

## The language

- **Texts** stand in double quotes; `\"` is a quote, `\\` a backslash, `¶` a line break, in a text and outside.
- **Numbers** are decimal and exact: `0.1 + 0.2` is `.3`. Below 1 they begin with the point. `1e3` and `2.5E-3` are
  numbers too, in a literal and in a text.
- **Operators**, from the weakest: `or xor`, `and`, `= ≠ < > ≤ ≥` (also `<> <= >=`), `&`, `+ -`, `* /`, `not` and signs,
  `^`.
- **Variables** are `$name` (of one script) and `$$name` (of all), `$name[2]` for a repetition, and `${any name}` for
  a name that holds blanks. One that was never set is empty.
- **Names** of `Let` and `While` are in reach inside their parentheses. Upper and lower case make no difference to
  names.
- **Comments** are `//` to the end of the line and `/* … */`.
- **Dates, times and timestamps** keep their kind when a number is added or taken away, and become texts as the
  user's country writes them (`LC_ALL`, `LC_TIME`, `LANG`; as in the United States if none is set).
- **Texts are compared** in the order of the user's language (`LC_ALL`, `LC_COLLATE`, `LANG`), without regard to case,
  and composed and decomposed forms of a letter are the same. A number and a text with a digit compare as numbers.
- **Characters** are what people count as such: a letter with its marks is one, and so is an emoji.

## Limits

| What | At most |
|---|---|
| A number, literal or result | 400 digits; decimals beyond are rounded, digits before the point refused |
| A quotient | 16 decimals, or as many as its operands have |
| A power with a broken exponent | 15 digits |
| A text, literal or result | 16,777,216 UTF-16 code units |
| Parentheses, calls and signs inside each other | 200 levels; in `Evaluate` half as many, and half again inside it |
| Rounds of all loops of a calculation | 10,000,000, or what `SetRecursion` says |
| Rounds of all loops of a script | 1,000,000 |
| Scripts that perform each other | 50 levels |
| JSON | 200 levels; numbers have a double's 15 to 17 digits |
| Years | 1 to 4000 |

## Scripts

Scripts read as FileMaker copies them as text. The steps are `Set Variable`, `If`, `Else If`, `Else`, `End If`, `Loop`,
`Exit Loop If`, `End Loop`, `Perform Script`, `Exit Script`, `Halt Script` and `Show Custom Dialog`; `Set Error Capture` and
`Allow User Abort` are passed over. A bare calculation prints its result, and so does the script's own
`Exit Script`. Several scripts may stand in a file: a line `Script [ "Name" ]`, which is tarvo's own, begins one that
`Perform Script` finds, and ends the one before. The first of the file is what runs.

```
Perform Script [ Specified: From list ; "Greet" ; Parameter: "Ann" ]
Get ( ScriptResult )

Script [ "Greet" ]
Exit Script [ Text Result: "Hello " & Get ( ScriptParameter ) ]
```

`Show Custom Dialog` takes a title and a message and has the buttons OK (1) and Cancel (2).

## Where tarvo differs, or FileMaker is not known

- A calculation that FileMaker answers with `?` (a division by zero, a text that is no date) ends with a message
  here. Only inside `Evaluate` it is `?`.
- FileMaker's loops end after 50,000 rounds; here they end after more.
- Not known is how FileMaker's texts copied from the script window tell the buttons and fields of
  `Show Custom Dialog`; only its title and message are read.
- Not known is whether the difference of two timestamps is a time for FileMaker or a number; here it is a time,
  as that of two times.
- Not known is how FileMaker writes a time by itself; here it has 24 hours and no AM or PM.
- Not known is how FileMaker compares a date with a text; here the text is read as a date if it is one.
- Not known is whether `SortValues` and `UniqueValues` end their last value with ¶; here they do, as their sisters.
- Not known is whether letters with different accents are ever equal in FileMaker; here they are not. Hiragana
  and katakana are.
- Not known is how words are divided inside `a.b` or `it's`; here by Unicode's rules.
- Not known is how `Code` writes characters above 99,999 among others.
- Not known is what follows the question mark when JSON is wrong, and what a value of another type, a true or
  false written as a text, or a path through a text becomes; and which numbers come back as they were written.
- Not known is whether `Substitute` and `Filter` tell composed letters from decomposed ones; here only `Filter` does.

## Functions

Braces stand around what may be left out, and `...` for as many as one likes.
)";

// The result as FileMaker shows it, its line breaks as ¶.
std::string ResultOf(const BuiltIn& function) {
  class Nothing : public calculation::ExternalFunctions {
    const std::vector<Signature>& signatures() const override { return none_; }
    calculation::Value Call(std::size_t, const std::vector<calculation::Value>&) override {
      return {};
    }
    std::vector<Signature> none_;
  } nothing;
  calculation::Variables variables;
  const std::u16string example = calculation::ToUtf16(function.example);
  const calculation::NodePtr tree = calculation::Parse(example, nothing);
  const calculation::Text result =
      calculation::AsText(calculation::Evaluator(nothing, variables).Evaluate(*tree));
  std::u16string shown(result.view());
  std::replace(shown.begin(), shown.end(), u'\r', u'¶');
  return ToUtf8(shown);
}

void Print(const BuiltIn& function) {
  std::cout << "\n**" << calculation::Prototype(function) << "** — " << function.description
            << ".\n";
  if (function.example.empty()) return;
  std::cout << "`` " << function.example << " `` is `` " << ResultOf(function) << " ``\n";
}

}  // namespace

int main() {
  setenv("LC_ALL", "C", 1);
  std::cout << kIntroduction;
  for (const calculation::BuiltInGroup& group : calculation::BuiltInGroups()) {
    std::cout << "\n### " << group.title << "\n";
    for (const BuiltIn& function : group.functions) Print(function);
  }
}
