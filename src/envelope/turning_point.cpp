// Turning points of T and P on the line of a given vapour fraction.
#include <algorithm>
#include <cmath>
#include <utility>

#include "envelope/saturation.hpp"

namespace tessarel::envelope {

using fluid::at;

namespace {

/// The secant method on the slope of `variable` along `by`.
bool by_secants(Saturation& system, std::size_t variable, std::size_t by, Point& x) {
  const auto size = at(system.size());
  double target = x[by], last_target = 0, last_slope = 0, last_change = 1;
  for (int pass = 0; pass < 12; ++pass) {
    if (!system.solve(x, static_cast<int>(by), target, Finish::confirmed)) return false;
    Point dx{};
    system.tangent(dx);
    const double slope = dx[variable];
    double change = 0;
    if (pass == 0)
      change = 1e-4 * (std::abs(target) > 1e-3 ? 1.0 : 0.1) * (slope > 0 ? 1.0 : -1.0);
    else
      change = -slope * (target - last_target) / (slope - last_slope);
    if (!std::isfinite(change)) return false;
    // To rounding, which is that of the slope where the matrix is nearly singular.
    if (pass > 0 && (std::abs(change) < 1e-10 || (std::abs(change) < 1e-6 && std::abs(change) > 0.5 * last_change)))
      return true;
    last_change = std::abs(change);
    change = std::clamp(change, -0.3, 0.3);
    last_target = target;
    last_slope = slope;
    for (std::size_t i = 0; i < size; ++i) x[i] += dx[i] * change;
    target += change;
  }
  return false;
}

/// Next to a critical point the slopes drown in the rounding of a nearly singular matrix. They are smooth through it:
/// the cubic through those at four points, two on each side, has its root where they vanish. The points are reached by
/// doubling ln K, so far that T has moved by some parts in a million and the turning point lies between.
bool across_critical(Saturation& system, std::size_t n, std::size_t variable, std::size_t by, const Point& critical,
                     double first_k, Point& x) {
  constexpr double far_enough = 2e-6;
  std::array<double, 4> node{}, slope{};
  std::array<Point, 4> points{};
  const Selectors here = system.selectors;
  const double near = x[by];
  int doublings = 0;
  bool good = true;
  for (const int side : {-1, 1}) {
    double k = side * first_k;
    Point p = critical;
    for (std::size_t i = 0; i < n; ++i) p[i] = x[i] * k / x[by];
    system.selectors = k * x[by] > 0 ? here : selectors_of(!here.turned());
    for (int m = 0;; ++m) {
      good = good && system.solve(p, static_cast<int>(by), k, Finish::confirmed);
      if (!good) break;
      Point dx{};
      system.tangent(dx);
      const bool far = std::abs(p[n] - critical[n]) > far_enough && 2 * std::abs(k) > 1.2 * std::abs(near);
      if (side < 0 && doublings == 0 && (far || m == 8)) doublings = std::max(m, 1);
      const int behind = doublings > 0 ? m - doublings : -1;  // 0, 1: the points of this side
      if (behind >= 0) {
        const std::size_t place = at(side < 0 ? 1 - behind : 2 + behind);
        node[place] = k;
        slope[place] = dx[variable];
        points[place] = p;
        if (behind == 1) break;
      }
      // On a parabola through the critical point the chord to 2 k has the slope of the tangent at k.
      for (std::size_t i = 0; i < n + 2; ++i) p[i] = i == by ? 2 * k : critical[i] + 2 * k * dx[i];
      k *= 2;
    }
  }
  system.selectors = here;
  if (!good) return false;
  const auto lagrange = [&](double s, auto value) {
    double sum = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      double term = value(k);
      for (std::size_t m = 0; m < 4; ++m)
        if (m != k) term *= (s - node[m]) / (node[k] - node[m]);
      sum += term;
    }
    return sum;
  };
  double a = x[by], b = 1.1 * a + 1e-6;
  const auto slope_at = [&](double s) { return lagrange(s, [&](std::size_t k) { return slope[k]; }); };
  for (int pass = 0; pass < 20 && a != b; ++pass) {
    const double fa = slope_at(a), fb = slope_at(b);
    if (fa == fb) break;
    a = std::exchange(b, b - fb * (b - a) / (fb - fa));
  }
  if (!(b > node[0] && b < node[3])) return false;
  for (std::size_t i = 0; i < n + 2; ++i) x[i] = lagrange(b, [&](std::size_t k) { return points[k][i]; });
  // Far enough from the critical point the equations themselves are better than the cubic.
  Point solved = x;
  system.selectors = b * near > 0 ? here : selectors_of(!here.turned());
  if (std::abs(b) > 1e-4 && system.solve(solved, static_cast<int>(by), b, Finish::confirmed)) x = solved;
  system.selectors = here;
  return true;
}

}  // namespace

bool find_turning_point(Saturation& system, int n, std::size_t variable, std::size_t by, const Point* critical,
                        Point& x) {
  const auto count = at(n);
  if (by == variable) by = variable == count ? count + 1 : count;
  std::size_t k = 0;
  for (std::size_t i = 1; i < count; ++i)
    if (std::abs(x[i]) > std::abs(x[k])) k = i;
  // T and P hardly change near a critical point while ln K does.
  if (by >= count && std::abs(x[k]) < 0.5) by = k;
  const Selectors kept = system.selectors;
  const auto beside_critical = [&] { return critical != nullptr && std::abs(x[k]) < 1e-3; };
  bool found = !beside_critical() && by_secants(system, variable, by, x);
  if (beside_critical())
    for (const double first_k : {5e-5, 2e-4, 1e-3})
      if ((found = across_critical(system, count, variable, k, *critical, first_k, x))) break;
  system.selectors = kept;
  return found;
}

}  // namespace tessarel::envelope
