// How much work one call may be.
#pragma once

#include <algorithm>

#include "eos/fluid.hpp"

namespace tessarel::flash {

/// Bound on the work of a search in pressures evaluated, for few components that do not associate.
inline constexpr long long most_pressures_of_a_call = 120000;

/// The bound for a fluid. A pressure, and the flashes around it, take longer with many components and with associating
/// ones: it is the time that is bounded, to some 0.2 s. Searches end there; what is under way is finished.
inline long long most_pressures(const eos::Fluid& fluid) {
  const auto& associates = fluid.eos.parameters().is_assoc_cmp;
  const auto sites = static_cast<double>(std::count(associates.begin(), associates.begin() + fluid.n, true));
  const double components = fluid.n;
  return static_cast<long long>(most_pressures_of_a_call /
                                ((1.0 + 0.4 * sites) * (1.0 + components * components / 64.0)));
}

}  // namespace tessarel::flash
