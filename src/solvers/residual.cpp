#include "solvers/residual.hpp"

#include <algorithm>
#include <cmath>

#include "eos/density.hpp"
#include "eos/helmholtz.hpp"
#include "flash/pt_flash.hpp"
#include "solvers/phase_mix.hpp"

namespace tessarel::solvers {

using eos::Fluid;
using fluid::avogadro_factor, fluid::gas_constant;

void calc_hs_res(const Fluid& fluid, double t, double p, double v, double& h, double& s) {
  double a = 0, a_t = 0;
  eos::calc_a_da_dt(fluid.eos, fluid.n, fluid.z, t, avogadro_factor / v, a, a_t);
  const double z = p * v / (gas_constant * t);
  h = (z - 1.0 - t * a_t) * gas_constant * t;
  s = gas_constant * std::log(z) + gas_constant * t * (-a_t - a / t);
}

Message tp_zelmaron(const Fluid& fluid, double t, double p, double& h, double& s, double* x, double* y) {
  const flash::PtResult result = flash::flmain(fluid, t, p, false, x, y);
  std::copy_n(result.x.begin(), fluid.n, x);
  std::copy_n(result.y.begin(), fluid.n, y);
  if (result.two_phases()) {
    const auto of_phase = [&](const flash::Phase& phase) {
      const Fluid same{fluid.eos, fluid.n, phase.x.data(), fluid.limits};
      Values values{};
      calc_hs_res(same, t, p, avogadro_factor / phase.rho, values.h, values.s);
      return values;
    };
    const Values whole = mix(of_phase(result.split.liquid), of_phase(result.split.vapour), result.beta);
    h = whole.h;
    s = whole.s;
    return no_errors;
  }
  constexpr int one_phase = 3;
  if (result.code != one_phase) return flash::message_of(fluid.n, result);
  // One phase counts as a liquid, of which the density solver finds the root, unless a vapour is the stable state.
  constexpr int liquid = 1;
  double v = 0;
  const double stable = avogadro_factor / result.single.rho;
  if (!ok(eos::calc_v(fluid.eos, fluid.n, fluid.z, t, p, liquid, v)) || std::abs(v - stable) > 1e-8 * stable) {
    ++fluid.eos.work.statistics.other_roots;
    v = stable;
  }
  calc_hs_res(fluid, t, p, v, h, s);
  return no_errors;
}

}  // namespace tessarel::solvers
