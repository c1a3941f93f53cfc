// Wilson's estimate of K (1968), the start of every phase split: ln K = ln(pc / p) + f (1 + omega) (1 - tc / t).
#pragma once

#include "eos/fluid.hpp"

namespace tessarel::flash {

inline constexpr double wilson_factor = 5.373;

/// ln K of all components at t [K], p [Pa]; tc and pc are those of the model's pure components.
fluid::Vector wilson_lnk(const eos::Fluid& fluid, double t, double p, double factor = wilson_factor);

/// t^2 dlnK/dt of component `i`, counted from 0 [K]: its heat of vaporisation / R.
double wilson_heat(const eos::Fluid& fluid, int i);

}  // namespace tessarel::flash
