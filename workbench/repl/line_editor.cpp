#include "workbench/repl/line_editor.h"

#include <histedit.h>
#include <langinfo.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "calculation/unicode.h"

namespace workbench {

struct LineEditor {
  EditLine* edit = nullptr;
  History* history = nullptr;
  std::string prompt;
  Candidates candidates;
  bool given_up = false;  // the line being edited
};

namespace {

constexpr std::size_t kUsualWidth = 80;

using Names = std::vector<std::string>;

LineEditor& EditorOf(EditLine* edit) {
  void* editor = nullptr;
  el_get(edit, EL_CLIENTDATA, &editor);
  return *static_cast<LineEditor*>(editor);
}

const char* Prompt(EditLine* edit) { return EditorOf(edit).prompt.c_str(); }

// --- Completion

char Lowered(char sign) {
  return sign >= 'A' && sign <= 'Z' ? static_cast<char>(sign - 'A' + 'a') : sign;
}

// Whether a function's or a variable's name may contain it, as every byte beyond ASCII.
bool IsNameSign(char sign) {
  const char small = Lowered(sign);
  return (small >= 'a' && small <= 'z') || (sign >= '0' && sign <= '9') || sign == '_' ||
         sign == '.' || sign == '$' || static_cast<unsigned char>(sign) >= 0x80;
}

// How many bytes the two begin with in common, without regard to case.
std::size_t CommonLength(std::string_view first, std::string_view second) {
  const auto differ = std::mismatch(first.begin(), first.end(), second.begin(), second.end(),
                                    [](char a, char b) { return Lowered(a) == Lowered(b); });
  return static_cast<std::size_t>(differ.first - first.begin());
}

Names Matches(std::string_view word, Names names) {
  std::erase_if(names,
                [word](const std::string& name) { return CommonLength(word, name) < word.size(); });
  std::sort(names.begin(), names.end());
  return names;
}

// The beginning that all the names have in common.
std::string CommonStart(const Names& names) {
  std::size_t length = names.front().size();
  for (const std::string& name : names) length = std::min(length, CommonLength(names[0], name));
  return names.front().substr(0, length);
}

std::string_view WordBefore(const LineInfo& line) {
  const char* start = line.cursor;
  while (start > line.buffer && IsNameSign(start[-1])) --start;
  return {start, line.cursor};
}

int CharactersOf(std::string_view utf8) {
  return static_cast<int>(std::count_if(utf8.begin(), utf8.end(), [](char sign) {
    return (static_cast<unsigned char>(sign) & 0xC0) != 0x80;
  }));
}

std::size_t TerminalWidth() {
  winsize size{};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualWidth;
  return size.ws_col;
}

std::size_t WidthOf(const std::string& name) {
  return calculation::DisplayWidth(calculation::ToUtf16(name));
}

// In columns, below the line.
void ShowBelow(const Names& names) {
  std::size_t width = 0;
  for (const std::string& name : names) width = std::max(width, WidthOf(name) + 2);
  const std::size_t columns = std::max<std::size_t>(TerminalWidth() / width, 1);
  for (std::size_t i = 0; i < names.size(); ++i) {
    const bool starts_row = i % columns == 0;
    const std::string padded = names[i] + std::string(width - WidthOf(names[i]), ' ');
    std::fprintf(stderr, "%s%s", starts_row ? "\n" : "", padded.c_str());
  }
  std::fputs("\n", stderr);
}

// The Tab key: completes the word as far as its candidates agree, then shows them. If no word
// has begun, it indents.
unsigned char Complete(EditLine* edit, int /*key*/) {
  const std::string word(WordBefore(*el_line(edit)));
  if (word.empty()) return el_insertstr(edit, "  ") == 0 ? CC_REFRESH : CC_ERROR;
  const Names names = Matches(word, EditorOf(edit).candidates());
  if (names.empty()) return CC_ERROR;
  const std::string start = CommonStart(names);
  if (start != word) {
    el_deletestr(edit, CharactersOf(word));
    return el_insertstr(edit, start.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
  }
  if (names.size() == 1) return CC_ERROR;
  ShowBelow(names);
  return CC_REDISPLAY;
}

unsigned char GiveUp(EditLine* edit, int /*key*/) {
  EditorOf(edit).given_up = true;
  std::fputs("^C", stderr);
  return CC_EOF;
}

// The editor's mode begins before the prompt invites keys, not at the first of them. Control-C then
// is a key like any other: a signal could come just before the editor waits for one.
void TakeTerminal(EditLine* edit) {
  el_set(edit, EL_PREP_TERM, 1);
  termios mode{};
  if (tcgetattr(STDIN_FILENO, &mode) != 0) return;
  mode.c_cc[VINTR] = _POSIX_VDISABLE;
  tcsetattr(STDIN_FILENO, TCSADRAIN, &mode);
}

// --- The module's interface

bool Remember(LineEditor& editor, const std::string& entry) {
  HistEvent event;
  if (history(editor.history, &event, H_FIRST) >= 0 && event.str == entry) return false;
  history(editor.history, &event, H_ENTER, entry.c_str());
  return true;
}

LineEditor* Start(const Names& entered, std::size_t longest_history, const Candidates& candidates) {
  // UTF-8, unless the locale has a code set of its own; C and POSIX have none.
  const char* const locale = std::setlocale(LC_CTYPE, "");
  const bool has_code_set = locale && std::strcmp(nl_langinfo(CODESET), "ANSI_X3.4-1968") != 0;
  if (!has_code_set) std::setlocale(LC_CTYPE, "C.UTF-8");
  auto editor = std::make_unique<LineEditor>();
  editor->candidates = candidates;
  editor->history = history_init();
  HistEvent event;
  history(editor->history, &event, H_SETSIZE, static_cast<int>(longest_history));
  for (const std::string& entry : entered) Remember(*editor, entry);
  EditLine* const edit = el_init("tarvo", stdin, stderr, stderr);
  editor->edit = edit;
  el_set(edit, EL_CLIENTDATA, editor.get());
  el_set(edit, EL_PROMPT, Prompt);
  el_set(edit, EL_EDITOR, "emacs");
  el_set(edit, EL_SIGNAL, 1);
  el_set(edit, EL_HIST, history, editor->history);
  // As wide texts, which libedit keeps as they are: of others it makes copies that it never frees.
  el_wset(edit, EL_ADDFN, L"tarvo-complete", L"Complete the name before the cursor", Complete);
  el_wset(edit, EL_ADDFN, L"tarvo-give-up", L"Give up what was entered so far", GiveUp);
  el_set(edit, EL_BIND, "^C", "tarvo-give-up", nullptr);
  el_set(edit, EL_BIND, "^I", "tarvo-complete", nullptr);
  el_set(edit, EL_BIND, "^R", "em-inc-search-prev", nullptr);
  el_source(edit, nullptr);  // the user's own keys
  return editor.release();
}

Lines::Line Next(LineEditor& editor, const std::string& prompt) {
  editor.prompt = prompt;
  int count = 0;
  editor.given_up = false;
  TakeTerminal(editor.edit);
  const char* const text = el_gets(editor.edit, &count);
  if (text && count > 0) {
    std::string line(text, static_cast<std::size_t>(count));
    if (line.ends_with('\n')) line.pop_back();
    return {Lines::Line::Kind::kText, line};
  }
  // After the program was stopped and continued, Control-C is a signal for the rest of the line.
  const bool is_given_up = editor.given_up || (count < 0 && errno == EINTR);
  std::fputs("\n", stderr);
  return {is_given_up ? Lines::Line::Kind::kGivenUp : Lines::Line::Kind::kEnd, ""};
}

void Stop(LineEditor* editor) {
  el_end(editor->edit);
  history_end(editor->history);
  delete editor;
}

}  // namespace
}  // namespace workbench

extern "C" __attribute__((visibility("default")))
const workbench::LineEditorModule tarvo_line_editor;
const workbench::LineEditorModule tarvo_line_editor{workbench::Start, workbench::Next,
                                                    workbench::Remember, workbench::Stop};
