// Critical points, module critical_point_module: the true one of a pure fluid, the pseudo-critical one of a mixture by
// mole-fraction averages, and a search for a mixture on the conditions of Heidemann & Khalil (1980).
//
// Results go to the record: tc [K], pc [Pa], rhoc [mol/m3], and tci, pci of the components for a mixture.
#pragma once

#include <cstdint>

#include "support/text.hpp"

namespace tessarel::critical_point_module {

/// Critical state of the selected fluid: critpure of the only component, or critmixt_pseudo. Messages:
/// "Critical point: density iteration 1 not converged...", "... 2 not converged...",
/// "Critical point: : temperature-iteration not converged"; then tc and pc hold the start estimates.
Message critpoint();

/// The search for component `i`, counted from 1; component 1 for an `i` outside the mixture is the caller's to avoid.
Message critpure(int i);

/// Critical points of all components and their averages over z.
Message critmixt_pseudo();

/// Reserved: "No errors" and no other effect.
Message critmixt_brent();

/// Two-level search from tc; writes tc, pc and rhoc, the latter in 1/A3. "Critical point calulation failed..." or
/// "No errors".
Message critmixt_newton();

/// The same iteration on the caller's number density [1/A3] and temperature [K]; returns 0, 310, 320 or 321. `debug`
/// prints each pass to standard output.
std::int32_t cubic_newton(bool debug, int n, const double* z, double& rho, double& t);

/// The temperature near `t` with det Q = 0 at the density `rho`; `q` (n x n) is Q one step before. Returns 0, 310, 321.
std::int32_t det_q_newton(bool debug, int n, const double* z, double rho, double& t, double* q);

}  // namespace tessarel::critical_point_module
