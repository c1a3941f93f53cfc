// The ideal-solution estimate of the general flash.
#include <algorithm>

#include "flash/adapters.hpp"
#include "flash/general_flash.hpp"
#include "flash/rachford_rice.hpp"
#include "flash/wilson.hpp"
#include "fluid/ideal_gas.hpp"

namespace tessarel::flash {

using fluid::gas_constant;

namespace {

/// The mixture of two ideal solutions at t and p.
struct IdealSolution {
  const eos::Fluid& fluid;
  double t = 0, p = 0, beta = 0;
  Vector lnk{}, x{}, y{};

  /// Splits the feed at t and p.
  void split(double t_now, double p_now) {
    t = t_now;
    p = p_now;
    lnk = wilson_lnk(fluid, t, p * pascal_per_bar);
    beta = 0.5;
    solrac(fluid.n, fluid.z, lnk.data(), x.data(), y.data(), beta);
  }
  /// Reduced enthalpy and entropy; those of the liquid from ln f_i = ln (x_i K_i p).
  void caloric(double& h, double& s) const {
    h = 0;
    s = -std::log(p);
    const fluid::Parameters& parameters = fluid.eos.parameters();
    for (int i = 0; i < fluid.n; ++i) {
      const auto k = at(i);
      const double ideal_h = fluid::ideal_enthalpy(parameters, i, t) / gas_constant;
      const double ideal_s = fluid::calc_icp0_t_dt(parameters, i, t) / gas_constant;
      const double heat = wilson_heat(fluid, i);
      const double liquid = (1.0 - beta) * x[k], vapour = beta * y[k];
      h += fluid.z[i] * ideal_h - liquid * heat;
      s += fluid.z[i] * ideal_s - liquid * (lnk[k] + heat / t);
      if (liquid > 0) s -= liquid * std::log(x[k]);
      if (vapour > 0) s -= vapour * std::log(y[k]);
    }
  }
  /// Reduced volume: the vapour an ideal gas, the liquid at 1.25 times the covolume of Peng & Robinson (1976).
  [[nodiscard]] double volume() const {
    double liquid = 0;
    for (int i = 0; i < fluid.n; ++i)
      liquid += (1.0 - beta) * x[at(i)] * 1.25 * 0.0778 * fluid.limits.tci[at(i)] / fluid.limits.pci[at(i)];
    return beta * t / p + liquid * pascal_per_bar;
  }
  /// Pressure with the volume v at t, from that of the ideal gas on.
  void split_at_volume(double t_now, double v) {
    double lo = 1e-8, hi = 2000.0;
    double p_now = std::clamp(t_now / v, lo, hi);
    for (int pass = 0; pass < 40; ++pass) {
      split(t_now, p_now);
      const double error = volume() / v;
      (error > 1.0 ? lo : hi) = p_now;
      const double next = p_now * error;  // a gas alone is there at once
      const double last = p_now;
      p_now = next > lo && next < hi ? next : std::sqrt(lo * hi);
      if (std::abs(p_now / last - 1.0) < 1e-4) break;
    }
  }
};

}  // namespace

Estimate simod(Given given, double first, double second, const eos::Fluid& fluid) {
  IdealSolution ideal{fluid};
  const bool search_t = given == Given::ph || given == Given::ps || given == Given::vu;
  const auto evaluate_at = [&](double t) {
    double h = 0, s = 0;
    if (given == Given::vu || given == Given::tv)
      ideal.split_at_volume(t, second);
    else
      ideal.split(t, second);
    ideal.caloric(h, s);
    return given == Given::ps ? s - first : given == Given::vu ? h - ideal.p * second - first : h - first;
  };
  double t = search_t ? 300.0 : first;
  double error = evaluate_at(t);
  if (search_t) {
    // Steps of a tenth until the root is bracketed, then the secant.
    double lo = 20.0, hi = 3000.0, last_t = t, last_error = error;
    for (int pass = 0; pass < 60; ++pass) {
      (error > 0 ? hi : lo) = t;
      double next = error > 0 ? t / 1.1 : t * 1.1;
      if (pass > 0 && error != last_error) {
        const double step = -error * (t - last_t) / (error - last_error);
        next = t + std::clamp(step, -0.1 * t, 0.1 * t);
        if (!(next > lo && next < hi)) next = 0.5 * (lo + hi);
      }
      last_t = t;
      last_error = error;
      t = next;
      error = evaluate_at(t);
      if (!(std::abs(t - last_t) > 0.01)) break;
    }
  }
  return {ideal.t, ideal.p, ideal.beta, ideal.lnk};
}

}  // namespace tessarel::flash
