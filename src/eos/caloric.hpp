// Molar enthalpy, entropy, internal energy and isochoric heat capacity, module calc_hsu_module.
// Reference state: ideal gas at 298.15 K and 1e5 Pa, with the formation enthalpies and zero entropy.
#pragma once

#include "support/text.hpp"

namespace tessarel::calc_hsu_module {

/// h, u [J/mol], s [J/(mol K)] of the selected mixture at consistent `t` [K], `p` [Pa], `v` [m3/mol].
Message calc_hsu(double t, double p, double v, double& h, double& s, double& u);
/// Isochoric heat capacity [J/(mol K)] at `t` [K], `rho` [1/A3].
double calc_cv(int n, const double* x, double t, double rho);
/// d cv / dT at constant density [J/(mol K2)].
double calc_dcv_dt(int n, const double* x, double t, double rho);

}  // namespace tessarel::calc_hsu_module
