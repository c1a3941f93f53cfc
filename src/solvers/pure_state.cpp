// Quick routes of pure fluids. At given P or T the saturation line tells whether there are two phases and, if not, on
// which side of it the state lies; at given v, and for h and s, a bracketed Newton search runs over such states.
#include <algorithm>
#include <cmath>

#include "eos/pressure.hpp"
#include "flash/adapters.hpp"
#include "solvers/phase_mix.hpp"
#include "solvers/pure_saturation.hpp"
#include "solvers/quick_state.hpp"

namespace tessarel::solvers {
namespace {

using flash::pascal_per_bar;
using fluid::gas_constant;

/// Ends of a search: where the value lies beyond the range, on which side.
enum class Found { yes, below, above, no };

class PureStates {
 public:
  explicit PureStates(const Context& context)
      : fluid_(context.fluid), limits_(context.limits()), eos_(context.fluid.eos) {}

  Found at_p(double p, Property property, double target, State& state) const;
  Found at_t(double t, Property property, double target, State& state) const;
  Found at_v(double v, Property property, double target, State& state) const;
  Found at_hs(double h, double s, State& state) const;

 private:
  [[nodiscard]] State one_phase(double t, double p, double v, double q) const {
    State state{t, p, 0, 0, 0, 0, q};
    assign(state, values_at(eos_, fluid_.n, fluid_.z, t, p, v));
    return state;
  }
  [[nodiscard]] State two_phases(const PureSaturation& s, const State& liquid, const State& vapour, double q) const {
    State state{s.t, s.p, 0, 0, 0, 0, q};
    assign(state, mix({liquid.v, liquid.u, liquid.h, liquid.s}, {vapour.v, vapour.u, vapour.h, vapour.s}, q));
    return state;
  }
  /// With derivatives by t and p, in SI units.
  struct Slopes {
    double value, by_t, by_p;
  };
  [[nodiscard]] Slopes slopes(const State& state, Property property) const;
  [[nodiscard]] double label(double t, bool liquid) const { return t < limits_.tc && liquid ? 0.0 : 1.0; }
  Found isobar(double p, Root root, double lo, double hi, Property property, double target, State& state) const;
  Found isotherm(double t, Root root, double lo, double hi, Property property, double target, State& state) const;

