// Density of a chosen phase at given temperature and pressure, module calc_vrho_module.
//
// The iteration works on the packing fraction, which has the same bounds for every fluid: Newton's method on
// p(eta) / p = 1 with escapes from the unstable branch, where dp/deta is negative.
#pragma once

#include "eos/eta_pressure.hpp"
#include "support/text.hpp"

namespace tessarel::calc_vrho_module {

inline constexpr double liquid_start = 0.7, vapour_start = 1e-5;

/// Molar volume `v` [m3/mol] of the selected mixture at `t` [K], `p` [Pa]; `phase` 1 liquid-like, 2 vapour-like root.
/// `v` is written also on failure. Messages: "No errors", "No convergence calculating density from T and P",
/// "Phase code of the density must be 1 or 2..." (then `v` is the mark for a value not computed).
Message calc_v(double t, double p, int phase, double& v);

/// Number density `rho` [1/A3]; `phase` as calc_v, or -1 for the root of lower Gibbs energy, the vapour-like one on a
/// tie. A failure to converge is silent; any other `phase` gives NaN.
void calc_rho(int n, const double* x, double t, double p, int phase, double& rho);

/// The iteration on a prepared state, from `eta` as it stands.
Message densiter(const eos::MixtureState<double>& state, double p, double& eta);

/// eta of a number density and back; `ipure` as everywhere: 0 the mixture x, i component i alone.
double calc_eta_rho(int n, const double* x, int ipure, double t, double rho);
double calc_rho_eta(int n, const double* x, int ipure, double t, double eta);

}  // namespace tessarel::calc_vrho_module
