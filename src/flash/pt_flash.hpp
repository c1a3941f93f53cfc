// The flash at given temperature and pressure: one phase or two, and which, from nothing but the feed.
//
// Michelsen's scheme (1982a, b): Wilson's K, a few successive substitutions, a tangent-plane test where those do not
// settle a split, then substitutions with dominant-eigenvalue steps and the second-order minimiser. Around it stand: a
// quick route, the minimiser as soon as a split is certain; more starts of the stability test before one phase is
// reported; the stability of the phases of a split; Newton's method to rounding.
#pragma once

#include <cstdint>

#include "eos/fluid.hpp"
#include "flash/split.hpp"
#include "support/text.hpp"

namespace tessarel::flash {

/// The feed as one phase: what all compositions are compared with.
struct Feed {
  Conditions c;
  const double* z;
  Phase phase;
  Vector d{};        ///< ln z + lnphi
  double gibbs = 0;  ///< sum of z d
  Vector wilson{};   ///< Wilson's estimate of ln K
};
Feed make_feed(const eos::Fluid& fluid, double t, double p);

/// The running values of the successive substitution.
struct Substitution {
  Phase liquid, vapour;
  Vector lnk{}, lnk_new{}, dlnk{};
  double beta = 0.5;
  double errk = 0, errmax = 0;  ///< sum of z dlnk^2 and largest |dlnk|
  double tmx = 0, tmy = 0;      ///< tangent-plane distances of the phases from the feed
  double gmix = 0;              ///< Gibbs energy of the split against the feed
};

/// One substitution: the material balance at `lnk`, both phases, the new ln K and the distances.
void dirsub(const Feed& feed, Substitution& s);

/// Result of a flash. `x`, `y`, `beta` as hosts get them after every ending; `split` after "No errors".
struct PtResult {
  int code = 0;  ///< 0 two phases, 1 minimiser failed, 2 stability analysis failed, 3 one phase
  double beta = 0;
  Vector x{}, y{};
  Split split;   ///< after code 0
  Phase single;  ///< the feed as one phase, at its root of lower Gibbs energy
  [[nodiscard]] bool two_phases() const { return code == 0; }
};

/// `warm`: x and y hold an earlier solution to start from, else they are not read.
PtResult flmain(const eos::Fluid& fluid, double t, double p, bool warm, const double* x, const double* y);

inline constexpr Message no_phase_split = "Michelsen's Flash calculation: no phase split detected...";

/// The text of a result: "No errors", "Michelsen's Flash calculation: no convergence second order minimizer",
/// "... no convergence stability analysis", "... no phase split detected...", "... unexpected error, NaN's
/// calculated..." for a result that is not a number.
Message message_of(int n, const PtResult& result);

/// The flash on arrays of a caller: `x`, `y` (n) in and out. A negative x[0] means that they hold an earlier solution.
Message calc_pt_flash(const eos::Fluid& fluid, double t, double p, double* x, double* y, double& beta);

/// The simple flash by successive substitution from Wilson's K, kept as it was published, with its defects: the start
/// of the vapour fraction at minus infinity, no stability test, and K as a ratio of the logarithms of the fugacity
/// coefficients. Results are of no use for calculations.
Message calc_flash_velda(const eos::Fluid& fluid, double t, double p, double* x, double* y, double& beta);

}  // namespace tessarel::flash
