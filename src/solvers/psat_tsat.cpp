#include "solvers/psat_tsat.hpp"

#include <cmath>

#include "eos/fugacity.hpp"
#include "solvers/pure_saturation.hpp"

namespace tessarel::solvers {

using eos::Fluid;
using fluid::not_computed;

namespace {

constexpr int max_evaluations = 25;
constexpr double step_tolerance = 1e-9, residual_tolerance = 1e-6;
constexpr double same_density = 1e-8;  ///< roots closer than this [1/A3] have merged into one
constexpr double at_critical = 1e-8;   ///< distance from tc [K] or pc [Pa] within which the point is critical

struct Roots {
  double lnphi_l, lnphi_v, rho_l, rho_v;

  [[nodiscard]] bool merged() const { return std::abs(rho_l - rho_v) < same_density; }
  /// The only root is on the liquid side of the critical density.
  [[nodiscard]] bool dense(const fluid::Limits& limits) const { return rho_v >= limits.rhoc * fluid::avogadro_factor; }
};

/// Newton's method for equal fugacities of both roots in `unknown`. `evaluate` gives the roots, `slopes` the
/// derivatives of both lnphi; `retreat` moves the unknown when the roots have merged. False after the limit.
template <class Evaluate, class Slopes, class Retreat>
bool equal_fugacities(const Fluid& fluid, double& unknown, Evaluate&& evaluate, Slopes&& slopes, Retreat&& retreat) {
  int count = 0;
  while (true) {
    Roots roots{};
    for (;;) {
      ++count;
      roots = evaluate(unknown);
      if (!roots.merged() || count > max_evaluations) break;
      unknown = retreat(roots.dense(fluid.limits));
    }
    const double f = roots.lnphi_l - roots.lnphi_v;
    double d_l = 0, d_v = 0;
    slopes(unknown, roots, d_l, d_v);
    const double correction = f / (d_l - d_v);
    unknown -= correction;
    if (count > max_evaluations) return false;
    if (std::abs(correction) < step_tolerance || std::abs(f) < residual_tolerance) return true;
  }
}

Fluid first_component(const Fluid& fluid) {
  static constexpr double alone = 1.0;
  return {fluid.eos, 1, &alone, fluid.limits};
}

Roots roots_at(const Fluid& fluid, double t, double p) {
  Roots r{};
  eos::calc_lnphi_rho_pure(fluid.eos, t, p, r.lnphi_l, r.lnphi_v, r.rho_l, r.rho_v);
  return r;
}

}  // namespace

Message refuse_temperature(const fluid::Limits& limits, double t) {
  if (t < limits.tlowest) return "Temperature less than minimum temperature...";
  return t >= limits.tc + at_critical ? Message("Temperature greater than critical temperature...") : no_errors;
}

Message refuse_pressure(const fluid::Limits& limits, double p) {
  if (p < lowest_saturation_pressure) return "Pressure less than minimum pressure...";
  return p >= limits.pc + at_critical ? Message("Pressure greater than critical pressure...") : no_errors;
}

Message calc_psat(const Fluid& fluid, double t, double& psat) {
  psat = not_computed;
  if (const Message refused = refuse_temperature(fluid.limits, t); !ok(refused)) return refused;
  if (std::abs(t - fluid.limits.tc) < at_critical) {
    psat = fluid.limits.pc;
    return no_errors;
  }
  if (PureSaturation found; solve_saturation_at_t(first_component(fluid), t, found)) {
    psat = found.p;
    return no_errors;
  }
  ++fluid.eos.work.statistics.iterated_saturations;
  constexpr double start = 0.1;
  double p = start;
  const bool converged = equal_fugacities(
      fluid, p, [&](double pressure) { return roots_at(fluid, t, pressure); },
      [&](double pressure, const Roots& r, double& d_l, double& d_v) {
        eos::calc_dlnphi_dp_rho_pure(t, pressure, r.rho_l, r.rho_v, d_l, d_v);
      },
      [&](bool dense) { return dense ? (p + start) / 2.0 : (fluid.limits.pc + p) / 2.0; });
  psat = p;
  return converged ? no_errors : no_saturation_pressure;
}

Message calc_tsat(const Fluid& fluid, double p, double& tsat) {
  tsat = not_computed;
  if (const Message refused = refuse_pressure(fluid.limits, p); !ok(refused)) return refused;
  if (std::abs(p - fluid.limits.pc) < at_critical) {
    tsat = fluid.limits.tc;
    return no_errors;
  }
  if (PureSaturation found; solve_saturation_at_p(first_component(fluid), p, found)) {
    tsat = found.t;
    return no_errors;
  }
  ++fluid.eos.work.statistics.iterated_saturations;
  double t = fluid.limits.tlowest;
  const bool converged = equal_fugacities(
      fluid, t, [&](double temperature) { return roots_at(fluid, temperature, p); },
      [&](double temperature, const Roots& r, double& d_l, double& d_v) {
        eos::calc_dlnphi_dt_rho_pure(fluid.eos, temperature, p, r.rho_l, r.rho_v, d_l, d_v);
      },
      [&](bool dense) { return dense ? (fluid.limits.tc + t) / 2.0 : (t + fluid.limits.tlowest) / 2.0; });
  tsat = t;
  return converged ? no_errors : no_saturation_temperature;
}

}  // namespace tessarel::solvers
