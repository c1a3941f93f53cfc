// Saturation of a pure fluid and the working range.
#pragma once

#include "eos/fluid.hpp"
#include "support/text.hpp"

namespace tessarel::solvers {

/// Saturation pressure `psat` [Pa] of the pure fluid that component 1 is, at `t` [K], to rounding
/// (pure_saturation.hpp); where that finds nothing, by Newton's method on equal fugacities from 0.1 Pa. On a failure
/// before it is -8888.8, after "No convergence calculating saturation pressure..." the last iterate. Other messages:
/// "Temperature less than minimum temperature...", "Temperature greater than critical temperature...".
Message calc_psat(const eos::Fluid& fluid, double t, double& psat);

/// Below it calc_tsat gives no temperature [Pa].
inline constexpr double lowest_saturation_pressure = 0.1;

inline constexpr Message no_saturation_pressure = "No convergence calculating saturation pressure...";
inline constexpr Message no_saturation_temperature = "No convergence calculating saturation temperature...";

/// What calc_psat and calc_tsat refuse.
Message refuse_temperature(const fluid::Limits& limits, double t);
Message refuse_pressure(const fluid::Limits& limits, double p);

/// Saturation temperature `tsat` [K] at `p` [Pa], the same way, from the lowest temperature. Messages: "Pressure less
/// than minimum pressure...", "Pressure greater than critical pressure...", "No convergence calculating saturation
/// temperature...".
Message calc_tsat(const eos::Fluid& fluid, double p, double& tsat);

/// Sets the range of temperature [K] and pressure [Pa] in which the two-phase-aware solvers search: the range that
/// the parameters of all components share. Always "No errors".
Message calc_ptrange(const fluid::Parameters& p, fluid::Limits& limits);

}  // namespace tessarel::solvers
