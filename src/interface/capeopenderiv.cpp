// Composition derivatives of a homogeneous phase for process simulators (CAPE-OPEN): of v, h, s, g and ln phi, at
// constant T and P, by mole fractions and by mole numbers. The state is the caller's; nothing is solved.
#include <algorithm>
#include <cmath>

#include "eos/composition.hpp"
#include "eos/fugacity.hpp"
#include "eos/mole_numbers.hpp"
#include "fluid/ideal_gas.hpp"
#include "interface/boundary.hpp"
#include "interface/dispatch.hpp"
#include "interface/flash_checks.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

using fluid::avogadro_factor, fluid::gas_constant, fluid::pressure_factor, fluid::Vector;

/// What the derivatives are made of at (t, rho), over the variables t and rho together.
struct HomogeneousBlocks {
  Vector a_x, a_tx, z_x;
  double p_rho, p_t;
};

HomogeneousBlocks homogeneous_blocks(const eos::Eos& eos, int n, const double* x, double t, double rho) {
  using S = numerics::Taylor<2, 1>;
  Arena& arena = eos.arena();
  const Arena::Frame frame(arena);
  HomogeneousBlocks b{};
  eos::MixtureState<S> state;
  eos::prepare(eos, state, n, x, 0, numerics::variable<S>(t, 0));
  const S density = numerics::variable<S>(rho, 1);
  eos::CompositionDerivatives<S> d;
  d.first = arena.take<S>(eos::at(n));
  eos::composition_derivatives<1>(state, density, d);
  for (std::size_t i = 0; i < eos::at(n); ++i) {
    b.a_x[i] = numerics::value(d.first[i]);
    b.a_tx[i] = eos::d_dt(d.first[i]);
    b.z_x[i] = rho * eos::d_drho(d.first[i]);
  }
  const S z = eos::residual_z(state, density);
  b.p_rho = pressure_factor * t * (rho * eos::d_drho(z) + numerics::value(z));
  b.p_t = pressure_factor * rho * (t * eos::d_dt(z) + numerics::value(z));
  return b;
}

void derivatives(const eos::Eos& eos, int n, const double* x, double t, double p, double v, double* dv, double* dh,
                 double* ds, double* dg, double* dlnphi) {
  const double rho = avogadro_factor / v;
  const auto blocks = homogeneous_blocks(eos, n, x, t, rho);
  eos::calc_lnphi_tpxn(eos, n, x, t, p, rho, dlnphi, dlnphi + n, dlnphi + 2 * n, dlnphi + 2 * n + n * n);

  const double w = blocks.p_rho * rho * rho / -avogadro_factor;  // dp/dv at constant T
  const double vt = -blocks.p_t / w;                             // dv/dT at constant P
  for (int i = 0; i < n; ++i) {
    const auto k = eos::at(i);
    const double p_x = pressure_factor * t * rho * blocks.z_x[k];
    // At constant density, then at constant pressure.
    double h = (blocks.z_x[k] - t * blocks.a_tx[k]) * gas_constant * t + fluid::calc_icp0_dt(eos.parameters(), i, t) +
               eos.parameters().delhf0[k];
    double s = fluid::calc_icp0_t_dt(eos.parameters(), i, t) - gas_constant * (blocks.a_tx[k] * t + blocks.a_x[k]);
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
}  // namespace tessarel::interface

extern "C" void tessarel_capeopenderiv(const double* t, const double* p, const double* v, double* dv, double* dh,
                                       double* ds, double* dg, double* dlnphi, char* err, size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  const TextField errors{err, err_len};
  Session* const selected = session_of_call({t, p, v, dv, dh, ds, dg, dlnphi}, errors);
  if (selected == nullptr) return;
  Session& session = *selected;
  guarded(errors, [&] {
    Message message = check_phase_at(session, *t, *v, *p);
    if (ok(message)) {
      const int n = session.n();
      derivatives(session.eos(), n, session.z.data(), *t, *p, *v, dv, dh, ds, dg, dlnphi);
      const auto finite = [](const double* first, int count) {
        return std::all_of(first, first + count, [](double value) { return std::isfinite(value); });
      };
      const bool complete = finite(dv + 2, 2 * n) && finite(dh + 2, 2 * n) && finite(ds + 2, 2 * n) &&
                            finite(dg + 2, 2 * n) && finite(dlnphi, n * (2 * n + 2));
      if (!complete) message = no_state;
    }
    errors.assign(message);
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_capeopenderiv);
