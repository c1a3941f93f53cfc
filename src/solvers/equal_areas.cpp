#include "solvers/equal_areas.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "eos/density.hpp"
#include "eos/pressure.hpp"
#include "eos/residual.hpp"

namespace tessarel::solvers {
namespace {

using eos::EtaDerivatives;
using State = eos::MixtureState<double>;

/// Mean of p over the volumes between both phases.
double mean_pressure(const State& state, const Packings& at) {
  const double sum = at.liquid + at.vapour, difference = at.liquid - at.vapour;
  const double v_l = 1.0 / at.liquid, v_v = 1.0 / at.vapour;
  if (difference > 0.05 * sum) {
    const double rho_l = at.liquid * state.rho_eta, rho_v = at.vapour * state.rho_eta;
    const double work = residual_a(state, rho_l) - residual_a(state, rho_v) + std::log(at.liquid / at.vapour);
    return fluid::pressure_factor * state.t * state.rho_eta * work / (v_v - v_l);
  }
  // Of phases nearly alike the difference of a loses its digits; the quadrature of Gauss and Legendre does not.
  constexpr std::array<double, 3> node{0.0, 0.5384693101056831, 0.9061798459386640};
  constexpr std::array<double, 3> weight{0.5688888888888889, 0.4786286704993665, 0.2369268850561891};
  const double middle = 0.5 * (v_l + v_v), half = 0.5 * (v_v - v_l);
  double mean = 0.5 * weight[0] * p_eta12(state, 1.0 / middle).value;
  for (std::size_t i = 1; i < node.size(); ++i)
    mean +=
        0.5 * weight[i] *
        (p_eta12(state, 1.0 / (middle - half * node[i])).value + p_eta12(state, 1.0 / (middle + half * node[i])).value);
  return mean;
}

/// End of a stable stretch of the isotherm, where dp/deta is 0, by Newton's method from outside.
bool find_spinodal(const State& state, double start, double& eta, double& p) {
  eta = start;
  for (int pass = 0; pass < 100; ++pass) {
    const EtaDerivatives d = p_eta12(state, eta);
    const double step = d.first / d.second;
    p = d.value;
    if (!std::isfinite(step)) return false;
    eta = eos::bounded_eta(eta - std::clamp(step, -0.1, 0.1));
    if (std::abs(step) < 1e-10 * eta) return true;
  }
  return false;
}

/// The packing fraction at `p` on a stretch from `lo` to `hi` along which the pressure rises.
double on_stretch(const State& state, double p, double lo, double hi, double start) {
  double eta = start, last = HUGE_VAL;
  for (int pass = 0; pass < 200; ++pass) {
    if (!(eta > lo && eta < hi)) eta = 0.5 * (lo + hi);
    const EtaDerivatives d = p_eta12(state, eta);
    (d.value > p ? hi : lo) = eta;
    const double step = (p - d.value) / d.first, size = std::abs(step) / eta;
    eta += step;
    if (size < 1e-15 || (size < 1e-9 && size >= 0.5 * last) || hi - lo < 2e-16 * hi) break;
    last = size;
  }
  return std::clamp(eta, lo, hi);
}

}  // namespace

bool equal_areas(const State& state, Packings& at, double& p) {
  double last = HUGE_VAL, step_l = 0, step_v = 0;
  for (int pass = 0; pass < 60; ++pass) {
    const EtaDerivatives l = p_eta12(state, at.liquid), v = p_eta12(state, at.vapour);
    if (!(at.liquid > at.vapour) || !std::isfinite(l.value + v.value)) return false;
    if (!(l.first > 0 && v.first > 0)) {
      // Over the end of a stretch: half the way back.
      if (std::abs(step_l) <= 1e-12 * at.liquid && std::abs(step_v) <= 1e-12 * at.vapour) return false;
      step_l *= 0.5;
      step_v *= 0.5;
      at.liquid -= step_l;
      at.vapour -= step_v;
      continue;
    }
    p = mean_pressure(state, at);
    // Far from equilibrium ln p is the better variable: it falls by the difference of ln f over that of z.
    if (!(p > 0.3 * v.value && p < 3.0 * v.value) && v.value > 0)
      p = v.value * std::exp(std::clamp(p / v.value - 1.0, -20.0, 20.0));
    step_l = std::clamp((p - l.value) / l.first, -0.2 * at.liquid, 0.2 * at.liquid);
    step_v = std::clamp((p - v.value) / v.first, -0.99 * at.vapour, 10.0 * at.vapour);
    if (!(p > 0) || !std::isfinite(step_l + step_v)) return false;
    at.liquid += step_l;
    at.vapour += step_v;
    // What a step leaves behind is of the order of its square, over the distance from the spinodal; next to the
    // critical point the densities carry far more rounding than the pressure.
    const double size = std::max(std::abs(step_l) / at.liquid, std::abs(step_v) / at.vapour);
    const double apart = (at.liquid - at.vapour) / at.liquid;
    if (size < 1e-8 * apart || (size < 1e-2 * apart && size >= 0.3 * last && size < 1e-5))
      return at.liquid > at.vapour * (1.0 + 1e-9);
    last = size;
  }
  return false;
}

CubicIsotherm cubic_isotherm(const State& state, const fluid::Limits& limits) {
  constexpr double exact_above = 3e-7;
  double eta = limits.rhoc * fluid::avogadro_factor / state.rho_eta;
  CubicIsotherm cubic;
  eos::EtaSlopes d{};
  double shift = 0;
  for (int pass = 0; pass < 6; ++pass) {
    d = eos::p_deta(state, eta);
    shift = -d.d2p_deta2 / d.d3p_deta3;
    if (!(std::abs(shift) < 0.2 * eta)) return cubic;
    if (std::abs(shift) < 1e-3 * eta) break;
    eta += shift;
  }
  const double middle = eta + shift;
  const double slope = d.dp_deta + 0.5 * d.d2p_deta2 * shift;
  const double half = slope < 0 ? std::sqrt(-6.0 * slope / d.d3p_deta3) : 0.0;
  cubic.usable = d.d3p_deta3 > 0 && half < 0.9 * middle;
  cubic.exact = cubic.usable && limits.tc - state.t < exact_above * limits.tc;
  cubic.p = d.p + shift * (d.dp_deta + shift * (0.5 * d.d2p_deta2 + shift * d.d3p_deta3 / 6.0));
  cubic.saturated = {middle + half, middle - half};
  return cubic;
}

bool equal_areas_between_spinodals(const State& state, const Packings* start, Packings& at, double& p) {
  // The spinodal of a cold vapour is dilute.
  const Packings outside = start != nullptr ? *start : Packings{eos::cold_liquid_start, 1e-100};
  Packings spinodal;
  double p_l = 0, p_v = 0;
  if (!find_spinodal(state, outside.liquid, spinodal.liquid, p_l) ||
      !find_spinodal(state, outside.vapour, spinodal.vapour, p_v))
    return false;
  if (!(spinodal.liquid > spinodal.vapour && p_v > 0 && p_v > p_l)) return false;
  constexpr double least = -690.0;  // ln of the smallest pressure that is a normal number, with a margin
  double lo = p_l > 0 ? std::log(p_l) : least, hi = std::log(p_v), last = HUGE_VAL;
  const double ideal = fluid::pressure_factor * state.t * state.rho_eta;
  p = p_l > 0 ? 0.5 * (p_l + p_v) : 0.5 * p_v;
  at = {std::max(outside.liquid, spinodal.liquid), p / ideal};
  for (int pass = 0; pass < 200; ++pass) {
    at.liquid = on_stretch(state, p, spinodal.liquid, 0.9, at.liquid);
    at.vapour = on_stretch(state, p, 0.0, spinodal.vapour, std::min(p / ideal, spinodal.vapour));
    // ln f of the liquid less that of the vapour is (z_v - z_l) step, and falls along ln p by z_v - z_l.
    const double step = mean_pressure(state, at) / p - 1.0, size = std::abs(step);
    if (!std::isfinite(step)) return false;
    (step > 0 ? lo : hi) = std::log(p);
    if (size < 1e-15 || (size < 1e-11 && size >= 0.5 * last)) return true;
    if (hi - lo < 4e-16 * std::abs(hi)) return size < 1e-9;
    last = size;
    const double next = std::log(p) + step;
    p = std::exp(next > lo && next < hi ? next : 0.5 * (lo + hi));
  }
  return false;
}

}  // namespace tessarel::solvers
