// The spinodal, the limit of stability dp/dv = 0 at fixed temperature and composition.
//
// Branches: 1 liquid, 2 vapour. The search for the volume is Newton's method on dp/deta = 0 from the dense and the
// dilute end. Pressures and temperatures that a failure keeps from being computed are -8888.8.
#pragma once

#include <cstdint>

#include "eos/fluid.hpp"
#include "support/text.hpp"

namespace tessarel::solvers {

/// Spinodal volumes [m3/mol] at `t` [K]. "No convergence calculating specific volume for spinodal..." leaves what was
/// reached.
Message calc_vspin(const eos::Fluid& fluid, double t, double& vliq, double& vvap);

/// The one volume [m3/mol] that the search reaches from the packing fraction `eta`.
Message calc_vspin_phase(const eos::Fluid& fluid, double eta, double t, double& v);

/// Spinodal pressures [Pa] at `t` [K]; both are pc at tc. "T > Tc or T > Tcricondentherm, while saturation state
/// expected..." above the critical temperature, of a mixture above the cricondentherm.
Message calc_pspin(const eos::Fluid& fluid, double t, double& pliq, double& pvap);

/// Spinodal temperatures [K] at `p` [Pa]. Messages of the others, of calc_tsat, and of brent_spin.
Message calc_tspin(const eos::Fluid& fluid, double p, double& tliq, double& tvap);

/// The temperature between `a` and `b` [K] at which the spinodal pressure of a branch is `p` [Pa].
/// "Brent method for spinodal: root not bracketed", "Brent method for spinodal: no convergence".
Message brent_spin(const eos::Fluid& fluid, std::int32_t iphase, double p, double a, double b, double& t);

/// The same by bisection, to 1e-8 K.
Message bisec_spin(const eos::Fluid& fluid, std::int32_t iphase, double p, double a, double b, double& t);

}  // namespace tessarel::solvers
