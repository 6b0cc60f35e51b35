#include "tests/desktop/speech_server.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <regex>
#include <stdexcept>

namespace desktop_test {
namespace {

// One line without its end; false when the client has gone.
bool ReadLine(FILE* from, std::string& line) {
  line.clear();
  for (int next; (next = fgetc(from)) != EOF;) {
    if (next == '\n') return true;
    if (next != '\r') line += static_cast<char>(next);
  }
  return false;
}

// What the server says to a command that is not speech.
std::string ReplyTo(const std::string& command) {
  if (command.starts_with("LIST")) return "249-default\tnone\tnone\r\n249 OK\r\n";
  if (command.starts_with("HISTORY")) return "245-1\r\n245 OK\r\n";  // the client's number
  if (command.starts_with("GET")) return "251-0\r\n251 OK\r\n";
  return "200 OK\r\n";
}

}  // namespace

SpeechServer::SpeechServer(const std::string& path)
    : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
  if (bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
      listen(socket_, 4) != 0) {
    throw std::runtime_error("the speech server cannot listen");
  }
  threads_.emplace_back([this] { Accept(); });
}

SpeechServer::~SpeechServer() {
  shutdown(socket_, SHUT_RDWR);
  threads_.front().join();
  for (const int client : clients_) shutdown(client, SHUT_RDWR);
  threads_.clear();
  close(socket_);
}

void SpeechServer::Accept() {
  for (int client; (client = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
    clients_.push_back(client);
    threads_.emplace_back([this, client] { Serve(client); });
  }
}

void SpeechServer::Serve(int client) {
  FILE* stream = fdopen(client, "r");
  const auto reply = [client](const std::string& text) {
    return send(client, text.data(), text.size(), MSG_NOSIGNAL) > 0;
  };
  const std::string queued = "225-1\r\n225 OK MESSAGE QUEUED\r\n";
  for (std::string line; ReadLine(stream, line);) {
    if (line == "SPEAK") {
      reply("230 OK RECEIVING DATA\r\n");
      while (ReadLine(stream, line) && line != ".") Note(line);
      reply(queued);
    } else {
      reply(line.starts_with("CHAR") || line.starts_with("KEY") ? queued : ReplyTo(line));
    }
  }
  fclose(stream);
}

// An utterance comes with a mark before each word; that of an echoed key ends with a blank.
void SpeechServer::Note(const std::string& utterance) {
  const std::string text = std::regex_replace(utterance, std::regex("<[^>]*>"), "");
  if (text.ends_with(' ')) return;
  const std::lock_guard lock(mutex_);
  heard_.push_back(text);
}

std::vector<std::string> SpeechServer::Heard() const {
  const std::lock_guard lock(mutex_);
  return heard_;
}

void SpeechServer::Forget() {
  const std::lock_guard lock(mutex_);
  heard_.clear();
}

}  // namespace desktop_test
