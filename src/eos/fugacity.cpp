#include "eos/fugacity.hpp"

#include "eos/composition.hpp"
#include "eos/density.hpp"
#include "eos/helmholtz.hpp"
#include "eos/mole_numbers.hpp"

namespace tessarel::eos {

using numerics::variable;

namespace {

/// What the derivatives of lnphi are made of, at one state. A member is filled when its bit was asked for.
/// by_t includes by_rho.
enum : unsigned { first = 1, by_t = 2, by_rho = 4, second = 8, eos_z = 16 };

struct Blocks {
  double a, z, a_t, z_t, z_rho;
  double *a_x, *a_tx, *a_xx, *z_x;
  double p_t, p_rho;  ///< derivatives of the pressure
};

/// Fills the blocks `needs`; arrays come from the caller's arena frame. `state` is the state prepared at plain t.
/// Without eos_z, by_t or by_rho z is left to the caller.
Blocks prepare_blocks(const MixtureState<double>& state, int n, const double* x, double t, double rho, unsigned needs) {
  const Eos& eos = *state.eos;
  Blocks b{};
  const auto size = at(n);
  b.a_x = eos.arena().take<double>(size);
  if ((needs & second) != 0) {
    b.a_xx = eos.arena().take<double>(size * size);
    CompositionDerivatives<double> d{0, b.a_x, {b.a_xx, size}, {}};
    composition_derivatives<2>(state, rho, d);
    b.a = d.a;
  }
  if ((needs & by_t) != 0) {
    // t and rho in one pass.
    using S = Taylor<2, 1>;
    b.a_tx = eos.arena().take<double>(size);
    b.z_x = eos.arena().take<double>(size);
    const Arena::Frame frame(eos.arena());
    MixtureState<S> varied;
    prepare(eos, varied, n, x, 0, variable<S>(t, 0));
    const S density = variable<S>(rho, 1);
    CompositionDerivatives<S> d;
    d.first = eos.arena().take<S>(size);
    composition_derivatives<1>(varied, density, d);
    for (std::size_t i = 0; i < size; ++i) {
      b.a_x[i] = value(d.first[i]);
      b.a_tx[i] = d_dt(d.first[i]);
      b.z_x[i] = rho * d_drho(d.first[i]);
    }
    b.a = value(d.a);
    b.a_t = d_dt(d.a);
    const S z = residual_z(varied, density);
    b.z = value(z);
    b.z_t = d_dt(z);
    b.z_rho = d_drho(z);
  } else if ((needs & by_rho) != 0) {
    using S = Taylor<1, 1>;
    b.z_x = eos.arena().take<double>(size);
    const Arena::Frame frame(eos.arena());
    CompositionDerivatives<S> d;
    d.first = eos.arena().take<S>(size);
    composition_derivatives<1>(state, variable<S>(rho), d);
    for (std::size_t i = 0; i < size; ++i) {
      b.a_x[i] = value(d.first[i]);
      b.z_x[i] = rho * d_drho(d.first[i]);
    }
    b.a = value(d.a);
    const S z = residual_z(state, variable<S>(rho));
    b.z = value(z);
    b.z_rho = d_drho(z);
  }
  if ((needs & (second | by_t | by_rho)) == 0 && (needs & first) != 0) {
    CompositionDerivatives<double> d{0, b.a_x, {}, {}};
    if (n > 1)
      composition_derivatives<1>(state, rho, d);
    else
      d.a = residual_a(state, rho);
    b.a = d.a;
  }
  if ((needs & eos_z) != 0 && (needs & (by_t | by_rho)) == 0) b.z = residual_z(state, rho);
  b.p_t = pressure_factor * rho * (t * b.z_t + b.z);
  b.p_rho = pressure_factor * t * (rho * b.z_rho + b.z);
  return b;
}

void assemble_lnphi(int n, const double* x, const Blocks& b, double z, double* lnphi) {
  const double common = b.a + z - 1.0 - std::log(z);
  if (n == 1) {
    lnphi[0] = common;
    return;
  }
  const double s = weighted(at(n), x, b.a_x);
  for (int i = 0; i < n; ++i) lnphi[i] = b.a_x[i] + common - s;
}

/// By rho at constant t.
void slope_rho(int n, const double* x, const Blocks& b, double z, double rho, double* out) {
  const double common = (1.0 - 1.0 / z) * b.z_rho;
  if (n == 1) {
    out[0] = (z - 1.0) / rho + common;
    return;
  }
  const double s = weighted(at(n), x, b.z_x);
  for (int i = 0; i < n; ++i) out[i] = (b.z_x[i] + z - 1.0 - s) / rho + common;
}

/// By t at constant rho.
void slope_t(int n, const double* x, const Blocks& b, double z, double* out) {
  const double common = b.a_t + (1.0 - 1.0 / z) * b.z_t;
  if (n == 1) {
    out[0] = common;
    return;
  }
  const double s = weighted(at(n), x, b.a_tx);
  for (int i = 0; i < n; ++i) out[i] = b.a_tx[i] + common - s;
}

/// By x at constant t and p: that at constant rho, a_xx(i,j) + (1 - 1/z) z_x(j) - sum x_k a_xx(k,j), less the slope by
/// p times p_x(j).
void slope_x(int n, const double* x, const Blocks& b, double z, const double* by_p, double pressure_slope,
             double* out) {
  for (int j = 0; j < n; ++j) {
    const double* column = b.a_xx + j * n;
    const double common = (1.0 - 1.0 / z) * b.z_x[j] - weighted(at(n), x, column);
    const double p_x = pressure_slope * b.z_x[j];
    for (int i = 0; i < n; ++i) out[i + j * n] = column[i] + common - by_p[i] * p_x;
  }
}

using Outputs = FugacityOutputs;

/// All forms at constant t and p, from the blocks and z.
void assemble_tp(const Eos& eos, int n, const double* x, double t, double rho, const Blocks& b, double z,
                 const Outputs& out) {
  if (out.lnphi != nullptr) assemble_lnphi(n, x, b, z, out.lnphi);
  if (out.dt == nullptr && out.dp == nullptr && out.dx == nullptr && out.dn == nullptr) return;
  const auto size = at(n);
  double* by_density = eos.arena().take<double>(size);
  slope_rho(n, x, b, z, rho, by_density);
  for (std::size_t i = 0; i < size; ++i) by_density[i] /= b.p_rho;  // now by p
  if (out.dp != nullptr) std::copy_n(by_density, size, out.dp);
  if (out.dt != nullptr) {
    slope_t(n, x, b, z, out.dt);
    for (std::size_t i = 0; i < size; ++i) out.dt[i] -= by_density[i] * b.p_t;
  }
  if (out.dx == nullptr && out.dn == nullptr) return;
  double* matrix = out.dx != nullptr ? out.dx : out.dn;
  slope_x(n, x, b, z, by_density, pressure_factor * t * rho, matrix);
  if (out.dn == nullptr) return;
  if (out.dn != matrix) std::copy_n(matrix, size * size, out.dn);
  project_rows(x, {out.dn, size});
}

unsigned needs_of(const Outputs& out) {
  unsigned needs = 0;
  if (out.lnphi != nullptr) needs |= first;
  if (out.dt != nullptr) needs |= by_t;
  if (out.dp != nullptr) needs |= by_rho;
  if (out.dx != nullptr || out.dn != nullptr) needs |= second | by_rho;
  return needs;
}

/// The forms with a density solve. `z_from_p`: z = p / (K t rho), else that of the equation of state.
void at_phase(const Eos& eos, int n, const double* x, double t, double p, int phase, bool z_from_p,
              const Outputs& out) {
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, 0, t);
  double rho = 0;
  if (phase == 1 || phase == 2) {
    double eta = phase == 1 ? liquid_start : vapour_start;
    densiter(state, p, eta);
    rho = eta * state.rho_eta;
  } else {
    calc_rho(eos, n, x, t, p, phase, rho);
  }
  const Blocks b = prepare_blocks(state, n, x, t, rho, needs_of(out) | (z_from_p ? 0U : eos_z));
  assemble_tp(eos, n, x, t, rho, b, z_from_p ? p / (pressure_factor * t * rho) : b.z, out);
}

}  // namespace

