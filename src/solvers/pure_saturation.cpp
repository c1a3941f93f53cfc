#include "solvers/pure_saturation.hpp"

#include <algorithm>
#include <cmath>

#include "eos/phase_root.hpp"
#include "solvers/equal_areas.hpp"
#include "solvers/phase_mix.hpp"
#include "solvers/psat_tsat.hpp"

namespace tessarel::solvers {
namespace {

using eos::Fluid;

constexpr double at_critical = 1e-8;  ///< as calc_psat, calc_tsat

/// Acentric factor of the component that is present.
double omega_of(const Fluid& fluid) {
  const auto present = static_cast<std::size_t>(std::max_element(fluid.z, fluid.z + fluid.n) - fluid.z);
  return fluid.eos.parameters().omega[present];
}

/// ln(p / pc) of the vapour-pressure curve of Lee and Kesler (1975), and its derivative by tc / t.
struct VapourPressure {
  double ln_pr, slope;
};
VapourPressure lee_kesler(double omega, double tr) {
  const double ln_tr = std::log(tr), tr6 = std::pow(tr, 6);
  return {5.92714 - 6.09648 / tr - 1.28862 * ln_tr + 0.169347 * tr6 +
              omega * (15.2518 - 15.6875 / tr - 13.4721 * ln_tr + 0.43577 * tr6),
          -6.09648 + (1.28862 - 6.0 * 0.169347 * tr6) * tr + omega * (-15.6875 + (13.4721 - 6.0 * 0.43577 * tr6) * tr)};
}
VapourPressure lee_kesler(const Fluid& fluid, double t) {
  return lee_kesler(omega_of(fluid), std::clamp(t / fluid.limits.tc, 0.1, 1.0));
}

/// Packing fractions by corresponding states. The polynomials are least-squares fits to the 247 fluids of the data, 2 %
/// in z of the vapour and 5 % in the liquid density: starts for Newton's method.
Packings corresponding_states(const Fluid& fluid, const eos::MixtureState<double>& state) {
  const fluid::Limits& limits = fluid.limits;
  const double tr = std::clamp(state.t / limits.tc, 0.1, 1.0), x = std::sqrt(1.0 - tr);
  const double pr = std::exp(lee_kesler(fluid, state.t).ln_pr), p = limits.pc * pr;
  const double z = std::max(1.0 - 0.395 * std::sqrt(pr) - pr * (1.84 - 1.53 / tr), 0.2);
  return {std::exp(-2.041 + x * (2.955 + x * (-2.950 + x * 1.539))),
          p / (z * fluid::pressure_factor * state.t * state.rho_eta)};
}

/// At `t`, from packing fractions near those sought if any are known.
bool solve_at_t(const Fluid& fluid, double t, const Packings* near, Packings& found, PureSaturation& saturation) {
  const fluid::Limits& limits = fluid.limits;
  const Arena::Frame frame(fluid.eos.arena());
  eos::MixtureState<double> state;
  prepare(fluid.eos, state, fluid.n, fluid.z, 0, t);
  bool solved = false;
  double p = 0;
  if (near != nullptr) solved = equal_areas(state, found = *near, p);
  if (!solved) {
    constexpr double cubic_above = 0.94;
    CubicIsotherm cubic;
    if (t > cubic_above * limits.tc) cubic = cubic_isotherm(state, limits);
    if (cubic.usable) solved = equal_areas(state, found = cubic.saturated, p);
    if (!solved) solved = equal_areas(state, found = corresponding_states(fluid, state), p);
    if (!solved) {
      ++fluid.eos.work.statistics.bounded_saturations;
      solved = equal_areas_between_spinodals(state, cubic.usable ? &cubic.saturated : nullptr, found, p);
    }
    if (!solved && cubic.exact) {
      found = cubic.saturated;
      p = cubic.p;
      solved = true;
    }
  }
  if (solved) {
    const double v_eta = fluid::avogadro_factor / state.rho_eta;
    saturation = {t, p, v_eta / found.liquid, v_eta / found.vapour};
  }
  return solved;
}

/// Volumes where a search has ended without them: those of the density roots.
void set_volumes(const Fluid& fluid, PureSaturation& s) {
  s.v_l = root_volume(fluid.eos, fluid.n, fluid.z, s.t, s.p, Root::liquid);
  s.v_v = root_volume(fluid.eos, fluid.n, fluid.z, s.t, s.p, Root::vapour);
}

}  // namespace

bool solve_saturation_at_t(const Fluid& fluid, double t, PureSaturation& saturation) {
  Packings packings;
  return t < fluid.limits.tc && solve_at_t(fluid, t, nullptr, packings, saturation);
}

bool solve_saturation_at_p(const Fluid& fluid, double p, PureSaturation& saturation) {
  const fluid::Limits& limits = fluid.limits;
  if (!(p < limits.pc)) return false;
  // 1 / t against ln p, nearly a straight line, within a bracket: from Lee and Kesler's estimate, then by the secant.
  const double omega = omega_of(fluid), ln_pr = std::log(p / limits.pc);
  double lo = 1.0, hi = 10.0, y = 1.0, slope = -5.373 * (1.0 + omega);
  for (int pass = 0; pass < 4; ++pass) {
    const VapourPressure estimate = lee_kesler(omega, 1.0 / y);
    slope = estimate.slope;
    y = std::clamp(y - (estimate.ln_pr - ln_pr) / slope, lo, hi);
  }
  double last_y = 0, last_error = 0, smallest = HUGE_VAL;
  Packings packings;
  bool known = false;
  for (int pass = 0; pass < 80; ++pass) {
    if (!(y > lo && y < hi)) y = 0.5 * (lo + hi);
    known = solve_at_t(fluid, limits.tc / y, known ? &packings : nullptr, packings, saturation);
    if (!known) {
      if (y > 1.01) return false;
      // Beside the critical point the line can end a little before its estimate.
      lo = y;
      continue;
    }
    const double error = std::log(saturation.p / p), size = std::abs(error);
    if (size < 1e-13 || (size < 1e-11 && size >= 0.5 * smallest) || hi - lo < 4e-16 * hi) {
      saturation.t = limits.tc / (y - error / slope);
      saturation.p = p;
      return size < 1e-9;
    }
    (error > 0 ? lo : hi) = y;
    smallest = std::min(smallest, size);
    if (last_y > 0 && error != last_error) slope = (error - last_error) / (y - last_y);
    last_y = y;
    last_error = error;
    y -= error / slope;
  }
  return false;
}

namespace {

/// What stands behind the quick way: of a pure fluid `iterate`, calc_psat or calc_tsat; of a mixture of which one
/// component alone is present, which they do not know, their refusals and their message.
template <class Iterate>
Message stand_behind(const Fluid& fluid, Message refused, Message no_convergence, PureSaturation& saturation,
                     Iterate&& iterate) {
  if (fluid.n > 1) return ok(refused) ? no_convergence : refused;
  const Message message = iterate();
  if (ok(message)) set_volumes(fluid, saturation);
  return message;
}

}  // namespace

Message saturation_at_t(const Fluid& fluid, double t, PureSaturation& saturation) {
  const fluid::Limits& limits = fluid.limits;
  saturation.t = t;
  if (t >= limits.tlowest && t < limits.tc - at_critical && solve_saturation_at_t(fluid, t, saturation))
    return no_errors;
  return stand_behind(fluid, refuse_temperature(limits, t), no_saturation_pressure, saturation,
                      [&] { return calc_psat(fluid, t, saturation.p); });
}

Message saturation_at_p(const Fluid& fluid, double p, PureSaturation& saturation) {
  const fluid::Limits& limits = fluid.limits;
  saturation.p = p;
  if (p >= lowest_saturation_pressure && p < limits.pc - at_critical && solve_saturation_at_p(fluid, p, saturation))
    return no_errors;
  return stand_behind(fluid, refuse_pressure(limits, p), no_saturation_temperature, saturation,
                      [&] { return calc_tsat(fluid, p, saturation.t); });
}

}  // namespace tessarel::solvers
