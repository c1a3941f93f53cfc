#include "eos/caloric.hpp"

#include <cmath>

#include "eos/caloric_forms.hpp"
#include "eos/helmholtz.hpp"
#include "fluid/ideal_gas.hpp"

namespace tessarel::eos {

using fluid::gas_constant;

IdealPart ideal_part(const fluid::Parameters& p, int n, const double* x, double t) {
  double formation = 0, mixing = 0;
  for (int i = 0; i < n; ++i) {
    formation += x[i] * p.delhf0[at(i)];
    if (x[i] != 0) mixing += x[i] * std::log(x[i]);
  }
  return {fluid::calc_icp0mix_dt(p, n, x, t) + formation, fluid::calc_icp0mix_t_dt(p, n, x, t) - gas_constant * mixing};
}

Message calc_hsu(const Eos& eos, int n, const double* x, double t, double p, double v, double& h, double& s,
                 double& u) {
  double a = 0, a_t = 0;
  calc_a_da_dt(eos, n, x, t, fluid::avogadro_factor / v, a, a_t);
  const double zc = p * v / (gas_constant * t);
  const IdealPart ideal = ideal_part(eos.parameters(), n, x, t);
  h = ideal.h + gas_constant * t * (zc - 1.0 - t * a_t);
  // ln(p / 1 bar) - ln z as one logarithm.
  s = ideal.s - gas_constant * (std::log(std::abs(p / (1e5 * zc))) + t * a_t + a);
  u = h - p * v;
  return no_errors;
}

double calc_cv(const Eos& eos, int n, const double* x, double t, double rho) {
  double a1 = 0, a2 = 0, a3 = 0;
  calc_da_dt123(eos, n, x, t, rho, a1, a2, a3);
  return cv_from(fluid::calc_cp0mix(eos.parameters(), n, x, t), t, a1, a2);
}

double calc_dcv_dt(const Eos& eos, int n, const double* x, double t, double rho) {
  double a1 = 0, a2 = 0, a3 = 0;
  calc_da_dt123(eos, n, x, t, rho, a1, a2, a3);
  return dcv_dt_from(fluid::calc_dcp0mix_dt(eos.parameters(), n, x, t), t, a1, a2, a3);
}

}  // namespace tessarel::eos
