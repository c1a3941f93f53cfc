// The narrow thermodynamic interface that the flash routines are written against: pressures in bar, mole numbers of any
// sum, phase codes 1 liquid-like, -1 vapour-like, 0 the root of lower Gibbs energy.
#pragma once

#include <array>
#include <cstdint>

#include "eos/model.hpp"
#include "fluid/limits.hpp"

namespace tessarel::flash {

inline constexpr double pascal_per_bar = 100000.0;

/// Outputs of fugacoeff by `icon`: 1 lnphi; 2 also its derivatives by t and p [1/bar]; 3 lnphi and dlnphi_dn; 6 all.
/// Any other value clears lnphi and computes nothing. `ic` becomes 2 for `mt` 0 and 1 otherwise; `ierr` is 0.
/// Arrays of outputs not asked for may be null.
void fugacoeff(const eos::Eos& eos, std::int32_t icon, std::int32_t mt, int n, const double* z, double t, double p,
               double* lnphi, double* dlnphi_dt, double* dlnphi_dp, double* dlnphi_dn, std::int32_t& ic,
               std::int32_t& ierr);

/// Critical temperature [K], pressure [bar] and acentric factor of component `i`, counted from 1.
void fluiddata(const fluid::Parameters& p, const fluid::Limits& limits, int i, double& tc, double& pc, double& omega);

using Aux = std::array<double, 10>;

/// Reduced caloric and volumetric properties of one phase at `t` [K], `p` [bar] and the number density `rho` that
/// belongs to them; entries 1 and 2 of `aux` are not written. `p` of exactly 0 is replaced by the pressure of the
/// equation of state. Returns the compressibility factor.
double auxprop_rho(const eos::Eos& eos, int n, const double* x, double t, double rho, double& p, double* aux);

/// The same at the root `mt` of `t`, `p`; `z` is the compressibility factor.
void auxprop(const eos::Eos& eos, int n, const double* x, double t, double& p, std::int32_t mt, double& z, double* aux);

/// ... and at the reduced volume `v` = v / R in bar units, K/bar.
void auxprop_v(const eos::Eos& eos, int n, const double* x, double t, double& p, double v, double* aux);

}  // namespace tessarel::flash
