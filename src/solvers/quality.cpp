// States of given vapour fraction, and the limits of metastable states.
#include <algorithm>
#include <cmath>

#include "eos/caloric.hpp"
#include "eos/pressure.hpp"
#include "flash/adapters.hpp"
#include "solvers/phase_mix.hpp"
#include "solvers/pure_saturation.hpp"
#include "solvers/quick_state.hpp"
#include "solvers/search.hpp"
#include "solvers/single_phase.hpp"
#include "solvers/spinodal.hpp"

namespace tessarel::solvers {
namespace {

using flash::pascal_per_bar;

constexpr Message bad_quality = "q < 0 or q > 1, out of range...";

bool is_fraction(double q) {
  return q >= 0.0 && q <= 1.0;
}

/// The two phases of a pure fluid at saturation, mixed.
void take_saturation(const Context& context, const PureSaturation& saturation, State& state) {
  const auto of = [&](double v) {
    return values_at(context.fluid.eos, context.n(), context.fluid.z, saturation.t, saturation.p, v);
  };
  state.t = saturation.t;
  state.p = saturation.p;
  if (state.q == 0.0)
    assign(state, of(saturation.v_l));
  else if (state.q == 1.0)
    assign(state, of(saturation.v_v));
  else
    assign(state, mix(of(saturation.v_l), of(saturation.v_v), state.q));
}

/// T or P of the bubble or dew point at the other of both, with the incipient phase.
Message saturation_of(const Context& context, char given, bool bubble, const State& state, double& result,
                      double* incipient) {
  envelope::SaturationPoint point;
  const Message message =
      context.boundary.saturation(given, bubble ? 'B' : 'D', given == 'T' ? state.t : state.p / pascal_per_bar, point);
  result = given == 'T' && point.result != fluid::not_computed ? point.result * pascal_per_bar : point.result;
  if (incipient != nullptr) std::copy_n((bubble ? point.y : point.x).begin(), context.n(), incipient);
  return message;
}

/// The feed at its bubble or dew point: at the root of lower Gibbs energy, where the one of its name lies above it.
void take_saturated_feed(const Context& context, bool bubble, State& state) {
  flash::Phase phase;
  std::copy_n(context.fluid.z, context.n(), phase.x.begin());
  flash::evaluate({context.fluid.eos, context.n(), state.t, state.p}, phase);
  const double named = root_volume(context.fluid.eos, context.n(), context.fluid.z, state.t, state.p,
                                   bubble ? Root::liquid : Root::vapour);
  const double v = fluid::avogadro_factor / phase.rho;
  if (std::abs(named / v - 1.0) > 1e-6) ++context.fluid.eos.work.statistics.other_roots;
  assign(state, values_at(context.fluid.eos, context.n(), context.fluid.z, state.t, state.p, v));
}

/// The search between the saturation points of a mixture.
Message search_quality(const Context& context, char given, State& state, double* x, double* y) {
  double at_bubble = 0, at_dew = 0;
  if (const Message m = saturation_of(context, given, true, state, at_bubble, nullptr); !ok(m)) return m;
  if (const Message m = saturation_of(context, given, false, state, at_dew, nullptr); !ok(m)) return m;
  const fluid::Limits& limits = context.limits();
  const bool by_p = given == 'P';
  double extreme = 0;
  Message message = no_errors;
  // Above the critical point q has an extreme between the two, and the search stays on one side of it.
  if (by_p && state.p > limits.pc) {
    if (limits.tc > limits.tcribar)
      message = brent_extreme(context, 1, 1, state.p, at_dew, at_bubble, at_dew, extreme);
    else
      message = brent_extreme(context, 1, 0, state.p, at_dew, at_bubble, at_bubble, extreme);
  } else if (!by_p && state.t >= limits.tc) {
    message = brent_extreme(context, 0, 0, state.t, at_bubble, at_dew, at_bubble, extreme);
  }
  if (!ok(message)) return message;
  message = by_p ? find_state(context, {tp, kT, kQ, at_dew, at_bubble}, state, x, y)
                 : find_state(context, {tp, kP, kQ, at_bubble, at_dew}, state, x, y);
  if (message == brent::not_bracketed)
    return by_p ? Message("For this input of P and q no solution exists...")
                : Message("For this input of T and q no solution exists...");
  return message;
}

/// pq and tq: `given` 'P' or 'T'.
Message at_quality(const Context& context, char given, State& state, double* x, double* y) {
  if (!is_fraction(state.q)) return bad_quality;
  const bool by_p = given == 'P';
  if (context.pure()) {
    PureSaturation saturation;
    const Message message = by_p ? saturation_at_p(context.fluid, state.p, saturation)
                                 : saturation_at_t(context.fluid, state.t, saturation);
    if (ok(message)) take_saturation(context, saturation, state);
    return message;
  }
  double& unknown = by_p ? state.t : state.p;
  if (state.q == 0.0 || state.q == 1.0) {
    const bool bubble = state.q == 0.0;
    const Message message = saturation_of(context, given, bubble, state, unknown, bubble ? y : x);
    if (ok(message)) take_saturated_feed(context, bubble, state);
    return message;
  }
  if (quick_quality(context, given, state, x, y)) return no_errors;
  // Newton's method from the flashes of a line takes a tenth of the search between the saturation points.
  if (context.quick && quality_from_line(context, by_p ? Given::pq : Given::tq, state, x, y)) return no_errors;
  const Message message = search_quality(context, given, state, x, y);
  if (ok(message)) return message;
  // Behind it the whole range, if the value given lies in it.
  const fluid::Limits& limits = context.limits();
  if (!(by_p ? within_limits(limits, limits.tlowest, state.p) : within_limits(limits, state.t, limits.plowest)))
    return message;
  const Bracket range =
      by_p ? Bracket{tp, kT, kQ, limits.tlowest, std::min(limits.thighest, 2.0 * mean_critical_t(context.fluid))}
           : Bracket{tp, kP, kQ, limits.plowest, limits.phighest};
  return scan_for_state(context, range, state, x, y) ? no_errors : message;
}

}  // namespace

Message pq(const Context& context, State& state, double* x, double* y) {
  return at_quality(context, 'P', state, x, y);
}
Message tq(const Context& context, State& state, double* x, double* y) {
  return at_quality(context, 'T', state, x, y);
}

namespace {

/// tv by its quick route alone.
Message quick_tv(const Context& context, State& state, double* x, double* y) {
  return quick_state(context, Given::tv, state, x, y) ? no_errors : brent::no_convergence;
}

constexpr Message many_roots = "Input vq: v root not bracketed. Multiple v roots exist for q.";

/// Temperature at which the traced line has the volume v, by bisection over its points.
Message temperature_on_line(const Context& context, const State& state, double& t, double* x, double* y) {
  const envelope::Table& table = context.boundary.table();
  const auto n = fluid::at(context.n());
  const auto at_point = [&](int k, double& t_k, double& v_k) {
    const envelope::Point& point = table.point(k);
    State at_k = state;
    at_k.t = t_k = std::exp(point[n]);
    at_k.p = std::exp(point[n + 1]) * pascal_per_bar;
    const Message message = tp(context, at_k, x, y);
    v_k = at_k.v;
    return message;
  };
  int lo = 1, hi = table.npnt, k = 1, last_lo = 0, last_hi = 0;
  while (k < table.npnt) {
    k = (lo + hi) / 2;
    if (k < 1 || k >= table.npnt || (lo == last_lo && hi == last_hi)) break;
    last_lo = lo;
    last_hi = hi;
    double t1 = 0, v1 = 0, t2 = 0, v2 = 0;
    if (const Message m = at_point(k, t1, v1); !ok(m)) return m;
    if (const Message m = at_point(k + 1, t2, v2); !ok(m)) return m;
    if ((state.v - v1) * (state.v - v2) <= 0) {
      t = t1 + (state.v - v1) / (v2 - v1) * (t2 - t1);
      return no_errors;
    }
    const bool up = table.vap_idx == 1 ? state.v <= v1 && state.v < v2 : state.v >= v1 && state.v > v2;
    if (up)
      lo = k + 1;
    else
      hi = k;
  }
  return "3284";
}

/// Volumes at the ends of the line of q, and the temperature of its cold end. Where a line ends above the lowest
/// pressure there is none, and `no_end` tells why.
struct LineEnds {
  double t_cold = 0, v_min = 0, v_max = HUGE_VAL;
  Message no_end;
};
Message ends_of_line(const Context& context, double q, LineEnds& ends, double* x, double* y) {
  const fluid::Limits& limits = context.limits();
  const auto at_lowest = [&](double at_q, State& end) {
    end = {0, limits.plowest + 1.0, 0, 0, 0, 0, at_q};
    const Message message = pq(context, end, x, y);
    if (!ok(message)) ends.no_end = message;
    return ok(message);
  };
  const auto at_top = [&](double& v) -> Message {
    if (context.pure()) {
      v = 1.0 / limits.rhoc;
      return no_errors;
    }
    // The cricondenbar is that of the trace, whatever was asked for before.
    if (!context.boundary.traced()) context.boundary.trace();
    State there{limits.tcribar, limits.pcribar, 0, 0, 0, 0, 0};
    const Message message = tp(context, there, x, y);
    v = there.v;
    return message;
  };
  State end{};
  ends.t_cold = limits.tlowest;
  if (q == 0.0) {
    if (const Message m = at_top(ends.v_max); !ok(m)) return m;
  } else if (at_lowest(q, end)) {
    ends.v_max = end.v;
    ends.t_cold = std::max(end.t, context.pure() ? limits.tlowest : context.boundary.table().tmindew);
  }
  if (q == 1.0) return at_top(ends.v_min);
  if (at_lowest(0.0, end)) ends.v_min = end.v;
  return no_errors;
}

Message pure_vq(const Context& context, double t_cold, State& state, double* x, double* y) {
  const double tc = context.limits().tc, near_critical = 0.99 * tc;
  const Message message = find_state(context, {tq, kT, kV, near_critical, t_cold}, state, x, y, Behind::nothing);
  if (ok(message)) return message;
  if (ok(find_state(context, {tq, kT, kV, near_critical, tc}, state, x, y, Behind::nothing))) return no_errors;
  // Between the volumes of liquid and vapour the line has a turn, the nearer to tc the nearer q is to a half.
  for (const double cold : {t_cold, 0.98 * tc, 0.9995 * tc})
    if (scan_for_state(context, {tq, kT, kV, tc, cold}, state, x, y)) return no_errors;
  return message;
}

/// Behind the quick route of a mixture at 0 < q < 1: along the isochore.
bool vq_on_isochore(const Context& context, State& state, double* x, double* y) {
  if (!context.quick) return false;
  if (quality_from_line(context, Given::vq, state, x, y)) return true;
  const fluid::Limits& limits = context.limits();
  const double hot = std::min(limits.thighest, 1.5 * mean_critical_t(context.fluid));
  return scan_for_state(context, {quick_tv, kT, kQ, limits.tlowest, hot}, state, x, y);
}

Message mixture_vq(const Context& context, double t_cold, State& state, double* x, double* y) {
  const fluid::Limits& limits = context.limits();
  if (state.q == 0.0 || state.q == 1.0)
    return find_state(context, {pq, kP, kV, limits.pcribar, limits.plowest + 1.0}, state, x, y);
  double t = 0, least = 0;
  const Message message = state.v < 1.0 / limits.rhoc
                              ? brent_extreme(context, 2, 0, state.q, limits.tc, limits.tlowest, t, least)
                              : temperature_on_line(context, state, t, x, y);
  return ok(message) ? find_state(context, {tv, kT, kQ, t, t_cold}, state, x, y, Behind::nothing) : message;
}

}  // namespace

Message vq(const Context& context, State& state, double* x, double* y) {
  if (!is_fraction(state.q)) return bad_quality;
  const bool inside = !context.pure() && state.q > 0 && state.q < 1;
  // A state that is there needs no test of the range, whose ends are searches of their own.
  if (inside && (quick_quality_volume(context, state, x, y) || vq_on_isochore(context, state, x, y))) return no_errors;
  LineEnds ends;
  if (const Message m = ends_of_line(context, state.q, ends, x, y); !ok(m)) return m;
  const bool above = state.v > ends.v_max, below = state.v < ends.v_min;
  if (above || below) {
    // With little vapour v first falls along the line, and is largest at neither of its ends.
    if (context.pure() && state.q > 0 && state.q < 1 && ok(pure_vq(context, ends.t_cold, state, x, y)))
      return no_errors;
    // The volume at the cricondenbar is not the largest of a bubble line, nor the smallest of a dew line.
    if (!context.pure() && !inside && ok(mixture_vq(context, ends.t_cold, state, x, y))) return no_errors;
    return above ? Message("Input vq: v > vmax(Pmin,q)") : Message("Input vq: v < vmin(Pmin,q=0)");
  }
  const Message message =
      context.pure() ? pure_vq(context, ends.t_cold, state, x, y) : mixture_vq(context, ends.t_cold, state, x, y);
  if (!ok(message) && !ok(ends.no_end)) return ends.no_end;
  return message == brent::not_bracketed ? many_roots : message;
}

namespace {

/// What pm and tm share: their refusals in the order in which they are made.
Message check_metastable(const Context& context, double m, bool beyond, const Message (&texts)[3]) {
  if (m != 0.0 && m != 1.0) return texts[0];
  if (beyond) return texts[1];
  return context.n() == 1 ? no_errors : texts[2];
}

/// The spinodal volume of a branch.
Message spinodal_volume(const Context& context, double t, bool liquid, double& v) {
  double v_l = 0, v_v = 0;
  const Message message = calc_vspin(context.fluid, t, v_l, v_v);
  if (ok(message)) v = liquid ? v_l : v_v;
  return message;
}

constexpr double at_critical = 1e-8;

}  // namespace

Message pm(const Context& context, State& state, double* /*x*/, double* /*y*/) {
  const fluid::Limits& limits = context.limits();
  const bool beyond = state.p > (context.pure() ? limits.pc : limits.pcribar);
  if (const Message refused =
          check_metastable(context, state.q, beyond,
                           {"Function Pm: metastable state m = 0 (liquid) or m = 1 (vapor)",
                            "Function Pm: P > Pcr or P > Pcricondenbar while saturation state requested",
                            "Function Pm: multicomponent mixtures not allowed yet...."});
      !ok(refused))
    return refused;
  const bool liquid = state.q == 0.0;
  double t_l = 0, t_v = 0;
  // The liquid is found before the vapour, whose limit can lie below the range of temperature.
  if (const Message m = calc_tspin(context.fluid, state.p, t_l, t_v); !ok(m) && !(liquid && t_l > 0)) return m;
  state.t = liquid ? t_l : t_v;
  if (const Message m = (liquid ? tp_lph : tp_vph)(context.fluid, state.t, state.p, state.v, state.u, state.h, state.s);
      !ok(m))
    return m;
  return std::abs(limits.tc - state.t) >= at_critical ? spinodal_volume(context, state.t, liquid, state.v) : no_errors;
}

Message tm(const Context& context, State& state, double* /*x*/, double* /*y*/) {
  const fluid::Limits& limits = context.limits();
  const bool beyond = state.t > (context.pure() ? limits.tc : limits.tcritherm);
  if (const Message refused =
          check_metastable(context, state.q, beyond,
                           {"Function Tm: metastable state m = 0 (liquid) or m = 1 (vapor)",
                            "Function Tm: T > Tcr or T > Tcricondentherm while saturation state requested",
                            "Function Tm: multicomponent mixtures not allowed yet...."});
      !ok(refused))
    return refused;
  if (std::abs(limits.tc - state.t) >= at_critical) {
    if (const Message m = spinodal_volume(context, state.t, state.q == 0.0, state.v); !ok(m)) return m;
  } else {
    state.v = 1.0 / limits.rhoc;
  }
  const eos::Eos& eos = context.fluid.eos;
  state.p = eos::calc_p(eos, 1, context.fluid.z, state.t, state.v);
  if (state.p > 0) assign(state, values_at(eos, 1, context.fluid.z, state.t, state.p, state.v));
  return no_errors;
}

}  // namespace tessarel::solvers
