// Density of a chosen phase at given temperature and pressure.
//
// The iteration works on the packing fraction, which has the same bounds for every fluid: Newton's method on
// p(eta) / p = 1 with escapes from the unstable branch, where dp/deta is negative.
#pragma once

#include "eos/eta_pressure.hpp"
#include "support/text.hpp"

namespace tessarel::eos {

inline constexpr double liquid_start = 0.7, vapour_start = 1e-5;
/// Dense enough for cold liquids; beyond it the model has further loops at low temperature.
inline constexpr double cold_liquid_start = 0.52;

/// Molar volume `v` [m3/mol] of the mixture `x` at `t` [K], `p` [Pa]; `phase` 1 liquid-like, 2 vapour-like root.
/// `v` is written also on failure. Messages: "No errors", "No convergence calculating density from T and P",
/// "Phase code of the density must be 1 or 2..." (then `v` is the mark for a value not computed).
Message calc_v(const Eos& eos, int n, const double* x, double t, double p, int phase, double& v);

/// Number density `rho` [1/A3]; `phase` as calc_v, or -1 for the root of lower Gibbs energy, the vapour-like one on a
/// tie. A failure to converge is silent; any other `phase` gives NaN.
void calc_rho(const Eos& eos, int n, const double* x, double t, double p, int phase, double& rho);

/// The iteration on a prepared state, from `eta` as it stands.
Message densiter(const MixtureState<double>& state, double p, double& eta);

/// eta of a number density and back; `ipure` as everywhere: 0 the mixture x, i component i alone.
double calc_eta_rho(const Eos& eos, int n, const double* x, int ipure, double t, double rho);
double calc_rho_eta(const Eos& eos, int n, const double* x, int ipure, double t, double eta);

}  // namespace tessarel::eos
