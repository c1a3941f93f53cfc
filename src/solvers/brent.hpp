// Root finding in one state variable, by the method of Brent (1973), "Algorithms for Minimization without
// Derivatives", ch. 4: inverse quadratic interpolation safeguarded by bisection, to the precision of the machine.
//
// A solver keeps a state vector `vars` (T, P, v, u, h, s, and q in the two-phase form) and a control pair `ptr`: the
// index of the unknown and of the target, counted from 1. The root finder sets the unknown and calls the forward
// calculation, which reads some entries and overwrites others; the target is put back after each call. The last
// evaluation leaves the properties of the solution in `vars`.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "support/text.hpp"

namespace tessarel::solvers {

/// Indices of the state vector, as they stand in a control pair.
enum StateIndex : std::int32_t { kT = 1, kP, kV, kU, kH, kS, kQ };

inline double& entry(double* vars, std::int32_t index) noexcept {
  return vars[static_cast<std::size_t>(index - 1)];
}

namespace brent {

inline constexpr Message not_bracketed = "Brent_Root: root not bracketed...";
inline constexpr Message no_convergence = "Brent_Root: no convergence...";
inline constexpr int max_iterations = 100;
inline constexpr double precision = 2 * std::numeric_limits<double>::epsilon();

/// Root of `residual(x, err)` between `a` and `b`. An evaluation that sets `err` ends the search with the result 0.
template <class Residual>
double find_root(Residual&& residual, double a, double b, Message& err) {
  double fa = residual(a, err);
  if (!ok(err)) return 0;
  if (!(std::abs(fa) > 0)) return a;
  double fb = residual(b, err);
  if (!ok(err)) return 0;
  if (fb == 0) return b;
  if ((fa > 0 && fb > 0) || (fa < 0 && fb < 0)) {
    err = not_bracketed;
    return 0;
  }

  double c = b, fc = fb;  // b is the best estimate, c the other side of the bracket, a the estimate before b
  double d = 0, e = 0;    // the last step and the one before it
  for (int iteration = 1; iteration <= max_iterations; ++iteration) {
    if ((fb > 0 && fc > 0) || (fb < 0 && fc < 0)) {
      c = a;
      fc = fa;
      d = e = b - a;
    }
    if (std::abs(fc) < std::abs(fb)) {
      a = b;
      b = c;
      c = a;
      fa = fb;
      fb = fc;
      fc = fa;
    }
    const double tolerance = precision * std::abs(b);
    const double xm = (c - b) / 2;
    if (std::abs(xm) <= tolerance || fb == 0) return b;

    bool interpolated = false;
    if (std::abs(e) >= tolerance && std::abs(fa) > std::abs(fb)) {
      const double s = fb / fa;
      double p = 0, q = 0;
      if (a == c) {  // two points: secant
        p = 2 * xm * s;
        q = 1 - s;
      } else {  // three points: inverse quadratic
        const double qq = fa / fc, r = fb / fc;
        p = s * (2 * xm * qq * (qq - r) - (b - a) * (r - 1));
        q = (qq - 1) * (r - 1) * (s - 1);
      }
      if (p > 0) q = -q;
      p = std::abs(p);
      if (2 * p < std::fmin(3 * xm * q - std::abs(tolerance * q), std::abs(e * q))) {
        e = d;
        d = p / q;
        interpolated = true;
      }
    }
    if (!interpolated) d = e = xm;

    a = b;
    fa = fb;
    b += std::abs(d) > tolerance ? d : std::copysign(tolerance, xm);
    fb = residual(b, err);
    if (!ok(err)) return 0;
  }
  err = no_convergence;
  return b;
}

/// The target of `ptr` less its value from `evaluate`, which works on `vars`; 0 when the evaluation fails.
template <class Evaluate>
double target_residual(Evaluate&& evaluate, double* vars, const std::int32_t* ptr, Message& err) {
  double& target = entry(vars, ptr[1]);
  const double held = target;
  err = evaluate();
  const double residual = ok(err) ? held - target : 0.0;
  target = held;
  return residual;
}

/// Root of the residual of `ptr` in its unknown.
template <class Residual>
double solve_unknown(Residual&& residual, double a, double b, double* vars, const std::int32_t* ptr, Message& err) {
  const auto at_unknown = [&](double unknown, Message& message) {
    entry(vars, ptr[0]) = unknown;
    return residual(message);
  };
  return find_root(at_unknown, a, b, err);
}

}  // namespace brent

/// Residual of a single-phase forward calculation `func(T, P, v, u, h, s)`, which returns its message.
template <class Forward>
double delta_1ph(Forward&& func, double* vars, const std::int32_t* ptr, Message& err) {
  const auto evaluate = [&] { return func(vars[0], vars[1], vars[2], vars[3], vars[4], vars[5]); };
  return brent::target_residual(evaluate, vars, ptr, err);
}

/// The unknown of `ptr` between `a` and `b`; 0 or the last iterate on failure. `vars` has 6 entries.
template <class Forward>
double brent_root_1ph(Forward&& func, double a, double b, double* vars, const std::int32_t* ptr, Message& err) {
  err = no_errors;
  return brent::solve_unknown([&](Message& message) { return delta_1ph(func, vars, ptr, message); }, a, b, vars, ptr,
                              err);
}

/// Residual of a two-phase-aware forward calculation `func(T, P, v, u, h, s, q, x, y)`, which returns its message.
template <class Forward>
double ps_delta(Forward&& func, double* vars, double* x, double* y, const std::int32_t* ptr, Message& err) {
  const auto evaluate = [&] { return func(vars[0], vars[1], vars[2], vars[3], vars[4], vars[5], vars[6], x, y); };
  return brent::target_residual(evaluate, vars, ptr, err);
}

/// The same as brent_root_1ph for the state vector of 7 entries; `x` and `y` are handed through to `func`.
template <class Forward>
double brent_root(Forward&& func, double a, double b, double* vars, double* x, double* y, const std::int32_t* ptr,
                  Message& err) {
  err = no_errors;
  return brent::solve_unknown([&](Message& message) { return ps_delta(func, vars, x, y, ptr, message); }, a, b, vars,
                              ptr, err);
}

}  // namespace tessarel::solvers
