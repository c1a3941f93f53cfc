#include "platform/fluid_database.hpp"

#include <sqlite3.h>
#include <sys/stat.h>

#include <algorithm>
#include <string>

namespace tessarel::platform {
namespace {

constexpr const char* query = "SELECT row, text FROM record WHERE name = ?1 AND row BETWEEN 1 AND 255 ORDER BY row";

// A sound read takes some hundred steps of SQLite's virtual machine. A file made to loop is given up after 20 million.
constexpr int steps_per_check = 100000;
constexpr int max_checks = 200;

/// Stores the rows of the bound statement; returns the number of the last one, -1 after a read error.
int fetch_rows(sqlite3_stmt* statement, FluidData& fluiddata) {
  int rows = 0;
  int result = SQLITE_DONE;
  while ((result = sqlite3_step(statement)) == SQLITE_ROW) {
    // Another SQL type of the row number may pass the comparison in the query, so the number is checked again.
    const int row = sqlite3_column_int(statement, 0);
    if (row <= rows || row > static_cast<int>(max_rows)) continue;
    while (++rows < row) fluiddata[static_cast<std::size_t>(rows - 1)].assign({});  // a gap is blank rows
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 1));
    const auto size = static_cast<std::size_t>(std::max(0, sqlite3_column_bytes(statement, 1)));
    fluiddata[static_cast<std::size_t>(row - 1)].assign(input_text(text, size));
  }
  return result == SQLITE_DONE ? rows : -1;
}

}  // namespace

std::string database_file(std::string_view directory) {
  directory = trimmed(directory);
  return std::string(directory) + (directory.empty() || directory.back() == '/' ? "" : "/") + "fluids.db";
}

/// The statement on the database `file`, null when that cannot be opened.
sqlite3_stmt* FluidDatabase::statement(const std::string& file) {
  // A transaction under way reads the file as it was at its beginning.
  if (statement_ != nullptr && file == file_ && sqlite3_get_autocommit(database_) == 0) return statement_;
  const FileStamp stamp = stamp_of(file.c_str());
  if (statement_ != nullptr && file == file_ && stamp == stamp_) return statement_;
  close();
  file_ = file;
  stamp_ = stamp;
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
  const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX;
  if (sqlite3_open_v2(file.c_str(), &database_, flags, nullptr) != SQLITE_OK) {
    close();
    return nullptr;
  }
  sqlite3_db_config(database_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_progress_handler(database_, steps_per_check, check, this);
  checks_ = 0;
  if (sqlite3_prepare_v3(database_, query, -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr) != SQLITE_OK) close();
  return statement_;
}

/// Also after a read error: the next read opens the file afresh.
void FluidDatabase::close() noexcept {
  sqlite3_finalize(statement_);
  sqlite3_close(database_);
  statement_ = nullptr;
  database_ = nullptr;
}

void FluidDatabase::begin(std::string_view directory) {
  const std::lock_guard lock(mutex_);
  if (directory.find('\0') == std::string_view::npos && statement(database_file(directory)) != nullptr &&
      sqlite3_get_autocommit(database_) != 0) {
    checks_ = 0;
    sqlite3_exec(database_, "BEGIN", nullptr, nullptr, nullptr);
  }
  ++sharing_;
}

void FluidDatabase::end() noexcept {
  const std::lock_guard lock(mutex_);
  if (--sharing_ > 0 || database_ == nullptr || sqlite3_get_autocommit(database_) != 0) return;
  if (sqlite3_exec(database_, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK) close();
}

int FluidDatabase::check(void* self) {
  return ++static_cast<FluidDatabase*>(self)->checks_ > max_checks ? 1 : 0;
}

int FluidDatabase::getfluid(std::string_view fluiddb, std::string_view name, FluidData& fluiddata, int& status) {
  status = 0;
  const std::string_view directory = trimmed(fluiddb);
  const std::string_view key = trimmed(name);
  if (directory.find('\0') != std::string_view::npos || key.size() > row_length) return 0;
  const std::lock_guard lock(mutex_);
  sqlite3_stmt* reading = statement(database_file(directory));
  if (reading == nullptr) return 0;
  checks_ = 0;
  int rows = -1;
  if (sqlite3_bind_text(reading, 1, key.data(), static_cast<int>(key.size()), SQLITE_STATIC) == SQLITE_OK)
    rows = fetch_rows(reading, fluiddata);
  sqlite3_reset(reading);
  sqlite3_clear_bindings(reading);
  if (rows < 0) close();
  if (rows <= 0) return 0;
  status = 1;
  return rows;
}

}  // namespace tessarel::platform
