#include "flash/general_flash.hpp"

#include <algorithm>

#include "eos/pressure.hpp"
#include "flash/adapters.hpp"
#include "flash/stability.hpp"
#include "fluid/ideal_gas.hpp"

namespace tessarel::flash {

using fluid::gas_constant;

namespace {

/// Bound on the cost of a call in evaluations of a phase. The searches in brackets took up to 3,750 in sweeps.
constexpr long long most_fugacities = 5000;
constexpr double lowest_t = 100.0, highest_t = 1000.0, highest_p = 2000.0;

/// What is asked for, and how far a state is from it.
struct Specification {
  Given given;
  double first, second;

  [[nodiscard]] bool varies_t() const { return given == Given::ph || given == Given::ps || given == Given::vu; }
  [[nodiscard]] bool varies_p() const { return given == Given::tv || given == Given::vu; }
  /// How far h, s or u are from the target; for (T, v) the volume.
  [[nodiscard]] double residual(const Properties& whole, double p) const {
    switch (given) {
      case Given::ps:
        return whole.s - first;
      case Given::vu:
        return whole.u(p) - first;
      case Given::tv:
        return whole.v - second;
      default:
        return whole.h - first;
    }
  }
  /// The steps of t and p that bring the properties, with their first-order change by the amounts, to the targets.
  /// False for a singular system.
  bool step(const Properties& whole, double t, double p, double h_g, double s_g, double v_g, double& dt,
            double& dp) const {
    dt = dp = 0;
    switch (given) {
      case Given::tp:
        return true;
      case Given::ph:
        dt = (first - whole.h - h_g) / whole.h_t;
        return std::isfinite(dt);
      case Given::ps:
        dt = (first - whole.s - s_g) / whole.s_t(t);
        return std::isfinite(dt);
      case Given::tv:
        dp = (second - whole.v - v_g) / whole.v_p;
        return std::isfinite(dp);
      case Given::vu:
        break;
    }
    const double v_error = second - whole.v - v_g, u_error = first - whole.u(p) - (h_g - p * v_g);
    const double det = whole.u_t(p) * whole.v_p - whole.u_p(p) * whole.v_t;
    dt = (u_error * whole.v_p - whole.u_p(p) * v_error) / det;
    dp = (whole.u_t(p) * v_error - whole.v_t * u_error) / det;
    return std::isfinite(dt) && std::isfinite(dp);
  }
};

/// Size of a step of t and p, relative. Of a liquid p is known no better than its volume: a step that does not change
/// the volume counts as none.
double step_size(const Properties& whole, double t, double p, double dt, double dp) {
  const double of_volume = 10.0 * std::abs(dp * whole.v_p) / whole.v;
  return std::max(std::abs(dt) / t, std::min(std::abs(dp) / p, of_volume));
}

/// Ends of the two-phase iteration; a phase that vanished is one of the first two.
enum class End { converged, liquid_vanished, vapour_vanished, stuck };

class GeneralFlash {
 public:
  GeneralFlash(Given given, double first, double second, const eos::Fluid& fluid, GeneralState& state)
      : spec_{given, first, second}, fluid_(fluid), state_(state) {}

  int run();

 private:
  bool from_split(const Split& split, int substitutions);
  End iterate(Equilibrium& equilibrium, Mixing mixing, int passes);
  bool finish_one_phase();
  bool single_phase();
  bool single_is_stable();
  int search();
  bool search_in_bracket();
  enum class Bracket { found, jump, below, above, failed };
  Bracket solve_pressure(double t);
  void one_phase_at(double t, double p);
  Properties whole_at_state();

  [[nodiscard]] const eos::Eos& eos() const { return fluid_.eos; }