  const eos::Fluid& fluid_;
  const fluid::Limits& limits_;
  const eos::Eos& eos_;
};

PureStates::Slopes PureStates::slopes(const State& state, Property property) const {
  flash::Phase phase;
  std::copy_n(fluid_.z, fluid_.n, phase.x.begin());
  phase.rho = fluid::avogadro_factor / state.v;
  const double p = state.p / pascal_per_bar;
  const flash::Properties one = flash::phase_properties(eos_, fluid_.n, phase, state.t, p);
  const flash::Response r = flash::response(property, one, state.t, p, {});
  const double unit = property == Property::v ? gas_constant / pascal_per_bar : gas_constant;
  return {r.value * unit, r.by_t * unit, r.by_p * unit / pascal_per_bar};
}

/// Newton's method in t between two temperatures at p, for a property that rises along t.
Found PureStates::isobar(double p, Root root, double lo, double hi, Property property, double target,
                         State& state) const {
  double t = 0.5 * (lo + hi), last = HUGE_VAL;
  const double coldest = lo, hottest = hi;
  for (int pass = 0; pass < 100; ++pass) {
    const double v = root_volume(eos_, fluid_.n, fluid_.z, t, p, root);
    state = one_phase(t, p, v, 1.0);
    const Slopes now = slopes(state, property);
    const double error = entry(state, property) - target;
    if (!std::isfinite(error)) return Found::no;
    (error > 0 ? hi : lo) = t;
    double step = -error / now.by_t;
    const double size = std::abs(step) / t;
    if (size < 1e-15 || (size < 1e-11 && size >= 0.5 * last)) return Found::yes;
    last = size;
    if (!(t + step > lo && t + step < hi)) step = 0.5 * (lo + hi) - t;
    if (hi - lo < 4e-16 * hi) break;
    t += step;
  }
  const double slack = 1e-12 * t;
  if (t - coldest < slack) return Found::above;
  if (hottest - t < slack) return Found::below;
  // The root is known as well as t: what is left is rounding, or a jump.
  return std::abs(entry(state, property) - target) <= 1e-9 * (std::abs(target) + std::abs(state.h - state.u))
             ? Found::yes
             : Found::no;
}

Found PureStates::at_p(double p, Property property, double target, State& state) const {
  if (!(p < limits_.pc)) {
    const Found end = isobar(p, Root::lower_gibbs, limits_.tlowest, limits_.thighest, property, target, state);
    state.q = label(state.t, true);
    return end;
  }
  PureSaturation sat;
  if (!ok(saturation_at_p(fluid_, p, sat))) return Found::no;
  if (sat.t < limits_.tlowest) {
    const Found end = isobar(p, Root::vapour, limits_.tlowest, limits_.thighest, property, target, state);
    state.q = 1.0;
    return end;
  }
  const State liquid = one_phase(sat.t, p, sat.v_l, 0.0), vapour = one_phase(sat.t, p, sat.v_v, 1.0);
  State l = liquid, v = vapour;
  const double at_l = entry(l, property), at_v = entry(v, property);
  if (target >= at_l && target <= at_v) {
    state = two_phases(sat, liquid, vapour, at_v > at_l ? (target - at_l) / (at_v - at_l) : 0.0);
    return Found::yes;
  }
  const bool cold = target < at_l;
  const Found end = cold ? isobar(p, Root::liquid, limits_.tlowest, sat.t, property, target, state)
                         : isobar(p, Root::vapour, sat.t, limits_.thighest, property, target, state);
  state.q = cold ? 0.0 : 1.0;
  // Beyond the saturation point there is only rounding.
  if (cold && end == Found::below) state = liquid;
  if (!cold && end == Found::above) state = vapour;
  return (cold && end == Found::below) || (!cold && end == Found::above) ? Found::yes : end;
}

/// Newton's method in p between two pressures at t, for v or s, which fall along p.
Found PureStates::isotherm(double t, Root root, double lo, double hi, Property property, double target,
                           State& state) const {
  double p = root == Root::liquid ? lo : std::sqrt(lo * hi), last = HUGE_VAL;
  const double lowest = lo, highest = hi;
  for (int pass = 0; pass < 100; ++pass) {
    state = one_phase(t, p, root_volume(eos_, fluid_.n, fluid_.z, t, p, root), 1.0);
    const Slopes now = slopes(state, property);
    const double error = entry(state, property) - target;
    if (!std::isfinite(error)) return Found::no;
    (error > 0 ? lo : hi) = p;
    // Of a gas in ln p.
    double step = -error / now.by_p;
    const double size = std::abs(step) / p;
    if (size < 1e-15 || (size < 1e-11 && size >= 0.5 * last)) return Found::yes;
    last = size;
    if (root != Root::liquid && std::abs(step) > 0.1 * p) step = p * std::expm1(std::clamp(step / p, -5.0, 5.0));
    if (!(p + step > lo && p + step < hi)) step = (lo > 0 ? std::sqrt(lo * hi) : 0.5 * hi) - p;
    if (hi - lo < 4e-16 * hi) break;
    p += step;
  }
  const double slack = 1e-12 * p;
  if (p - lowest < slack) return Found::above;
  if (highest - p < slack) return Found::below;
  return std::abs(entry(state, property) - target) <= 1e-9 * (std::abs(target) + gas_constant) ? Found::yes : Found::no;
}

Found PureStates::at_t(double t, Property property, double target, State& state) const {
  const auto at_volume = [&](double q) {
    const double p = eos::calc_p(eos_, fluid_.n, fluid_.z, t, target);
    state = one_phase(t, p, target, q);
    return p > limits_.phighest ? Found::below : p < limits_.plowest ? Found::above : Found::yes;
  };
  const bool volume = property == Property::v;
  if (!(t < limits_.tc)) {
    if (volume) return at_volume(1.0);
    const Found end = isotherm(t, Root::lower_gibbs, limits_.plowest, limits_.phighest, property, target, state);
    state.q = 1.0;
    return end;
  }
  PureSaturation sat;
  if (!ok(saturation_at_t(fluid_, t, sat))) return Found::no;
  const State liquid = one_phase(t, sat.p, sat.v_l, 0.0), vapour = one_phase(t, sat.p, sat.v_v, 1.0);
  State l = liquid, v = vapour;
  const double at_l = entry(l, property), at_v = entry(v, property);
  if (target >= at_l && target <= at_v) {
    state = two_phases(sat, liquid, vapour, at_v > at_l ? (target - at_l) / (at_v - at_l) : 0.0);
    return sat.p < limits_.plowest ? Found::above : Found::yes;
  }
  const bool dense = target < at_l;
  if (volume) return at_volume(dense ? 0.0 : 1.0);
  const Found end =
      dense ? isotherm(t, Root::liquid, std::max(sat.p, limits_.plowest), limits_.phighest, property, target, state)
            : isotherm(t, Root::vapour, limits_.plowest, sat.p, property, target, state);
  state.q = dense ? 0.0 : 1.0;
  if (dense && end == Found::above) state = liquid;
  if (!dense && end == Found::below) state = vapour;
  return (dense && end == Found::above) || (!dense && end == Found::below) ? Found::yes : end;
}

/// Over t at given v. Along t u, h and s rise, by steps of Newton within one phase, by the secant across two.
Found PureStates::at_v(double v, Property property, double target, State& state) const {
  double lo = limits_.tlowest, hi = limits_.thighest, t = std::clamp(limits_.tc, lo, hi), last_size = HUGE_VAL;
  double last_t = 0, last_error = 0;
  for (int pass = 0; pass < 100; ++pass) {
    const Found end = at_t(t, Property::v, v, state);
    if (end == Found::no) return end;
    if (end != Found::yes) {
      // Too dense for the highest pressure: only colder states have this volume. Beyond the lowest one: hotter ones.
      (end == Found::below ? hi : lo) = t;
      if (hi - lo < 1e-13 * hi) return Found::no;
      t = 0.5 * (lo + hi);
      last_t = 0;
      continue;
    }
    const double error = entry(state, property) - target;
    if (!std::isfinite(error)) return Found::no;
    (error > 0 ? hi : lo) = t;
    double slope = 0;
    if (state.q > 0 && state.q < 1) {
      slope = last_t > 0 ? (error - last_error) / (t - last_t) : 0.0;
    } else {
      const Slopes now = slopes(state, property), volume = slopes(state, Property::v);
      slope = now.by_t - now.by_p * volume.by_t / volume.by_p;
    }
    double step = slope > 0 ? -error / slope : std::copysign(0.02 * t, -error);
    const double size = std::abs(step) / t;
    if (error == 0 || size < 1e-15 || (size < 1e-11 && size >= 0.5 * last_size)) return Found::yes;
    last_size = size;
    if (!(t + step > lo && t + step < hi)) step = 0.5 * (lo + hi) - t;
    if (hi - lo < 4e-16 * hi) return Found::yes;
    last_t = t;
    last_error = error;
    t += step;
  }
  return Found::no;
}

/// Over p at given h: s falls by v / t.
Found PureStates::at_hs(double h, double s, State& state) const {
  double lo = limits_.plowest, hi = limits_.phighest, p = std::min(0.1 * limits_.pc, hi), last = HUGE_VAL;
  for (int pass = 0; pass < 100; ++pass) {
    const Found end = at_p(p, Property::h, h, state);
    if (end == Found::no) return end;
    if (end != Found::yes) {
      // Colder or hotter than the range: towards pressures at which its end has the h. That of a liquid rises with the
      // pressure, as that of a dense gas does beyond its inversion; that of a gas falls.
      const bool rises = slopes(state, Property::h).by_p > 0;
      (rises == (end == Found::above) ? hi : lo) = p;
      if (hi < lo * (1.0 + 1e-13)) return Found::no;
      p = std::sqrt(lo * hi);
      continue;
    }
    const double error = state.s - s;
    (error > 0 ? lo : hi) = p;
    const double linear = error * state.t / state.v, size = std::abs(linear) / p;
    // s carries its own rounding, which a stiff liquid turns into much more of p.
    if (size < 1e-15 || (std::abs(error) < 1e-12 * (std::abs(s) + gas_constant) && size >= 0.5 * last))
      return Found::yes;
    if (hi - lo < 4e-16 * hi) return Found::yes;
    last = size;
    const double z = p * state.v / (gas_constant * state.t);
    double next = z > 0.2 ? p * std::exp(std::clamp(linear / p, -5.0, 5.0)) : p + linear;
    if (!(next > lo && next < hi)) next = std::sqrt(lo * hi);
    p = next;
  }
  return Found::no;
}

/// Whether a search has ended at the value and not at the end of its range: to more than rounding, less than a jump.
bool reached(State state, Property property, double value) {
  const double found = entry(state, property);
  const bool energy = property == Property::u || property == Property::h;
  const double scale = std::abs(value) + (energy                    ? gas_constant * state.t
                                          : property == Property::s ? gas_constant
                                                                    : 0.0);
  return std::abs(found - value) <= 1e-7 * scale;
}

}  // namespace

bool quick_pure_state(const Context& context, Given given, State& state) {
  const PureStates states(context);
  const auto [first, second] = flash::properties_of(given);
  State known = state, result{};
  const double a = entry(known, first), b = entry(known, second);
  if (second == Property::p && !within_limits(context.limits(), context.limits().tlowest, b)) return false;
  if (first == Property::t && !within_limits(context.limits(), a, context.limits().plowest)) return false;
  const Found end = given == Given::hs      ? states.at_hs(b, a, result)
                    : second == Property::p ? states.at_p(b, first, a, result)
                    : first == Property::t  ? states.at_t(a, second, b, result)
                                            : states.at_v(b, first, a, result);
  if (end != Found::yes || !within_limits(context.limits(), result.t, result.p)) return false;
  return reached(result, first, a) && reached(result, second, b) && accept(context, given, a, b, result, state);
}

}  // namespace tessarel::solvers
