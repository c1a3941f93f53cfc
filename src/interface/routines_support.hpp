// What the exports of the routines share: the checks of their arguments, and the definitions made from the tables of
// the derivative families.
//
// A refused call, one with a null pointer or a number of components, a place or an order that does not exist, gives NaN
// in results that are single numbers and leaves arrays alone.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <limits>

#include "eos/family_arrays.hpp"
#include "eos/family_moments.hpp"
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

struct CheckedScope {
  families::Scope scope;
  bool valid = true;
};
inline CheckedScope scope() noexcept {
  return {};
}
inline CheckedScope scope(const std::int32_t* n) noexcept {
  if (!valid_count(n)) return {{}, false};
  return {{*n, 0, 0}, true};
}
inline CheckedScope scope(const std::int32_t* n, const std::int32_t* ipure) noexcept {
  if (!valid_count(n) || !valid_pure(n, ipure)) return {{}, false};
  return {{*n, *ipure, 0}, true};
}
inline CheckedScope scope(const std::int32_t* n, const std::int32_t* ipure, const std::int32_t* power) noexcept {
  CheckedScope s = scope(n, ipure);
  if (power == nullptr || *power < 0 || *power > 3) s.valid = false;
  if (s.valid) s.scope.power = *power;
  return s;
}

/// A member of a family. `status`, where there is one, is 1 after a refusal.
template <class Family, char... V, std::size_t In, std::size_t Out>
void member(const CheckedScope& s, const std::array<const double*, In>& in, const std::array<double*, Out>& out,
            std::int32_t* status = nullptr) noexcept {
  constexpr auto orders = families::Slots<V...>::orders;
  static_assert(Out == Family::outputs && In == families::argument_count(Family::inputs, orders));
  bool refused = !s.valid;
  for (const double* a : in) refused = refused || a == nullptr;
  for (const double* a : out) refused = refused || a == nullptr;
  int result = 1;
  if (!run(refused, [&] { result = families::evaluate<Family, V...>(s.scope, in.data(), out.data()); })) {
    for (std::size_t k = 0; k < Out; ++k)
      if (out[k] != nullptr && orders.x == 0 && families::output_size<Family>(k, 2) == 1) *out[k] = not_a_number;
  }
  if (status != nullptr) *status = result;
}

}  // namespace tessarel::routines

#define TESSAREL_IN0
#define TESSAREL_IN1 TESSAREL_IN0 const double *i0,
#define TESSAREL_IN2 TESSAREL_IN1 const double *i1,
#define TESSAREL_IN3 TESSAREL_IN2 const double *i2,
#define TESSAREL_IN4 TESSAREL_IN3 const double *i3,
#define TESSAREL_IN5 TESSAREL_IN4 const double *i4,
#define TESSAREL_IN6 TESSAREL_IN5 const double *i5,
#define TESSAREL_IN7 TESSAREL_IN6 const double *i6,
#define TESSAREL_IN8 TESSAREL_IN7 const double *i7,
#define TESSAREL_IN9 TESSAREL_IN8 const double *i8,
#define TESSAREL_IN10 TESSAREL_IN9 const double *i9,
#define TESSAREL_IN11 TESSAREL_IN10 const double *i10,
#define TESSAREL_IN12 TESSAREL_IN11 const double *i11,
#define TESSAREL_IN13 TESSAREL_IN12 const double *i12,
#define TESSAREL_IN14 TESSAREL_IN13 const double *i13,
#define TESSAREL_LIST0
#define TESSAREL_LIST1 i0
#define TESSAREL_LIST2 TESSAREL_LIST1, i1
#define TESSAREL_LIST3 TESSAREL_LIST2, i2
#define TESSAREL_LIST4 TESSAREL_LIST3, i3
#define TESSAREL_LIST5 TESSAREL_LIST4, i4
#define TESSAREL_LIST6 TESSAREL_LIST5, i5
#define TESSAREL_LIST7 TESSAREL_LIST6, i6
#define TESSAREL_LIST8 TESSAREL_LIST7, i7
#define TESSAREL_LIST9 TESSAREL_LIST8, i8
#define TESSAREL_LIST10 TESSAREL_LIST9, i9
#define TESSAREL_LIST11 TESSAREL_LIST10, i10
#define TESSAREL_LIST12 TESSAREL_LIST11, i11
#define TESSAREL_LIST13 TESSAREL_LIST12, i12
#define TESSAREL_LIST14 TESSAREL_LIST13, i13

/// Defines the export of a row of the family tables. The shape tells the arguments around the arrays.
#define TESSAREL_MEMBER(shape, name, family, count, ...)                                                       \
  extern "C" void tessarel_##name(TESSAREL_ARGUMENTS_##shape(TESSAREL_IN##count)) {                            \
    using namespace tessarel::routines;                                                                        \
    member<tessarel::families::family __VA_OPT__(, ) __VA_ARGS__> TESSAREL_CALL_##shape(TESSAREL_LIST##count); \
  }
// clang-format off
#define TESSAREL_ARGUMENTS_plain(in) in double* o0
#define TESSAREL_CALL_plain(...) (scope(), std::array{__VA_ARGS__}, std::array{o0})
#define TESSAREL_ARGUMENTS_plain2(in) in double* o0, double* o1
#define TESSAREL_CALL_plain2(...) (scope(), std::array{__VA_ARGS__}, std::array{o0, o1})
#define TESSAREL_ARGUMENTS_n(in) const int32_t* n, in double* o0
#define TESSAREL_CALL_n(...) (scope(n), std::array{__VA_ARGS__}, std::array{o0})
#define TESSAREL_ARGUMENTS_n2(in) const int32_t* n, in double* o0, double* o1
#define TESSAREL_CALL_n2(...) (scope(n), std::array{__VA_ARGS__}, std::array{o0, o1})
#define TESSAREL_ARGUMENTS_pure(in) const int32_t* n, const int32_t* ipure, in double* o0
#define TESSAREL_CALL_pure(...) (scope(n, ipure), std::array{__VA_ARGS__}, std::array{o0})
#define TESSAREL_ARGUMENTS_pure2(in) const int32_t* n, const int32_t* ipure, in double* o0, double* o1
#define TESSAREL_CALL_pure2(...) (scope(n, ipure), std::array{__VA_ARGS__}, std::array{o0, o1})
#define TESSAREL_ARGUMENTS_mixture2(in) const int32_t* n, const double* x, const int32_t* ipure, in double* o0, double* o1
#define TESSAREL_CALL_mixture2(...) (scope(n, ipure), std::array{x, __VA_ARGS__}, std::array{o0, o1})
#define TESSAREL_ARGUMENTS_sites(in) const int32_t* n, const double* x, const int32_t* ipure, in double* o0, int32_t* status
#define TESSAREL_CALL_sites(...) (scope(n, ipure), std::array{x, __VA_ARGS__}, std::array{o0}, status)
#define TESSAREL_ARGUMENTS_zeta(in) const int32_t* n, const double* x, const int32_t* ipure, const double* rho, const double* d, const int32_t* k, in double* o0
#define TESSAREL_CALL_zeta(...) (scope(n, ipure, k), std::array{x, rho, d __VA_OPT__(,) __VA_ARGS__}, std::array{o0})
// clang-format on
