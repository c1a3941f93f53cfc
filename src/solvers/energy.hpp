// What the solvers of an energy share.
#pragma once

#include "solvers/quick_state.hpp"
#include "solvers/search.hpp"

namespace tessarel::solvers {

/// u, h or s as a solver is asked for it: the pairs and the texts of its range.
struct Energy {
  StateIndex index;
  Property property;
  Given with_p, with_v;
  Message below_t, above_t;  ///< at given P: below the value at the lowest, above the one at the highest temperature
  Message below_p, above_v;  ///< at given v: below the value at the lowest pressure, above the one at the hot end
};
extern const Energy internal_energy, enthalpy, entropy;

/// The search of `vp` for a pure fluid or a mixture, without the quick route.
Message search_vp(const Context& context, State& state, double* x, double* y);

}  // namespace tessarel::solvers
