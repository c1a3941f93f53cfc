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

/// Root of a rising function of a positive variable: steps by the factor `widest` until it is bracketed, then the
/// secant in its logarithm. Ends at a relative step of `tolerance`.
template <class Function>
void find_rising(Function&& f, double x, double lo, double hi, double widest, double tolerance) {
  const double limit = std::log(widest);
  double y = std::log(x), last_y = y, error = f(x), last_error = error;
  lo = std::log(lo), hi = std::log(hi);
  for (int pass = 0; pass < 60; ++pass) {
    (error > 0 ? hi : lo) = y;
    double step = error > 0 ? -limit : limit;
    if (pass > 0 && error != last_error) step = std::clamp(-error * (y - last_y) / (error - last_error), -limit, limit);
    const double next = y + step > lo && y + step < hi ? y + step : 0.5 * (lo + hi);
    last_y = y;
    last_error = error;
    y = next;
    error = f(std::exp(y));
    if (!(std::abs(y - last_y) > tolerance)) return;
  }
}

}  // namespace

Estimate simod(Given given, double first, double second, const eos::Fluid& fluid) {
  IdealSolution ideal{fluid};
  const Specification spec{given, first, second};
  const auto error = [&](Property property, double target) {
    double h = 0, s = 0;
    ideal.caloric(h, s);
    const double v = ideal.volume();
    return property == Property::v   ? std::log(v / target)
           : property == Property::s ? s - target
           : property == Property::u ? h - ideal.p * v - target
                                     : h - target;
  };
  const auto over_t = [&](Property property, double target, auto&& split_at) {
    find_rising(
        [&](double t) {
          split_at(t);
          return error(property, target);
        },
        ideal.t > 0 ? ideal.t : 300.0, 20.0, 3000.0, 1.1, 3e-5);
  };
  constexpr double lowest_p = 1e-8, highest_p = 500.0, widest = 10.0;
  switch (given) {
    case Given::tp:
      ideal.split(first, second);
      break;
    case Given::tv:
      ideal.split_at_volume(first, second);
      break;
    case Given::ts:
      find_rising(
          [&](double p) {
            ideal.split(first, p);
            return -error(Property::s, second);
          },
          1.0, lowest_p, highest_p, widest, 1e-3);
      break;
    case Given::hs:
      find_rising(
          [&](double p) {
            over_t(Property::h, second, [&](double t) { ideal.split(t, p); });
            return -error(Property::s, first);
          },
          1.0, lowest_p, highest_p, widest, 1e-3);
      break;
    default:
      if (spec.varies_p())
        over_t(spec.searched(), first, [&](double t) { ideal.split_at_volume(t, second); });
      else
        over_t(spec.searched(), first, [&](double t) { ideal.split(t, second); });
  }
  return {ideal.t, ideal.p, ideal.beta, ideal.lnk};
}

}  // namespace tessarel::flash
