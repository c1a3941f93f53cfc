// The fluid database: rows of text by record name, in one SQLite file "fluids.db".
//
// Table record(name text, row integer, text text): rows are numbered from 1. The file is made by
// tools/make_fluid_database.cpp and only read here.
#pragma once

#include <array>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/byte_source.hpp"
#include "support/text.hpp"

struct sqlite3;
struct sqlite3_stmt;

namespace tessarel::platform {

inline constexpr std::size_t max_rows = 255;
inline constexpr std::size_t row_length = 255;

/// A row of a record. Of the many that a record may have most are never written, so they are not filled with blanks.
struct Row : FixedText<row_length> {
  Row() noexcept : FixedText(Unfilled{}) {}
};

/// The rows of a record; row 1 stands at index 0.
using FluidData = std::array<Row, max_rows>;

/// The file of the database in a directory.
std::string database_file(std::string_view directory);

/// One read-only connection, opened at the first read and kept until another directory is asked for or the file is
/// another one or changed. Any number of threads may read; a lock lets one in at a time.
class FluidDatabase {
 public:
  FluidDatabase() = default;
  FluidDatabase(const FluidDatabase&) = delete;
  FluidDatabase& operator=(const FluidDatabase&) = delete;
  ~FluidDatabase() { close(); }

  /// Fetches the record `name` from the database in the directory `fluiddb` and returns the number of rows delivered,
  /// 0 when the record does not exist or the database is missing or damaged. `status` is 1 with rows, else 0. Rows
  /// behind the delivered ones keep what they held.
  int getfluid(std::string_view fluiddb, std::string_view name, FluidData& fluiddata, int& status);

  /// While one lives, its reads share the lock on the file, which costs more than a read.
  class SharedReads {
   public:
    SharedReads(FluidDatabase& database, std::string_view directory) : database_(database) {
      database_.begin(directory);
    }
    SharedReads(const SharedReads&) = delete;
    SharedReads& operator=(const SharedReads&) = delete;
    ~SharedReads() { database_.end(); }

   private:
    FluidDatabase& database_;
  };

 private:
  void begin(std::string_view directory);
  void end() noexcept;
  sqlite3_stmt* statement(const std::string& file);
  void close() noexcept;
  static int check(void* self);

  std::mutex mutex_;
  std::string file_;
  FileStamp stamp_;
  sqlite3* database_ = nullptr;
  sqlite3_stmt* statement_ = nullptr;
  int checks_ = 0;
  int sharing_ = 0;  ///< SharedReads alive, of any thread
};

}  // namespace tessarel::platform
