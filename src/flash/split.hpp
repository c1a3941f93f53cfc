// Two phases at fixed temperature and pressure, and Newton's method on their equal fugacities (Michelsen 1982b,
// doi:10.1016/0378-3812(82)85002-4; Michelsen & Mollerup 2007, ch. 10 to 12).
//
// The unknowns of the linear system are the vapour amounts, scaled by sqrt(x y / z), in which the Hessian of the Gibbs
// energy of an ideal mixture is nearly the unit matrix; the step is taken in ln K, in which traces of a component are
// linear, and the material balance gives the amounts. So no amount ever leaves the positive numbers.
#pragma once

#include "flash/phase.hpp"
#include "numerics/views.hpp"

namespace tessarel::flash {

struct Split {
  Phase liquid, vapour;
  double beta = 0.5;     ///< mole fraction of the vapour
  Vector lnk{};          ///< ln (y / x)
  double change = 0;     ///< of the Gibbs energy / RT against the feed, by the feed's tangent plane
  double error = 1e300;  ///< largest |ln f_v - ln f_l|
};

/// The material balance at the split's ln K, to rounding (rachford_rice.hpp).
bool balance(int n, const double* z, Split& split);

/// ln (y / x) of the split's phases, 0 for a component that is absent.
Vector log_ratios(int n, const double* z, const Split& split);

/// Hessian of the Gibbs energy times beta (1 - beta) in the scaled amounts, I + s_i s_j ((1 - beta) (V_ij - 1) +
/// beta (L_ij - 1)) with the derivatives V, L of lnphi of vapour and liquid; `scale` becomes s = sqrt(x y / z).
void scaled_hessian(int n, const double* z, const Split& split, const double* liquid_dn, const double* vapour_dn,
                    Vector& scale, numerics::Square<double> hessian);

/// Minimises the Gibbs energy from a split with 0 < beta < 1 by restricted steps. True if the fugacities agree to
/// 1e-11, or to the rounding of the equation of state.
bool minimise(const Conditions& c, const double* z, const double* d, Split& split);

/// The minimiser on the mole amounts `x` and `y` of the phases of one mole of feed, in and out; `gibbs` is the Gibbs
/// energy of the feed. False on failure, with the amounts that were reached.
bool solmin(const Conditions& c, const double* z, double gibbs, double* x, double* y);

/// Newton's method alone, for a start close to the solution: it may pass the boundaries of the two-phase region on the
/// way. True as `minimise`; beta is then still to be looked at.
bool polish(const Conditions& c, const double* z, const double* d, Split& split);

/// Starts from a trial phase that lies below the tangent plane of the feed: an amount of it small enough to lower the
/// Gibbs energy is taken from the feed, then `minimise`.
bool minimise_from_trial(const Conditions& c, const double* z, const double* d, const double* trial, Split& split);

/// ln f_v - ln f_l of the components in the feed, 0 of the others, whose ln K is set; `error` becomes the largest.
Vector compare_fugacities(int n, const double* z, Split& split);

/// The change of ln K that belongs to a step in the scaled amounts.
Vector lnk_of_step(int n, const Vector& scale, const Vector& step);

/// Two different phases of equal fugacities.
bool in_equilibrium(int n, const double* z, const Split& split);

/// In equilibrium, and not above the feed.
bool acceptable(const Conditions& c, const double* z, const Split& split);

/// The tangent plane that the phases of a split share: ln x + lnphi, of each component in the phase with more of it.
Vector plane_of(int n, const double* z, const Split& split);

/// True for one phase that is rather a vapour: less dense than the critical packing fraction of about 0.13.
bool is_vapour_like(const Conditions& c, const Phase& phase);

/// Calls the phase of larger molar volume the vapour.
void set_labels(int n, Split& split);

}  // namespace tessarel::flash
