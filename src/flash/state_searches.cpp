// The searches of the general flash whose inner step is the flash at t and p.
#include <algorithm>

#include "flash/general_flash_steps.hpp"

namespace tessarel::flash {

/// Overall properties at t and p from the inner flash, with their derivatives along the equilibrium.
Properties GeneralFlash::whole_at_state() {
  const auto& statistics = eos().work.statistics;
  exhausted_ = exhausted_ || statistics.fugacities - fugacities_before_ > range_.most_fugacities ||
               statistics.pressures > range_.last_pressure;
  flash_ = flmain(fluid_, state_.t, state_.p * pascal_per_bar, false, nullptr, nullptr);
  state_.two_phases = flash_.two_phases();
  state_.split = flash_.split;
  state_.single = flash_.single;
  if (state_.two_phases) {
    const Arena::Frame frame(eos().arena());
    Equilibrium e(eos(), fluid_.n, fluid_.z);
    if (e.linearise(state_.t, state_.p, flash_.split)) return e.overall;
    // At the limit of stability the derivatives do not exist; the properties of one phase steer a search.
  }
  return phase_properties(eos(), fluid_.n, flash_.single, state_.t, state_.p);
}

/// The extremum of the state function of the specification in t and p. Newton's steps with the analytic second
/// derivatives, a third of the way back where the function rises.
int GeneralFlash::search() {
  ++eos().work.statistics.state_function_searches;
  double t_old = 0, p_old = 0, q_old = 1e6;
  double& t = state_.t;
  double& p = state_.p;
  for (int passes = 0; p <= range_.highest_p; ++passes) {
    if (!(t >= range_.lowest_t && t <= range_.highest_t)) return left_range;
    if (passes > 20 || exhausted_) return too_many_passes;
    const Properties now = whole_at_state();
    const double g = now.h / t - now.s;  // reduced Gibbs energy / t
    const double r = 1.0 / t;
    // Second derivatives by ln t and ln p: the heat capacity, the mixed one, the pressure one.
    const double c = now.h_t, d = now.v_t, e = now.v_p;
    double g1 = 0, g2 = 0, h11 = 1, h12 = 0, h22 = 1, q = 0;
    switch (spec_.given) {
      case Given::ph:
        g1 = (now.h - spec_.first) * r;
        q = r * spec_.first - g;
        h11 = c;
        break;
      case Given::ps:
        q = (g + spec_.first) * t / -300.0;
        g1 = (now.s - spec_.first) * t / 300.0;
        h11 = c * t / 300.0;
        break;
      case Given::tv:
        q = spec_.second * r * p - g;
        g2 = (spec_.second - now.v) * r * p;
        h22 = -e * r * p * p;
        break;
      case Given::vu:
        g2 = (spec_.second - now.v) * r * p;
        q = (spec_.first + spec_.second * p) * r - g;
        g1 = -r * (spec_.first - now.h + spec_.second * p);
        h12 = -d * p;
        h11 = c;
        h22 = -e * r * p * p;
        break;
      default:
        return too_many_passes;  // no extremum is known
    }
    if (!(q <= q_old + 1e-8)) {
      t = (2.0 * t_old + t) / 3.0;
      p = (2.0 * p_old + p) / 3.0;
      continue;
    }
    const double det = h11 * h22 - h12 * h12;
    const double dt = -((h22 * g1 - g2 * h12) / det) * t, dp = -((h11 * g2 - h12 * g1) / det) * p;
    if (!std::isfinite(dt) || !std::isfinite(dp)) return too_many_passes;
    const double factor = std::min(std::abs(dt) <= 20.0 ? 1.0 : 20.0 / std::abs(dt),
                                   std::abs(dp) <= 0.5 * p ? 1.0 : 0.5 * p / std::abs(dp));
    t_old = t;
    p_old = p;
    q_old = q;
    if (std::abs(dt) + std::abs(dp) <= 0.001) return 0;
    t += factor * dt;
    p += factor * dp;
  }
  return left_range;
}

/// p at which a property that falls along p, v or s, has its value at t. `below`: it lies below that at the lowest p.
/// `jump`: it passes the value at once, where three phases meet; `energy_` is then that of their mixture.
GeneralFlash::Bracket GeneralFlash::solve_pressure(double t, Property property, double target) {
  const double lowest = std::log(range_.lowest_p), highest = std::log(range_.highest_p);
  const bool volume = property == Property::v;
  double lo = lowest, hi = highest;
  double x = std::clamp(std::log(state_.p), lo, hi);
  struct Side {
    double value, energy;
  } larger{}, smaller{};
  const Property first = properties_of(spec_.given).first;
  for (int pass = 0; pass < 60; ++pass) {
    state_.t = t;
    state_.p = std::exp(x);
    whole_ = whole_at_state();
    const Response now = response(property, whole_, t, state_.p, {});
    // ln v and s are nearly linear in ln p.
    const double error = volume ? std::log(now.value / target) : now.value - target;
    const double slope = (volume ? now.by_p / now.value : now.by_p) * state_.p;
    if (!std::isfinite(error) || exhausted_) return Bracket::failed;
    energy_ = value_of(first);
    (error > 0 ? lo : hi) = x;
    (error > 0 ? larger : smaller) = {now.value, energy_};
    const double step = -error / slope, last = x;
    if (std::abs(step) < 1e-12 || std::abs(error) < 1e-15) return Bracket::found;
    x = x + step > lo && x + step < hi ? x + step : 0.5 * (lo + hi);
    if (std::abs(x - last) < 1e-12) break;
  }
  if (hi - lowest < 1e-9) return Bracket::below;
  if (highest - lo < 1e-9) return Bracket::above;
  if (!(hi - lo < 1e-9)) return Bracket::failed;
  if (larger.value - smaller.value < 1e-6 * std::abs(smaller.value)) return Bracket::found;
  energy_ =
      smaller.energy + (target - smaller.value) / (larger.value - smaller.value) * (larger.energy - smaller.energy);
  return Bracket::jump;
}

/// t at which a property that rises along t has its value at p. `below`: it lies below that at the highest t.
GeneralFlash::Bracket GeneralFlash::solve_temperature(double p, Property property, double target) {
  double lo = range_.lowest_t, hi = range_.highest_t, t = std::clamp(state_.t, lo, hi);
  for (int pass = 0; pass < 60; ++pass) {
    state_.t = t;
    state_.p = p;
    whole_ = whole_at_state();
    const Response now = response(property, whole_, t, p, {});
    const double error = now.value - target;
    if (!std::isfinite(error) || exhausted_) return Bracket::failed;
    (error > 0 ? hi : lo) = t;
    const double next = t - error / now.by_t, last = t;
    t = next > lo && next < hi ? next : 0.5 * (lo + hi);
    if (std::abs(t - last) < 1e-10 * t) break;
  }
  if (range_.highest_t - lo < 1e-7 * lo) return Bracket::below;
  if (hi - range_.lowest_t < 1e-7 * hi) return Bracket::above;
  return Bracket::found;
}

/// t of a pair of v and an energy: u, h and s rise along t at constant v.
bool GeneralFlash::search_over_t() {
  double lo = range_.lowest_t, hi = range_.highest_t, t = std::clamp(state_.t, lo, hi);
  const Property first = properties_of(spec_.given).first;
  for (int pass = 0; pass < 60; ++pass) {
    const Bracket end = solve_pressure(t, Property::v, spec_.second);
    if (end == Bracket::failed) return false;
    // A volume that no pressure gives is that of a liquid at another temperature: it takes more heat to be so large
    // without tension, less to be so small.
    const double error = energy_ - spec_.first;
    if (end != Bracket::found) {
      (end == Bracket::below || (end == Bracket::jump && error <= 0) ? lo : hi) = t;
      t = 0.5 * (lo + hi);
      continue;
    }
    (error > 0 ? hi : lo) = t;
    const Response e = response(first, whole_, t, state_.p, {});
    const double next = t - error / (e.by_t - e.by_p * whole_.v_t / whole_.v_p), last = t;
    t = next > lo && next < hi ? next : 0.5 * (lo + hi);
    if (std::abs(t - last) < 1e-10 * t) return t > range_.lowest_t * 1.0000001 && t < range_.highest_t * 0.9999999;
  }
  return hi - lo < 1e-8 * hi;
}

/// p of two properties that both vary with it: along an isobar `inner` has its value at one t, and `outer` falls along
/// p at constant `inner`: s at constant h by v / t, v at constant u, h or s.
bool GeneralFlash::search_over_p(Property inner, double inner_target, Property outer, double outer_target) {
  double lo = std::log(range_.lowest_p), hi = std::log(range_.highest_p);
  double x = std::clamp(std::log(state_.p), lo, hi);
  for (int pass = 0; pass < 60; ++pass) {
    const double p = std::exp(x), last = x;
    const Bracket end = solve_temperature(p, inner, inner_target);
    if (end == Bracket::failed || end == Bracket::jump) return false;
    const Response in = response(inner, whole_, state_.t, p, {}), out = response(outer, whole_, state_.t, p, {});
    if (end != Bracket::found) {
      // At the end of the range in t, the p at which the inner property comes nearer to its value.
      const bool rise = end == Bracket::below;
      (rise == (in.by_p > 0) ? lo : hi) = x;
      x = 0.5 * (lo + hi);
      continue;
    }
    // To first order in what the inner property lacks: where three phases meet it jumps, and of s and h ds = dh / t is
    // exact even there.
    const double error = out.value + (inner_target - in.value) * out.by_t / in.by_t - outer_target;
    (error > 0 ? lo : hi) = x;
    const double dp = -error / (out.by_p - out.by_t * in.by_p / in.by_t);
    // A gas is linear in ln p, a liquid in p.
    const double next = dp < 0.3 * p && dp > -0.3 * p ? std::log(p + dp) : x + dp / p;
    x = next > lo && next < hi ? next : 0.5 * (lo + hi);
    if (std::abs(x - last) < 1e-10) return true;
  }
  return hi - lo < 1e-8;
}

/// The second line: along t h, s, u and v rise, along p v and s fall, so a bracket holds the root.
bool GeneralFlash::search_in_bracket() {
  const bool t_given = !spec_.varies_t();
  if (t_given && !(spec_.first >= range_.lowest_t && spec_.first <= range_.highest_t)) return false;
  ++eos().work.statistics.bracketed_searches;
  if (t_given) return solve_pressure(spec_.first, spec_.searched(), spec_.target()) == Bracket::found;
  if (spec_.given == Given::hs) return search_over_p(Property::h, spec_.second, Property::s, spec_.first);
  if (spec_.varies_p()) {
    const double t = state_.t, p = state_.p;
    if (search_over_t()) return true;
    if (range_.strict) return false;
    // Two liquids: their volume says little about p, and much about it once t is known from the other property.
    exhausted_ = false;
    fugacities_before_ = eos().work.statistics.fugacities;
    state_.t = t;
    state_.p = p;
    return search_over_p(properties_of(spec_.given).first, spec_.first, Property::v, spec_.second);
  }
  if (spec_.second > range_.highest_p) return false;
  return solve_temperature(spec_.second, spec_.searched(), spec_.target()) == Bracket::found;
}

}  // namespace tessarel::flash
