#include "flash/equilibrium.hpp"

#include <algorithm>

#include "eos/caloric.hpp"
#include "flash/adapters.hpp"
#include "fluid/ideal_gas.hpp"
#include "numerics/symmetric.hpp"

namespace tessarel::flash {

using fluid::gas_constant;

Properties phase_properties(const eos::Eos& eos, int n, const Phase& phase, double t, double p) {
  Aux aux{};
  double pressure = p;
  const double* x = phase.x.data();
  auxprop_rho(eos, n, x, t, phase.rho, pressure, aux.data());
  const eos::IdealPart ideal = eos::ideal_part(eos.parameters(), n, x, t);
  Properties r;
  r.h = aux[2] + ideal.h / gas_constant;
  r.s = aux[3] + ideal.s / gas_constant - std::log(std::abs(p));
  r.v = fluid::avogadro_factor / phase.rho / gas_constant * pascal_per_bar;
  r.h_t = aux[4] + fluid::calc_cp0mix(eos.parameters(), n, x, t) / gas_constant;
  r.v_t = aux[8];
  r.v_p = 1.0 / aux[7];
  r.h_p = r.v - t * r.v_t;
  return r;
}

Properties mix(const Properties& liquid, const Properties& vapour, double beta) {
  Properties whole;
  for (double Properties::*member : {&Properties::h, &Properties::s, &Properties::v, &Properties::h_t, &Properties::h_p,
                                     &Properties::v_t, &Properties::v_p})
    whole.*member = (1.0 - beta) * liquid.*member + beta * vapour.*member;
  return whole;
}

Equilibrium::Equilibrium(const eos::Eos& eos, int n, const double* z)
    : eos_(eos),
      n_(n),
      z_(z),
      liquid_dn_(eos.arena().take<double>(at(n * n))),
      vapour_dn_(eos.arena().take<double>(at(n * n))),
      factors_{eos.arena().take<double>(at(n * n)), at(n)} {}

bool Equilibrium::linearise(double t_now, double p_now, const Split& from, Mixing mixing) {
  t = t_now;
  p = p_now;
  split = from;
  const auto evaluate_phase = [&](Phase& phase, Vector& dt, Vector& dp, double* dn) {
    const bool real = mixing == Mixing::real;
    evaluate({eos_, n_, t, p * pascal_per_bar}, phase, {.dt = dt.data(), .dp = dp.data(), .dn = real ? dn : nullptr});
    if (!real) std::fill_n(dn, n_ * n_, 0.0);
    for (std::size_t i = 0; i < at(n_); ++i) dp[i] *= pascal_per_bar;
  };
  evaluate_phase(split.liquid, liquid_t, liquid_p, liquid_dn_);
  evaluate_phase(split.vapour, vapour_t, vapour_p, vapour_dn_);
  g = compare_fugacities(n_, z_, split);
  for (std::size_t i = 0; i < at(n_); ++i) {
    g_t[i] = vapour_t[i] - liquid_t[i];
    g_p[i] = vapour_p[i] - liquid_p[i];
  }
  scaled_hessian(n_, z_, split, liquid_dn_, vapour_dn_, scale_, factors_);
  if (!std::isfinite(split.error) || !numerics::cholesky(factors_)) return false;
  respond(g, scaled_g);
  respond(g_t, scaled_t);
  respond(g_p, scaled_p);
  liquid = phase_properties(eos_, n_, split.liquid, t, p);
  vapour = phase_properties(eos_, n_, split.vapour, t, p);
  overall = mix(liquid, vapour, split.beta);
  // Partial molar differences vapour - liquid: of h -t^2 g_t, of v t g_p, of s (those of h - mu) / t.
  const double by_tt = over_amounts(g_t, scaled_t), by_tp = over_amounts(g_t, scaled_p);
  overall.h_t -= t * t * by_tt;
  overall.h_p -= t * t * by_tp;
  overall.v_t += t * over_amounts(g_p, scaled_t);
  overall.v_p += t * over_amounts(g_p, scaled_p);
  h_g = -t * t * over_amounts(g_t, scaled_g);
  s_g = h_g / t - over_amounts(g, scaled_g);
  v_g = t * over_amounts(g_p, scaled_g);
  Vector ones{};
  ones.fill(1.0);
  beta_t = over_amounts(ones, scaled_t);
  beta_p = over_amounts(ones, scaled_p);
  beta_g = over_amounts(ones, scaled_g);
  return std::isfinite(overall.h_t) && std::isfinite(overall.v_p);
}

void Equilibrium::respond(const Vector& gradient, Vector& scaled) const {
  for (std::size_t i = 0; i < at(n_); ++i) scaled[i] = -scale_[i] * gradient[i];
  numerics::cholesky_solve(factors_, scaled.data());
}

void Equilibrium::change_of_lnk(const Vector& gradient, Vector& delta) const {
  Vector scaled;
  respond(gradient, scaled);
  delta = lnk_of_step(n_, scale_, scaled);
}

double Equilibrium::over_amounts(const Vector& a, const Vector& scaled) const {
  double sum = 0;
  for (std::size_t i = 0; i < at(n_); ++i) sum += a[i] * scale_[i] * scaled[i];
  return split.beta * (1.0 - split.beta) * sum;
}

}  // namespace tessarel::flash
