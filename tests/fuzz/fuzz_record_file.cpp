// A fluid record as the bytes of a file.
#include <cstddef>
#include <cstdint>

#include "check.hpp"
#include "fluid/rows.hpp"
#include "platform/byte_source.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessarel;
  platform::MemoryBytes bytes({reinterpret_cast<const char*>(data), size});
  fluid::FileRows rows(bytes);
  fluid::Parameters record;
  fluid::FailureText text;
  const Message message = fluid::read_fluid_record(rows, 5, "file", record, text);
  fuzz::check_component(record, 5, ok(message));
  fuzz::require(ok(message) || message.text().starts_with("Unexpected data in fluid data file \""));
  return 0;
}
