#include "interface/sectmdprop.hpp"

#include "eos/caloric_forms.hpp"
#include "eos/compressibility.hpp"
#include "eos/helmholtz.hpp"
#include "fluid/cp0_module.hpp"

namespace tessarel {

SecondOrder calc_sectmdprop(int n, const double* x, double t, double rho) {
  constexpr double c = fluid_module::pressure_factor;
  double a1 = 0, a2 = 0, a3 = 0;
  calc_a_module::calc_da_dt123(n, x, t, rho, a1, a2, a3);
  const calc_z_module::ZDerivatives z = calc_z_module::calc_z_second(n, x, t, rho);

  const double w = -rho * rho / fluid_module::avogadro_factor;  // d rho/dv
  const double b = (z.z + rho * z.zr) * c * t;                  // dp/d rho
  SecondOrder result{};
  result.cv = calc_hsu_module::cv_from(cp0_module::calc_cp0mix(n, x, t), t, a1, a2);
  result.dcvdt = calc_hsu_module::dcv_dt_from(cp0_module::calc_dcp0mix_dt(n, x, t), t, a1, a2, a3);
  result.dpdt = (t * z.zt + z.z) * c * rho;
  result.d2pdt2 = c * rho * (2 * z.zt + t * z.ztt);
  result.dpdv = b * w;
  result.d2pdv2 = w * w * (2 * b / rho + c * t * (2 * z.zr + rho * z.zrr));
  result.d2pdtdv = w * c * ((z.zt + rho * z.ztr) * t + (z.z + rho * z.zr));
  return result;
}

}  // namespace tessarel
