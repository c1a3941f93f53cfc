#include "eos/derived.hpp"

#include <cmath>

#include "eos/caloric.hpp"
#include "eos/pressure.hpp"

namespace tessarel::eos {

// With p_T = (dp/dT)_v and p_v = (dp/dv)_T, from the total differential of p and Maxwell's relations
// (Michelsen & Mollerup 2007, ch. 1):
//   (dv/dT)_p = -p_T / p_v        cp - cv = -T p_T^2 / p_v
//   w^2 = -v^2 p_v cp / (cv M)    (dT/dp)_h = (T (dv/dT)_p - v) / cp
Derived calc_derived(const Eos& eos, int n, const double* x, double t, double v) {
  const double rho = fluid::avogadro_factor / v;
  const double p_t = calc_dp_dt(eos, n, x, t, rho);
  const double p_v = -calc_dp_drho(eos, n, x, t, rho) * rho / v;
  const double v_t = -p_t / p_v;
  const double cv = calc_cv(eos, n, x, t, rho);
  double molar_mass = 0;  // kg/mol
  for (int i = 0; i < n; ++i) molar_mass += 1e-3 * x[i] * eos.parameters().molmas[at(i)];

  Derived d{};
  d.cp = cv + t * p_t * v_t;
  d.w = v * std::sqrt((t * p_t * p_t / cv - p_v) / molar_mass);
  d.jt = (t * v_t - v) / d.cp;
  d.kappa = -1.0 / (v * p_v);
  d.alpha = v_t / v;
  double h = 0, s = 0, u = 0;
  calc_hsu(eos, n, x, t, calc_p_rho(eos, n, x, t, rho), v, h, s, u);
  d.g = h - t * s;
  return d;
}

}  // namespace tessarel::eos
