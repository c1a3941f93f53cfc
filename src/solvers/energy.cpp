// States of v or P and one of u, h, s.
#include "solvers/energy.hpp"

#include <algorithm>
#include <cmath>

#include "eos/caloric.hpp"
#include "solvers/phase_mix.hpp"
#include "solvers/single_phase.hpp"

namespace tessarel::solvers {

constinit const Energy internal_energy = {kU,
                                          Property::u,
                                          Given::pu,
                                          Given::vu,
                                          "Input Pu: u < u(Tmin,P)",
                                          "Input Pu: u > u(Tmax,P)",
                                          "Input vu: u < u(Pmin,v)",
                                          "Input vu: u > u(Tmax,v)"};
constinit const Energy enthalpy = {kH,
                                   Property::h,
                                   Given::ph,
                                   Given::vh,
                                   "Input Ph: h < h(Tmin,P)",
                                   "Input Ph: h > h(Tmax,P)",
                                   "Input vh: h < h(Pmin,v)",
                                   "Input vh: h > h(Tmax,v)"};
constinit const Energy entropy = {kS,
                                  Property::s,
                                  Given::ps,
                                  Given::vs,
                                  "Input Ps: s < s(Tmin,P)",
                                  "Input Ps: s > s(Tmax,P)",
                                  "Input vs: s < s(Pmin,v)",
                                  "Input vs: s > s(Tmax,v)"};

namespace {

/// Rounding of an energy, so that a state at the end of the range is inside.
double rounding(const Energy& energy, const State& state) {
  constexpr double r = fluid::gas_constant;
  State copy = state;
  const double size = std::abs(entry(copy, energy.property));
  return 1e-12 * (size + (energy.index == kS ? r : r * 300.0));
}

Message one_phase(const Context& context, Solver& solver, State& s) {
  return solver(context.fluid, s.t, s.p, s.v, s.u, s.h, s.s);
}

/// Whether the stable state at an end of the range does not reach the value either.
bool stable_end_is(bool below, const Context& context, const Energy& energy, double t, double p, double value) {
  if (context.pure()) return true;
  State end{t, p, 0, 0, 0, 0, 0};
  fluid::Vector x{}, y{};
  if (!ok(tp(context, end, x.data(), y.data()))) return true;
  const double at_end = entry(end, energy.property), slack = rounding(energy, end);
  return below ? value < at_end - slack : value > at_end + slack;
}

/// The range in T at given P. The one-phase ends are the test; a mixture that splits there can lie beyond them.
Message check_range_at_p(const Context& context, const Energy& energy, State& state) {
  const fluid::Limits& limits = context.limits();
  const double value = entry(state, energy.property), slack = rounding(energy, state);
  State cold{limits.tlowest, state.p, 0, 0, 0, 0, 0}, hot{limits.thighest, state.p, 0, 0, 0, 0, 0};
  if (const Message m = one_phase(context, tp_lph, cold); !ok(m)) return m;
  if (value < entry(cold, energy.property) - slack && stable_end_is(true, context, energy, cold.t, cold.p, value))
    return energy.below_t;
  if (const Message m = one_phase(context, tp_vph, hot); !ok(m)) return m;
  if (value > entry(hot, energy.property) + slack && stable_end_is(false, context, energy, hot.t, hot.p, value))
    return energy.above_t;
  return no_errors;
}

/// The range in T at given v; `lower`, `upper` become the bracket.
Message check_range_at_v(const Context& context, const Energy& energy, State& state, double& lower, double& upper,
                         double* x, double* y) {
  const fluid::Limits& limits = context.limits();
  const double value = entry(state, energy.property), slack = rounding(energy, state);
  if (context.pure()) {
    State end{0, limits.plowest, state.v, 0, 0, 0, 0};
    const Message m = quick_state(context, Given::vp, end, x, y) ? no_errors : search_vp(context, end, x, y);
    if (!ok(m)) return m;
    if (value < entry(end, energy.property) - slack) return energy.below_p;
    lower = std::max(end.t, limits.tlowest);
  } else {
    lower = limits.tlowest + 10.0;
  }
  State hot{limits.thighest, limits.phighest, 0, 0, 0, 0, 0};
  if (const Message m = one_phase(context, tp_vph, hot); !ok(m)) return m;
  State end{limits.thighest, limits.phighest, state.v, 0, 0, 0, 0};
  if (const Message m = one_phase(context, state.v <= hot.v ? pv_1ph : tv_1ph, end); !ok(m)) return m;
  if (value > entry(end, energy.property) + slack) return energy.above_v;
  upper = end.t;
  return no_errors;
}

Message find_at_v(const Context& context, const Energy& energy, State& state, double* x, double* y) {
  double lower = 0, upper = 0;
  const Message range = check_range_at_v(context, energy, state, lower, upper, x, y);
  if (range == energy.below_p || range == energy.above_v) return range;
  if (quick_state(context, energy.with_v, state, x, y)) return no_errors;
  state.q = 1.0;
  const Message message =
      ok(range) ? find_state(context, {tv, kT, energy.index, upper, lower}, state, x, y, Behind::nothing) : range;
  if (ok(message)) return message;
  // A cold liquid lies below the bracket, or the ends of it are not to be had: the whole range.
  const fluid::Limits& limits = context.limits();
  return scan_for_state(context, {tv, kT, energy.index, limits.thighest, limits.tlowest}, state, x, y) ? no_errors
                                                                                                       : message;
}

/// What was found must lie in the range that the tests of it stand for: a bracket in T has no bounds in P.
Message at_v(const Context& context, const Energy& energy, State& state, double* x, double* y) {
  const Message message = find_at_v(context, energy, state, x, y);
  if (!ok(message) || within_limits(context.limits(), state.t, state.p)) return message;
  return state.p > context.limits().phighest ? energy.above_v : energy.below_p;
}

/// The saturated state with vapour fraction q at the P of `state`.
Message saturated(const Context& context, const State& state, double q, State& at, double* x, double* y) {
  at = {0, state.p, 0, 0, 0, 0, q};
  return pq(context, at, x, y);
}

constexpr double same_energy = 1e-6;

/// Between the saturated states.
Message between(const Context& context, const Energy& energy, const State& bubble, const State& dew, State& state,
                double* x, double* y) {
  const fluid::Limits& limits = context.limits();
  if (context.pure()) {
    State b = bubble, d = dew;
    const double value = entry(state, energy.property), at_b = entry(b, energy.property);
    const double q = (value - at_b) / (entry(d, energy.property) - at_b), p = state.p;
    state = {bubble.t, p, 0, 0, 0, 0, q};
    assign(state, mix({bubble.v, bubble.u, bubble.h, bubble.s}, {dew.v, dew.u, dew.h, dew.s}, q));
    entry(state, energy.property) = value;
    return no_errors;
  }
  const bool retrograde = state.p > limits.pc && state.p < limits.pcribar;
  return find_state(context,
                    {tp, kT, energy.index, dew.t * (retrograde ? 1.001 : 1.0), bubble.t * (retrograde ? 0.999 : 1.0)},
                    state, x, y);
}

/// The steps of pu and ps, for the critical data as they stand.
Message steps_at_p(const Context& context, const Energy& energy, State& state, double* x, double* y) {
  const fluid::Limits& limits = context.limits();
  if (state.p > (context.pure() ? limits.pc : limits.pcribar))
    return find_state(context, {tp_l, kT, energy.index, limits.thighest, limits.tlowest}, state, x, y);
  const double value = entry(state, energy.property);
  State dew{}, bubble{};
  if (const Message m = saturated(context, state, 1.0, dew, x, y); !ok(m)) return m;
  const double at_dew = entry(dew, energy.property);
  if (std::abs(value - at_dew) < same_energy) {
    state = dew;
    return no_errors;
  }
  if (value > at_dew) return find_state(context, {tp_v, kT, energy.index, dew.t, limits.thighest}, state, x, y);
  if (const Message m = saturated(context, state, 0.0, bubble, x, y); !ok(m)) return m;
  const double at_bubble = entry(bubble, energy.property);
  if (std::abs(value - at_bubble) < same_energy) {
    state = bubble;
    return no_errors;
  }
  if (value < at_bubble) return find_state(context, {tp_l, kT, energy.index, bubble.t, limits.tlowest}, state, x, y);
  return between(context, energy, bubble, dew, state, x, y);
}

/// The steps of ph, which goes on where a saturated state is not to be had.
Message steps_of_ph(const Context& context, const Energy& energy, State& state, double* x, double* y) {
  const fluid::Limits& limits = context.limits();
  if (state.p > (context.pure() ? limits.pc : limits.pcribar))
    return find_state(context, {tp_l, kT, energy.index, limits.thighest, limits.tlowest}, state, x, y);
  State dew{}, bubble{};
  const auto good = [&](double q, State& at) {
    return ok(saturated(context, state, q, at, x, y)) && !std::isnan(at.h);
  };
  const auto is_at = [&](const State& at) { return std::abs(state.h - at.h) < same_energy; };
  const auto subcooled = [&] {
    return find_state(context, {tp_l, kT, energy.index, bubble.t, limits.tlowest}, state, x, y);
  };
  if (good(1.0, dew)) {
    const bool below_dew = dew.h - same_energy > state.h;
    const bool has_bubble = !below_dew || good(0.0, bubble);
    if (is_at(dew)) {
      state = dew;
      return no_errors;
    }
    if (state.h > dew.h) return find_state(context, {tp_v, kT, energy.index, dew.t, limits.thighest}, state, x, y);
    if (!has_bubble) return find_state(context, {tp, kT, energy.index, dew.t, limits.tlowest}, state, x, y);
    if (is_at(bubble)) {
      state = bubble;
      return no_errors;
    }
    return state.h < bubble.h ? subcooled() : between(context, energy, bubble, dew, state, x, y);
  }
  if (!good(0.0, bubble))
    return find_state(context, {tp, kT, energy.index, limits.tlowest, limits.thighest}, state, x, y);
  if (is_at(bubble)) {
    state = bubble;
    return no_errors;
  }
  return state.h < bubble.h ? subcooled()
                            : find_state(context, {tp, kT, energy.index, limits.thighest, bubble.t}, state, x, y);
}

/// Whether a state is what the flash gives at its T and P; its label becomes that of the flash.
bool confirmed(const Context& context, State& state, double* x, double* y) {
  State again = state;
  if (!ok(tp(context, again, x, y))) return false;
  if (std::abs(again.v / state.v - 1.0) > 1e-6) return false;
  state.q = again.q;
  return true;
}

using Steps = Message(const Context&, const Energy&, State&, double*, double*);

Message find_at_p(const Context& context, const Energy& energy, Steps& steps, State& state, double* x, double* y) {
  if (const Message m = check_range_at_p(context, energy, state); !ok(m)) return m;
  if (quick_state(context, energy.with_p, state, x, y)) return no_errors;
  const State given = state;
  state.q = 1.0;
  Message message = steps(context, energy, state, x, y);
  if (context.pure()) {
    if (ok(message) && state.q == 0.0 && state.t >= context.limits().tc) state.q = 1.0;
    return message;
  }
  // One phase only if it is stable; on limits of no trace the steps are repeated with those of one.
  const auto stands = [&] { return ok(message) && ((state.q > 0 && state.q < 1) || confirmed(context, state, x, y)); };
  if (stands()) return message;
  if (!context.boundary.traced() && context.boundary.trace()) {
    state = given;
    message = steps(context, energy, state, x, y);
    if (stands()) return message;
  }
  const fluid::Limits& limits = context.limits();
  state = given;
  if (ok(find_state(context, {tp, kT, energy.index, limits.thighest, limits.tlowest}, state, x, y))) return no_errors;
  return ok(message) ? brent::no_convergence : message;
}

/// A saturation temperature below the range bounds a bracket, but is no state.
Message at_p(const Context& context, const Energy& energy, Steps& steps, State& state, double* x, double* y) {
  const Message message = find_at_p(context, energy, steps, state, x, y);
  if (!ok(message) || within_limits(context.limits(), state.t, context.limits().plowest)) return message;
  return state.t < context.limits().tlowest ? energy.below_t : energy.above_t;
}

Message simple_at_p(const Context& context, const Energy& energy, bool range_tests, State& state, double* x,
                    double* y) {
  if (range_tests)
    if (const Message m = check_range_at_p(context, energy, state); !ok(m)) return m;
  if (quick_state(context, energy.with_p, state, x, y)) return no_errors;
  state.q = 1.0;
  const fluid::Limits& limits = context.limits();
  return find_state_retrying(context, {tp, kT, energy.index, limits.thighest, limits.tlowest}, 5, state, x, y);
}

/// By the general flash alone, in its own range, after the quick route.
Message flashed(const Context& context, int mode, Given given, State& state, double* x, double* y) {
  if (quick_state(context, given, state, x, y)) return no_errors;
  const auto [first, second] = flash::properties_of(given);
  const double a = entry(state, first), b = entry(state, second);
  flash::AbResult r;
  flash::Range range;
  range.last_pressure = context.last_pressure;
  const Message message = flash::calc_ab_flash(context.fluid, mode, b, a, r, range);
  if (!ok(message)) return message;
  if (!within_limits(context.limits(), r.t, r.p)) return flash::out_of_range;
  state = {r.t, r.p, r.v, r.u, r.h, r.s, r.q};
  entry(state, first) = a;
  entry(state, second) = b;
  std::copy_n(r.x.begin(), context.n(), x);
  std::copy_n(r.y.begin(), context.n(), y);
  return no_errors;
}

}  // namespace

Message vu(const Context& c, State& state, double* x, double* y) {
  return at_v(c, internal_energy, state, x, y);
}
Message vh(const Context& c, State& state, double* x, double* y) {
  return at_v(c, enthalpy, state, x, y);
}
Message vs(const Context& c, State& state, double* x, double* y) {
  return at_v(c, entropy, state, x, y);
}
Message vu_new(const Context& c, State& state, double* x, double* y) {
  return c.pure() ? vu(c, state, x, y) : flashed(c, 5, Given::vu, state, x, y);
}
Message pu(const Context& c, State& state, double* x, double* y) {
  return at_p(c, internal_energy, steps_at_p, state, x, y);
}
Message ph(const Context& c, State& state, double* x, double* y) {
  return at_p(c, enthalpy, steps_of_ph, state, x, y);
}
Message ps(const Context& c, State& state, double* x, double* y) {
  return at_p(c, entropy, steps_at_p, state, x, y);
}
Message pu_simple(const Context& c, State& state, double* x, double* y) {
  return simple_at_p(c, internal_energy, true, state, x, y);
}
Message ph_simple(const Context& c, State& state, double* x, double* y) {
  return simple_at_p(c, enthalpy, false, state, x, y);
}
Message ps_simple(const Context& c, State& state, double* x, double* y) {
  return simple_at_p(c, entropy, true, state, x, y);
}
Message ph_new(const Context& c, State& state, double* x, double* y) {
  return flashed(c, 2, Given::ph, state, x, y);
}
Message ps_new(const Context& c, State& state, double* x, double* y) {
  return flashed(c, 3, Given::ps, state, x, y);
}

}  // namespace tessarel::solvers
