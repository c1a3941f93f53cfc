#include "eos/caloric.hpp"

#include <cmath>

#include "eos/caloric_forms.hpp"
#include "eos/helmholtz.hpp"
#include "fluid/cp0_module.hpp"
#include "fluid/fluid_module.hpp"

namespace tessarel::calc_hsu_module {

using fluid_module::gas_constant;
using fluid_module::record;

Message calc_hsu(double t, double p, double v, double& h, double& s, double& u) {
  const int n = record.n;
  const double* z = record.z.data();
  double a = 0, a_t = 0;
  calc_a_module::calc_a_da_dt(n, z, t, fluid_module::avogadro_factor / v, a, a_t);
  const double zc = p * v / (gas_constant * t);
  double formation = 0, mixing = 0;
  for (int i = 0; i < n; ++i) {
    const auto k = static_cast<std::size_t>(i);
    formation += z[i] * record.delhf0[k];
    if (z[i] != 0) mixing += z[i] * std::log(z[i]);
  }
  h = cp0_module::calc_icp0mix_dt(n, z, t) + formation + gas_constant * t * (zc - 1.0 - t * a_t);
  s = cp0_module::calc_icp0mix_t_dt(n, z, t) - gas_constant * (std::log(std::abs(p) / 1e5) + mixing) +
      gas_constant * std::log(std::abs(zc)) - gas_constant * (t * a_t + a);
  u = h - p * v;
  return no_errors;
}

double calc_cv(int n, const double* x, double t, double rho) {
  double a1 = 0, a2 = 0, a3 = 0;
  calc_a_module::calc_da_dt123(n, x, t, rho, a1, a2, a3);
  return cv_from(cp0_module::calc_cp0mix(n, x, t), t, a1, a2);
}

double calc_dcv_dt(int n, const double* x, double t, double rho) {
  double a1 = 0, a2 = 0, a3 = 0;
  calc_a_module::calc_da_dt123(n, x, t, rho, a1, a2, a3);
  return dcv_dt_from(cp0_module::calc_dcp0mix_dt(n, x, t), t, a1, a2, a3);
}

}  // namespace tessarel::calc_hsu_module
