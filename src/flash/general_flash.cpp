#include "flash/general_flash.hpp"

#include <algorithm>

#include "eos/pressure.hpp"
#include "flash/general_flash_steps.hpp"
#include "flash/stability.hpp"
#include "flash/work.hpp"
#include "fluid/ideal_gas.hpp"

namespace tessarel::flash {

using fluid::gas_constant;

/// Newton's method on ln K, t and p at once, or the same with ideal mixtures, which is substitution.
End GeneralFlash::iterate(Equilibrium& e, Mixing mixing, int passes) {
  const auto n = at(fluid_.n);
  double last_size = 1e300;
  int settled = 0;
  for (int pass = 0; pass < passes; ++pass) {
    if (!e.linearise(state_.t, state_.p, state_.split, mixing)) return End::stuck;
    double dt = 0, dp = 0;
    const Following following{e.h_g, e.s_g, e.v_g, e.beta_g, e.split.beta, e.beta_t, e.beta_p};
    if (!spec_.step(e.overall, e.t, e.p, following, dt, dp)) return End::stuck;
    Vector gradient, delta;
    double factor = 1.0;
    for (std::size_t i = 0; i < n; ++i) gradient[i] = e.g[i] + e.g_t[i] * dt + e.g_p[i] * dp;
    e.change_of_lnk(gradient, delta);
    double size = step_size(e.overall, e.t, e.p, dt, dp), lnk_change = 0;
    for (std::size_t i = 0; i < n; ++i)
      if (fluid_.z[i] > 0) lnk_change = std::max(lnk_change, std::abs(delta[i]));
    factor = std::min({1.0, 0.1 * e.t / std::abs(dt), 0.4 * e.p / std::abs(dp), 3.0 / lnk_change});
    size = std::max(size, lnk_change);
    if (!std::isfinite(size)) return End::stuck;
    // Converged to the tolerance, and further steps are rounding. Near a critical point rounding of the fugacities
    // alone moves the phases by 1e-9 and more.
    const double reached = e.split.error < 1e-12 ? 1e-7 : 1e-10;
    if (mixing == Mixing::real && size < reached && (size < 1e-13 || size >= 0.5 * last_size) &&
        (spec_.distance(e.overall, e.t, e.p, following) < 1e-12 || ++settled > 3))
      return End::converged;
    last_size = size;
    Split next = e.split;
    for (int halving = 0;; ++halving) {
      for (std::size_t i = 0; i < n; ++i) next.lnk[i] = e.split.lnk[i] + factor * delta[i];
      next.beta = e.split.beta;
      const bool solved = balance(fluid_.n, fluid_.z, next);
      if (solved && next.beta > 0 && next.beta < 1) break;
      if (halving == 3) return solved && next.beta >= 1 ? End::liquid_vanished : End::vapour_vanished;
      factor *= 0.5;
    }
    state_.split = next;
    state_.t = e.t + factor * dt;
    state_.p = e.p + factor * dp;
  }
  return End::stuck;
}

/// The two-phase solution from `split` at the present t and p, if it is the stable state.
bool GeneralFlash::from_split(const Split& split, int substitutions) {
  state_.split = split;
  if (!balance(fluid_.n, fluid_.z, state_.split)) return false;
  const Arena::Frame frame(eos().arena());
  Equilibrium e(eos(), fluid_.n, fluid_.z);
  End end = iterate(e, Mixing::ideal, substitutions);
  if (end == End::stuck) end = iterate(e, Mixing::real, 25);
  if (end != End::converged || !in_equilibrium(fluid_.n, fluid_.z, e.split)) return false;
  state_.two_phases = true;
  state_.split = e.split;
  return !third_phase({eos(), fluid_.n, state_.t, state_.p * pascal_per_bar}, fluid_.z, e.split).found;
}

bool GeneralFlash::run_from(const Split& start, double t, double p) {
  state_.t = t;
  state_.p = p;
  return from_split(start, 0);
}

/// The feed as one phase at t and p.
void GeneralFlash::one_phase_at(double t, double p) {
  std::copy_n(fluid_.z, fluid_.n, state_.single.x.begin());
  evaluate({eos(), fluid_.n, t, p * pascal_per_bar}, state_.single);
}

/// The one-phase solution: a secant over t, p from v at once, or Newton's method.
bool GeneralFlash::single_phase() {
  if (spec_.given == Given::ts || spec_.given == Given::hs) return single_by_newton();
  Phase& phase = state_.single;
  std::copy_n(fluid_.z, fluid_.n, phase.x.begin());
  const auto properties_at = [&](double t) {
    if (spec_.varies_p()) {
      phase.rho = fluid::avogadro_factor / spec_.second / gas_constant * pascal_per_bar;
      state_.p = eos::calc_p_rho(eos(), fluid_.n, phase.x.data(), t, phase.rho) / pascal_per_bar;
    } else {
      one_phase_at(t, state_.p);
    }
    return phase_properties(eos(), fluid_.n, phase, t, state_.p);
  };
  if (!spec_.varies_t()) {
    properties_at(state_.t);
    return state_.p > 0 && std::isfinite(state_.p);
  }
  double lo = 0.9 * range_.lowest_t, hi = 1.1 * range_.highest_t,
         t = std::clamp(state_.t, range_.lowest_t, range_.highest_t), last_t = 0, last_error = 0;
  for (int pass = 0; pass < 100; ++pass) {
    const Properties one = properties_at(t);
    const double error = spec_.residual(one, t, state_.p);
    if (!std::isfinite(error)) return false;
    (error > 0 ? hi : lo) = t;
    double step = error > 0 ? -30.0 : 30.0;
    if (pass > 0) {
      const double slope = (error - last_error) / (t - last_t);
      // Of v a jump shows against its own slope, of the others against the heat capacity of the ideal gas.
      const double steep = spec_.given == Given::vp
                               ? std::abs(one.v_t)
                               : fluid::calc_cp0mix(eos().parameters(), fluid_.n, fluid_.z, t) / gas_constant;
      const bool entropy = spec_.searched() == Property::s;
      if (hi - lo < 0.5 && slope * (entropy ? t : 1.0) > 10.0 * steep)
        return false;  // a jump: no one-phase state has this value
      step = std::clamp(-error / slope, -30.0, 30.0);
    }
    if (t + step > hi) step = 0.5 * (hi - t);
    if (t + step < lo) step = 0.5 * (lo - t);
    if (!(t + step >= range_.lowest_t && t + step <= range_.highest_t)) return false;
    last_t = t;
    last_error = error;
    t += step;
    if (std::abs(step) < 0.0001) break;
  }
  state_.t = t;
  properties_at(t);
  return state_.p > 0 && std::isfinite(state_.p);
}

/// The one-phase solution by restricted Newton steps in t and ln p.
bool GeneralFlash::single_by_newton() {
  for (int pass = 0; pass < 30; ++pass) {
    one_phase_at(state_.t, state_.p);
    const Properties one = phase_properties(eos(), fluid_.n, state_.single, state_.t, state_.p);
    double dt = 0, dp = 0;
    if (!spec_.step(one, state_.t, state_.p, {}, dt, dp)) return false;
    if (step_size(one, state_.t, state_.p, dt, dp) < 1e-4) return true;
    state_.t =
        std::clamp(state_.t + std::clamp(dt, -0.1 * state_.t, 0.1 * state_.t), range_.lowest_t, range_.highest_t);
    // A gas is linear in ln p, a liquid in p.
    const double relative = dp / state_.p;
    const double next = is_vapour_like({eos(), fluid_.n, state_.t, state_.p * pascal_per_bar}, state_.single)
                            ? state_.p * std::exp(std::clamp(relative, -1.0, 1.0))
                            : state_.p + std::max(dp, -0.8 * state_.p);
    state_.p = std::clamp(next, range_.lowest_p, range_.highest_p);
  }
  return false;
}

/// One phase to rounding: Newton's method on the specification.
bool GeneralFlash::finish_one_phase() {
  double last = 1e300;
  for (int pass = 0; pass < 12; ++pass) {
    one_phase_at(state_.t, state_.p);
    const Properties one = phase_properties(eos(), fluid_.n, state_.single, state_.t, state_.p);
    double dt = 0, dp = 0;
    if (!spec_.step(one, state_.t, state_.p, {}, dt, dp)) return false;
    const double size = step_size(one, state_.t, state_.p, dt, dp);
    if (size < 1e-14 || (size < 1e-8 && size >= 0.5 * last)) return true;
    if (!(size < 0.2)) return false;
    last = size;
    state_.t += dt;
    state_.p += dp;
  }
  return last < 1e-9;
}

/// Stability by the flash at t and p, which reports one phase only then, at its stable root.
bool GeneralFlash::single_is_stable() {
  flash_ = flmain(fluid_, state_.t, state_.p * pascal_per_bar, false, nullptr, nullptr);
  return flash_.code == 3 && std::abs(flash_.single.rho / state_.single.rho - 1.0) < 1e-6;
}

/// Newton's method to rounding where a search ended.
bool GeneralFlash::polish_state() {
  if (!state_.two_phases) return finish_one_phase() && single_is_stable();
  const Arena::Frame frame(eos().arena());
  Equilibrium e(eos(), fluid_.n, fluid_.z);
  if (iterate(e, Mixing::real, 25) != End::converged || !in_equilibrium(fluid_.n, fluid_.z, e.split)) return false;
  state_.split = e.split;
  return true;
}

int GeneralFlash::run() {
  const Estimate estimate = simod(spec_.given, spec_.first, spec_.second, fluid_);
  const auto restart = [&] {
    state_.two_phases = false;
    state_.t = estimate.t;
    state_.p = estimate.p;
  };
  restart();
  if (estimate.p > range_.highest_p && (spec_.has(Property::p) || (range_.strict && spec_.has(Property::v)))) {
    one_phase_at(state_.t, state_.p);
    return left_range;
  }
  if (spec_.given == Given::tp) {
    state_.t = spec_.first;
    state_.p = spec_.second;
    whole_at_state();
    return flash_.code == 0 || flash_.code == 3 ? 0 : too_many_passes;
  }
  Split start;
  start.beta = estimate.beta;
  start.lnk = estimate.lnk;
  if (estimate.beta > 0 && estimate.beta < 1 && from_split(start, 5)) return 0;
  restart();
  if (single_phase() && state_.p <= range_.highest_p && finish_one_phase()) {
    if (single_is_stable()) return 0;
    // What it splits into is a better estimate than the ideal one.
    const Split found = flash_.split;
    if (flash_.two_phases() && from_split(found, 0)) return 0;
  }
  restart();
  const int code = search();
  if (code == 0 && polish_state()) return 0;
  restart();
  if (search_in_bracket() && polish_state()) return 0;
  // The results of a failure are those of the feed as one phase where the search stands.
  state_.two_phases = false;
  one_phase_at(state_.t, state_.p);
  return code == 0 ? too_many_passes : code;
}

namespace {

/// Fills the results from the phases found.
void write_results(const eos::Fluid& fluid, GeneralState& s) {
  Properties whole;
  if (s.two_phases) {
    set_labels(fluid.n, s.split);
    const Properties liquid = phase_properties(fluid.eos, fluid.n, s.split.liquid, s.t, s.p);
    const Properties vapour = phase_properties(fluid.eos, fluid.n, s.split.vapour, s.t, s.p);
    s.bv = s.split.beta;
    s.bl = 1.0 - s.bv;
    whole = mix(liquid, vapour, s.bv);
    s.x = s.split.liquid.x;
    s.y = s.split.vapour.x;
  } else {
    whole = phase_properties(fluid.eos, fluid.n, s.single, s.t, s.p);
    const bool vapour = is_vapour_like({fluid.eos, fluid.n, s.t, s.p * pascal_per_bar}, s.single);
    s.bv = vapour ? 1.0 : 0.0;
    s.bl = 1.0 - s.bv;
    s.x = s.y = {};
    std::copy_n(fluid.z, fluid.n, (vapour ? s.y : s.x).begin());
  }
  s.h = whole.h;
  s.s = whole.s;
  s.v = whole.v;
  s.u = whole.u(s.p);
}

}  // namespace

int genflash(Given given, double first, double second, const eos::Fluid& fluid, GeneralState& state,
             const Range& range) {
  Vector feed{};
  double sum = 0;
  for (int i = 0; i < fluid.n; ++i) sum += fluid.z[i];
  for (int i = 0; i < fluid.n; ++i) feed[at(i)] = fluid.z[i] / sum;
  const eos::Fluid normalised{fluid.eos, fluid.n, feed.data(), fluid.limits};
  Range bounded = range;
  bounded.last_pressure = std::min(range.last_pressure, fluid.eos.work.statistics.pressures + most_pressures(fluid));
  const int code = GeneralFlash(given, first, second, normalised, bounded, state).run();
  write_results(normalised, state);
  return code;
}

bool refine_split(Given given, double first, double second, const eos::Fluid& fluid, const Split& start, double t,
                  double p, GeneralState& state) {
  const Range range;
  return GeneralFlash(given, first, second, fluid, range, state).run_from(start, t, p);
}

Message calc_ab_flash(const eos::Fluid& fluid, int mode, double a, double b, AbResult& result, const Range& range) {
  constexpr double r = gas_constant;
  const double first[] = {b, b / r, b / r, a, b / r};
  const double second[] = {a / pascal_per_bar, a / pascal_per_bar, a / pascal_per_bar, b / r * pascal_per_bar,
                           a / r * pascal_per_bar};
  const auto k = at(mode - 1);
  GeneralState state;
  const int code = genflash(static_cast<Given>(mode), first[k], second[k], fluid, state, range);
  result.t = state.t;
  result.p = state.p * pascal_per_bar;
  result.u = state.u * r;
  result.h = state.h * r;
  result.s = state.s * r;
  result.v = state.v * r / pascal_per_bar;
  result.q = state.bv;
  result.x = state.x;
  result.y = state.y;
  const auto is_nan = [](double v) { return std::isnan(v); };
  const bool numbers =
      std::isfinite(state.h) && std::isfinite(state.s) && std::isfinite(state.v) && std::isfinite(state.p);
  if ((code == 0 && !numbers) || std::isnan(result.q) || std::any_of(state.x.begin(), state.x.end(), is_nan) ||
      std::any_of(state.y.begin(), state.y.end(), is_nan))
    return "Michelsen's GenFlash calculation: unexpected error, NaN's calculated...";
  switch (code) {
    case 0:
      return no_errors;
    case left_range:
      return out_of_range;
    default:
      return "Michelsen's GenFlash calculation: error code = -3";
  }
}

}  // namespace tessarel::flash
