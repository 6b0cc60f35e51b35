// tarvo: tries a plug-in's dialogs without FileMaker.

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "calculation/interruption.h"
#include "workbench/command_line.h"
#include "workbench/commands.h"
#include "workbench/failure.h"
#include "workbench/interruption.h"
#include "workbench/options.h"
#include "workbench/output.h"
#include "workbench/preview.h"
#include "workbench/repl/repl.h"
#include "workbench/suite/suite.h"

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

int Do(const Options& options) {
  if (options.command == "help") {
    workbench::ShowHelp(options);
  } else if (options.command == "version") {
    workbench::Print(workbench::VersionText());
  } else if (options.command == "eval") {
    return workbench::EvaluateCalculations(options);
  } else if (options.command == "run") {
    return workbench::RunScript(options);
  } else if (options.command == "repl") {
    workbench::RunRepl(options);
  } else if (options.command == "explain") {
    workbench::ExplainCalls(options);
  } else if (options.command == "preview") {
    workbench::Preview(options);
  } else if (options.command == "test") {
    return static_cast<int>(options.record ? workbench::RecordTest(options)
                                           : workbench::RunTests(options));
  } else if (options.command == "functions") {
    workbench::ListFunctions(options);
  } else if (options.command == "info") {
    workbench::ShowInfo(options);
  } else {
    return static_cast<int>(workbench::CheckBundle(options));
  }
  return 0;
}

// An empty message has been told by other means.
int Report(Status status, const std::string& message, bool json) {
  const int number = static_cast<int>(status);
  if (json && !message.empty()) {
    const std::string error = workbench::ToLine({{"error", message}, {"status", number}});
    std::fprintf(stderr, "%s\n", error.c_str());
  } else if (!message.empty()) {
    workbench::Warn(message);
  }
  return number;
}

}  // namespace

int main(int argc, char** argv) {
  KeepStandardStreams();
  signal(SIGPIPE, SIG_IGN);  // Print notices a reader that has gone
  const std::vector<std::string> words(argv + 1, argv + argc);
  // All there is to go by if the command line itself is wrong.
  bool json = std::find(words.begin(), words.end(), "--json") != words.end();
  try {
    const Options options = workbench::ParseCommandLine(words);
    json = options.json;
    return Do(options);
  } catch (const Failure& failure) {
    return Report(failure.status(), failure.what(), json);
  } catch (const calculation::Interrupted& interrupted) {
    return Report(Status::kInterrupted, interrupted.what(), json);
  } catch (const std::bad_alloc&) {
    return Report(Status::kWrong, "there is not enough memory", json);
  } catch (const std::exception& error) {
    return Report(Status::kWrong, error.what(), json);
  }
}
