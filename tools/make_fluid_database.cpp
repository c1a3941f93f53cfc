// Makes the fluid database from the fluid records: make_fluid_database <database> <directory with .saf files>
//
// Every row of a record becomes a row of the table, by number and cut at 255 characters. A record whose blank rows do
// not stand where the numbering of the database needs them is left out, with a notice: the library reads it from its
// file.
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::size_t max_rows = 255;
constexpr std::size_t row_length = 255;

std::vector<std::string> read_rows(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot open " + file.string());
  std::vector<std::string> rows;
  for (std::string row; std::getline(stream, row);) {
    if (!row.empty() && row.back() == '\r') row.pop_back();
    if (rows.empty() && row.starts_with("\xEF\xBB\xBF")) row.erase(0, 3);
    rows.push_back(row.substr(0, row_length));
  }
  return rows;
}

bool is_blank(const std::string& row) {
  return row.find_first_not_of(" \t") == std::string::npos;
}

/// True when the rows that the database leaves unread are the blank ones, up to the first keyword.
bool is_numbered(const std::vector<std::string>& rows) {
  if (rows.size() < 18 || rows.size() > max_rows) return false;
  for (std::size_t row = 2; row <= 18; ++row) {
    const bool separator = row == 2 || row == 5 || row == 11 || row == 17;
    if (is_blank(rows[row - 1]) != separator) return false;
  }
  return true;
}

class Database {
 public:
  explicit Database(const std::string& file) {
    check(sqlite3_open(file.c_str(), &database_));
    check(sqlite3_exec(database_,
                       "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; BEGIN;"
                       "CREATE TABLE record (name TEXT NOT NULL, row INTEGER NOT NULL, text TEXT NOT NULL,"
                       " PRIMARY KEY (name, row)) WITHOUT ROWID;",
                       nullptr, nullptr, nullptr));
    check(sqlite3_prepare_v2(database_, "INSERT INTO record VALUES (?1, ?2, ?3)", -1, &insert_, nullptr));
  }
  ~Database() {
    sqlite3_finalize(insert_);
    sqlite3_close(database_);
  }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  void add(const std::string& name, const std::vector<std::string>& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
      check(sqlite3_bind_text(insert_, 1, name.data(), static_cast<int>(name.size()), SQLITE_STATIC));
      check(sqlite3_bind_int(insert_, 2, static_cast<int>(i + 1)));
      check(sqlite3_bind_text(insert_, 3, rows[i].data(), static_cast<int>(rows[i].size()), SQLITE_STATIC));
      if (sqlite3_step(insert_) != SQLITE_DONE) check(SQLITE_ERROR);
      check(sqlite3_reset(insert_));
    }
  }

  void commit() { check(sqlite3_exec(database_, "COMMIT", nullptr, nullptr, nullptr)); }

 private:
  void check(int result) {
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database_));
  }

  sqlite3* database_ = nullptr;
  sqlite3_stmt* insert_ = nullptr;
};

void make_database(const std::filesystem::path& target, const std::filesystem::path& directory) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(directory))
    if (entry.path().extension() == ".saf") files.push_back(entry.path());
  std::sort(files.begin(), files.end());

  // Made beside its place and moved there complete.
  const std::filesystem::path made = target.string() + ".new";
  std::filesystem::remove(made);
  {
    Database database(made.string());
    for (const auto& file : files) {
      const auto rows = read_rows(file);
      if (is_numbered(rows))
        database.add(file.filename().string(), rows);
      else
        std::fprintf(stderr, "note: %s stays out of the database\n", file.string().c_str());
    }
    database.commit();
  }
  std::filesystem::rename(made, target);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_fluid_database <database> <directory with .saf files>\n");
    return 2;
  }
  try {
    make_database(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_fluid_database: %s\n", error.what());
    return 1;
  }
  return 0;
}
