// Molar enthalpy, entropy, internal energy and isochoric heat capacity.
// Reference state: ideal gas at 298.15 K and 1e5 Pa, with the formation enthalpies and zero entropy.
#pragma once

#include "eos/model.hpp"
#include "support/text.hpp"

namespace tessarel::eos {

/// h, u [J/mol], s [J/(mol K)] of the mixture `x` at consistent `t` [K], `p` [Pa], `v` [m3/mol].
Message calc_hsu(const Eos& eos, int n, const double* x, double t, double p, double v, double& h, double& s, double& u);
/// Of the ideal-gas mixture at `t` and 1 bar: h with the heats of formation [J/mol], s with the term of mixing
/// [J/(mol K)].
struct IdealPart {
  double h, s;
};
IdealPart ideal_part(const fluid::Parameters& p, int n, const double* x, double t);

/// Isochoric heat capacity [J/(mol K)] at `t` [K], `rho` [1/A3].
double calc_cv(const Eos& eos, int n, const double* x, double t, double rho);
/// d cv / dT at constant density [J/(mol K2)].
double calc_dcv_dt(const Eos& eos, int n, const double* x, double t, double rho);

}  // namespace tessarel::eos
