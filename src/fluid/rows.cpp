#include "fluid/rows.hpp"

#include <algorithm>

#include "fluid/numbers.hpp"

namespace tessarel::fluid {

bool LineReader::fill() {
  used_ = 0;
  filled_ = bytes_.read(buffer_.data(), buffer_.size());
  return filled_ > 0;
}

bool LineReader::next(std::string_view& row) {
  row_.clear();
  if (used_ == filled_ && !fill()) return false;
  bool complete = false;
  do {
    const char* first = buffer_.data() + used_;
    const char* last = buffer_.data() + filled_;
    const char* end = std::find(first, last, '\n');
    const auto length = static_cast<std::size_t>(end - first);
    row_.append(first, std::min(length, max_row - row_.size()));
    complete = end != last;
    used_ += length + (complete ? 1 : 0);
  } while (!complete && fill());

  if (!row_.empty() && row_.back() == '\r') row_.pop_back();
  row = row_;
  constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
  if (at_start_ && row.starts_with(byte_order_mark)) row.remove_prefix(byte_order_mark.size());
  at_start_ = false;
  return true;
}

bool FileRows::next(std::string_view& row) {
  ++row_;
  return lines_.next(row);
}

bool FileRows::next_value(std::string_view& row) {
  while (next(row))
    if (!is_blank(row)) return true;
  return false;
}

DatabaseRows::DatabaseRows(const platform::FluidData& data, int count) noexcept
    : data_(data), count_(std::min(static_cast<std::size_t>(std::max(count, 0)), data.size())) {}

bool DatabaseRows::next(std::string_view& row) {
  if (next_ >= count_) return false;
  row = data_[next_++].view();
  return true;
}

}  // namespace tessarel::fluid
