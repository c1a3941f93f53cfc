#include "platform/byte_source.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <string>

#include "support/text.hpp"

namespace tessarel::platform {

FileStamp stamp_of(const char* path) noexcept {
  struct stat status {};
  if (::stat(path, &status) != 0) return {};
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

bool FileStamp::settled() const noexcept {
  timespec now{};
  if (::clock_gettime(CLOCK_REALTIME, &now) != 0) return false;
  return static_cast<double>(now.tv_sec - changed_s) + 1e-9 * static_cast<double>(now.tv_nsec - changed_ns) > 0.05;
}

FileBytes::FileBytes(std::string_view path) noexcept {
  path = trimmed(path);
  if (path.empty() || path.find('\0') != std::string_view::npos) return;
  // Without O_NONBLOCK the open itself would wait for the writer of a pipe.
  const int descriptor = ::open(std::string(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0) return;
  struct stat status {};
  if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > largest_file) {
    ::close(descriptor);
    return;
  }
  descriptor_ = descriptor;
}

FileBytes::~FileBytes() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

std::size_t FileBytes::read(char* buffer, std::size_t size) noexcept {
  ssize_t count = 0;
  do {
    count = ::read(descriptor_, buffer, size);
  } while (count < 0 && errno == EINTR);
  return count < 0 ? 0 : static_cast<std::size_t>(count);
}

}  // namespace tessarel::platform
