#include "flash/rachford_rice.hpp"

#include <algorithm>
#include <cmath>

#include "flash/phase.hpp"

namespace tessarel::flash {
namespace {

Vector ratios(int n, const double* lnk) {
  Vector k;
  for (int i = 0; i < n; ++i) k[at(i)] = bounded_exp(lnk[i]);
  return k;
}

struct Sums {
  double f, slope;  ///< sum of z (K - 1) / D and sum of z ((K - 1) / D)^2, D = 1 - beta + beta K
};

Sums sums(int n, const double* z, const Vector& k, double liquid, double vapour) {
  Sums s{0, 0};
  for (int i = 0; i < n; ++i) {
    if (!(z[i] > 0)) continue;
    const double r = (k[at(i)] - 1.0) / (liquid + vapour * k[at(i)]);
    s.f += z[i] * r;
    s.slope += z[i] * r * r;
  }
  return s;
}

void compositions(int n, const double* z, const Vector& k, double liquid, double vapour, double* x, double* y) {
  for (int i = 0; i < n; ++i) {
    x[i] = z[i] / (liquid + vapour * k[at(i)]);
    y[i] = k[at(i)] * x[i];
  }
}

/// The feed as one phase with the incipient other one: `beta` 0 or 1. False inside the two-phase region.
bool one_sided(int n, const double* z, const Vector& k, double* x, double* y, double& beta) {
  double as_vapour = 0, as_liquid = 0;
  for (int i = 0; i < n; ++i) {
    as_vapour += z[i] * k[at(i)];
    as_liquid += z[i] / k[at(i)];
  }
  if (as_vapour < 1) {
    beta = 0;
    for (int i = 0; i < n; ++i) {
      x[i] = z[i];
      y[i] = z[i] * k[at(i)] / as_vapour;
    }
    return true;
  }
  if (as_liquid < 1) {
    beta = 1;
    for (int i = 0; i < n; ++i) {
      y[i] = z[i];
      x[i] = z[i] / k[at(i)] / as_liquid;
    }
    return true;
  }
  return false;
}

}  // namespace

void solrac(int n, const double* z, const double* lnk, double* x, double* y, double& beta) {
  const Vector k = ratios(n, lnk);
  if (one_sided(n, z, k, x, y, beta)) return;
  // The smaller phase is the unknown: its fraction keeps its digits.
  const bool liquid_unknown = sums(n, z, k, 0.5, 0.5).f > 0;
  double lo = 0, hi = 0.5;
  for (int i = 0; i < n; ++i) {
    const double e = k[at(i)];
    if (liquid_unknown && e < 1) lo = std::max(lo, (z[i] - e) / (1.0 - e));
    if (!liquid_unknown && e > 1) lo = std::max(lo, (z[i] * e - 1.0) / (e - 1.0));
  }
  double v = liquid_unknown ? 1.0 - beta : beta;
  if (!(v > lo && v < 0.5)) v = lo;
  const auto liquid = [&] { return liquid_unknown ? v : 1.0 - v; };
  const auto vapour = [&] { return liquid_unknown ? 1.0 - v : v; };
  for (int cycle = 0; cycle < 25; ++cycle) {
    const Sums s = sums(n, z, k, liquid(), vapour());
    const double f = liquid_unknown ? -s.f : s.f;  // falls along v
    const double step = f / s.slope;
    (f > 0 ? lo : hi) = v;
    v += step;
    if (!(v >= lo && v <= hi)) v = 0.5 * (lo + hi);
    if (std::abs(f) + std::abs(step) <= 1e-8) break;
  }
  compositions(n, z, k, liquid(), vapour(), x, y);
  beta = vapour();
}

void rr_solve(int n, const double* z, const double* lnk, double* x, double* y, double& beta) {
  const Vector k = ratios(n, lnk);
  double as_vapour = 0, as_liquid = 0;
  for (int i = 0; i < n; ++i) {
    as_vapour += z[i] * k[at(i)];
    as_liquid += z[i] / k[at(i)];
  }
  if (as_vapour <= 1) {
    beta = 0;
  } else if (as_liquid <= 1) {
    beta = 1;
  } else {
    for (int cycle = 0; cycle < 100; ++cycle) {
      const Sums s = sums(n, z, k, 1.0 - beta, beta);
      const double step = s.f / s.slope;
      if (!(std::abs(step) >= 1e-8)) break;
      const double next = beta + step;
      beta = next <= 0 ? 0.5 * beta : next >= 1 ? 0.5 * (beta + 1.0) : next;
    }
  }
  compositions(n, z, k, 1.0 - beta, beta, x, y);
}

bool solve_balance(int n, const double* z, const double* lnk, double* x, double* y, double& beta) {
  double smallest = 1, largest = 1;
  const Vector k = ratios(n, lnk);
  for (int i = 0; i < n; ++i) {
    if (!std::isfinite(lnk[i])) return false;
    if (!(z[i] > 0)) continue;
    smallest = std::min(smallest, k[at(i)]);
    largest = std::max(largest, k[at(i)]);
  }
  if (!(smallest < 1 && largest > 1)) return false;
  // The half with the root decides on the unknown, beta or 1 - beta, whose digits then count.
  const bool liquid_unknown = sums(n, z, k, 0.5, 0.5).f > 0;
  double lo = liquid_unknown ? -smallest / (1.0 - smallest) : 1.0 / (1.0 - largest), hi = 0.5;
  double v = std::clamp(liquid_unknown ? 1.0 - beta : beta, 0.0, 0.5);
  const auto liquid = [&] { return liquid_unknown ? v : 1.0 - v; };
  const auto vapour = [&] { return liquid_unknown ? 1.0 - v : v; };
  double last_step = 1e300;
  for (int cycle = 0; cycle < 200; ++cycle) {
    const Sums s = sums(n, z, k, liquid(), vapour());
    const double f = liquid_unknown ? -s.f : s.f;
    if (!std::isfinite(f)) return false;
    const double step = f / s.slope, size = std::abs(step);
    // At the root the steps are rounding, fall no further and may leave the bracket.
    if (size <= 4e-16 * std::abs(v) || (size < 1e-11 * std::abs(v) && size >= last_step) || size < 1e-30) break;
    last_step = size;
    (f > 0 ? lo : hi) = v;
    v += step;
    if (!(v > lo && v < hi)) v = size < 1e-13 * std::abs(v) ? v : 0.5 * (lo + hi);
  }
  compositions(n, z, k, liquid(), vapour(), x, y);
  beta = vapour();
  return true;
}

}  // namespace tessarel::flash
