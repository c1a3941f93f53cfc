// The isochoric heat capacity from the temperature derivatives a1, a2, a3 of the residual Helmholtz energy A/RT at
// constant density, and from the ideal-gas heat capacity at constant pressure.
#pragma once

#include "fluid/parameters.hpp"

namespace tessarel::eos {

/// cv [J/(mol K)]: A = R T a, so -T d2A/dT2 = -R T (2 a1 + T a2).
constexpr double cv_from(double cp0, double t, double a1, double a2) {
  constexpr double r = fluid::gas_constant;
  return cp0 - r - r * t * (2 * a1 + t * a2);
}

/// d cv/dT at constant density [J/(mol K2)].
constexpr double dcv_dt_from(double dcp0, double t, double a1, double a2, double a3) {
  return dcp0 - fluid::gas_constant * (2 * a1 + t * (4 * a2 + t * a3));
}

}  // namespace tessarel::eos