double calc_lnphi_near(const Eos& eos, int n, const double* x, double t, double p, Root root, RootMemory& memory,
                       const FugacityOutputs& out) {
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, 0, t);
  const double rho = find_root(state, p, root, memory) * state.rho_eta;
  const Blocks b = prepare_blocks(state, n, x, t, rho, needs_of(out));
  assemble_tp(eos, n, x, t, rho, b, p / (pressure_factor * t * rho), out);
  return rho;
}

void calc_lnphi(const Eos& eos, int n, const double* x, double t, double p, int phase, double* lnphi) {
  at_phase(eos, n, x, t, p, phase, true, {.lnphi = lnphi});
}
void calc_lnphi_tp(const Eos& eos, int n, const double* x, double t, double p, int phase, double* lnphi, double* dt,
                   double* dp) {
  at_phase(eos, n, x, t, p, phase, true, {.lnphi = lnphi, .dt = dt, .dp = dp});
}
void calc_lnphi_n(const Eos& eos, int n, const double* x, double t, double p, int phase, double* lnphi, double* dn) {
  at_phase(eos, n, x, t, p, phase, true, {.lnphi = lnphi, .dn = dn});
}
void calc_lnphi_tpn(const Eos& eos, int n, const double* x, double t, double p, int phase, double* lnphi, double* dt,
                    double* dp, double* dn) {
  at_phase(eos, n, x, t, p, phase, true, {.lnphi = lnphi, .dt = dt, .dp = dp, .dn = dn});
}
void calc_dlnphi_dt(const Eos& eos, int n, const double* x, double t, double p, int phase, double* dt) {
  at_phase(eos, n, x, t, p, phase, false, {.dt = dt});
}
void calc_dlnphi_dp(const Eos& eos, int n, const double* x, double t, double p, int phase, double* dp) {
  at_phase(eos, n, x, t, p, phase, false, {.dp = dp});
}
void calc_dlnphi_dx(const Eos& eos, int n, const double* x, double t, double p, int phase, double* dx) {
  at_phase(eos, n, x, t, p, phase, false, {.dx = dx});
}
void calc_dlnphi_dn(const Eos& eos, int n, const double* x, double t, double p, int phase, double* dn) {
  at_phase(eos, n, x, t, p, phase, false, {.dn = dn});
}

