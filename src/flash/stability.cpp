#include "flash/stability.hpp"

#include <algorithm>

#include "numerics/symmetric.hpp"

namespace tessarel::flash {

using numerics::Square;

namespace {

/// The trial phase of a search.
struct TrialPhase {
  const Conditions& c;
  const double *z, *d;
  Known known;
  double* y;                         ///< amounts
  std::span<const Vector> minima{};  ///< minima found by other searches
  Phase phase{};
  double sum = 0;  ///< of y

  [[nodiscard]] bool absent(int i) const { return !(z[i] > 0); }

  void evaluate(double* dn = nullptr) {
    sum = set_composition(phase, c.n, y);
    flash::evaluate(c, phase, {.dn = dn});
  }
  [[nodiscard]] Vector log_amounts() const {
    Vector ylog{};
    for (int i = 0; i < c.n; ++i)
      if (!absent(i)) ylog[at(i)] = std::log(y[i]);
    return ylog;
  }
  void set_log(const Vector& ylog) {
    for (int i = 0; i < c.n; ++i) y[i] = absent(i) ? 0.0 : bounded_exp(ylog[at(i)]);
  }
  /// ln Y after one substitution.
  [[nodiscard]] Vector substituted() const {
    Vector next;
    for (int i = 0; i < c.n; ++i) next[at(i)] = absent(i) ? 0.0 : d[i] - phase.lnphi[at(i)];
    return next;
  }
  [[nodiscard]] double distance() const {
    double tm = 1;
    for (int i = 0; i < c.n; ++i)
      if (y[i] > 0) tm += y[i] * (std::log(y[i]) + phase.lnphi[at(i)] - d[i] - 1.0);
    return tm;
  }
};

/// sqrt of the sum of (sqrt(a) - sqrt(b))^2: the distance of two compositions, or sets of amounts.
double distance_of(int n, const double* a, const double* b) {
  double sum = 0;
  for (std::size_t i = 0; i < at(n); ++i) sum += a[i] + b[i] - 2.0 * std::sqrt(a[i] * b[i]);
  return std::sqrt(std::max(sum, 0.0));
}

/// What one substitution shows.
struct Pass {
  double tm = 1, e1 = 0, largest = 0;
  bool into_known = false;
};

Pass look(const TrialPhase& trial, const Vector& error) {
  Pass pass;
  for (int i = 0; i < trial.c.n; ++i) {
    const double e = error[at(i)];
    pass.tm -= trial.y[i] * (1.0 + e);
    pass.e1 += trial.z[i] * e * e;
    pass.largest = keep_largest(pass.largest, std::abs(e));
  }
  for (const double* other : trial.known) {
    // tm against its value by the distance to the known phase: 1 as the trial runs into it.
    double w = 0;
    for (int i = 0; i < trial.c.n; ++i) w -= (trial.y[i] - std::sqrt(trial.y[i] * other[i])) * error[at(i)];
    pass.into_known = pass.into_known || (distance_of(trial.c.n, trial.y, other) < 0.1 && pass.tm / w > 0.8);
  }
  for (const Vector& minimum : trial.minima)
    pass.into_known = pass.into_known || distance_of(trial.c.n, trial.y, minimum.data()) < 0.05;
  return pass;
}

TestResult converged(const TrialPhase& trial, double tm) {
  bool same = false;
  for (const double* other : trial.known) {
    double difference = 0;
    for (int i = 0; i < trial.c.n; ++i)
      difference = std::max(difference, std::abs(trial.y[i] - other[i]) / (trial.y[i] + other[i] + 1e-300));
    same = same || difference < 1e-5;
  }
  return {2, tm < negative_distance, tm, same};
}

/// Restricted Newton steps on alfa_i = 2 sqrt(Y_i), in which the Hessian of an ideal mixture is the unit matrix.
TestResult second_order(TrialPhase& trial, bool stop_early) {
  const Conditions& c = trial.c;
  const auto n = at(c.n);
  const Arena::Frame frame(c.eos.arena());
  double* dn = c.eos.arena().take<double>(n * n);
  double* matrix = c.eos.arena().take<double>(n * n);
  double* work = c.eos.arena().take<double>(2 * n * n + 2 * n);
  Vector gradient, alfa, step;
  double radius = 0.25;
  TestResult result;
  for (int count = 0; count < 20; ++count) {
    trial.evaluate(dn);
    double tm = trial.distance(), largest = 0;
    const Square<double> hessian{matrix, n};
    for (std::size_t i = 0; i < n; ++i) {
      const double y = trial.y[i];
      alfa[i] = 2.0 * std::sqrt(y);
      gradient[i] = y > 0 ? std::sqrt(y) * (std::log(y) + trial.phase.lnphi[i] - trial.d[i]) : 0.0;
      largest = keep_largest(largest, std::abs(gradient[i]));
      for (std::size_t j = 0; j < n; ++j)
        hessian(i, j) = (i == j ? 1.0 : 0.0) + std::sqrt(y * trial.y[j]) * dn[i + n * j] / trial.sum;
    }
    result.tm = tm;
    if (largest < 1e-7) return converged(trial, tm);
    bool improved = false;
    for (int tries = 0; tries < 25 && !improved; ++tries) {
      const double predicted = numerics::restricted_step(hessian, gradient.data(), radius, work, step.data());
      double length = 0;
      for (std::size_t i = 0; i < n; ++i) {
        length += step[i] * step[i];
        const double root = 0.5 * std::max(alfa[i] + step[i], 0.1 * alfa[i]);
        trial.y[i] = root * root;
      }
      trial.evaluate();
      const double next = trial.distance();
      if (stop_early && next < -0.001) return {1, true, next, false};
      // Close to the minimum the change is below rounding.
      improved = next <= tm + 1e-13;
      if (!improved) {
        radius *= 0.3333;
        continue;
      }
      const double ratio = (next - tm) / predicted;
      if (ratio < 0.25)
        radius *= 0.5;
      else if (ratio > 0.75 && std::sqrt(length) > 0.5 * radius)
        radius *= 2.0;
      result.tm = next;
    }
    if (!improved) break;
  }
  return result;
}

/// The search from `ylog`, the logarithms of substituted amounts.
TestResult search_from_log(TrialPhase& trial, Vector ylog, bool stop_early) {
  const Conditions& c = trial.c;
  Vector error{};
  const auto pass_on = [&] {
    trial.set_log(ylog);
    trial.evaluate();
    const Vector next = trial.substituted();
    for (std::size_t i = 0; i < at(c.n); ++i) error[i] = next[i] - ylog[i];
    return look(trial, error);
  };
  const auto accept = [&] {
    for (std::size_t i = 0; i < at(c.n); ++i) ylog[i] += error[i];
  };
  for (int cycle = 0; cycle < 4; ++cycle) {
    double rat[2] = {0, 0}, tm = 0;
    for (double& weighted_error : rat) {
      const Pass pass = pass_on();
      tm = pass.tm;
      if (stop_early && tm < negative_distance) return {1, true, tm, false};
      if (pass.largest < 1e-7) return converged(trial, tm);
      if (pass.into_known) return {2, false, tm, true};
      weighted_error = pass.e1;
      accept();
    }
    double lambda = std::sqrt(rat[1] / rat[0]);
    if (!(lambda >= 0 && lambda < 1)) lambda = 0.95;
    const Vector before = ylog;
    for (std::size_t i = 0; i < at(c.n); ++i) ylog[i] += lambda / (1.0 - lambda) * error[i];
    const Pass accelerated = pass_on();
    if (!(accelerated.tm <= tm + 1e-10)) {
      // The step went too far, often by decades: Newton's method goes on from before it.
      trial.set_log(before);
      break;
    }
    accept();
  }
  return second_order(trial, stop_early);
}

}  // namespace

TestResult hebmin(const Conditions& c, const double* z, const double* d, Known known, bool stop_early, double* y) {
  TrialPhase trial{c, z, d, known, y};
  trial.set_log(trial.log_amounts());
  trial.evaluate();
  return search_from_log(trial, trial.substituted(), stop_early);
}

namespace {

/// Searches from amounts that are the result of a substitution, each minimum once.
class WideSearch {
 public:
  WideSearch(const Conditions& c, const double* z, const double* d, Known known, std::span<const Vector> minima)
      : c_(c), z_(z), d_(d), known_(known) {
    for (const Vector& minimum : minima) add(minimum);
  }
  Trial best;

