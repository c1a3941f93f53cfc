// Properties of a state of one or two phases, from the densities of its phases.
#pragma once

#include "flash/pt_flash.hpp"
#include "solvers/two_phase.hpp"

namespace tessarel::solvers {

using eos::Root;

/// Molar values of a phase or of a whole.
struct Values {
  double v, u, h, s;
};

inline Values mix(const Values& liquid, const Values& vapour, double q) {
  const auto mean = [q](double l, double g) { return (1.0 - q) * l + q * g; };
  return {mean(liquid.v, vapour.v), mean(liquid.u, vapour.u), mean(liquid.h, vapour.h), mean(liquid.s, vapour.s)};
}
inline void assign(State& state, const Values& values) {
  state.v = values.v;
  state.u = values.u;
  state.h = values.h;
  state.s = values.s;
}

/// u, h, s of one phase of composition `x` at consistent t, p, v.
Values values_at(const eos::Eos& eos, int n, const double* x, double t, double p, double v);

/// Molar volume of the root of a phase of composition `x`; where only one root exists, of that.
double root_volume(const eos::Eos& eos, int n, const double* x, double t, double p, Root root);

/// The same with the density solver, which can fail; `phase` 1 or 2.
Message phase_at(const eos::Eos& eos, int n, const double* x, double t, double p, int phase, Values& values);

/// The vapour fraction, 0 or 1, by which a mixture at t, p that is one phase is labelled. Below tc and pc the dew
/// temperature decides, or if there is none the density; then below tc it is a liquid, else a vapour. tc and pc are
/// those of the trace, which is run where the label could depend on it.
double label_of(const Context& context, double t, double p, const flash::Phase& phase);

/// A mixture at t, p as its flash has found it, q, x and y included. `values`, if given, as `phase` of tp_ph asks. A
/// failed flash gives what its q tells, and its message.
Message flashed_state(const Context& context, const flash::PtResult& flash, int phase, State& state,
                      PhaseValues* values, double* x, double* y);

/// Fills x and y with the overall composition.
void fill_with_feed(const Context& context, double* x, double* y);

}  // namespace tessarel::solvers
