#include "flash/split.hpp"

#include <algorithm>
#include <utility>

#include "eos/density.hpp"
#include "flash/rachford_rice.hpp"
#include "numerics/symmetric.hpp"

namespace tessarel::flash {

using numerics::Square;

namespace {

constexpr double converged_error = 1e-12;  // what Newton's method is asked for
constexpr double enough = 1e-11;           // what a solution has to meet

/// The phases of a split with their derivatives, evaluated together.
struct Point {
  Split split;
  double *liquid_dn, *vapour_dn;
  Vector g{};  ///< ln f_v - ln f_l

  Point(const Split& s, Arena& arena, std::size_t n)
      : split(s), liquid_dn(arena.take<double>(n * n)), vapour_dn(arena.take<double>(n * n)) {}

  void evaluate(const Conditions& c, const double* z, const double* d) {
    flash::evaluate(c, split.liquid, liquid_dn);
    flash::evaluate(c, split.vapour, vapour_dn);
    g = compare_fugacities(c.n, z, split);
    split.change = (1.0 - split.beta) * tangent_distance(c.n, z, d, split.liquid) +
                   split.beta * tangent_distance(c.n, z, d, split.vapour);
  }
};

/// Work arrays of a step.
struct StepWork {
  Square<double> hessian;
  double* work;
  StepWork(Arena& arena, std::size_t n)
      : hessian{arena.take<double>(n * n), n}, work(arena.take<double>(2 * n * (n + 1))) {}
};

/// The change of ln K by a step within `radius`, and the change of the Gibbs energy / (beta (1 - beta)) it predicts.
double step_of(const Conditions& c, const double* z, const Point& point, double radius, StepWork& w, Vector& delta) {
  const auto n = at(c.n);
  Vector scale, gradient, scaled_step;
  scaled_hessian(c.n, z, point.split, point.liquid_dn, point.vapour_dn, scale, w.hessian);
  for (std::size_t i = 0; i < n; ++i) gradient[i] = scale[i] * point.g[i];
  const double predicted = numerics::restricted_step(w.hessian, gradient.data(), radius, w.work, scaled_step.data());
  delta = lnk_of_step(c.n, scale, scaled_step);
  return predicted;
}

/// The split after a change of ln K; false if the material balance has no solution.
bool stepped(const Conditions& c, const double* z, const Split& from, const Vector& delta, double factor, Split& to) {
  to.liquid.roots = from.liquid.roots;
  to.vapour.roots = from.vapour.roots;
  to.beta = from.beta;
  for (std::size_t i = 0; i < at(c.n); ++i) to.lnk[i] = from.lnk[i] + factor * delta[i];
  return solve_balance(c.n, z, to.lnk.data(), to.liquid.x.data(), to.vapour.x.data(), to.beta);
}

double largest(std::size_t n, const Vector& v) {
  double m = 0;
  for (std::size_t i = 0; i < n; ++i) m = keep_largest(m, std::abs(v[i]));
  return m;
}

}  // namespace

void scaled_hessian(int count, const double* z, const Split& split, const double* liquid_dn, const double* vapour_dn,
                    Vector& scale, Square<double> hessian) {
  const auto n = at(count);
  const double vapour = split.beta, liquid = 1.0 - vapour;
  for (std::size_t i = 0; i < n; ++i)
    scale[i] = z[i] > 0 ? std::sqrt(std::max(split.liquid.x[i] * split.vapour.x[i], 0.0) / z[i]) : 0.0;
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < n; ++j) {
      const std::size_t ij = i + n * j;
      hessian(i, j) = (i == j ? 1.0 : 0.0) +
                      scale[i] * scale[j] * (liquid * (vapour_dn[ij] - 1.0) + vapour * (liquid_dn[ij] - 1.0));
    }
}

Vector compare_fugacities(int n, const double* z, Split& split) {
  Vector g{};
  split.error = 0;
  for (std::size_t i = 0; i < at(n); ++i) {
    const double lnk = split.liquid.lnphi[i] - split.vapour.lnphi[i];
    if (z[i] > 0) {
      g[i] = split.lnk[i] - lnk;
      split.error = keep_largest(split.error, std::abs(g[i]));
    } else {
      split.lnk[i] = lnk;
    }
  }
  return g;
}

Vector lnk_of_step(int n, const Vector& scale, const Vector& step) {
  double sum = 0;
  for (std::size_t i = 0; i < at(n); ++i) sum += scale[i] * step[i];
  Vector delta{};
  for (std::size_t i = 0; i < at(n); ++i)
    if (scale[i] > 0) delta[i] = step[i] / scale[i] - sum;
  return delta;
}

bool minimise(const Conditions& c, const double* z, const double* d, Split& split) {
  Arena& arena = c.eos.arena();
  const Arena::Frame frame(arena);
  const auto n = at(c.n);
  Point now(split, arena, n), next(split, arena, n);
  StepWork w(arena, n);
  now.evaluate(c, z, d);
  double radius = 1.0;
  Vector delta;
  for (int tries = 0; tries < 80 && now.split.error > converged_error; ++tries) {
    const double predicted = step_of(c, z, now, radius, w, delta);
    if (!std::isfinite(predicted)) break;
    // In ln K a step beyond 4 means nothing: the phases have changed by then.
    const double size = largest(n, delta), factor = size > 4.0 ? 4.0 / size : 1.0;
    const bool inside =
        stepped(c, z, now.split, delta, factor, next.split) && next.split.beta > 0 && next.split.beta < 1;
    if (inside) next.evaluate(c, z, d);
    const double change = next.split.change - now.split.change;
    // Where the change is rounding, the fugacities decide.
    const bool in_rounding = now.split.error < 1e-6 || std::abs(change) < 1e-13;
    const bool lower = inside && (in_rounding ? next.split.error < now.split.error : change <= 1e-14);
    if (!lower) {
      if (in_rounding && inside && now.split.error < enough) break;
      radius = 0.25 * std::min(radius, 1.0);
      if (radius < 1e-9) break;
      continue;
    }
    const double expected = now.split.beta * (1.0 - now.split.beta) * predicted;
    if (change > 0.25 * expected && !in_rounding) radius *= 0.5;
    if (change < 0.75 * expected || in_rounding) radius = std::min(2.0 * radius, 8.0);
    std::swap(now, next);
  }
  split = now.split;
  return split.error <= enough;
}

