// Ideal-gas heat capacity: the cubic cp0 = a + b t + c t2 + d t3 [J/(mol K)] of each component and
// its integrals from 298.15 K, which the caloric properties need. Components are counted from 0.
#pragma once

#include "fluid/parameters.hpp"

namespace tessarel::fluid {

/// Of component `i` at `t` [K]; -8888.8 for a component outside 0 to 19.
double calc_cp0(const Parameters& p, int i, double t);        ///< cp0 [J/(mol K)]
double calc_dcp0_dt(const Parameters& p, int i, double t);    ///< d cp0/dt [J/(mol K2)]
double calc_icp0_dt(const Parameters& p, int i, double t);    ///< integral of cp0 dt [J/mol]
double calc_icp0_t_dt(const Parameters& p, int i, double t);  ///< integral of cp0/t dt [J/(mol K)]; `t` above 0

/// Ideal-gas enthalpy of component `i` with its heat of formation [J/mol].
inline double ideal_enthalpy(const Parameters& p, int i, double t) {
  return calc_icp0_dt(p, i, t) + p.delhf0[at(i)];
}

/// Of a mixture of the first `n` components with mole fractions `x`: the sums over the components weighted by `x`.
double calc_cp0mix(const Parameters& p, int n, const double* x, double t);
double calc_dcp0mix_dt(const Parameters& p, int n, const double* x, double t);
double calc_icp0mix_dt(const Parameters& p, int n, const double* x, double t);
double calc_icp0mix_t_dt(const Parameters& p, int n, const double* x, double t);

}  // namespace tessarel::fluid
