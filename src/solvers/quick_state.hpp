// The quick routes to a stable state from two of its properties: the general flash for mixtures; for pure fluids the
// saturation line and Newton's method along isobars. In SI units.
#pragma once

#include "flash/general_flash.hpp"
#include "solvers/two_phase.hpp"

namespace tessarel::solvers {

using flash::Given;
using flash::Property;

/// The state with the properties `given` of `state`, if it is found, stable and within the limits. True then; the given
/// values stand. Else nothing is changed.
bool quick_state(const Context& context, Given given, State& state, double* x, double* y);

/// The state of a mixture at vapour fraction q, 0 < q < 1, and the T (`given` 'T') or P ('P') of `state`, the same way.
bool quick_quality(const Context& context, char given, State& state, double* x, double* y);

/// ... and at the v of `state`.
bool quick_quality_volume(const Context& context, State& state, double* x, double* y);

/// The state of a mixture with the q, 0 < q < 1, and the T, P or v (`given`) of `state`, by Newton's method from the
/// states of two phases on a line across the range: an isotherm, an isobar, an isochore.
bool quality_from_line(const Context& context, Given given, State& state, double* x, double* y);

/// The quick route of pure fluids.
bool quick_pure_state(const Context& context, Given given, State& state);

/// Whether a state lies within the limits.
bool within_limits(const fluid::Limits& limits, double t, double p);

/// The mean of the components' critical temperatures: an estimate that no trace changes.
double mean_critical_t(const eos::Fluid& fluid);

/// The entry of a state.
double& entry(State& state, Property property);

/// What the routes share: a property in the units of the general flash; two phases at t, p of `state`, as q, overall
/// values, x and y; whether all entries are numbers.
double reduced(Property property, double value);
void take_split(const Context& context, const flash::Split& split, State& state, double* x, double* y);
bool finite(const State& state);
/// A quick answer of the pair a, b becomes the state, with the pair as it was given. False if it is no finite state.
bool accept(const Context& context, Given given, double a, double b, State result, State& state);

}  // namespace tessarel::solvers
