// tarvo: tries a plug-in's dialogs without FileMaker.

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <exception>
#include <string>
#include <vector>

#include "calculation/interruption.h"
#include "workbench/command_line.h"
#include "workbench/commands.h"
#include "workbench/failure.h"
#include "workbench/interruption.h"
#include "workbench/options.h"
#include "workbench/output.h"
#include "workbench/repl/repl.h"

namespace {

using workbench::Failure;
using workbench::Options;
using workbench::Status;

// A standard stream that is closed must not become the first file that is opened. What is put in
// its place can be neither read nor written, as before.
void KeepStandardStreams() {
  for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(fd, F_GETFD) < 0) open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

Status Do(const Options& options) {
  if (options.command == "help") {
    workbench::Print(workbench::HelpText(options.operands.empty() ? "" : options.operands.front()));
  } else if (options.command == "version") {
    workbench::Print(workbench::VersionText());
  } else if (options.command == "eval") {
    workbench::EvaluateCalculations(options);
  } else if (options.command == "run") {
    workbench::RunScript(options);
  } else if (options.command == "repl") {
    workbench::RunRepl(options);
  } else if (options.command == "functions") {
    workbench::ListFunctions(options);
  } else if (options.command == "info") {
    workbench::ShowInfo(options);
  } else {
    return workbench::CheckBundle(options);
  }
  return Status::kDone;
}

int Report(Status status, const char* message) {
  workbench::Warn(message);
  return static_cast<int>(status);
}

}  // namespace

int main(int argc, char** argv) {
  KeepStandardStreams();
  signal(SIGPIPE, SIG_IGN);  // Print notices a reader that has gone
  try {
    return static_cast<int>(Do(workbench::ParseCommandLine({argv + 1, argv + argc})));
  } catch (const Failure& failure) {
    return Report(failure.status(), failure.what());
  } catch (const calculation::Interrupted& interrupted) {
    return Report(Status::kInterrupted, interrupted.what());
  } catch (const std::bad_alloc&) {
    return Report(Status::kWrong, "there is not enough memory");
  } catch (const std::exception& error) {
    return Report(Status::kWrong, error.what());
  }
}
