// tarvo-terminal --connection FD    shows dialogs for the host at the other end of the socket
// tarvo-terminal --render FILE      draws the description on standard input as text

#include <langinfo.h>

#include <clocale>
#include <cstdio>
#include <string>

#include "displays/protocol/messages.h"
#include "displays/terminal/host_session.h"
#include "displays/terminal/render.h"

namespace {

// Signs are written in the code set of the user's locale; if that has none, in UTF-8.
void SetUpCodeSet() {
  std::setlocale(LC_ALL, "");
  if (std::string(nl_langinfo(CODESET)) == "ANSI_X3.4-1968") std::setlocale(LC_CTYPE, "C.UTF-8");
}

int Render(const std::string& file) {
  std::setlocale(LC_CTYPE, "C.UTF-8");
  const std::string error = terminal::RenderDialog(file);
  if (error.empty()) return 0;
  std::fprintf(stderr, "tarvo-terminal: %s\n", error.c_str());
  return 1;
}

int Usage() {
  std::fprintf(stderr, "usage: tarvo-terminal --connection FD | --render FILE\n");
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return Usage();
  const std::string option = argv[1];
  const std::string argument = argv[2];
  if (option == "--render") return Render(argument);
  const int fd = display::protocol::ReadConnection(option, argument);
  if (fd < 0) return Usage();
  SetUpCodeSet();
  return terminal::HostSession(fd).Run();
}
