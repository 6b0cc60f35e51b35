#include "workbench/file_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "workbench/failure.h"

namespace workbench {
namespace {

constexpr std::uint32_t kSaves = IN_CLOSE_WRITE | IN_MOVED_TO;
constexpr std::uint32_t kRemovals = IN_DELETE | IN_MOVED_FROM;

}  // namespace

FileWatch::FileWatch(const std::vector<std::string>& paths)
    : descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  for (const std::string& path : paths) {
    std::error_code error;
    const auto file =
        std::filesystem::weakly_canonical(path, error);  // of a link, what it leads to
    const int folder =
        inotify_add_watch(descriptor_, file.parent_path().c_str(), kSaves | kRemovals | IN_ONLYDIR);
    if (folder < 0) {
      throw Failure(Status::kUsage, "cannot watch " + path + ": " + std::strerror(errno));
    }
    files_.emplace(folder, file.filename());
  }
}

FileWatch::~FileWatch() { close(descriptor_); }

FileWatch::News FileWatch::Take() {
  News news = News::kNone;
  alignas(inotify_event) std::array<char, 4096> buffer;
  for (ssize_t count = 0; (count = read(descriptor_, buffer.data(), buffer.size())) > 0;) {
    for (std::size_t at = 0; at < static_cast<std::size_t>(count);) {
      const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
      at += sizeof *event + event->len;
      if (event->mask & IN_IGNORED) throw Failure(Status::kUsage, "the watched folder is gone");
      const bool is_file = event->len > 0 && files_.contains({event->wd, event->name});
      if (event->mask & IN_Q_OVERFLOW || (is_file && event->mask & kSaves)) {
        news = News::kSaved;
      } else if (is_file && news == News::kNone) {
        news = News::kGone;
      }
    }
  }
  return news;
}

}  // namespace workbench
