// What the exports of the routines share: the checks of their arguments.
//
// A refused call, one with a null pointer or a number of components, a place or an order that does not exist, gives NaN
// in results that are single numbers and leaves arrays alone.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>

#include "interface/boundary.hpp"
#include "interface/session.hpp"
#include "tessarel/routines.h"

namespace tessarel::interface {

inline constexpr std::int32_t refused_code = -1;  ///< where a routine reports by a code
inline constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

inline bool valid_count(const Session& session, const std::int32_t* n) noexcept {
  return n != nullptr && *n >= 1 && *n <= session.n();
}
inline bool valid_pure(const std::int32_t* n, const std::int32_t* ipure) noexcept {
  return ipure != nullptr && *ipure >= 0 && *ipure <= *n;
}
/// The place of a component, from 1.
inline bool valid_place(const Session& session, const std::int32_t* i) noexcept {
  return i != nullptr && *i >= 1 && *i <= session.n();
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

inline bool all_finite(std::initializer_list<const double*> values) noexcept {
  return std::all_of(values.begin(), values.end(), [](const double* v) { return std::isfinite(*v); });
}

/// Runs `body`, which returns a message, for a selected fluid and arguments that are there.
template <class Body>
void report(const Session& session, std::initializer_list<const void*> arguments, TextField err, Body&& body) noexcept {
  guarded(err, [&] {
    if (any_null(arguments))
      err.assign(null_argument);
    else if (!session.selected())
      err.assign(no_fluid);
    else
      err.assign(body());
  });
}

/// The same for a body that leaves numbers in `results`, which must be finite.
template <class Body>
void report(const Session& session, std::initializer_list<const void*> arguments,
            std::initializer_list<const double*> results, TextField err, Body&& body) noexcept {
  report(session, arguments, err, [&]() -> Message {
    const Message message = body();
    return !ok(message) || all_finite(results) ? message : no_state;
  });
}

}  // namespace tessarel::interface
