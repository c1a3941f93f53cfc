#include "eos/density.hpp"

#include <limits>

#include "eos/fugacity.hpp"

namespace tessarel::eos {

namespace {

constexpr double step_tolerance = 1e-12, residual_tolerance = 1e-9;

/// Halley's iteration, for as long as the isotherm rises and is bent the same way: such a stretch holds one root, which
/// Newton's shorter steps would end at. Steps from the side where Newton's overshoot are Newton's. False where the
/// stretch ends, or for a pressure that is not positive.
bool approach(const MixtureState<double>& state, double p, double& eta) {
  constexpr int max_iterations = 20;
  constexpr double smallest_share = 0.3;
  if (!(p > 0)) return false;
  double bend = 0;
  for (int count = 0; count < max_iterations; ++count) {
    const auto [value, slope, curvature] = p_eta12(state, eta);
    if (!(slope > 0) || !(bend * curvature >= 0)) return false;
    bend = curvature;
    const double residual = value / p - 1.0, newton = residual * p / slope;
    const double share = 1.0 - 0.5 * newton * curvature / slope;
    eta = bounded_eta(eta - newton / std::clamp(share, smallest_share, 1.0));
    if (std::abs(newton) < step_tolerance || std::abs(residual) < residual_tolerance) return true;
  }
  return false;
}

}  // namespace

Message densiter(const MixtureState<double>& state, double p, double& eta) {
  constexpr int max_iterations = 100;
  const double start = eta;
  if (approach(state, p, eta)) return no_errors;
  eta = start;
  for (int count = 1;; ++count) {
    const auto [value, slope, curvature] = p_eta12(state, eta);
    const double residual = value / p - 1.0;
    if (slope < 0 && count < max_iterations) {
      // The unstable branch, where Newton's step would go the wrong way.
      if (residual > 0 && curvature > 0)
        eta = 0.001;
      else if (residual < 0 && curvature < 0)
        eta = 0.5;
      else if (eta == start)
        eta += 0.1;
      else
        eta = (eta + start) / 2.0;
      continue;
    }
    const double step = residual / (slope / p);
    eta = bounded_eta(eta - step);
    if (count > max_iterations) return "No convergence calculating density from T and P";
    if (std::abs(step) < step_tolerance || std::abs(residual) < residual_tolerance) return no_errors;
  }
}

namespace {

double start_of(int phase) {
  return phase == 1 ? liquid_start : vapour_start;
}

/// Number density of the liquid-like (1) or vapour-like (2) root.
Message solve_root(const MixtureState<double>& state, double p, int phase, double& rho) {
  double eta = start_of(phase);
  const Message message = densiter(state, p, eta);
  rho = eta * state.rho_eta;
  return message;
}

}  // namespace

Message calc_v(const Eos& eos, int n, const double* x, double t, double p, int phase, double& v) {
  if (phase != 1 && phase != 2) {
    v = fluid::not_computed;
    return "Phase code of the density must be 1 or 2...";
  }
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, 0, t);
  double rho = 0;
  const Message message = solve_root(state, p, phase, rho);
  v = fluid::avogadro_factor / rho;
  return message;
}

void calc_rho(const Eos& eos, int n, const double* x, double t, double p, int phase, double& rho) {
  if (phase != 1 && phase != 2 && phase != -1) {
    rho = std::numeric_limits<double>::quiet_NaN();
    return;
  }
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, 0, t);
  if (phase != -1) {
    solve_root(state, p, phase, rho);
    return;
  }
  // Both roots; the lower Gibbs energy, sum of x lnphi, decides.
  double root[2], gibbs[2];
  for (int i = 0; i < 2; ++i) {
    solve_root(state, p, i + 1, root[i]);
    Vector lnphi;
    calc_lnphi_rho(eos, n, x, t, root[i], lnphi.data());
    gibbs[i] = 0;
    for (int k = 0; k < n; ++k) gibbs[i] += x[k] * lnphi[at(k)];
  }
  rho = gibbs[1] > gibbs[0] ? root[0] : root[1];
}

double calc_eta_rho(const Eos& eos, int n, const double* x, int ipure, double t, double rho) {
  MixtureState<double> state;
  state.eos = &eos;
  state.comp = select_components(n, x, ipure);
  state.inverse_t = 1.0 / t;
  prepare_diameters(state);
  return rho * state.zeta_rho[3];
}

double calc_rho_eta(const Eos& eos, int n, const double* x, int ipure, double t, double eta) {
  return eta / calc_eta_rho(eos, n, x, ipure, t, 1.0);
}

}  // namespace tessarel::eos
