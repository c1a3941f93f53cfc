#include "eos/pressure.hpp"

#include "eos/compressibility.hpp"
#include "eos/density.hpp"
#include "eos/mole_numbers.hpp"

namespace tessarel::eos {

double calc_p(const Eos& eos, int n, const double* x, double t, double v) {
  return calc_p_rho(eos, n, x, t, fluid::avogadro_factor / v);
}

double calc_p_rho(const Eos& eos, int n, const double* x, double t, double rho) {
  return pressure_factor * calc_z(eos, n, x, 0, t, rho) * t * rho;
}

double calc_dp_dt(const Eos& eos, int n, const double* x, double t, double rho) {
  // z and z_t come from one evaluation.
  const auto z = calc_z_first_t(eos, n, x, t, rho);
  return pressure_factor * rho * (t * z.slope + z.value);
}

double calc_d2p_dt2(const Eos& eos, int n, const double* x, double t, double rho) {
  const auto z = calc_z_second(eos, n, x, t, rho);
  return pressure_factor * rho * (2.0 * z.zt + t * z.ztt);
}

double calc_dp_drho(const Eos& eos, int n, const double* x, double t, double rho) {
  const auto z = calc_z_first_rho(eos, n, x, t, rho);
  return pressure_factor * t * (rho * z.slope + z.value);
}

double calc_d2p_drho2(const Eos& eos, int n, const double* x, double t, double rho) {
  const auto z = calc_z_rho123(eos, n, x, 0, t, rho);
  return pressure_factor * t * (2.0 * z.z_rho + rho * z.z_rhorho);
}

double calc_d3p_drho3(const Eos& eos, int n, const double* x, double t, double rho) {
  const auto z = calc_z_rho123(eos, n, x, 0, t, rho);
  return pressure_factor * t * (3.0 * z.z_rhorho + rho * z.z_rhorhorho);
}

double calc_d2p_dtdrho(const Eos& eos, int n, const double* x, double t, double rho) {
  const auto z = calc_z_second(eos, n, x, t, rho);
  return pressure_factor * ((rho * z.ztr + z.zt) * t + (rho * z.zr + z.z));
}

void calc_dp_dx(const Eos& eos, int n, const double* x, double t, double rho, double* p_x) {
  calc_dz_dx(eos, n, x, t, rho, p_x);
  for (int i = 0; i < n; ++i) p_x[i] *= pressure_factor * t * rho;
}

void calc_dp_dn(const Eos& eos, int n, const double* x, double t, double rho, double* p_n) {
  calc_dp_dx(eos, n, x, t, rho, p_n);
  project_first(at(n), x, p_n, p_n);
}

void calc_d2p_dndn(const Eos& eos, int n, const double* x, double t, double rho, double* p_nn) {
  Vector stepped, up, down;
  // The first derivative by amounts at constant volume of a perturbed state, times its total amount:
  // K t rho (z + rho z_rho + z_x(j) - sum x_k z_x(k)).
  const auto slopes = [&](int i, double factor, Vector& a) {
    step_amount(n, x, i, factor, stepped.data());
    const double density = factor * rho;
    const auto z = calc_z_rho_x(eos, n, stepped.data(), t, density, a.data());
    project_first(at(n), stepped.data(), a.data(), a.data());
    for (int j = 0; j < n; ++j) a[at(j)] = pressure_factor * t * density * (z.value + density * z.slope + a[at(j)]);
  };
  for (int i = 0; i < n; ++i) {
    slopes(i, AmountStep::up, up);
    slopes(i, AmountStep::down, down);
    for (int j = 0; j < n; ++j)
      p_nn[i + j * n] = (up[at(j)] / AmountStep::up - down[at(j)] / AmountStep::down) / (2.0 * AmountStep::size);
  }
}

EtaSlopes calc_p_deta(const Eos& eos, int n, int ipure, double t, double eta) {
  Vector ones;
  ones.fill(1.0);
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, ones.data(), ipure, t);
  return p_deta(state, eta);
}

EtaSlopes p_deta(const MixtureState<double>& state, double eta) {
  const double rho = eta / state.zeta_rho[3];
  const auto z = z_rho123(state, rho);
  const double q = rho / eta, factor = pressure_factor * state.t;
  return {factor * rho * z.z, factor * q * (z.z + rho * z.z_rho), factor * q * q * (2.0 * z.z_rho + rho * z.z_rhorho),
          factor * q * q * q * (3.0 * z.z_rhorho + rho * z.z_rhorhorho)};
}

}  // namespace tessarel::eos
