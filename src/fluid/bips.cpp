#include "fluid/bips.hpp"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "fluid/file_location.hpp"
#include "fluid/numbers.hpp"
#include "fluid/rows.hpp"

namespace tessarel::fluid {
namespace {

constexpr Message opening_failed = "Error opening mixture parameter file BIPs.mix...";
constexpr Message unexpected_data = "Unexpected data in mixture parameter file BIPs.mix...";

/// The same for both orders of two names, and never 0.
std::uint64_t key_of(std::string_view a, std::string_view b) noexcept {
  const std::hash<std::string_view> hash;
  return (hash(a) + hash(b)) | 1U;
}

/// Stores one row of the table; false when its entry is no number.
bool read_row(std::string_view text, std::size_t k, BipTable& table) {
  FixedText<74> row(text);
  std::replace(row.data(), row.data() + row.size(), '\t', ' ');
  table.cn[k][0].assign(row.view().substr(0, 32));
  table.cn[k][1].assign(row.view().substr(32, 32));
  table.key[k] = key_of(table.cn[k][0].view(), table.cn[k][1].view());
  return read_fixed(row.view().substr(64, 10), 5, table.bip[k]);
}

void index_rows(BipTable& table) noexcept {
  table.index.fill(0);
  for (std::size_t k = 0; k < table.key.size(); ++k) {
    if (table.key[k] == 0) continue;
    std::size_t place = (table.key[k] >> 1U) % table.index.size();
    while (table.index[place] != 0) place = (place + 1) % table.index.size();
    table.index[place] = static_cast<std::uint16_t>(k + 1);
  }
}

/// The entry of a pair, 0 where the table has none.
double find_pair(const BipTable& table, std::string_view first, std::string_view second) noexcept {
  const std::uint64_t key = key_of(first, second);
  for (std::size_t place = (key >> 1U) % table.index.size(); table.index[place] != 0;
       place = (place + 1) % table.index.size()) {
    const std::size_t k = table.index[place] - 1U;
    if (table.key[k] != key) continue;
    const std::string_view a = table.cn[k][0].view(), b = table.cn[k][1].view();
    if ((a == first && b == second) || (a == second && b == first)) return table.bip[k];
  }
  return 0.0;
}

void clear_k_ij(std::size_t n, Parameters& p) noexcept {
  for (std::size_t i = 0; i < n; ++i) std::fill_n(p.k_ij[i].begin(), n, 0.0);
}

}  // namespace

Message readbips_rows(platform::ByteSource& bytes, int nrows, BipTable& table) {
  LineReader lines(bytes);
  const auto limit = static_cast<std::size_t>(std::clamp(nrows, 0, max_bips));
  std::string_view row;
  for (std::size_t k = 0; k < limit && lines.next(row); ++k)
    if (!read_row(row, k, table)) return unexpected_data;
  return no_errors;
}

Message readbipsfile(std::string_view filename, int nrows, BipTable& table) {
  platform::FileBytes file(filename);
  return file.is_open() ? readbips_rows(file, nrows, table) : opening_failed;
}

Message readbipsdb(std::string_view fluiddb, std::string_view filename, platform::FluidDatabase& database,
                   BipTable& table) {
  const auto data = std::make_unique_for_overwrite<platform::FluidData>();
  int status = 0;
  const auto count = at(database.getfluid(fluiddb, filename, *data, status));
  if (count == 0 || status == 0) return opening_failed;
  for (std::size_t k = 0; k < count && !is_blank((*data)[k].view()); ++k)
    if (!read_row((*data)[k].view(), k, table)) return unexpected_data;
  return no_errors;
}

Message readbips_from(std::string_view filename, Parameters& p, BipTable& table) {
  const auto n = at(std::clamp(p.n, 0, nmax));
  clear_k_ij(n, p);
  if (n < 2) return no_errors;
  const std::string path(filename);
  const platform::FileStamp stamp = platform::stamp_of(path.c_str());
  if (!stamp.exists() || table.path != path || table.stamp != stamp) {
    table.path.clear();
    if (const Message message = readbipsfile(filename, max_bips, table); !ok(message)) return message;
    index_rows(table);
    if (stamp.settled()) table.path = path;
    table.stamp = stamp;
  }
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = i + 1; j < n; ++j)
      p.k_ij[i][j] = p.k_ij[j][i] = find_pair(table, p.compname[i].view(), p.compname[j].view());
  return no_errors;
}

Message readbips(Parameters& p, BipTable& table, std::string_view directory) {
  return readbips_from(data_place(directory).tables + std::string(bips_file), p, table);
}

}  // namespace tessarel::fluid
