// What the exports of the building blocks share: the scope of a call, and the call of a member of a family.
#pragma once

#include "blocks/arrays.hpp"
#include "interface/routines_support.hpp"
#include "tessarel/blocks.h"

namespace tessarel::interface {

struct CheckedScope {
  blocks::Scope scope;
  bool valid = true;
};

/// The scope of a call from the arguments that it has of these; they are missing where null is not refused.
inline CheckedScope scope() noexcept {
  return {{current_session().eos()}};
}
inline CheckedScope scope(const std::int32_t* n) noexcept {
  Session& session = current_session();
  CheckedScope s{{session.eos()}, valid_count(session, n)};
  if (s.valid) s.scope.n = *n;
  return s;
}
inline CheckedScope scope(const std::int32_t* n, const std::int32_t* ipure) noexcept {
  CheckedScope s = scope(n);
  s.valid = s.valid && valid_pure(n, ipure);
  if (s.valid) s.scope.ipure = *ipure;
  return s;
}
inline CheckedScope scope(const std::int32_t* n, const std::int32_t* ipure, const std::int32_t* power) noexcept {
  CheckedScope s = scope(n, ipure);
  s.valid = s.valid && power != nullptr && *power >= 0 && *power <= 3;
  if (s.valid) s.scope.power = *power;
  return s;
}

/// A member of a family. `status`, where there is one, is 1 after a refusal.
template <class Family, char... V, std::size_t In, std::size_t Out>
void member(const CheckedScope& s, const double* const (&in)[In], double* const (&out)[Out],
            std::int32_t* status = nullptr) noexcept {
  constexpr auto orders = blocks::Slots<V...>::orders;
  static_assert(Out == Family::outputs && In == blocks::argument_count(Family::inputs, orders));
  bool refused = !s.valid;
  for (const double* a : in) refused = refused || a == nullptr;
  for (const double* a : out) refused = refused || a == nullptr;
  int result = 1;
  if (!run(refused, [&] { result = blocks::evaluate<Family, V...>(s.scope, in, out); })) {
    for (std::size_t k = 0; k < Out; ++k)
      if (out[k] != nullptr && orders.x == 0 && blocks::output_size<Family>(k, 2) == 1) *out[k] = not_a_number;
  }
  if (status != nullptr) *status = result;
}

}  // namespace tessarel::interface
