// At given temperature the densities of both phases follow from Newton's method on equal pressures and chemical
// potentials: to first order the pressure is that of equal areas under the isotherm,
//   p = K t (a_v - a_l + ln(rho_v / rho_l)) / (1 / rho_l - 1 / rho_v),
// and each density follows its own slope to that pressure. The temperature at given pressure is the root of that
// pressure, nearly linear as ln p over 1 / t.
#include "solvers/pure_saturation.hpp"

#include <algorithm>
#include <cmath>

#include "eos/density.hpp"
#include "eos/eta_pressure.hpp"
#include "eos/phase_root.hpp"
#include "eos/residual.hpp"
#include "flash/wilson.hpp"
#include "solvers/phase_mix.hpp"
#include "solvers/psat_tsat.hpp"

namespace tessarel::solvers {
namespace {

using eos::Fluid;

constexpr double at_critical = 1e-8;  ///< as calc_psat, calc_tsat
/// Of a mixture of which one component alone is present; calc_psat and calc_tsat know the first component only.
constexpr Message no_convergence = "No convergence calculating saturation pressure...";

/// Slope of ln p over 1 / t, negative, by Wilson's estimate [K].
double wilson_slope(const Fluid& fluid) {
  const auto present = static_cast<std::size_t>(std::max_element(fluid.z, fluid.z + fluid.n) - fluid.z);
  return flash::wilson_factor * (1.0 + fluid.eos.parameters().omega[present]) * fluid.limits.tc;
}
double estimated_p(const Fluid& fluid, double t) {
  return fluid.limits.pc * std::exp(wilson_slope(fluid) * (1.0 / fluid.limits.tc - 1.0 / t));
}

/// Newton's method from two packing fractions on the stable stretches of the isotherm.
bool solve_from(const eos::MixtureState<double>& state, double liquid, double vapour, PureSaturation& saturation) {
  const double kt = fluid::pressure_factor * state.t;
  double last = HUGE_VAL, last_p = 0, step_l = 0, step_v = 0;
  for (int pass = 0; pass < 60; ++pass) {
    const eos::EtaDerivatives l = p_eta12(state, liquid), v = p_eta12(state, vapour);
    if (!(liquid > vapour) || !std::isfinite(l.value + v.value)) return false;
    if (!(l.first > 0 && v.first > 0)) {
      // Over the end of a stretch: half the way back.
      if (std::abs(step_l) < 1e-12 * liquid && std::abs(step_v) < 1e-12 * vapour) return false;
      step_l *= 0.5;
      step_v *= 0.5;
      liquid -= step_l;
      vapour -= step_v;
      continue;
    }
    const double rho_l = liquid * state.rho_eta, rho_v = vapour * state.rho_eta;
    const double area = residual_a(state, rho_v) - residual_a(state, rho_l) + std::log(rho_v / rho_l);
    const double width = 1.0 / rho_v - 1.0 / rho_l;
    double p = -kt * area / width;
    // Far from equilibrium ln p is the better variable: it falls by the difference of ln f over that of z.
    if (!(p > 0.3 * v.value && p < 3.0 * v.value) && v.value > 0)
      p = v.value * std::exp(std::clamp(-kt * area / (v.value * width) - 1.0, -20.0, 20.0));
    step_l = std::clamp((p - l.value) / l.first, -0.2 * liquid, 0.2 * liquid);
    step_v = std::clamp((p - v.value) / v.first, -0.99 * vapour, 10.0 * vapour);
    if (!(p > 0) || !std::isfinite(step_l + step_v)) return false;
    liquid += step_l;
    vapour += step_v;
    const double size = std::max(std::abs(step_l) / liquid, std::abs(step_v) / vapour);
    // Next to the critical point the densities carry more rounding than the pressure.
    const bool settled = std::abs(p - last_p) <= 1e-13 * p && size < 1e-4;
    if (size < 1e-14 || ((size < 1e-9 || settled) && size >= 0.3 * last)) {
      if (!(liquid > vapour * (1.0 + 1e-9))) return false;
      saturation = {state.t, p, fluid::avogadro_factor / rho_l, fluid::avogadro_factor / rho_v};
      return true;
    }
    last = size;
    last_p = p;
  }
  return false;
}

/// End of a stable stretch of the isotherm, where dp/deta is 0, from the dense or the dilute side.
bool find_spinodal(const eos::MixtureState<double>& state, double start, double& eta, double& p) {
  eta = start;
  for (int pass = 0; pass < 100; ++pass) {
    const eos::EtaDerivatives d = p_eta12(state, eta);
    const double step = d.first / d.second;
    p = d.value;
    if (!std::isfinite(step)) return false;
    eta = eos::bounded_eta(eta - std::clamp(step, -0.1, 0.1));
    if (std::abs(step) < 1e-10 * eta) return true;
  }
  return false;
}

/// At `t`, from the roots at a pressure at which both phases may exist, or else from between the spinodals.
bool solve_at_t(const Fluid& fluid, double t, double start_p, PureSaturation& saturation) {
  const Arena::Frame frame(fluid.eos.arena());
  eos::MixtureState<double> state;
  prepare(fluid.eos, state, fluid.n, fluid.z, 0, t);
  const auto from_roots = [&](double p) {
    eos::RootMemory memory;
    const double liquid = eos::find_root(state, p, Root::liquid, memory),
                 vapour = eos::find_root(state, p, Root::vapour, memory);
    return liquid > vapour * (1.0 + 1e-7) && solve_from(state, liquid, vapour, saturation);
  };
  if (start_p > 0 && from_roots(start_p)) return true;
  double eta_l = 0, eta_v = 0, p_l = 0, p_v = 0;
  if (!find_spinodal(state, eos::liquid_start, eta_l, p_l) || !find_spinodal(state, eos::vapour_start, eta_v, p_v))
    return false;
  if (!(eta_l > eta_v && p_v > 0 && p_v > p_l)) return false;
  return from_roots(p_l > 0 ? 0.5 * (p_l + p_v) : 0.5 * p_v);
}

/// Volumes where a search has ended without them: those of the density roots.
void set_volumes(const Fluid& fluid, PureSaturation& s) {
  s.v_l = root_volume(fluid.eos, fluid.n, fluid.z, s.t, s.p, Root::liquid);
  s.v_v = root_volume(fluid.eos, fluid.n, fluid.z, s.t, s.p, Root::vapour);
}

}  // namespace

bool solve_saturation_at_t(const Fluid& fluid, double t, PureSaturation& saturation) {
  return t < fluid.limits.tc && solve_at_t(fluid, t, estimated_p(fluid, t), saturation);
}

bool solve_saturation_at_p(const Fluid& fluid, double p, PureSaturation& saturation) {
  const fluid::Limits& limits = fluid.limits;
  if (!(p < limits.pc)) return false;
  // 1 / t against ln p, within a bracket; the secant from the estimated slope on.
  double slope = -wilson_slope(fluid), lo = 1.0 / limits.tc, hi = 10.0 / limits.tc,
         y = lo + std::log(p / limits.pc) / slope;
  double last_y = 0, last_error = 0, smallest = HUGE_VAL;
  for (int pass = 0; pass < 80; ++pass) {
    if (!(y > lo && y < hi)) y = 0.5 * (lo + hi);
    // Beside the critical point the line can end a little before its estimate.
    if (!solve_saturation_at_t(fluid, 1.0 / y, saturation)) {
      if (1.0 / y < 0.99 * limits.tc) return false;
      lo = y;
      continue;
    }
    const double error = std::log(saturation.p / p);
    if (std::abs(error) < 1e-15 || (std::abs(error) < 1e-11 && std::abs(error) >= 0.5 * smallest) ||
        hi - lo < 4e-16 * hi) {
      saturation.p = p;
      return std::abs(error) < 1e-9;
    }
    (error > 0 ? lo : hi) = y;
    smallest = std::min(smallest, std::abs(error));
    if (last_y > 0 && error != last_error) slope = (error - last_error) / (y - last_y);
    last_y = y;
    last_error = error;
    y -= error / slope;
  }
  return false;
}

Message saturation_at_t(const Fluid& fluid, double t, PureSaturation& saturation) {
  const fluid::Limits& limits = fluid.limits;
  saturation.t = t;
  if (t >= limits.tlowest && t < limits.tc - at_critical && solve_saturation_at_t(fluid, t, saturation))
    return no_errors;
  if (fluid.n > 1) return no_convergence;
  double p = 0;
  const Message message = calc_psat(fluid, t, p);
  saturation.p = p;
  if (!ok(message)) return message;
  if (std::abs(t - limits.tc) < at_critical || !solve_at_t(fluid, t, p, saturation)) set_volumes(fluid, saturation);
  return no_errors;
}

Message saturation_at_p(const Fluid& fluid, double p, PureSaturation& saturation) {
  const fluid::Limits& limits = fluid.limits;
  if (p >= lowest_saturation_pressure && p < limits.pc - at_critical && solve_saturation_at_p(fluid, p, saturation))
    return no_errors;
  if (fluid.n > 1) return no_convergence;
  double t = 0;
  const Message message = calc_tsat(fluid, p, t);
  saturation.t = t;
  saturation.p = p;
  if (!ok(message)) return message;
  if (std::abs(p - limits.pc) < at_critical || !solve_at_t(fluid, t, p, saturation)) set_volumes(fluid, saturation);
  saturation.p = p;
  return no_errors;
}

}  // namespace tessarel::solvers
