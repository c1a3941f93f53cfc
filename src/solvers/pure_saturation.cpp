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

/// Slope of ln p over 1 / t, negative, by Wilson's estimate [K].
double wilson_slope(const Fluid& fluid) {
  return flash::wilson_factor * (1.0 + fluid.eos.parameters().omega[0]) * fluid.limits.tc;
}
double estimated_p(const Fluid& fluid, double t) {
  return fluid.limits.pc * std::exp(wilson_slope(fluid) * (1.0 / fluid.limits.tc - 1.0 / t));
}

/// Newton's method at `t` from a pressure at which both phases exist.
bool solve_at_t(const Fluid& fluid, double t, double start_p, PureSaturation& saturation) {
  const Arena::Frame frame(fluid.eos.arena());
  eos::MixtureState<double> state;
  prepare(fluid.eos, state, 1, fluid.z, 0, t);
  eos::RootMemory memory;
  double liquid = eos::find_root(state, start_p, Root::liquid, memory),
         vapour = eos::find_root(state, start_p, Root::vapour, memory);
  const double kt = fluid::pressure_factor * t;
  double last = HUGE_VAL;
  for (int pass = 0; pass < 40; ++pass) {
    const eos::EtaDerivatives l = p_eta12(state, liquid), v = p_eta12(state, vapour);
    if (!(l.first > 0 && v.first > 0 && liquid > vapour * (1.0 + 1e-7))) return false;
    const double rho_l = liquid * state.rho_eta, rho_v = vapour * state.rho_eta;
    const double area = residual_a(state, rho_v) - residual_a(state, rho_l) + std::log(rho_v / rho_l);
    const double p = kt * area / (1.0 / rho_l - 1.0 / rho_v);
    double step_l = (p - l.value) / l.first, step_v = (p - v.value) / v.first;
    if (!(p > 0) || !std::isfinite(step_l + step_v)) return false;
    step_l = std::clamp(step_l, -0.2 * liquid, 0.2 * liquid);
    step_v = std::clamp(step_v, -0.7 * vapour, 2.0 * vapour);
    liquid += step_l;
    vapour += step_v;
    const double size = std::max(std::abs(step_l) / liquid, std::abs(step_v) / vapour);
    if (size < 1e-14 || (size < 1e-9 && size >= 0.5 * last)) {
      saturation = {t, p, fluid::avogadro_factor / (liquid * state.rho_eta),
                    fluid::avogadro_factor / (vapour * state.rho_eta)};
      return true;
    }
    last = size;
  }
  return false;
}

/// Volumes where a search has ended without them: those of the density roots.
void set_volumes(const Fluid& fluid, PureSaturation& s) {
  s.v_l = root_volume(fluid.eos, 1, fluid.z, s.t, s.p, Root::liquid);
  s.v_v = root_volume(fluid.eos, 1, fluid.z, s.t, s.p, Root::vapour);
}

bool near_t(const Fluid& fluid, double t, PureSaturation& saturation) {
  return solve_at_t(fluid, t, estimated_p(fluid, t), saturation);
}

}  // namespace

Message saturation_at_t(const Fluid& fluid, double t, PureSaturation& saturation) {
  const fluid::Limits& limits = fluid.limits;
  saturation.t = t;
  if (t >= limits.tlowest && t < limits.tc - at_critical && near_t(fluid, t, saturation)) return no_errors;
  double p = 0;
  const Message message = calc_psat(fluid, t, p);
  saturation.p = p;
  if (!ok(message)) return message;
  if (std::abs(t - limits.tc) < at_critical || !solve_at_t(fluid, t, p, saturation)) set_volumes(fluid, saturation);
  return no_errors;
}

Message saturation_at_p(const Fluid& fluid, double p, PureSaturation& saturation) {
  const fluid::Limits& limits = fluid.limits;
  constexpr double lowest_pressure = 0.1;
  if (p >= lowest_pressure && p < limits.pc - at_critical) {
    // 1 / t against ln p; the secant from the estimated slope on.
    double slope = -wilson_slope(fluid), y = 1.0 / limits.tc + std::log(p / limits.pc) / slope;
    double last_y = 0, last_error = 0, smallest = HUGE_VAL;
    for (int pass = 0; pass < 30; ++pass) {
      if (!(y > 1.0 / limits.tc)) y = 0.5 * (1.0 / limits.tc + (pass > 0 ? last_y : 1.0 / limits.tlowest));
      if (!near_t(fluid, 1.0 / y, saturation)) break;
      const double error = std::log(saturation.p / p);
      if (std::abs(error) < 1e-15 || (std::abs(error) < 1e-11 && std::abs(error) >= 0.5 * smallest)) {
        saturation.p = p;
        return no_errors;
      }
      smallest = std::min(smallest, std::abs(error));
      if (pass > 0 && error != last_error) slope = (error - last_error) / (y - last_y);
      last_y = y;
      last_error = error;
      y -= error / slope;
      if (!std::isfinite(y)) break;
    }
  }
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
