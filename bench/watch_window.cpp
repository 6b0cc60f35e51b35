// From command to drawn dialog, the dialogs after the first, and the memory, seen from outside on a
// screen of its own: bench_watch_window TARVO BARE_QT BARE_XCB [ROUNDS]

#include <cstdlib>
#include <exception>

#include "bench/row.h"
#include "bench/screen.h"

namespace {

using bench::Child;
using bench::Command;
using bench::Median;

constexpr const char* kDialog = R"(TarvoDialog("2|Enter the name|OK|Cancel|||First|Last|||"))";
constexpr int kFurtherDialogs = 20;

struct Program {
  std::string name;
  Command command;
  std::vector<double> times;   // until its dialog is drawn, in ms
  std::vector<double> memory;  // with the dialog drawn, in MB
};

// From exec to the drawn window. The figures of the first round are not kept: it warms the caches.
void Watch(bench::Screen& screen, Program& program, bool is_kept) {
  const double start = bench::Milliseconds();
  const Child child(program.command);
  const auto drawn = screen.WaitForDrawnWindow();
  if (!drawn) throw std::runtime_error(program.name + " draws no window");
  if (!is_kept) return;
  program.times.push_back(*drawn - start);
  program.memory.push_back(child.Memory());
}

// From the key that answers a dialog to the next one, drawn: close, build, show, paint.
double WatchFurther(bench::Screen& screen, const Command& command) {
  std::vector<double> times;
  {
    const Child child(command);
    if (!screen.WaitForDrawnWindow()) throw std::runtime_error("no window");
    for (int i = 0; i < kFurtherDialogs; ++i) {
      const double start = bench::Milliseconds();
      screen.PressReturn();
      const auto drawn = screen.WaitForDrawnWindow();
      if (!drawn) throw std::runtime_error(command.front() + " shows no further window");
      times.push_back(*drawn - start);
    }
  }
  screen.WaitUntilEmpty();
  return Median(times);
}

std::vector<Program> Programs(char** argv) {
  std::vector<Program> programs{
      {"tarvo", {argv[1], "eval", kDialog}, {}, {}},
      {"bare Qt", {argv[2]}, {}, {}},
      {"bare XCB", {argv[3]}, {}, {}},
      {"zenity",
       {"zenity", "--forms", "--text=Enter the name", "--add-entry=First", "--add-entry=Last"},
       {},
       {}},
      {"yad", {"yad", "--form", "--text=Enter the name", "--field=First", "--field=Last"}, {}, {}},
      {"kdialog", {"kdialog", "--inputbox", "Enter the name"}, {}, {}},
  };
  for (Program& program : programs) {
    const std::string path = bench::FindProgram(program.command.front());
    if (path.empty()) {
      std::fprintf(stderr, "%s is not installed: skipped\n", program.name.c_str());
    } else {
      program.command.front() = path;
    }
  }
  std::erase_if(programs, [](const Program& program) {
    return program.command.front().find('/') == std::string::npos;
  });
  return programs;
}

void MeasureFirstDialog(bench::Screen& screen, char** argv, int rounds) {
  std::vector<Program> programs = Programs(argv);
  for (int round = 0; round <= rounds; ++round) {
    for (Program& program : programs) {
      Watch(screen, program, round > 0);
      screen.WaitUntilEmpty();
    }
  }
  const Program& ours = programs.front();
  const auto compare = [&](const Program& other, double time_bar, double memory_bar) {
    bench::Print({"From command to drawn dialog", Median(ours.times), "ms", other.name,
                  Median(other.times), time_bar});
    bench::Print({"Memory with the dialog drawn, host and display", Median(ours.memory), "MB",
                  other.name, Median(other.memory), memory_bar});
  };
  compare(programs[1], 1.1, 1.25);
  compare(programs[2], 0, 0);
  for (std::size_t i = 3; i < programs.size(); ++i) compare(programs[i], 1, 0);
}

void MeasureFurtherDialogs(bench::Screen& screen, char** argv, int rounds) {
  Command tarvo{argv[1], "eval"};
  tarvo.insert(tarvo.end(), kFurtherDialogs + 1, kDialog);
  const std::string count = std::to_string(kFurtherDialogs + 1);
  std::vector<Program> programs{
      {"tarvo", tarvo, {}, {}},
      {"bare Qt", {argv[2], count}, {}, {}},
      {"bare Qt that keeps its window", {argv[2], count, "keep"}, {}, {}}};
  for (int round = 0; round <= rounds; ++round) {
    for (Program& program : programs) {
      const double time = WatchFurther(screen, program.command);
      if (round > 0) program.times.push_back(time);
    }
  }
  const auto compare = [&](const Program& other, double bar = 0) {
    bench::Print({"Further dialog: build, show, paint, close", Median(programs[0].times), "ms",
                  other.name, Median(other.times), bar});
  };
  compare(programs[1], 1.05);
  compare(programs[2]);
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc < 4) return 2;
  const int rounds = argc > 4 ? std::atoi(argv[4]) : 21;
  bench::Screen screen;
  MeasureFirstDialog(screen, argv, rounds);
  MeasureFurtherDialogs(screen, argv, rounds);
} catch (const std::exception& error) {
  std::fprintf(stderr, "bench_watch_window: %s\n", error.what());
  return 1;
}
