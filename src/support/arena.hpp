// Working storage that is sized once and reused: a stack of arrays, released frame by frame. After `reserve` no
// evaluation allocates from the heap as long as its arrays fit; a larger demand gets a block of its own.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace tessarel {

class Arena {
 public:
  /// Makes room for `bytes` in one block. No frame may be open.
  void reserve(std::size_t bytes) {
    if (blocks_.empty() || blocks_.front().size < bytes) {
      blocks_.clear();
      add_block(bytes);
    }
  }

  /// Bytes held.
  [[nodiscard]] std::size_t capacity() const {
    std::size_t sum = 0;
    for (const Block& block : blocks_) sum += block.size;
    return sum;
  }

  /// Arrays taken since the frame was opened are released when it closes.
  class Frame {
   public:
    explicit Frame(Arena& arena) noexcept : arena_(arena), block_(arena.current_), used_(arena.used_) {}
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;
    ~Frame() {
      arena_.current_ = block_;
      arena_.used_ = used_;
    }

   private:
    Arena& arena_;
    std::size_t block_, used_;
  };

  /// An uninitialised array of `count` objects of a trivial type.
  template <class T>
  T* take(std::size_t count) {
    static_assert(std::is_trivially_destructible_v<T> && alignof(T) <= alignment);
    const std::size_t bytes = (count * sizeof(T) + alignment - 1) / alignment * alignment;
    if (blocks_.empty()) add_block(default_block);
    while (used_ + bytes > blocks_[current_].size) {
      if (current_ + 1 == blocks_.size()) add_block(bytes > default_block ? bytes : default_block);
      ++current_;
      used_ = 0;
    }
    T* array = reinterpret_cast<T*>(blocks_[current_].data.get() + used_);
    used_ += bytes;
    return array;
  }
  /// An array of zeros.
  template <class T>
  T* zeros(std::size_t count) {
    T* array = take<T>(count);
    std::fill_n(array, count, T(0.0));
    return array;
  }

 private:
  static constexpr std::size_t alignment = alignof(std::max_align_t);
  static constexpr std::size_t default_block = 1U << 20U;
  struct Block {
    std::unique_ptr<std::byte[]> data;
    std::size_t size;
  };
  void add_block(std::size_t bytes) { blocks_.push_back({std::unique_ptr<std::byte[]>(new std::byte[bytes]), bytes}); }

  std::vector<Block> blocks_;
  std::size_t current_ = 0, used_ = 0;
};

}  // namespace tessarel
