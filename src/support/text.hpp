// Text as the library's hosts exchange it: fixed-length, blank-padded, not terminated; and the report of a routine.
//
// Two forms of text exist. FixedText<N> is storage inside the library; TextField is a view of a field that the
// caller owns. Both cut on assignment, pad with blanks, and compare with trailing blanks ignored.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessarel {

/// What a routine reports: success, or a text that says what failed. The text is a literal, or stands in storage that
/// the routine names.
class Message {
 public:
  /// Success.
  constexpr Message() noexcept = default;
  /// A failure, from a literal.
  template <std::size_t N>
  constexpr Message(const char (&literal)[N]) noexcept : text_(literal), size_(N - 1) {}
  /// A failure whose text lives elsewhere; it can be empty.
  static constexpr Message of(std::string_view text) noexcept {
    Message m;
    m.text_ = text.data() != nullptr ? text.data() : "";
    m.size_ = text.size();
    return m;
  }

  [[nodiscard]] constexpr bool is_success() const noexcept { return text_ == nullptr; }
  /// The text for a host: "No errors" after success.
  [[nodiscard]] constexpr std::string_view text() const noexcept {
    return text_ == nullptr ? std::string_view("No errors") : std::string_view(text_, size_);
  }
  friend constexpr bool operator==(Message a, Message b) noexcept { return a.text() == b.text(); }

 private:
  const char* text_ = nullptr;
  std::size_t size_ = 0;
};

inline constexpr Message no_errors{};

/// True when `message` reports success.
[[nodiscard]] constexpr bool ok(Message message) noexcept {
  return message.is_success();
}

/// `text` without its trailing blanks.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view text) noexcept {
  const auto last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

/// Comparison of blank-padded texts of any two lengths.
[[nodiscard]] constexpr bool same_text(std::string_view a, std::string_view b) noexcept {
  return trimmed(a) == trimmed(b);
}

/// True for a field that can hold text. A host's negative length arrives as more than any object has, and counts as
/// no field at all.
[[nodiscard]] constexpr bool usable_field(const char* data, std::size_t size) noexcept {
  return data != nullptr && size > 0 && size <= static_cast<std::size_t>(PTRDIFF_MAX);
}

/// Of longer input texts this much counts: no file name and no key has more.
inline constexpr std::size_t longest_text = 4096;

/// Copies `source` into a field of `size` characters, cut or blank-padded. An unusable field is left alone.
inline void assign_padded(char* field, std::size_t size, std::string_view source) noexcept {
  if (!usable_field(field, size)) return;
  const std::size_t used = std::min(size, source.size());
  std::copy_n(source.data(), used, field);
  std::fill(field + used, field + size, ' ');
}

/// Asks for a text that is not filled with blanks, to be read only after an assignment.
struct Unfilled {};

/// Blank-padded text of N characters.
template <std::size_t N>
class FixedText {
 public:
  FixedText() noexcept { chars_.fill(' '); }
  explicit FixedText(Unfilled) noexcept {}
  FixedText(std::string_view source) noexcept { assign(source); }

  void assign(std::string_view source) noexcept { assign_padded(chars_.data(), N, source); }
  [[nodiscard]] std::string_view view() const noexcept { return {chars_.data(), N}; }
  [[nodiscard]] std::string_view trimmed() const noexcept { return tessarel::trimmed(view()); }
  [[nodiscard]] char* data() noexcept { return chars_.data(); }
  [[nodiscard]] static constexpr std::size_t size() noexcept { return N; }

 private:
  std::array<char, N> chars_;
};

/// A caller's text field. A null pointer, a zero or a negative length is an empty input and swallows any output.
struct TextField {
  char* data = nullptr;
  std::size_t size = 0;

  void assign(std::string_view source) const noexcept { assign_padded(data, size, source); }
  void assign(const char* text) const noexcept { assign(std::string_view(text)); }
  /// A message can repeat what a host or a file has given: control characters of it become question marks.
  void assign(Message message) const noexcept {
    assign(message.text());
    if (message.is_success() || !usable_field(data, size)) return;
    std::replace_if(
        data, data + std::min(size, message.text().size()),
        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }, '?');
  }
};

/// A caller's input text, its first `longest_text` characters; an unusable field reads as empty.
[[nodiscard]] constexpr std::string_view input_text(const char* data, std::size_t size) noexcept {
  return usable_field(data, size) ? std::string_view{data, std::min(size, longest_text)} : std::string_view{};
}

}  // namespace tessarel
