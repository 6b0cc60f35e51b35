#include "workbench/file_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "workbench/failure.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kSaves = IN_CLOSE_WRITE | IN_MOVED_TO;
constexpr std::uint32_t kWatched = kSaves | IN_DELETE | IN_MOVED_FROM | IN_MOVE_SELF | IN_ONLYDIR;

}  // namespace

FileWatch::FileWatch(std::vector<std::string> paths)
    : paths_(std::move(paths)), descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  Watch();
}

FileWatch::~FileWatch() { close(descriptor_); }

FileWatch::News FileWatch::Take() {
  News news = News::kNone;
  alignas(inotify_event) std::array<char, 4096> buffer;
  for (ssize_t count = 0; (count = read(descriptor_, buffer.data(), buffer.size())) > 0;) {
    for (std::size_t at = 0; at < static_cast<std::size_t>(count);) {
      const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
      at += sizeof *event + event->len;
      const bool is_moved = event->mask & (IN_IGNORED | IN_MOVE_SELF) && IsWatched(event->wd);
      const bool is_file = event->len > 0 && files_.contains({event->wd, event->name});
      if (is_moved || event->mask & IN_Q_OVERFLOW || (is_file && event->mask & kSaves)) {
        news = News::kSaved;
      } else if (is_file && news == News::kNone) {
        news = News::kGone;
      }
    }
  }
  if (news == News::kSaved) Watch();  // a link may lead elsewhere, or a folder have another's name
  return news;
}

void FileWatch::Watch() {
  for (const auto& [folder, name] : files_) inotify_rm_watch(descriptor_, folder);
  files_.clear();
  for (const std::string& path : paths_) {
    std::error_code error;
    const fs::path named = fs::absolute(path, error);
    for (const fs::path& file : {named, fs::weakly_canonical(named, error)}) {
      const int folder = inotify_add_watch(descriptor_, file.parent_path().c_str(), kWatched);
      if (folder < 0) {
        throw Failure(Status::kUsage, "cannot watch " + path + ": " + std::strerror(errno));
      }
      files_.emplace(folder, file.filename());
    }
  }
}

bool FileWatch::IsWatched(int folder) const {
  return std::any_of(files_.begin(), files_.end(),
                     [folder](const auto& file) { return file.first == folder; });
}

}  // namespace workbench
