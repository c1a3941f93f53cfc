// Stability of a phase by its tangent plane (Michelsen 1982a, doi:10.1016/0378-3812(82)85001-2): a phase is unstable
// where some other composition lies below the tangent plane to its Gibbs energy. The search is for minima of
//   tm(Y) = 1 + sum Y_i (ln Y_i + lnphi_i(Y) - d_i - 1),  d_i = ln z_i + lnphi_i(z),
// over amounts Y of a trial phase; tm below 0 anywhere proves that z splits.
#pragma once

#include <initializer_list>
#include <span>

#include "flash/split.hpp"

namespace tessarel::flash {

/// How a search ended.
struct TestResult {
  int conv = 0;          ///< 0 not converged, 1 broke off on a negative distance, 2 converged
  bool split = false;    ///< a negative distance was found
  double tm = 0;         ///< the distance reached
  bool trivial = false;  ///< the search ran into a composition that is known already
};

/// Compositions that a search is not to find again.
using Known = std::span<const double* const>;

/// The search from the amounts `y`, which become those of the trial phase: at most nine substitutions with
/// dominant-eigenvalue steps between them, then at most 20 restricted Newton steps in 2 sqrt(Y). Components with z of 0
/// stay 0. `stop_early`: it ends as soon as a negative distance is shown.
TestResult hebmin(const Conditions& c, const double* z, const double* d, Known known, bool stop_early, double* y);

/// Distance below which a trial phase proves instability.
inline constexpr double negative_distance = -1e-7;

/// A trial phase below a tangent plane.
struct Trial {
  bool found = false, all_converged = true;
  bool into_known = false;  ///< a search ended by running into what is known
  Vector y{};
  double tm = 0;
};

/// More starts than the usual two: each component nearly pure, and from those that show promise a search. A nearly pure
/// component shows promise when one substitution from it leads to amounts that add up to at least a fifth.
/// `ideal_gas`: a search from the ideal gas too; `middle`: from equal fractions. `minima`: amounts at which earlier
/// searches have converged, not to be searched for again.
struct WideStarts {
  bool ideal_gas = false, middle = false;
};
Trial search_widely(const Conditions& c, const double* z, const double* d, Known known, std::span<const Vector> minima,
                    WideStarts starts);

/// A composition below the tangent plane that the phases of a split share: there are other phases, or a third one.
Trial third_phase(const Conditions& c, const double* z, const Split& split);

/// Whether the Gibbs energy has a minimum at the tangent point itself: I + sqrt(z_i z_j) dlnphi_i/dn_j positive
/// definite. Where it has not, `y` becomes a composition beside z along the direction in which z splits.
bool locally_stable(const Conditions& c, const Phase& feed, double* y);

}  // namespace tessarel::flash
