// From command to drawn dialog in a terminal, seen from the terminal's side:
// bench_watch_terminal TARVO [ROUNDS]

#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <stdexcept>

#include "bench/child.h"
#include "bench/row.h"

namespace {

using bench::Command;

constexpr int kPatience = 10'000;  // milliseconds

struct Program {
  std::string name;
  Command command;
  std::vector<std::string> words;  // that its dialog shows
  std::vector<double> times;       // until all of them are there, in ms
};

// What a terminal would show of it, without regard to places and colours.
std::string Shown(const std::string& written) {
  std::string shown;
  for (std::size_t i = 0; i < written.size(); ++i) {
    if (written[i] != '\033') {
      shown += written[i];
      continue;
    }
    const char kind = ++i < written.size() ? written[i] : '\0';
    if (kind == '[') {
      while (++i < written.size() && (written[i] < '@' || written[i] > '~')) {
      }
    } else if (kind == ']') {
      i = std::min(written.find('\a', i), written.size());
    } else if (kind == '(') {
      ++i;
    }
  }
  return shown;
}

bool ShowsAll(const Program& program, const std::string& written) {
  const std::string shown = Shown(written);
  return std::all_of(program.words.begin(), program.words.end(), [&](const std::string& word) {
    return shown.find(word) != std::string::npos;
  });
}

[[noreturn]] void Run(const Command& command) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  execv(arguments[0], arguments.data());
  _exit(127);
}

// From the start of the process until its dialog is there.
double TimeOf(const Program& program) {
  winsize size{};
  size.ws_row = 24;
  size.ws_col = 80;
  int terminal = -1;
  const double start = bench::Milliseconds();
  const pid_t process = forkpty(&terminal, nullptr, nullptr, &size);
  if (process == 0) Run(program.command);
  std::string written;
  pollfd waiting{terminal, POLLIN, 0};
  char buffer[65536];
  while (!ShowsAll(program, written)) {
    const ssize_t count =
        poll(&waiting, 1, kPatience) > 0 ? read(terminal, buffer, sizeof buffer) : 0;
    if (count <= 0) throw std::runtime_error(program.name + " draws no dialog");
    written.append(buffer, static_cast<std::size_t>(count));
  }
  const double end = bench::Milliseconds();
  close(terminal);  // ends all that the terminal has
  waitpid(process, nullptr, 0);
  return end - start;
}

std::vector<Program> Programs(const std::string& tarvo) {
  const std::vector<std::string> words{"Enter the name", "First", "Last", "OK", "Cancel"};
  std::vector<Program> programs{
      {"tarvo",
       {tarvo, "eval", R"(TarvoDialog("2|Enter the name|OK|Cancel|||First|Last|||"))"},
       words,
       {}},
      {"dialog",
       {"dialog", "--form", "Enter the name",
        "12",     "60",     "2",  //
        "First",  "1",      "1",
        "",       "1",      "10",
        "40",     "0",  //
        "Last",   "2",      "1",
        "",       "2",      "10",
        "40",     "0"},
       words,
       {}},
      {"whiptail, one field",
       {"whiptail", "--inputbox", "Enter the name", "12", "60"},
       {"Enter the name", "Ok", "Cancel"},
       {}},
  };
  for (Program& program : programs) {
    program.command.front() = bench::FindProgram(program.command.front());
    if (program.command.front().empty()) {
      std::fprintf(stderr, "%s is not installed: skipped\n", program.name.c_str());
    }
  }
  std::erase_if(programs, [](const Program& program) { return program.command.front().empty(); });
  return programs;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc < 2) return 2;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 41;
  setenv("TERM", "xterm-256color", 1);
  for (const char* screen : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) unsetenv(screen);
  std::vector<Program> programs = Programs(argv[1]);
  for (int round = 0; round <= rounds; ++round) {
    for (Program& program : programs) {
      const double time = TimeOf(program);
      if (round > 0) program.times.push_back(time);  // the first one warms the caches
    }
  }
  for (std::size_t i = 1; i < programs.size(); ++i) {
    const double bar = programs[i].name == "dialog" ? 1 : 0;
    bench::Print({"From command to drawn dialog in a terminal", bench::Median(programs[0].times),
                  "ms", programs[i].name, bench::Median(programs[i].times), bar});
  }
} catch (const std::exception& error) {
  std::fprintf(stderr, "bench_watch_terminal: %s\n", error.what());
  return 1;
}
