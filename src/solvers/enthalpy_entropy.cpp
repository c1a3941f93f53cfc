// States of h and s: a search for P over the states of P and h, along which s falls by v / T.
#include <cmath>

#include "eos/caloric.hpp"
#include "solvers/energy.hpp"
#include "solvers/phase_mix.hpp"
#include "solvers/single_phase.hpp"

namespace tessarel::solvers {
namespace {

/// The bracket in P for h and s, by where h lies against the saturation line.
Message bracket_for(const Context& context, const State& state, double& upper, double& lower, double* x, double* y) {
  const eos::Fluid& fluid = context.fluid;
  const fluid::Limits& limits = context.limits();
  const double h = state.h, s = state.s;
  // The volume at the critical point: rhoc stays that of the averages.
  const double v_c = root_volume(fluid.eos, fluid.n, fluid.z, limits.tc, limits.pc, Root::lower_gibbs);
  const Values critical = values_at(fluid.eos, fluid.n, fluid.z, limits.tc, limits.pc, v_c);
  if (h >= critical.h) {
    State hot{limits.thighest, limits.phighest, 0, 0, 0, 0, 0};
    if (const Message m = tp_vph(fluid, hot.t, hot.p, hot.v, hot.u, hot.h, hot.s); !ok(m)) return m;
    upper = limits.phighest;
    if (s > hot.s) {
      State end{limits.thighest, 0, 0, 0, 0, s, 0};
      if (const Message m = ts_1ph(fluid, end.t, end.p, end.v, end.u, end.h, end.s); !ok(m)) return m;
      upper = end.p;
    }
    upper -= 1.0;
    lower = limits.plowest + 10.0;
    return no_errors;
  }
  lower = limits.plowest;
  State dew{0, lower, 0, 0, 0, 0, 1.0};
  if (const Message m = pq(context, dew, x, y); !ok(m)) return m;
  // The point of the saturation line of q with the enthalpy h, between two pressures.
  const auto on_line = [&](double q, double from, double to, State& point) {
    point = {0, 0, 0, 0, h, 0, q};
    return find_state(context, {pq, kP, kH, from, to}, point, x, y);
  };
  if (h <= dew.h) {
    lower += 10.0;
    State bubble{};
    if (const Message m = on_line(0.0, limits.pc, lower, bubble); !ok(m)) return m;
    upper = s <= bubble.s ? limits.phighest - 1.0 : bubble.p;
    return no_errors;
  }
  State saturated{};
  if (const Message m = on_line(1.0, limits.pc, lower, saturated); !ok(m)) return m;
  if (s > saturated.s) {
    upper = saturated.p - 1.0;
    lower += 10.0;
    return no_errors;
  }
  State second{};
  if (context.pure()) {
    if (const Message m = on_line(0.0, limits.pc, saturated.p, second); !ok(m)) return m;
  } else {
    double q = limits.tc <= limits.tcribar ? 1.0 : 0.0;
    second = {0, limits.pcribar, 0, 0, 0, 0, q};
    if (const Message m = pq(context, second, x, y); !ok(m)) return m;
    if (std::abs(h - second.h) > 1.0) {
      double end = limits.pc;
      if (h > second.h) q = 1.0;
      if (h < second.h) {
        end = saturated.p;
        q = 0.0;
      }
      if (const Message m = on_line(q, limits.pcribar, end, second); !ok(m)) return m;
    }
  }
  upper = second.s <= s ? second.p : limits.phighest;
  lower = second.s <= s ? saturated.p : second.p;
  return no_errors;
}

}  // namespace

namespace {

/// The state found has h and s as they were given.
Message keep_given(Message message, const State& given, State& state) {
  state.h = given.h;
  state.s = given.s;
  return message;
}

}  // namespace

Message hs(const Context& context, State& state, double* x, double* y) {
  if (quick_state(context, Given::hs, state, x, y)) return no_errors;
  const State given = state;
  if (!context.pure() && !context.boundary.traced()) context.boundary.trace();
  double upper = 0, lower = 0;
  Message message = bracket_for(context, given, upper, lower, x, y);
  if (ok(message)) message = find_state(context, {ph, kP, kS, upper, lower}, state, x, y, Behind::nothing);
  if (ok(message)) return keep_given(message, given, state);
  // A liquid colder than the saturation line reaches at the lowest pressure has no bracket by it.
  state = given;
  const fluid::Limits& limits = context.limits();
  if (ok(find_state(context, {ph, kP, kS, limits.phighest, limits.plowest}, state, x, y))) message = no_errors;
  return keep_given(message, given, state);
}

Message hs_simple(const Context& context, State& state, double* x, double* y) {
  if (quick_state(context, Given::hs, state, x, y)) return no_errors;
  const fluid::Limits& limits = context.limits();
  const State given = state;
  return keep_given(find_state_retrying(context, {ph, kP, kS, limits.phighest, limits.plowest}, 25, state, x, y), given,
                    state);
}

}  // namespace tessarel::solvers
