// States of T and v, v and P, T and s.
#include <algorithm>
#include <cmath>

#include "eos/density.hpp"
#include "eos/pressure.hpp"
#include "flash/adapters.hpp"
#include "solvers/energy.hpp"
#include "solvers/phase_mix.hpp"
#include "solvers/pure_saturation.hpp"
#include "solvers/single_phase.hpp"

namespace tessarel::solvers {
namespace {

/// One phase at T and v.
void take_one_phase(const Context& context, State& state, double q) {
  const eos::Fluid& fluid = context.fluid;
  state.p = eos::calc_p(fluid.eos, fluid.n, fluid.z, state.t, state.v);
  assign(state, values_at(fluid.eos, fluid.n, fluid.z, state.t, state.p, state.v));
  state.q = q;
}

/// The feed at T and v, with the label of its density, if that is what is stable.
bool take_stable_phase(const Context& context, State& state) {
  const double p = eos::calc_p(context.fluid.eos, context.n(), context.fluid.z, state.t, state.v);
  if (!(p > 0)) return false;
  const flash::PtResult flash = flash::flmain(context.fluid, state.t, p, false, nullptr, nullptr);
  if (flash.code != 3) return false;
  if (std::abs(fluid::avogadro_factor / flash.single.rho / state.v - 1.0) > 1e-7) return false;
  take_one_phase(context, state, label_of(context, state.t, p, flash.single));
  return true;
}

Message pure_tv(const Context& context, State& state) {
  if (state.t >= context.limits().tc) {
    take_one_phase(context, state, 1.0);
    return no_errors;
  }
  PureSaturation saturation;
  if (const Message m = saturation_at_t(context.fluid, state.t, saturation); !ok(m)) return m;
  if (state.v < saturation.v_l || state.v > saturation.v_v) {
    take_one_phase(context, state, state.v < saturation.v_l ? 0.0 : 1.0);
    return no_errors;
  }
  const auto of = [&](double v) {
    return values_at(context.fluid.eos, context.n(), context.fluid.z, state.t, saturation.p, v);
  };
  const double v = state.v, range = saturation.v_v - saturation.v_l;
  state.p = saturation.p;
  state.q = range > 0 ? (v - saturation.v_l) / range : 0.0;
  assign(state, mix(of(saturation.v_l), of(saturation.v_v), state.q));
  state.v = v;
  return no_errors;
}

/// The general flash where its own range ends, which is wider than the limits of the fluid.
Message flashed_tv(const Context& context, State& state, double* x, double* y) {
  flash::AbResult r;
  flash::Range range;
  range.last_pressure = context.last_pressure;
  if (const Message m = flash::calc_ab_flash(context.fluid, 4, state.t, state.v, r, range); !ok(m)) return m;
  const double v = state.v;
  if (r.q >= 1.0 || r.q <= 0.0) {
    take_one_phase(context, state, r.q >= 1.0 ? 1.0 : 0.0);
  } else {
    state.p = r.p;
    state.q = r.q;
    assign(state, {v, r.u, r.h, r.s});
  }
  std::copy_n(r.x.begin(), context.n(), x);
  std::copy_n(r.y.begin(), context.n(), y);
  return no_errors;
}

}  // namespace

Message tv(const Context& context, State& state, double* x, double* y) {
  if (context.pure()) return pure_tv(context, state);
  if (quick_state(context, Given::tv, state, x, y)) return no_errors;
  return flashed_tv(context, state, x, y);
}

Message tv_old(const Context& context, State& state, double* x, double* y) {
  if (context.pure()) return pure_tv(context, state);
  if (quick_state(context, Given::tv, state, x, y)) return no_errors;
  const auto volume_at = [&](char what, double& p, double& v) {
    envelope::SaturationPoint point;
    const Message m = context.boundary.saturation('T', what, state.t, point);
    if (!ok(m)) return m;
    p = point.result * flash::pascal_per_bar;
    return eos::calc_v(context.fluid.eos, context.n(), context.fluid.z, state.t, p, what == 'B' ? 1 : 2, v);
  };
  // The cricondentherm may be that of no trace yet: one phase only if it is stable.
  if (state.t >= context.limits().tcritherm && take_stable_phase(context, state)) return no_errors;
  if (!context.boundary.traced()) context.boundary.trace();
  if (state.t >= context.limits().tcritherm) {
    take_one_phase(context, state, 1.0);
    return no_errors;
  }
  double p_bubble = 0, v_bubble = 0, p_dew = 0, v_dew = 0;
  if (const Message m = volume_at('B', p_bubble, v_bubble); !ok(m)) return m;
  if (state.v < v_bubble) {
    take_one_phase(context, state, 0.0);
    return no_errors;
  }
  if (const Message m = volume_at('D', p_dew, v_dew); !ok(m)) return m;
  if (state.v > v_dew) {
    take_one_phase(context, state, 1.0);
    return no_errors;
  }
  return find_state(context, {tp, kP, kV, p_dew, p_bubble}, state, x, y);
}

namespace {

/// The steps of the search for T at v and P, for the critical data as they stand.
Message search_vp_once(const Context& context, State& state, double* x, double* y) {
  const eos::Fluid& fluid = context.fluid;
  const fluid::Limits& limits = context.limits();
  const bool pure = context.pure();
  double t_upper = limits.thighest;
  {
    State hot{limits.thighest, limits.phighest, 0, 0, 0, 0, 0};
    if (const Message m = tp_vph(fluid, hot.t, hot.p, hot.v, hot.u, hot.h, hot.s); !ok(m)) return m;
    if (state.v < hot.v) {
      State dense{0, limits.phighest, state.v, 0, 0, 0, 0};
      if (const Message m = find_state(context, {tp_l, kT, kV, limits.thighest, limits.tlowest}, dense, x, y); !ok(m))
        return m;
      t_upper = dense.t;
    }
  }
  if (state.p > (pure ? limits.pc : limits.pcribar)) {
    const double p_ref = pure ? limits.pc : limits.pcribar, t_ref = pure ? limits.tc : limits.tcritherm;
    double v_ref = pure ? 1.0 / limits.rhoc : 0.0;
    if (!pure)
      if (const Message m = eos::calc_v(fluid.eos, fluid.n, fluid.z, t_ref, state.p, 1, v_ref); !ok(m)) return m;
    double t_lower = t_ref;
    if (state.v < v_ref) {
      State dense{0, p_ref, state.v, 0, 0, 0, 0};
      if (const Message m = find_state(context, {tp_l, kT, kV, t_upper, limits.tlowest}, dense, x, y); !ok(m)) return m;
      t_lower = dense.t;
    }
    return find_state(context, {tv_1, kT, kP, t_upper + 0.001, t_lower}, state, x, y);
  }
  State dew = state;
  dew.q = 1.0;
  if (const Message m = pq(context, dew, x, y); !ok(m)) return m;
  if (state.v > dew.v) return find_state(context, {tv_1, kT, kP, limits.thighest, dew.t}, state, x, y);
  State bubble = state;
  bubble.q = 0.0;
  if (const Message m = pq(context, bubble, x, y); !ok(m)) return m;
  if (state.v < bubble.v) return find_state(context, {tp_l, kT, kV, limits.tlowest, bubble.t}, state, x, y);
  if (!pure) return find_state(context, {tp, kT, kV, dew.t, bubble.t}, state, x, y);
  const double v = state.v;
  state.t = bubble.t;
  state.q = (v - bubble.v) / (dew.v - bubble.v);
  assign(state, mix({bubble.v, bubble.u, bubble.h, bubble.s}, {dew.v, dew.u, dew.h, dew.s}, state.q));
  state.v = v;
  return no_errors;
}

}  // namespace

Message search_vp(const Context& context, State& state, double* x, double* y) {
  const State given = state;
  Message message = search_vp_once(context, state, x, y);
  if (context.pure()) {
    // The forward calculation by v has no label of its own.
    if (ok(message) && state.q == 0.0) {
      const fluid::Limits& limits = context.limits();
      PureSaturation saturation;
      const bool gas = state.t >= limits.tc ||
                       (ok(saturation_at_t(context.fluid, state.t, saturation)) && state.v >= saturation.v_v);
      if (gas) state.q = 1.0;
    }
    return message;
  }
  // One phase only if it is stable; on limits of no trace the steps are repeated with those of one.
  if (ok(message) && state.q > 0.0 && state.q < 1.0) return message;
  if (ok(message) && take_stable_phase(context, state)) {
    state.p = given.p;
    return message;
  }
  if (!context.boundary.traced() && context.boundary.trace()) {
    state = given;
    message = search_vp_once(context, state, x, y);
    if (ok(message) && (state.q <= 0.0 || state.q >= 1.0) && !take_stable_phase(context, state))
      message = brent::no_convergence;
  } else if (ok(message)) {
    message = brent::no_convergence;
  }
  // Behind the steps: the whole range.
  if (!ok(message)) {
    state = given;
    const fluid::Limits& limits = context.limits();
    if (ok(find_state(context, {tp, kT, kV, limits.thighest, limits.tlowest}, state, x, y))) return no_errors;
    state = given;
  }
  return message;
}

Message vp(const Context& context, State& state, double* x, double* y) {
  if (quick_state(context, Given::vp, state, x, y)) return no_errors;
  State found = state;
  const Message message = search_vp(context, found, x, y);
  if (ok(message) && !within_limits(context.limits(), found.t, context.limits().plowest)) return brent::not_bracketed;
  state = found;
  return message;
}

Message ts(const Context& context, State& state, double* x, double* y) {
  const eos::Fluid& fluid = context.fluid;
  const fluid::Limits& limits = context.limits();
  State dense = state, dilute = state;
  dense.p = limits.phighest;
  dilute.p = limits.plowest;
  constexpr double slack = 1e-12 * fluid::gas_constant;
  if (const Message m = tp_lph(fluid, dense.t, dense.p, dense.v, dense.u, dense.h, dense.s); !ok(m)) return m;
  // A mixture that splits at the end of the range can lie beyond one phase there.
  const auto beyond_stable = [&](State end, bool below) {
    if (context.pure() || !ok(tp(context, end, x, y))) return true;
    return below ? state.s < end.s - slack : state.s > end.s + slack;
  };
  if (state.s < dense.s - slack && beyond_stable(dense, true)) return "Input Ts: s < s(T,Pmax)";
  if (const Message m = tp_vph(fluid, dilute.t, dilute.p, dilute.v, dilute.u, dilute.h, dilute.s); !ok(m)) return m;
  if (state.s > dilute.s + slack && beyond_stable(dilute, false)) return "Input Ts: s > s(T,Pmin)";
  if (quick_state(context, Given::ts, state, x, y)) return no_errors;
  if (context.pure()) return find_state(context, {tv, kV, kS, dense.v, dilute.v}, state, x, y);
  return find_state_retrying(context, {tp, kP, kS, limits.phighest, limits.plowest}, 10, state, x, y);
}

}  // namespace tessarel::solvers
