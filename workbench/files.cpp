#include "workbench/files.h"

#include <fcntl.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "calculation/interruption.h"
#include "workbench/failure.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;

constexpr const char* kInstalled = TARVO_COMPANIONS;

std::string ReadAll(int fd, const std::string& path) {
  std::string content;
  char buffer[65536];
  while (true) {
    const ssize_t count = read(fd, buffer, sizeof buffer);
    calculation::CheckInterruption();
    if (count == 0) return content;
    if (count > 0) {
      content.append(buffer, static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      throw Failure(Status::kUsage, "cannot read " + path + ": " + std::strerror(errno));
    }
  }
}

bool IsSameFile(int first, int second) {
  struct stat one {};
  struct stat other {};
  return fstat(first, &one) == 0 && fstat(second, &other) == 0 && one.st_dev == other.st_dev &&
         one.st_ino == other.st_ino;
}

// Empties the file, unless it is where this program's output goes, which is then shared with it.
int OpenToWrite(const std::string& path) {
  if (path == "-") return fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
  const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  for (const int standard : {STDOUT_FILENO, STDERR_FILENO}) {
    if (fd < 0 || !IsSameFile(fd, standard)) continue;
    close(fd);
    return fcntl(standard, F_DUPFD_CLOEXEC, 3);
  }
  if (fd >= 0 && ftruncate(fd, 0) != 0 && errno != EINVAL) return close(fd), -1;
  return fd;
}

// If /proc is not mounted, the path that the program was started with.
fs::path ProgramPath() {
  std::error_code error;
  fs::path self = fs::read_symlink("/proc/self/exe", error);
  if (!error) return self;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the kernel hands the pointer over as a number.
  return fs::absolute(reinterpret_cast<const char*>(getauxval(AT_EXECFN)), error);
}

}  // namespace

std::string ReadFile(const std::string& path) {
  if (path == "-") return ReadAll(STDIN_FILENO, "standard input");
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  calculation::CheckInterruption();
  if (fd < 0) throw Failure(Status::kUsage, "cannot read " + path + ": " + std::strerror(errno));
  struct Closer {
    int fd;
    ~Closer() { close(fd); }
  } const closer{fd};
  return ReadAll(fd, path);
}

std::string FindCompanion(const std::string& name) {
  std::error_code error;
  const fs::path folder = ProgramPath().parent_path();
  const fs::path beside = folder / name;
  const fs::path installed = (folder / kInstalled / name).lexically_normal();
  return !fs::exists(beside, error) && fs::exists(installed, error) ? installed : beside;
}

LineFile::LineFile(const std::string& path) : path_(path), file_(nullptr) {
  const int fd = OpenToWrite(path);
  if (fd >= 0) file_.reset(fdopen(fd, "w"));
  if (!file_) throw Failure(Status::kUsage, "cannot write " + path + ": " + std::strerror(errno));
}

void LineFile::Write(std::string_view line) {
  std::fwrite(line.data(), 1, line.size(), file_.get());
  std::fputc('\n', file_.get());
  if (std::fflush(file_.get()) != 0 || std::ferror(file_.get())) {
    throw Failure(Status::kWrong, "cannot write " + path_ + ": " + std::strerror(errno));
  }
}

}  // namespace workbench
