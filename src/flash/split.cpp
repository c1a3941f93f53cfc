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

/// Gibbs energy of a split against the feed, by the feed's tangent plane.
double change_of_gibbs(int n, const double* z, const double* d, const Split& split) {
  return (1.0 - split.beta) * tangent_distance(n, z, d, split.liquid) +
         split.beta * tangent_distance(n, z, d, split.vapour);
}

/// The phases of a split with their derivatives, evaluated together.
struct Point {
  Split split;
  double *liquid_dn, *vapour_dn;
  Vector g{};  ///< ln f_v - ln f_l

  Point(const Split& s, Arena& arena, std::size_t n)
      : split(s), liquid_dn(arena.take<double>(n * n)), vapour_dn(arena.take<double>(n * n)) {}

  void evaluate(const Conditions& c, const double* z, const double* d) {
    flash::evaluate(c, split.liquid, {.dn = liquid_dn});
    flash::evaluate(c, split.vapour, {.dn = vapour_dn});
    g = compare_fugacities(c.n, z, split);
    split.change = change_of_gibbs(c.n, z, d, split);
  }
};

/// Newton's method at work: the point reached and the one tried, and room for a step.
struct Iteration {
  const Conditions& c;
  const double *z, *d;
  Arena::Frame frame;
  Point now, next;
  Square<double> hessian;
  double* work;
  Vector delta{};  ///< the change of ln K of the last step

  Iteration(const Conditions& conditions, const double* feed, const double* plane, const Split& start)
      : c(conditions),
        z(feed),
        d(plane),
        frame(c.eos.arena()),
        now(start, c.eos.arena(), at(c.n)),
        next(start, c.eos.arena(), at(c.n)),
        hessian{c.eos.arena().take<double>(at(c.n * c.n)), at(c.n)},
        work(c.eos.arena().take<double>(at(2 * c.n * (c.n + 1)))) {
    now.evaluate(c, z, d);
  }

  /// Makes `delta`, a step within `radius`; returns the change of the Gibbs energy / (beta (1 - beta)) it predicts.
  double step(double radius) {
    Vector scale, gradient, scaled_step;
    scaled_hessian(c.n, z, now.split, now.liquid_dn, now.vapour_dn, scale, hessian);
    for (std::size_t i = 0; i < at(c.n); ++i) gradient[i] = scale[i] * now.g[i];
    const double predicted = numerics::restricted_step(hessian, gradient.data(), radius, work, scaled_step.data());
    delta = lnk_of_step(c.n, scale, scaled_step);
    return predicted;
  }
  [[nodiscard]] double largest_change() const {
    double largest = 0;
    for (std::size_t i = 0; i < at(c.n); ++i) largest = keep_largest(largest, std::abs(delta[i]));
    return largest;
  }
  /// Makes the material balance of `next` after `factor` times the step; false if it has no solution.
  bool balance_next(double factor) {
    const Split& from = now.split;
    Split& to = next.split;
    to.liquid.roots = from.liquid.roots;
    to.vapour.roots = from.vapour.roots;
    to.beta = from.beta;
    for (std::size_t i = 0; i < at(c.n); ++i) to.lnk[i] = from.lnk[i] + factor * delta[i];
    return balance(c.n, z, to);
  }
  bool finish(Split& split) const {
    split = now.split;
    return split.error <= enough;
  }
};

}  // namespace

bool balance(int n, const double* z, Split& split) {
  return solve_balance(n, z, split.lnk.data(), split.liquid.x.data(), split.vapour.x.data(), split.beta);
}

