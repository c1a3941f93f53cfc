#include "envelope/critical_point.hpp"

#include <algorithm>
#include <cmath>

#include "eos/density.hpp"
#include "eos/pressure.hpp"
#include "fluid/fluid_module.hpp"

namespace tessarel::critical_point_module {

using fluid_module::avogadro_factor;
using fluid_module::not_computed;
using fluid_module::record;

namespace {

struct Estimate {
  double t, p;
};

Estimate start_estimate(int i) {
  const auto k = static_cast<std::size_t>(i - 1);
  if (same_text(record.compname[k].view(), "hydrogen")) return {50.0, 4000000.0};
  return {std::min(700.0 * record.omega[k] + 150.0, 800.0), 5000000.0};
}

/// Newton's method for the inflection point of the isotherm: d2p/deta2 = 0. `eta` moves one step past the last
/// evaluated point; `slopes` are those of that point. False after 60 evaluations.
bool find_inflection(int i, double t, double& eta, calc_p_module::EtaSlopes& slopes) {
  constexpr int limit = 60;
  constexpr double tolerance = 0.2;
  for (int count = 1;; ++count) {
    slopes = calc_p_module::calc_p_deta(record.n, i, t, eta);
    eta -= slopes.d2p_deta2 / slopes.d3p_deta3;
    if (count >= limit) return false;
    if (!(std::abs(slopes.d2p_deta2) > tolerance)) return true;
  }
}

}  // namespace

Message critpure(int i) {
  constexpr int limit = 60;
  constexpr double temperature_step = 0.1, tolerance = 0.01;
  const Estimate start = start_estimate(i);
  double t = start.t;
  record.tc = start.t;
  record.pc = start.p;
  double eta = 0.2;
  calc_p_module::EtaSlopes slopes{};
  bool converged = false;
  for (int pass = 0; pass < limit && !converged; ++pass) {
    t -= temperature_step;
    if (!find_inflection(i, t, eta, slopes)) return "Critical point: density iteration 1 not converged...";
    const double f0 = slopes.dp_deta;
    t += temperature_step;
    if (!find_inflection(i, t, eta, slopes)) return "Critical point: density iteration 2 not converged...";
    const double f1 = slopes.dp_deta;
    t -= f1 / ((f1 - f0) / temperature_step);
    converged = std::abs(f1) <= tolerance;
  }
  if (!converged) return "Critical point: : temperature-iteration not converged";
  record.tc = t;
  record.pc = slopes.p;
  record.rhoc = calc_vrho_module::calc_rho_eta(record.n, record.z.data(), 1, t, eta) / avogadro_factor;
  return no_errors;
}

Message critmixt_pseudo() {
  record.tci.fill(not_computed);
  record.pci.fill(not_computed);
  record.tc = record.pc = record.rhoc = not_computed;
  for (int i = 1; i <= record.n; ++i) {
    const Message message = critpure(i);
    record.tci[static_cast<std::size_t>(i - 1)] = record.tc;
    record.pci[static_cast<std::size_t>(i - 1)] = record.pc;
    if (!ok(message)) return message;
  }
  double tc = 0, pc = 0;
  for (std::size_t i = 0; i < static_cast<std::size_t>(record.n); ++i) {
    tc += record.z[i] * record.tci[i];
    pc += record.z[i] * record.pci[i];
  }
  record.tc = tc;
  record.pc = pc;
  double v = 0;
  const Message message = calc_vrho_module::calc_v(tc, pc, 2, v);
  record.rhoc = 1.0 / v;
  return message;
}

Message critpoint() {
  return record.n == 1 ? critpure(1) : critmixt_pseudo();
}

Message critmixt_brent() {
  return no_errors;
}

}  // namespace tessarel::critical_point_module
