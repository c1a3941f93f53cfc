// Databases made by the tests.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>
#include <string_view>
#include <vector>

namespace tessarel::test {

inline void run_sql(const std::string& file, const std::string& sql) {
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
  sqlite3_close(database);
}

inline constexpr const char* create_table = "CREATE TABLE IF NOT EXISTS record (name TEXT, row INTEGER, text TEXT);";

/// Adds the lines of `text` as the rows of a record to fluids.db in `directory`.
inline void add_record(const std::string& directory, const std::string& name, std::string_view text) {
  std::string sql = create_table;
  for (int row = 1; !text.empty(); ++row) {
    const auto end = text.find('\n');
    std::string line(text.substr(0, end));
    for (auto quote = line.find('\''); quote != std::string::npos; quote = line.find('\'', quote + 2))
      line.insert(quote, 1, '\'');
    sql += "INSERT INTO record VALUES ('" + name + "'," + std::to_string(row) + ",'" + line + "');";
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  run_sql(directory + "fluids.db", sql);
}

}  // namespace tessarel::test
