// What the entries of the phase split refuse.
#pragma once

#include <cmath>

#include "eos/density.hpp"
#include "interface/session.hpp"

namespace tessarel::interface {

inline constexpr Message bad_fractions = "TESSAREL error: mole fractions of the selection must sum to 1 within 1e-6...";
inline constexpr Message bad_state = "TESSAREL error: temperature and pressure must be positive finite numbers...";
inline constexpr Message bad_input =
    "TESSAREL error: input values must be finite numbers, temperature and volume positive...";
inline constexpr Message too_dense = "TESSAREL error: the volume is below that of closest packing...";
inline constexpr Message no_model = "TESSAREL error: temperature must be 1 to 1e5 K and pressure at most 1e12 Pa...";

inline bool positive(double value) {
  return value > 0 && std::isfinite(value);
}
/// None negative, a sum of 1 within 1e-6.
inline bool adds_up(int n, const double* z) {
  double sum = 0;
  for (int i = 0; i < n; ++i) {
    if (!(z[i] >= 0)) return false;
    sum += z[i];
  }
  return std::abs(sum - 1.0) <= 1e-6;
}
/// A molar volume in which the segments of composition `x` have no room at `t`.
inline bool below_packing(Session& session, const double* x, double t, double v) {
  return eos::calc_eta_rho(session.eos(), session.n(), x, 0, t, fluid::avogadro_factor / v) > eos::closest_packing;
}
/// Beyond this the equation of state gives no numbers, or none that mean a fluid.
inline bool within_model(double t, double p) {
  return t >= 1.0 && t <= 1e5 && p <= 1e12;
}
/// The checks of one phase at given t and v, whose p can be that of a liquid under tension.
inline Message check_phase_at(Session& session, double t, double v, double p = 0) {
  if (!positive(t) || !positive(v) || !std::isfinite(p)) return bad_input;
  return below_packing(session, session.z.data(), t, v) ? too_dense : no_errors;
}
/// The checks of a flash at t and p.
inline Message check_flash(const Session& session, double t, double p) {
  if (!positive(t) || !positive(p)) return bad_state;
  if (!within_model(t, p)) return no_model;
  return adds_up(session.n(), session.z.data()) ? no_errors : bad_fractions;
}

}  // namespace tessarel::interface
