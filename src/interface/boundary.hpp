// What every exported entry needs at the C boundary: the names by which it is exported, its texts, its failures.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <new>
#include <string_view>

#include "support/text.hpp"

/// Exports `entry`, defined above in the same file, a second time as `entry_`, the name that Fortran compilers on Unix
/// give an external procedure.
#define TESSAREL_FORTRAN_TWIN(entry) \
  extern "C" __attribute__((visibility("default"), alias(#entry))) decltype(entry) entry##_

namespace tessarel::interface {

inline constexpr Message no_fluid = "TESSAREL error: no fluid selected...";
inline constexpr Message null_argument = "TESSAREL error: null pointer argument...";

inline constexpr Message no_state = "TESSAREL error: no finite state found for the input values...";

/// Host logicals: the lowest bit decides on input, all bits are set on output.
constexpr bool from_logical(std::int32_t value) noexcept {
  return (value & 1) != 0;
}
constexpr std::int32_t to_logical(bool value) noexcept {
  return value ? -1 : 0;
}

inline bool any_null(std::initializer_list<const void*> pointers) noexcept {
  return std::find(pointers.begin(), pointers.end(), nullptr) != pointers.end();
}

/// The concatenation of `parts`, cut and padded as any output text; of any length and without storage of its own.
inline void compose(TextField field, std::initializer_list<std::string_view> parts) noexcept {
  for (const std::string_view part : parts) {
    field.assign(Message::of(part));
    const std::size_t used = usable_field(field.data, field.size) ? std::min(field.size, part.size()) : 0;
    field = {field.data + used, field.size - used};
  }
}

/// Runs `body`; an exception becomes a text in `err`.
template <class Body>
void guarded(TextField err, Body&& body) noexcept {
  try {
    body();
  } catch (const std::bad_alloc&) {
    err.assign("TESSAREL error: out of memory...");
  } catch (...) {
    err.assign("TESSAREL error: internal failure...");
  }
}

}  // namespace tessarel::interface
