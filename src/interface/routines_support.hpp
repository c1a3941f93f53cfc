// What the exports of the routines share: the checks of their arguments.
//
// A refused call, one with a null pointer or a number of components, a place or an order that does not exist, gives NaN
// in results that are single numbers and leaves arrays alone.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <limits>

#include "interface/boundary.hpp"
#include "tessarel/routines.h"

namespace tessarel::routines {

inline constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

inline bool valid_count(const std::int32_t* n) noexcept {
  return n != nullptr && *n >= 1 && *n <= fluid_module::nmax && *n <= fluid_module::record.n;
}
inline bool valid_pure(const std::int32_t* n, const std::int32_t* ipure) noexcept {
  return ipure != nullptr && *ipure >= 0 && *ipure <= *n;
}
/// The place of a component, from 1.
inline bool valid_place(const std::int32_t* i) noexcept {
  return i != nullptr && *i >= 1 && *i <= fluid_module::record.n;
}

/// Runs `body` unless `refused`; an exception counts as a refusal. True when the body has run.
template <class Body>
bool run(bool refused, Body&& body) noexcept {
  if (refused) return false;
  try {
    body();
    return true;
  } catch (...) {
    return false;
  }
}

/// A single number into `out`, NaN when refused.
template <class Body>
void scalar(bool refused, double* out, Body&& body) noexcept {
  if (!run(refused || out == nullptr, [&] { *out = body(); }) && out != nullptr) *out = not_a_number;
}

/// Several single numbers, which `body` fills.
template <class Body>
void scalars(bool refused, std::initializer_list<double*> outs, Body&& body) noexcept {
  for (const double* out : outs) refused = refused || out == nullptr;
  if (run(refused, body)) return;
  for (double* out : outs)
    if (out != nullptr) *out = not_a_number;
}

/// The message of a call that cannot be made.
inline Message refusal(bool null) noexcept {
  if (null) return boundary::null_argument;
  return boundary::fluid_selected() ? Message{} : boundary::no_fluid;
}

/// Runs `body`, which returns its message, unless the call has to be refused.
template <class Body>
void with_message(bool null, TextField err, Body&& body) noexcept {
  boundary::guarded(err, [&] {
    const Message message = refusal(null);
    err.assign(message.empty() ? body() : message);
  });
}

}  // namespace tessarel::routines