bool solmin(const Conditions& c, const double* z, double gibbs, double* x, double* y) {
  const auto n = at(c.n);
  Split split;
  double total = 0;
  for (std::size_t i = 0; i < n; ++i) total += z[i];
  // Amounts that the feed does not have, or that one phase alone has, cannot be compared by K.
  split.beta = set_composition(split.vapour, c.n, y) / total;
  set_composition(split.liquid, c.n, x);
  for (std::size_t i = 0; i < n; ++i) split.lnk[i] = z[i] > 0 ? std::log(split.vapour.x[i] / split.liquid.x[i]) : 0.0;
  Vector fractions{}, plane{};
  for (std::size_t i = 0; i < n; ++i) fractions[i] = z[i] / total;
  std::fill_n(plane.begin(), n, gibbs / total);  // any plane through the Gibbs energy of the feed
  if (!solve_balance(c.n, fractions.data(), split.lnk.data(), split.liquid.x.data(), split.vapour.x.data(),
                     split.beta) ||
      !(split.beta > 0 && split.beta < 1))
    return false;
  const bool solved = minimise(c, fractions.data(), plane.data(), split);
  for (std::size_t i = 0; i < n; ++i) {
    x[i] = (1.0 - split.beta) * split.liquid.x[i] * total;
    y[i] = split.beta * split.vapour.x[i] * total;
  }
  return solved;
}

bool polish(const Conditions& c, const double* z, const double* d, Split& split) {
  Arena& arena = c.eos.arena();
  const Arena::Frame frame(arena);
  const auto n = at(c.n);
  Point now(split, arena, n), next(split, arena, n);
  StepWork w(arena, n);
  now.evaluate(c, z, d);
  Vector delta;
  for (int step = 0; step < 15 && now.split.error > converged_error; ++step) {
    if (!std::isfinite(step_of(c, z, now, 1e3, w, delta)) || largest(n, delta) > 2.0) break;
    if (!stepped(c, z, now.split, delta, 1.0, next.split)) break;
    next.evaluate(c, z, d);
    if (!(next.split.error < now.split.error)) break;
    std::swap(now, next);
  }
  split = now.split;
  return split.error <= enough;
}

bool minimise_from_trial(const Conditions& c, const double* z, const double* d, const double* trial, Split& split) {
  const auto n = at(c.n);
  Split start;
  set_composition(start.vapour, c.n, trial);
  double most = 1;
  for (std::size_t i = 0; i < n; ++i)
    if (z[i] > 0 && start.vapour.x[i] > 0) most = std::min(most, z[i] / start.vapour.x[i]);
  // With less and less of it the Gibbs energy falls along the tangent, which the trial phase lies below.
  for (start.beta = 0.5 * most; start.beta > 1e-14 * most; start.beta *= 0.25) {
    for (std::size_t i = 0; i < n; ++i) {
      start.liquid.x[i] = (z[i] - start.beta * start.vapour.x[i]) / (1.0 - start.beta);
      start.lnk[i] = z[i] > 0 && start.vapour.x[i] > 0 ? std::log(start.vapour.x[i] / start.liquid.x[i]) : 0.0;
    }
    evaluate(c, start.liquid);
    evaluate(c, start.vapour);
    start.change = (1.0 - start.beta) * tangent_distance(c.n, z, d, start.liquid) +
                   start.beta * tangent_distance(c.n, z, d, start.vapour);
    if (start.change < 0) {
      split = start;
      return minimise(c, z, d, split) && acceptable(c, z, split);
    }
  }
  return false;
}

bool in_equilibrium(int n, const double* z, const Split& split) {
  if (!(split.beta > 0 && split.beta < 1 && split.error <= enough)) return false;
  double difference = std::abs(split.liquid.rho / split.vapour.rho - 1.0);
  for (int i = 0; i < n; ++i)
    if (z[i] > 0) difference = std::max(difference, std::abs(split.lnk[at(i)]));
  return difference > 1e-6;
}

bool acceptable(const Conditions& c, const double* z, const Split& split) {
  return in_equilibrium(c.n, z, split) && split.change <= 1e-13;
}

Vector plane_of(int n, const double* z, const Split& split) {
  Vector plane{};
  for (std::size_t i = 0; i < at(n); ++i) {
    const Phase& phase = split.liquid.x[i] > split.vapour.x[i] ? split.liquid : split.vapour;
    plane[i] = z[i] > 0 ? std::log(phase.x[i]) + phase.lnphi[i] : log_of_absent;
  }
  return plane;
}

bool is_vapour_like(const Conditions& c, const Phase& phase) {
  return eos::calc_eta_rho(c.eos, c.n, phase.x.data(), 0, c.t, phase.rho) < 0.13;
}

void set_labels(int n, Split& split) {
  if (split.vapour.rho <= split.liquid.rho) return;
  std::swap(split.liquid, split.vapour);
  split.beta = std::min(1.0 - split.beta, 1.0 - 0x1p-53);  // a trace of liquid is one
  for (std::size_t i = 0; i < at(n); ++i) split.lnk[i] = -split.lnk[i];
}

}  // namespace tessarel::flash
