// Composition derivatives of a homogeneous phase for process simulators (CAPE-OPEN): of v, h, s, g and ln phi, at
// constant T and P, by mole fractions and by mole numbers. The state is the caller's; nothing is solved.
#include "eos/composition.hpp"
#include "eos/fugacity.hpp"
#include "eos/mole_numbers.hpp"
#include "fluid/cp0_module.hpp"
#include "interface/boundary.hpp"
#include "tessarel/tessarel.h"

namespace tessarel {
namespace {

using namespace fluid_module;

/// What the derivatives are made of at (t, rho), over the variables t and rho together.
struct HomogeneousBlocks {
  Vector a_x, a_tx, z_x;
  double p_rho, p_t;
};

HomogeneousBlocks homogeneous_blocks(int n, const double* x, double t, double rho) {
  using S = numerics::Taylor<2, 1>;
  using eos::arena;
  const Arena::Frame frame(arena);
  HomogeneousBlocks b{};
  eos::MixtureState<S> state;
  eos::prepare(state, n, x, 0, numerics::variable<S>(t, 0));
  const S density = numerics::variable<S>(rho, 1);
  eos::CompositionDerivatives<S> d;
  d.first = arena.take<S>(eos::at(n));
  eos::composition_derivatives<1>(state, density, d);
  for (std::size_t i = 0; i < eos::at(n); ++i) {
    b.a_x[i] = d.first[i].c[0];
    b.a_tx[i] = d.first[i].c[1];
    b.z_x[i] = rho * d.first[i].c[2];
  }
  const S z = eos::residual_z(state, density);
  b.p_rho = pressure_factor * t * (rho * z.c[2] + z.c[0]);
  b.p_t = pressure_factor * rho * (t * z.c[1] + z.c[0]);
  return b;
}

void derivatives(double t, double p, double v, double* dv, double* dh, double* ds, double* dg, double* dlnphi) {
  const int n = record.n;
  const double* x = record.z.data();
  const double rho = avogadro_factor / v;
  const auto blocks = homogeneous_blocks(n, x, t, rho);
  fugacity::calc_lnphi_tpxn(n, x, t, p, rho, dlnphi, dlnphi + n, dlnphi + 2 * n, dlnphi + 2 * n + n * n);

  const double w = blocks.p_rho * rho * rho / -avogadro_factor;  // dp/dv at constant T
  const double vt = -blocks.p_t / w;                             // dv/dT at constant P
  for (int i = 0; i < n; ++i) {
    const auto k = eos::at(i);
    const double p_x = pressure_factor * t * rho * blocks.z_x[k];
    // At constant density, then at constant pressure.
    double h =
        (blocks.z_x[k] - t * blocks.a_tx[k]) * gas_constant * t + cp0_module::calc_icp0_dt(i, t) + record.delhf0[k];
    double s = cp0_module::calc_icp0_t_dt(i, t) - gas_constant * (blocks.a_tx[k] * t + blocks.a_x[k]);
    h -= p_x * (v - t * vt);
    s += p_x * vt;
    dv[2 + i] = -p_x / w;
    dh[2 + i] = h;
    ds[2 + i] = s;
    dg[2 + i] = h - t * s;
  }
  for (double* of : {dv, dh, ds, dg}) eos::project_first(eos::at(n), x, of + 2, of + 2 + n);
}

}  // namespace
}  // namespace tessarel

extern "C" void tessarel_capeopenderiv(const double* t, const double* p, const double* v, double* dv, double* dh,
                                       double* ds, double* dg, double* dlnphi, char* err, size_t err_len) {
  using namespace tessarel;
  const TextField errors{err, err_len};
  if (boundary::any_null({t, p, v, dv, dh, ds, dg, dlnphi})) {
    errors.assign(boundary::null_argument);
    return;
  }
  if (!boundary::fluid_selected()) {
    errors.assign(boundary::no_fluid);
    return;
  }
  boundary::guarded(errors, [&] {
    derivatives(*t, *p, *v, dv, dh, ds, dg, dlnphi);
    errors.assign(no_errors);
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_capeopenderiv);