  void keep_lowest(const Vector& y, double tm) {
    if (tm >= best.tm) return;
    best.tm = tm;
    best.y = y;
    best.found = true;
  }
  void search(Vector y) {
    if (best.found) return;
    if (is_on_its_way(y)) {
      best.into_known = true;
      return;
    }
    TrialPhase trial{c_, z_, d_, known_, y.data(), {minima_.data(), count_}};
    const TestResult test = search_from_log(trial, trial.log_amounts(), true);
    best.all_converged = best.all_converged && test.conv != 0;
    best.into_known = best.into_known || test.trivial;
    // A distance this small counts where the search converged on a composition of its own.
    const bool own = test.conv == 2 && !test.trivial;
    if (test.tm < (own ? -1e-13 : negative_distance)) keep_lowest(y, test.tm);
    if (own) add(y);
  }

 private:
  void add(const Vector& minimum) {
    if (count_ < minima_.size()) minima_[count_++] = minimum;
  }
  /// The first substitution from far away that lands this close to a minimum is on its way there.
  [[nodiscard]] bool is_on_its_way(const Vector& y) const {
    const auto is_near = [&](const double* other) { return distance_of(c_.n, y.data(), other) < 0.03; };
    return std::any_of(known_.begin(), known_.end(), is_near) ||
           std::any_of(minima_.begin(), minima_.begin() + static_cast<std::ptrdiff_t>(count_),
                       [&](const Vector& minimum) { return is_near(minimum.data()); });
  }

