// Rows of text, as the record parsers take them from a file or from the database.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/byte_source.hpp"
#include "platform/fluid_database.hpp"

namespace tessarel::fluid {

/// Splits bytes into rows: line ends of both kinds, a byte-order mark in front skipped. A row is kept up to
/// `max_row` characters and the rest of it dropped, which bounds the memory for any file.
class LineReader {
 public:
  static constexpr std::size_t max_row = 65536;

  explicit LineReader(platform::ByteSource& bytes) noexcept : bytes_(bytes) {}

  /// The next row, valid until the next call; false at the end.
  bool next(std::string_view& row);

 private:
  bool fill();

  platform::ByteSource& bytes_;
  std::array<char, 4096> buffer_;
  std::size_t used_ = 0, filled_ = 0;
  std::string row_;
  bool at_start_ = true;
};

/// The rows of a fluid record. File and database hold the same rows and differ in how blank rows are passed.
class RowSource {
 public:
  virtual ~RowSource() = default;
  /// The next row, whatever it holds; false at the end.
  virtual bool next(std::string_view& row) = 0;
  /// Number of the row taken last, from 1.
  [[nodiscard]] virtual int row() const noexcept = 0;
  /// The next row that can hold a number.
  virtual bool next_value(std::string_view& row) = 0;
  /// Skips the separator row: one row in the database, nothing in a file.
  virtual void skip_separator() = 0;
};

/// Rows of a file, in sequence: blank rows are skipped wherever they are.
class FileRows final : public RowSource {
 public:
  explicit FileRows(platform::ByteSource& bytes) noexcept : lines_(bytes) {}
  bool next(std::string_view& row) override;
  [[nodiscard]] int row() const noexcept override { return row_; }
  bool next_value(std::string_view& row) override;
  void skip_separator() override {}

 private:
  LineReader lines_;
  int row_ = 0;
};

/// Rows of the database, by number.
class DatabaseRows final : public RowSource {
 public:
  DatabaseRows(const platform::FluidData& data, int count) noexcept;
  bool next(std::string_view& row) override;
  [[nodiscard]] int row() const noexcept override { return static_cast<int>(next_); }
  bool next_value(std::string_view& row) override { return next(row); }
  void skip_separator() override { ++next_; }

 private:
  const platform::FluidData& data_;
  std::size_t count_;
  std::size_t next_ = 0;
};

}  // namespace tessarel::fluid
