// The table of binary interaction parameters as the bytes of a file.
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "check.hpp"
#include "fluid/bips.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessarel;
  static fluid::BipTable table;
  platform::MemoryBytes bytes({reinterpret_cast<const char*>(data), size});
  const Message message = fluid::readbips_rows(bytes, fluid::max_bips, table);
  fuzz::require(ok(message) || message.text().starts_with("Unexpected data"));
  for (const double value : table.bip) fuzz::require(std::isfinite(value));
  return 0;
}
