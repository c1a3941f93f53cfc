#include "interface/sectmdprop.hpp"

#include "eos/caloric_forms.hpp"
#include "eos/compressibility.hpp"
#include "eos/helmholtz.hpp"
#include "fluid/ideal_gas.hpp"

namespace tessarel::interface {

SecondOrder calc_sectmdprop(const eos::Eos& eos, int n, const double* x, double t, double rho) {
  constexpr double c = fluid::pressure_factor;
  double a1 = 0, a2 = 0, a3 = 0;
  eos::calc_da_dt123(eos, n, x, t, rho, a1, a2, a3);
  const eos::ZDerivatives z = eos::calc_z_second(eos, n, x, t, rho);

  const double w = -rho * rho / fluid::avogadro_factor;  // d rho/dv
  const double b = (z.z + rho * z.zr) * c * t;           // dp/d rho
  SecondOrder result{};
  result.cv = eos::cv_from(fluid::calc_cp0mix(eos.parameters(), n, x, t), t, a1, a2);
  result.dcvdt = eos::dcv_dt_from(fluid::calc_dcp0mix_dt(eos.parameters(), n, x, t), t, a1, a2, a3);
  result.dpdt = (t * z.zt + z.z) * c * rho;
  result.d2pdt2 = c * rho * (2 * z.zt + t * z.ztt);
  result.dpdv = b * w;
  result.d2pdv2 = w * w * (2 * b / rho + c * t * (2 * z.zr + rho * z.zrr));
  result.d2pdtdv = w * c * ((z.zt + rho * z.ztr) * t + (z.z + rho * z.zr));
  return result;
}

}  // namespace tessarel::interface