Vector log_ratios(int n, const double* z, const Split& split) {
  Vector lnk{};
  for (std::size_t i = 0; i < at(n); ++i)
    if (z[i] > 0 && split.vapour.x[i] > 0) lnk[i] = std::log(split.vapour.x[i] / split.liquid.x[i]);
  return lnk;
}

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
  Iteration it(c, z, d, split);
  const Split &now = it.now.split, &next = it.next.split;
  double radius = 1.0;
  for (int tries = 0; tries < 80 && now.error > converged_error; ++tries) {
    const double predicted = it.step(radius);
    if (!std::isfinite(predicted)) break;
    // In ln K a step beyond 4 means nothing: the phases have changed by then.
    const bool inside = it.balance_next(std::min(1.0, 4.0 / it.largest_change())) && next.beta > 0 && next.beta < 1;
    if (inside) it.next.evaluate(c, z, d);
    const double change = next.change - now.change;
    // Where the change is rounding, the fugacities decide.
    const bool in_rounding = now.error < 1e-6 || std::abs(change) < 1e-13;
    const bool lower = inside && (in_rounding ? next.error < now.error : change <= 1e-14);
    if (!lower) {
      if (in_rounding && inside && now.error < enough) break;
      radius = 0.25 * std::min(radius, 1.0);
      if (radius < 1e-9) break;
      continue;
    }
    const double expected = now.beta * (1.0 - now.beta) * predicted;
    if (change > 0.25 * expected && !in_rounding) radius *= 0.5;
    if (change < 0.75 * expected || in_rounding) radius = std::min(2.0 * radius, 8.0);
    std::swap(it.now, it.next);
  }
  return it.finish(split);
}

bool polish(const Conditions& c, const double* z, const double* d, Split& split) {
  Iteration it(c, z, d, split);
  for (int step = 0; step < 15 && it.now.split.error > converged_error; ++step) {
    if (!std::isfinite(it.step(1e3)) || it.largest_change() > 2.0 || !it.balance_next(1.0)) break;
    it.next.evaluate(c, z, d);
    if (!(it.next.split.error < it.now.split.error)) break;
    std::swap(it.now, it.next);
  }
  return it.finish(split);
}

bool solmin(const Conditions& c, const double* z, double gibbs, double* x, double* y) {
  const auto n = at(c.n);
  Split split;
  double total = 0;
  for (std::size_t i = 0; i < n; ++i) total += z[i];
  split.beta = set_composition(split.vapour, c.n, y) / total;
  set_composition(split.liquid, c.n, x);
  split.lnk = log_ratios(c.n, z, split);
  Vector fractions{}, plane{};
  for (std::size_t i = 0; i < n; ++i) fractions[i] = z[i] / total;
  std::fill_n(plane.begin(), n, gibbs / total);  // any plane through the Gibbs energy of the feed
  // Amounts that one phase alone has cannot be compared by K.
  if (!balance(c.n, fractions.data(), split) || !(split.beta > 0 && split.beta < 1)) return false;
  const bool solved = minimise(c, fractions.data(), plane.data(), split);
  for (std::size_t i = 0; i < n; ++i) {
    x[i] = (1.0 - split.beta) * split.liquid.x[i] * total;
    y[i] = split.beta * split.vapour.x[i] * total;
  }
  return solved;
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
    for (std::size_t i = 0; i < n; ++i)
      start.liquid.x[i] = (z[i] - start.beta * start.vapour.x[i]) / (1.0 - start.beta);
    start.lnk = log_ratios(c.n, z, start);
    evaluate(c, start.liquid);
    evaluate(c, start.vapour);
    start.change = change_of_gibbs(c.n, z, d, start);
    if (start.change < 0) {
      split = start;
      if (minimise(c, z, d, split) && acceptable(c, z, split)) return true;
      break;
    }
  }
  // A distance that is lost in the rounding of the Gibbs energy shows in the fugacities: the amount by the balance with
  // the K of the feed beside the trial phase.
  std::copy_n(z, n, start.liquid.x.begin());
  evaluate(c, start.liquid);
  evaluate(c, start.vapour);
  for (std::size_t i = 0; i < n; ++i) start.lnk[i] = z[i] > 0 ? start.liquid.lnphi[i] - start.vapour.lnphi[i] : 0.0;
  split = start;
  return balance(c.n, z, split) && split.beta > 0 && split.beta < 1 && minimise(c, z, d, split) &&
         acceptable(c, z, split);
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