namespace {

/// The forms at a given density; without `p` (null) z is that of the equation of state.
void at_density(const Eos& eos, int n, const double* x, double t, double rho, const double* p, const Outputs& out) {
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, 0, t);
  const Blocks b = prepare_blocks(state, n, x, t, rho, needs_of(out) | (p == nullptr ? unsigned{eos_z} : 0U));
  assemble_tp(eos, n, x, t, rho, b, p == nullptr ? b.z : *p / (pressure_factor * t * rho), out);
}

}  // namespace

void calc_lnphi_tprho(const Eos& eos, int n, const double* x, double t, double p, double rho, double* lnphi) {
  at_density(eos, n, x, t, rho, &p, {.lnphi = lnphi});
}
void calc_lnphi_tpxn(const Eos& eos, int n, const double* x, double t, double p, double rho, double* dt, double* dp,
                     double* dx, double* dn) {
  at_density(eos, n, x, t, rho, &p, {.dt = dt, .dp = dp, .dx = dx, .dn = dn});
}
void calc_lnphi_rho(const Eos& eos, int n, const double* x, double t, double rho, double* lnphi) {
  at_density(eos, n, x, t, rho, nullptr, {.lnphi = lnphi});
}
void calc_dlnphi_dp_rho(const Eos& eos, int n, const double* x, double t, double rho, double* dp) {
  at_density(eos, n, x, t, rho, nullptr, {.dp = dp});
}

}  // namespace tessarel::eos
