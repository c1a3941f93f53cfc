// A phase as the phase-split calculations see it: its composition, the root it lies on, its fugacities.
#pragma once

#include <algorithm>
#include <cmath>

#include "eos/fluid.hpp"
#include "eos/fugacity.hpp"

namespace tessarel::flash {

using eos::Root;
using fluid::at;
using fluid::Vector;

/// Where phases are compared: a fluid at fixed temperature [K] and pressure [Pa].
struct Conditions {
  const eos::Eos& eos;
  int n;
  double t, p;
};

struct Phase {
  Vector x{};               ///< mole fractions
  Vector lnphi{};           ///< at `x`, when evaluated
  double rho = 0;           ///< number density [1/A3] of the root of `lnphi`
  eos::RootMemory roots{};  ///< starts for the next evaluation
};

/// Evaluates a phase at its composition, with those derivatives of ln phi that `slopes` asks for: by t, p [1/Pa], and
/// amounts at one mole, dn[i + n j].
inline void evaluate(const Conditions& c, Phase& phase, eos::FugacityOutputs slopes = {},
                     Root root = Root::lower_gibbs) {
  ++c.eos.work.statistics.fugacities;
  slopes.lnphi = phase.lnphi.data();
  phase.rho = eos::calc_lnphi_near(c.eos, c.n, phase.x.data(), c.t, c.p, root, phase.roots, slopes);
}

/// Sets the composition to amounts of any sum, which is returned.
inline double set_composition(Phase& phase, int n, const double* amounts) {
  double sum = 0;
  for (int i = 0; i < n; ++i) sum += amounts[i];
  for (int i = 0; i < n; ++i) phase.x[at(i)] = amounts[i] / sum;
  return sum;
}

/// exp, kept within the range of numbers whose products are finite.
inline double bounded_exp(double x) {
  return std::exp(x > 600.0 ? 600.0 : x < -600.0 ? -600.0 : x);
}

/// The larger of two, and infinity once something is not a number: nothing is to look converged then.
inline double keep_largest(double largest, double value) {
  return std::isfinite(value) ? std::max(largest, value) : HUGE_VAL;
}

/// ln f_i at a composition against which others are compared: ln x_i + lnphi_i. A component that is not there gets
/// the number with which the method keeps clear of ln 0.
inline constexpr double log_of_absent = -50.0;
inline Vector log_fugacities(int n, const Phase& phase) {
  Vector d{};
  for (std::size_t i = 0; i < at(n); ++i)
    d[i] = phase.lnphi[i] + (phase.x[i] > 0 ? std::log(phase.x[i]) : log_of_absent);
  return d;
}

/// Distance of a phase above the tangent plane `d` of another, sum of x (ln x + lnphi - d), over components of z.
inline double tangent_distance(int n, const double* z, const double* d, const Phase& phase) {
  double sum = 0;
  for (int i = 0; i < n; ++i)
    if (const double x = phase.x[at(i)]; z[i] > 0 && x > 0) sum += x * (std::log(x) + phase.lnphi[at(i)] - d[i]);
  return sum;
}

}  // namespace tessarel::flash