  Specification spec_;
  const eos::Fluid& fluid_;
  GeneralState& state_;
  PtResult flash_{};        ///< the last inner flash
  Properties whole_{};      ///< of it
  bool exhausted_ = false;  ///< the bound on the cost of a call is reached
  const long long fugacities_before_ = fluid_.eos.work.statistics.fugacities;
  double energy_ = 0;  ///< u at the volume asked for
};

/// Newton's method on ln K, t and p at once, or the same with ideal mixtures, which is substitution.
End GeneralFlash::iterate(Equilibrium& e, Mixing mixing, int passes) {
  const auto n = at(fluid_.n);
  double last_size = 1e300;
  for (int pass = 0; pass < passes; ++pass) {
    if (!e.linearise(state_.t, state_.p, state_.split, mixing)) return End::stuck;
    double dt = 0, dp = 0;
    if (!spec_.step(e.overall, e.t, e.p, e.h_g, e.s_g, e.v_g, dt, dp)) return End::stuck;
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
    // Converged to the tolerance, and further steps are rounding.
    if (mixing == Mixing::real && size < 1e-10 && (size < 1e-13 || size >= 0.5 * last_size)) return End::converged;
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

/// The feed as one phase at t and p.
void GeneralFlash::one_phase_at(double t, double p) {
  std::copy_n(fluid_.z, fluid_.n, state_.single.x.begin());
  evaluate({eos(), fluid_.n, t, p * pascal_per_bar}, state_.single);
}

/// The one-phase solution: a secant over t, or p from v at once.
bool GeneralFlash::single_phase() {
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
  double lo = 90.0, hi = 1100.0, t = std::clamp(state_.t, lowest_t, highest_t), last_t = 0, last_error = 0;
  for (int pass = 0; pass < 100; ++pass) {
    const Properties one = properties_at(t);
    const double error = spec_.residual(one, state_.p);
    if (!std::isfinite(error)) return false;
    (error > 0 ? hi : lo) = t;
    double step = error > 0 ? -30.0 : 30.0;
    if (pass > 0) {
      const double slope = (error - last_error) / (t - last_t);
      if (hi - lo < 0.5 && slope * (spec_.given == Given::ps ? t : 1.0) >
                               10.0 * fluid::calc_cp0mix(eos().parameters(), fluid_.n, fluid_.z, t) / gas_constant)
        return false;  // a jump: no one-phase state has this value
      step = std::clamp(-error / slope, -30.0, 30.0);
    }
    if (t + step > hi) step = 0.5 * (hi - t);
    if (t + step < lo) step = 0.5 * (lo - t);
    if (!(t + step >= lowest_t && t + step <= highest_t)) return false;
    last_t = t;
    last_error = error;
    t += step;
    if (std::abs(step) < 0.0001) break;
  }
  state_.t = t;
  properties_at(t);
  return state_.p > 0 && std::isfinite(state_.p);
}

/// One phase to rounding: Newton's method on the specification.
bool GeneralFlash::finish_one_phase() {
  double last = 1e300;
  for (int pass = 0; pass < 12; ++pass) {
    one_phase_at(state_.t, state_.p);
    const Properties one = phase_properties(eos(), fluid_.n, state_.single, state_.t, state_.p);
    double dt = 0, dp = 0;
    if (!spec_.step(one, state_.t, state_.p, 0, 0, 0, dt, dp)) return false;
    const double size = step_size(one, state_.t, state_.p, dt, dp);
    if (size < 1e-14 || (size < 1e-8 && size >= 0.5 * last)) return true;
    if (!(size < 0.2)) return false;
    last = size;
    state_.t += dt;
    state_.p += dp;
  }
  return last < 1e-9;
}

/// Stability by the flash at t and p, which reports one phase only then.
bool GeneralFlash::single_is_stable() {
  flash_ = flmain(fluid_, state_.t, state_.p * pascal_per_bar, false, nullptr, nullptr);
  return flash_.code == 3;
}

/// Overall properties at t and p from the inner flash, with their derivatives along the equilibrium.
Properties GeneralFlash::whole_at_state() {
  exhausted_ = exhausted_ || eos().work.statistics.fugacities - fugacities_before_ > most_fugacities;
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
  for (int passes = 0; p <= highest_p; ++passes) {
    if (!(t >= lowest_t && t <= highest_t)) return left_range;
    if (passes > 20 || exhausted_) return too_many_passes;
    const Properties now = whole_at_state();
    const double g = now.h / t - now.s;  // reduced Gibbs energy / t
    const double r = 1.0 / t;
    // Second derivatives by ln t and ln p: the heat capacity, the mixed one, the pressure one.
    const double c = now.h_t, d = now.v_t, e = now.v_p;
    double g1 = 0, g2 = 0, h11 = 1, h12 = 0, h22 = 1, q = 0;
    switch (spec_.given) {
      case Given::tp:
        return 0;
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

/// p with the volume asked for at t: the volume falls along p. `below`: it lies below that at the lowest p. `jump`: it
/// passes the volume at once, where three phases meet; `energy_` is then that of their mixture.
GeneralFlash::Bracket GeneralFlash::solve_pressure(double t) {
  const double lowest = std::log(1e-9), highest = std::log(highest_p);
  double lo = lowest, hi = highest;
  double x = std::clamp(std::log(state_.p), lo, hi);
  struct Side {
    double v, u;
  } larger{}, smaller{};
  for (int pass = 0; pass < 60; ++pass) {
    state_.t = t;
    state_.p = std::exp(x);
    whole_ = whole_at_state();
    const double ratio = std::log(whole_.v / spec_.second);
    if (!std::isfinite(ratio) || exhausted_) return Bracket::failed;
    (ratio > 0 ? lo : hi) = x;
    (ratio > 0 ? larger : smaller) = {whole_.v, whole_.u(state_.p)};
    // d ln v / d ln p.
    const double step = -ratio * whole_.v / (whole_.v_p * state_.p), last = x;
    energy_ = whole_.u(state_.p);
    if (std::abs(step) < 1e-12 || std::abs(ratio) < 1e-15) return Bracket::found;
    x = x + step > lo && x + step < hi ? x + step : 0.5 * (lo + hi);
    if (std::abs(x - last) < 1e-12) break;
  }
  if (hi - lowest < 1e-9) return Bracket::below;
  if (highest - lo < 1e-9) return Bracket::above;
  if (!(hi - lo < 1e-9)) return Bracket::failed;
  if (larger.v - smaller.v < 1e-6 * smaller.v) return Bracket::found;
  energy_ = smaller.u + (spec_.second - smaller.v) / (larger.v - smaller.v) * (larger.u - smaller.u);
  return Bracket::jump;
}

/// The second line: h, s and u rise along t, so a bracket holds the root.
bool GeneralFlash::search_in_bracket() {
  if (spec_.given == Given::tv && !(spec_.first >= lowest_t && spec_.first <= highest_t)) return false;
  ++eos().work.statistics.bracketed_searches;
  if (spec_.given == Given::tv) return solve_pressure(spec_.first) == Bracket::found;
  double lo = lowest_t, hi = highest_t, t = std::clamp(state_.t, lo, hi);
  if (spec_.given != Given::vu && spec_.second > highest_p) return false;
  for (int pass = 0; pass < 60; ++pass) {
    double next = 0;
    if (spec_.given == Given::vu) {
      const Bracket end = solve_pressure(t);
      if (end == Bracket::failed) return false;
      // A volume that no pressure gives is that of a liquid at another temperature: it takes more heat to be so large
      // without tension, less to be so small.
      const double error = energy_ - spec_.first;
      if (end == Bracket::below || end == Bracket::above || end == Bracket::jump) {
        (end == Bracket::below || (end == Bracket::jump && error <= 0) ? lo : hi) = t;
        t = 0.5 * (lo + hi);
        continue;
      }
      (error > 0 ? hi : lo) = t;
      next = t - error / (whole_.u_t(state_.p) - whole_.u_p(state_.p) * whole_.v_t / whole_.v_p);
    } else {
      state_.t = t;
      state_.p = spec_.second;
      whole_ = whole_at_state();
      const double error = spec_.residual(whole_, state_.p);
      if (!std::isfinite(error) || exhausted_) return false;
      (error > 0 ? hi : lo) = t;
      next = t - error / (spec_.given == Given::ps ? whole_.s_t(t) : whole_.h_t);
    }
    const double last = t;
    t = next > lo && next < hi ? next : 0.5 * (lo + hi);
    if (std::abs(t - last) < 1e-10 * t) return t > lowest_t * 1.0000001 && t < highest_t * 0.9999999;
  }
  return hi - lo < 1e-8 * hi;
}

int GeneralFlash::run() {
  const Estimate estimate = simod(spec_.given, spec_.first, spec_.second, fluid_);
  state_.t = estimate.t;
  state_.p = estimate.p;
  if (estimate.p > highest_p) {
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
  state_.two_phases = false;
  state_.t = estimate.t;
  state_.p = estimate.p;
  if (single_phase() && state_.p <= highest_p && finish_one_phase()) {
    if (single_is_stable()) return 0;
    // What it splits into is a better estimate than the ideal one.
    const Split found = flash_.split;
    if (flash_.two_phases() && from_split(found, 0)) return 0;
  }
  state_.two_phases = false;
  // The search, and behind it the bracket.
  state_.t = estimate.t;
  state_.p = estimate.p;
  const auto polished = [&] {
    if (!state_.two_phases) return finish_one_phase() && single_is_stable();
    const Arena::Frame frame(eos().arena());
    Equilibrium e(eos(), fluid_.n, fluid_.z);
    if (iterate(e, Mixing::real, 25) != End::converged || !in_equilibrium(fluid_.n, fluid_.z, e.split)) return false;
    state_.split = e.split;
    return true;
  };
  int code = search();
  if (code == 0 && polished()) return 0;
  state_.t = estimate.t;
  state_.p = estimate.p;
  if (search_in_bracket() && polished()) return 0;
  // The results of a failure are those of the feed as one phase where the search stands.
  state_.two_phases = false;
  one_phase_at(state_.t, state_.p);
  return code == 0 ? too_many_passes : code;
}

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

int genflash(Given given, double first, double second, const eos::Fluid& fluid, GeneralState& state) {
  Vector feed{};
  double sum = 0;
  for (int i = 0; i < fluid.n; ++i) sum += fluid.z[i];
  for (int i = 0; i < fluid.n; ++i) feed[at(i)] = fluid.z[i] / sum;
  const eos::Fluid normalised{fluid.eos, fluid.n, feed.data(), fluid.limits};
  const int code = GeneralFlash(given, first, second, normalised, state).run();
  write_results(normalised, state);
  return code;
}

Message calc_ab_flash(const eos::Fluid& fluid, int mode, double a, double b, AbResult& result) {
  constexpr double r = gas_constant;
  const double first[] = {b, b / r, b / r, a, b / r};
  const double second[] = {a / pascal_per_bar, a / pascal_per_bar, a / pascal_per_bar, b / r * pascal_per_bar,
                           a / r * pascal_per_bar};
  const auto k = at(mode - 1);
  GeneralState state;
  const int code = genflash(static_cast<Given>(mode), first[k], second[k], fluid, state);
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
      return "Michelsen's GenFlash calculation: error code = -2";
    default:
      return "Michelsen's GenFlash calculation: error code = -3";
  }
}

}  // namespace tessarel::flash
