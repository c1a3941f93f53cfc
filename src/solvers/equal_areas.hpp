// Equal areas under the isotherm of a pure fluid: both phases at a temperature whose state is prepared.
//
// To first order in both densities the pressure at which pressures and chemical potentials are equal is
//   p = K t (a_v - a_l + ln(rho_v / rho_l)) / (1 / rho_l - 1 / rho_v),
// which is the mean of p over the volumes between the phases.
#pragma once

#include "eos/eta_pressure.hpp"
#include "fluid/limits.hpp"

namespace tessarel::solvers {

/// Packing fractions of both phases.
struct Packings {
  double liquid = 0, vapour = 0;
};

/// Newton's method in both packing fractions, from `packings` on the stable stretches of the isotherm. False where it
/// does not converge, or to one phase.
bool equal_areas(const eos::MixtureState<double>& state, Packings& packings, double& p);

/// The isotherm about its inflection next to the critical point, a cubic in the packing fraction.
struct CubicIsotherm {
  bool usable = false;  ///< an inflection was found
  bool exact = false;   ///< so near the critical point that p is that of the saturation to 1e-12
  double p = 0;         ///< at the inflection [Pa]
  Packings saturated;   ///< of equal areas under the cubic; equal from the critical temperature on
};
CubicIsotherm cubic_isotherm(const eos::MixtureState<double>& state, const fluid::Limits& limits);

/// The same root by a search that cannot leave it: Newton's method in ln p, safeguarded by the two spinodal pressures,
/// with both densities bracketed by the spinodal densities. `start`: packing fractions outside both spinodals, or null.
bool equal_areas_between_spinodals(const eos::MixtureState<double>& state, const Packings* start, Packings& packings,
                                   double& p);

}  // namespace tessarel::solvers
