#pragma once

// The speech synthesizer of the tests: takes what a screen reader says, in speech-dispatcher's
// protocol, and writes it down instead.

#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace desktop_test {

class SpeechServer {
 public:
  // Listens at a socket of that name.
  explicit SpeechServer(const std::string& socket);
  SpeechServer(const SpeechServer&) = delete;
  SpeechServer& operator=(const SpeechServer&) = delete;
  ~SpeechServer();

  // The utterances since Forget, without the names of keys that are echoed.
  std::vector<std::string> Heard() const;
  void Forget();

 private:
  void Accept();
  void Serve(int client);
  void Note(const std::string& utterance);

  int socket_;
  std::vector<std::jthread> threads_;
  std::vector<int> clients_;
  mutable std::mutex mutex_;
  std::vector<std::string> heard_;
};

}  // namespace desktop_test
