// Bytes to be read in sequence: a file, or memory in tests.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessarel::platform {

class ByteSource {
 public:
  virtual ~ByteSource() = default;
  /// Reads up to `size` bytes; 0 at the end and after a read error.
  virtual std::size_t read(char* buffer, std::size_t size) noexcept = 0;
};

/// Bytes in memory, which the caller keeps alive.
class MemoryBytes final : public ByteSource {
 public:
  explicit MemoryBytes(std::string_view bytes) noexcept : bytes_(bytes) {}
  std::size_t read(char* buffer, std::size_t size) noexcept override {
    const std::size_t count = std::min(size, bytes_.size());
    std::copy_n(bytes_.data(), count, buffer);
    bytes_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view bytes_;
};

/// What tells whether a file has changed.
struct FileStamp {
  std::uint64_t device = 0, inode = 0;
  std::int64_t size = -1, changed_s = 0, changed_ns = 0;
  [[nodiscard]] bool exists() const noexcept { return size >= 0; }
  /// Whether the last change lies so far back that another one now shows in the time: file systems count it in ticks of
  /// some milliseconds. What was read from an unsettled file must be read again.
  [[nodiscard]] bool settled() const noexcept;
  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};
FileStamp stamp_of(const char* path) noexcept;

/// Bytes of the largest data file that is read; the shipped ones have less than a hundredth of it.
inline constexpr std::int64_t largest_file = 16 << 20;

/// A file opened for reading. Only regular files of at most `largest_file` open: a directory, a pipe or a device counts
/// as a failure, so that no read can block or go on for ever.
class FileBytes final : public ByteSource {
 public:
  /// Blanks at the end of `path` are not part of it.
  explicit FileBytes(std::string_view path) noexcept;
  ~FileBytes() override;
  FileBytes(const FileBytes&) = delete;
  FileBytes& operator=(const FileBytes&) = delete;

  [[nodiscard]] bool is_open() const noexcept { return descriptor_ >= 0; }
  std::size_t read(char* buffer, std::size_t size) noexcept override;

 private:
  int descriptor_ = -1;
};

}  // namespace tessarel::platform
