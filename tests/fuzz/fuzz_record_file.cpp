// A fluid record as the bytes of a file.
#include <cstddef>
#include <cstdint>

#include "check.hpp"
#include "fluid/rows.hpp"
#include "platform/byte_source.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessarel;
  platform::MemoryBytes bytes({reinterpret_cast<const char*>(data), size});
  fluid_module::FileRows rows(bytes);
  fluid_module::record = fluid_module::Record{};
  const Message message = fluid_module::read_fluid_record(rows, 5, "file");
  fuzz::check_component(5, ok(message));
  fuzz::require(ok(message) || message.starts_with("Unexpected data in fluid data file \""));
  return 0;
}
