// Starts of a run of the tracer: the ideal solution of Wilson's K, and substitutions.
#include <algorithm>
#include <cmath>

#include "envelope/tracer.hpp"
#include "flash/adapters.hpp"
#include "flash/wilson.hpp"

namespace tessarel::envelope {

using eos::Fluid;
using flash::pascal_per_bar;
using fluid::at;
using fluid::Vector;

namespace {

/// ln p [bar] of the ideal solution at its bubble (beta 0) or dew point (1), and its derivative by t.
double ideal_pressure(const Fluid& fluid, bool bubble, double t, double& slope) {
  const Vector lnk = flash::wilson_lnk(fluid, t, pascal_per_bar);  // ln psat
  double sum = 0, weighted = 0;
  for (int i = 0; i < fluid.n; ++i) {
    const double lnp = lnk[at(i)], term = fluid.z[i] * flash::bounded_exp(bubble ? lnp : -lnp);
    sum += term;
    weighted += term * flash::wilson_heat(fluid, i);
  }
  slope = weighted / sum / (t * t);
  return bubble ? std::log(sum) : -std::log(sum);
}

/// Between the two, by the vapour fraction: what a start needs.
double ideal_pressure(const Fluid& fluid, double beta, double t, double& slope) {
  if (beta <= 0) return ideal_pressure(fluid, true, t, slope);
  if (beta >= 1) return ideal_pressure(fluid, false, t, slope);
  double dew_slope = 0;
  const double bubble = ideal_pressure(fluid, true, t, slope), dew = ideal_pressure(fluid, false, t, dew_slope);
  slope = (1.0 - beta) * slope + beta * dew_slope;
  return (1.0 - beta) * bubble + beta * dew;
}

}  // namespace

void idealsolution(const Fluid& fluid, double beta, int spec, double value, Point& x) {
  const auto n = at(fluid.n);
  double t = spec == fluid.n + 1 ? value : 250.0, p = value, slope = 0;
  if (spec == fluid.n + 1) {
    p = std::exp(ideal_pressure(fluid, beta, t, slope));
  } else {
    for (int pass = 0; pass < 50; ++pass) {
      const double f = ideal_pressure(fluid, beta, t, slope) - std::log(value);
      const double step = std::clamp(-f / slope, -0.2 * t, 0.2 * t);
      t += step;
      if (!(std::abs(step) > 0.05)) break;
    }
  }
  const Vector lnk = flash::wilson_lnk(fluid, t, p * pascal_per_bar);
  std::copy_n(lnk.begin(), n, x.begin());
  x[n] = std::log(t);
  x[n + 1] = std::log(p);
}

void successsubst(const Fluid& fluid, double beta, int spec, Point& x, int passes) {
  const auto n = at(fluid.n);
  const bool free_t = spec == fluid.n + 2;
  flash::Phase liquid, vapour;
  for (int pass = 0; pass < passes; ++pass) {
    const double t = std::exp(x[n]), p = std::exp(x[n + 1]) * pascal_per_bar;
    Vector l{}, v{}, t_l{}, t_v{}, p_l{}, p_v{};
    unwrap(fluid.n, fluid.z, beta, x, l.data(), v.data());
    flash::set_composition(liquid, fluid.n, l.data());
    flash::set_composition(vapour, fluid.n, v.data());
    const flash::Conditions c{fluid.eos, fluid.n, t, p};
    flash::evaluate(c, liquid, {.dt = t_l.data(), .dp = p_l.data()}, eos::Root::liquid);
    flash::evaluate(c, vapour, {.dt = t_v.data(), .dp = p_v.data()}, eos::Root::vapour);
    double change = 0, sum = 0, slope = 0;
    for (std::size_t i = 0; i < n; ++i) {
      const double lnk = liquid.lnphi[i] - vapour.lnphi[i];
      change = std::max(change, std::abs(lnk - x[i]));
      x[i] = lnk;
      const double k = flash::bounded_exp(lnk), d = (1.0 - beta) + beta * k, li = fluid.z[i] / d;
      sum += li * (k - 1.0);
      slope += li / d * k * (free_t ? t * (t_l[i] - t_v[i]) : p * (p_l[i] - p_v[i]));
    }
    const double step = std::clamp(-sum / slope, -0.1, 0.1);
    x[n + (free_t ? 0 : 1)] += step;
    if (!std::isfinite(step) || change <= 1e-6) return;
  }
}

}  // namespace tessarel::envelope
