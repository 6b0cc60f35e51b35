#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>

#include "displays/protocol/messages.h"

namespace display {

// The process of a display and the socket to it. The host's signal handlers, locale, environment
// and descriptors stay as they are; the program inherits no descriptor but 0, 1, 2 and its socket,
// and no signal that is blocked, ignored or handled, but for those of job control that are ignored.
class DisplayProgram {
 public:
  // Starts nothing yet. The program stands beside the library that holds this code; a name
  // that is an absolute path is that of the program. The program is told its socket with `option`.
  explicit DisplayProgram(std::string name, std::string option = protocol::kConnectionOption);
  DisplayProgram(const DisplayProgram&) = delete;
  DisplayProgram& operator=(const DisplayProgram&) = delete;
  ~DisplayProgram() { Stop(); }

  const std::string& name() const { return name_; }
  bool IsRunning() const { return socket_ >= 0; }

  // Starts the program, which must not be running. Returns an empty text, or why it does not start
  // as one clause for the user.
  std::string Start();

  // Ends the program: it ends by itself when its socket closes, and is killed if it does not within
  // a second.
  void Stop();

  // From now on nothing is waited for while this file descriptor can be read. The program stays.
  void StopWaitingWhenReadable(int descriptor) { stop_ = descriptor; }

  // Whether there is a whole line to read within that time. If the program is gone, it is stopped.
  bool HasLine(std::chrono::milliseconds time);

  // The next line without its end. Nothing if the program is gone, which is then stopped, or if
  // nothing is to be waited for.
  std::optional<std::string> ReadLine();

  // Writes a line with its end. False if the program is gone, which is then stopped.
  bool Write(const std::string& line);

 private:
  bool HasWholeLine() const { return received_.find('\n') != std::string::npos; }
  bool WaitForMore(std::chrono::steady_clock::time_point deadline) const;
  bool Receive();

  std::string name_;
  std::string option_;
  std::string path_;    // empty: there is none
  int socket_ = -1;     // -1: the program does not run
  int stop_ = -1;       // ends waiting when it can be read
  pid_t process_ = -1;  // of the running program
  std::string received_;
};

}  // namespace display