  const Conditions& c_;
  const double *z_, *d_;
  Known known_;
  std::array<Vector, 8> minima_;
  std::size_t count_ = 0;
};

}  // namespace

Trial search_widely(const Conditions& c, const double* z, const double* d, Known known, std::span<const Vector> minima,
                    WideStarts starts) {
  constexpr double pure = 0.999, promise = 0.2;
  WideSearch wide(c, z, d, known, minima);
  std::array<Vector, fluid::nmax> first;  // amounts after one substitution
  Vector promises{};
  for (int i = 0; i < c.n; ++i) {
    if (!(z[i] > 0)) continue;
    Phase nearly_pure;
    double rest = 0;
    for (int k = 0; k < c.n; ++k) rest += k == i ? 0.0 : z[k];
    if (!(rest > 0)) break;  // one component alone
    for (int k = 0; k < c.n; ++k) nearly_pure.x[at(k)] = k == i ? pure : (1.0 - pure) * z[k] / rest;
    evaluate(c, nearly_pure);
    // The amount of a trial phase that makes its distance least.
    const double distance = tangent_distance(c.n, z, d, nearly_pure);
    const double amount = bounded_exp(-distance);
    for (int k = 0; k < c.n; ++k) {
      const auto j = at(k);
      first[at(i)][j] = z[k] > 0 ? bounded_exp(d[k] - nearly_pure.lnphi[j]) : 0.0;
      promises[at(i)] += first[at(i)][j];
      nearly_pure.x[j] *= amount;
    }
    if (distance < negative_distance) wide.keep_lowest(nearly_pure.x, 1.0 - amount);
  }
  for (int i = 0; i < c.n; ++i)
    if (promises[at(i)] > promise) wide.search(first[at(i)]);
  Vector y{};
  if (starts.ideal_gas) {
    for (int i = 0; i < c.n; ++i) y[at(i)] = z[i] > 0 ? bounded_exp(d[i]) : 0.0;
    wide.search(y);
  }
  if (starts.middle) {
    for (int i = 0; i < c.n; ++i) y[at(i)] = z[i] > 0 ? 1.0 / c.n : 0.0;
    wide.search(y);
  }
  return wide.best;
}

Trial third_phase(const Conditions& c, const double* z, const Split& split) {
  const double* known[] = {split.liquid.x.data(), split.vapour.x.data()};
  const Vector plane = plane_of(c.n, z, split);
  return search_widely(c, z, plane.data(), known, {}, {.ideal_gas = true});
}

bool locally_stable(const Conditions& c, const Phase& feed, double* y) {
  const auto n = at(c.n);
  const Arena::Frame frame(c.eos.arena());
  double* dn = c.eos.arena().take<double>(n * n);
  const Square<double> matrix{c.eos.arena().take<double>(n * n), n}, copy{c.eos.arena().take<double>(n * n), n};
  Phase same = feed;
  evaluate(c, same, {.dn = dn});
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < n; ++j)
      matrix(i, j) = copy(i, j) = (i == j ? 1.0 : 0.0) + std::sqrt(feed.x[i] * feed.x[j]) * dn[i + n * j];
  if (numerics::cholesky(copy)) return true;
  const Square<double> vectors = copy;
  Vector values;
  numerics::eigen(matrix, values.data(), vectors);
  const auto lowest = static_cast<std::size_t>(std::min_element(values.begin(), values.begin() + c.n) - values.begin());
  for (std::size_t i = 0; i < n; ++i) {
    const double root = std::sqrt(feed.x[i]) + 0.05 * vectors(lowest, i);
    y[i] = feed.x[i] > 0 ? std::max(root * root, 1e-3 * feed.x[i]) : 0.0;
  }
  return false;
}

}  // namespace tessarel::flash
