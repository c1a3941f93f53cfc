// A fluid record as rows of the database: the first byte is the number of rows, and each line of the rest is a row.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "check.hpp"
#include "fluid/rows.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessarel;
  if (size == 0) return 0;
  static platform::FluidData table;
  std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  for (auto& row : table) {
    const auto end = std::min(text.find('\n'), text.size());
    row.assign(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  fluid::DatabaseRows rows(table, data[0]);
  fluid::Parameters record;
  fluid::FailureText failure;
  const Message message = fluid::read_fluid_record(rows, 5, "file", record, failure);
  fuzz::check_component(record, 5, ok(message));
  return 0;
}
