// The flash for two of T, P, v, u, h and s (Michelsen 1999, doi:10.1016/S0378-3812(99)00092-8).
//
// The ways to the solution, in their order: from an ideal-solution estimate by substitution and Newton's method on
// fugacities and specification together; the one-phase solution, if it is stable; a search in t and p for the extremum
// of the state function whose inner step is the flash at t and p; behind these, the root of the specification over the
// flash at t and p, bracketed. All end in Newton's method to rounding.
//
// Reduced by the gas constant: t [K], p [bar], h and u [K], s, v = V / R [K/bar].
#pragma once

#include <cstdint>
#include <limits>

#include "flash/pt_flash.hpp"
#include "flash/specification.hpp"

namespace tessarel::flash {

/// Where the searches look [K, bar], and how long.
struct Range {
  double lowest_t = 100.0, highest_t = 1000.0, lowest_p = 1e-9, highest_p = 2000.0;
  bool strict = true;  ///< an ideal-solution estimate above the highest pressure ends the call
  /// Bound on the cost of a call in evaluations of a phase. The searches in brackets took up to 3,750 in sweeps.
  long long most_fugacities = 5000;
  long long last_pressure = std::numeric_limits<long long>::max();  ///< as eos::Statistics counts them
};

/// Codes of genflash: the search left its range of 100 to 1000 K and up to 2000 bar; more than 20 passes.
inline constexpr int left_range = -2, too_many_passes = -3;

/// A state found: one phase, then with bv of 0 or 1 and the other phase zeros, or two.
struct GeneralState {
  double t = 0, p = 0;
  double bv = 0, bl = 0;  ///< fractions of vapour and liquid
  Vector x{}, y{};
  double h = 0, s = 0, u = 0, v = 0;
  Split split;   ///< of two phases
  Phase single;  ///< of one phase
  bool two_phases = false;
};

/// `first` and `second`: the values of the pair (specification.hpp). `fluid.z` of any sum. Returns 0, left_range or
/// too_many_passes.
int genflash(Given given, double first, double second, const eos::Fluid& fluid, GeneralState& state,
             const Range& range = {});

/// Newton's method alone, from two phases near the solution: ln K of `start` at t and p. For all pairs, also those with
/// the vapour fraction. The fractions of the feed sum to 1. False unless it ends in a stable state of two phases.
bool refine_split(Given given, double first, double second, const eos::Fluid& fluid, const Split& start, double t,
                  double p, GeneralState& state);

/// genflash in SI units, with the pair (P,T), (P,h), (P,s), (T,v), (v,u) by `mode` 1 to 5 as a, b. Messages: "No
/// errors", "Michelsen's GenFlash calculation: error code = <code>", "Michelsen's GenFlash calculation: unexpected
/// error, NaN's calculated...". Results are written always.
inline constexpr Message out_of_range = "Michelsen's GenFlash calculation: error code = -2";
struct AbResult {
  double t = 0, p = 0, v = 0, u = 0, h = 0, s = 0, q = 0;
  Vector x{}, y{};
};
Message calc_ab_flash(const eos::Fluid& fluid, int mode, double a, double b, AbResult& result, const Range& range = {});

/// The ideal-solution estimate with Wilson's K: t and p that meet the specification, and the split there. The liquid
/// differs from the ideal gas by what the temperature dependence of K implies.
struct Estimate {
  double t = 0, p = 0, beta = 0;
  Vector lnk{};
};
Estimate simod(Given given, double first, double second, const eos::Fluid& fluid);

}  // namespace tessarel::flash
