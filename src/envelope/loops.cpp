// Where the line crosses itself: three-phase points, and the metastable parts between their two passages.
#include <algorithm>
#include <cmath>

#include "envelope/tracer.hpp"

namespace tessarel::envelope {

using eos::Fluid;
using fluid::at;

namespace {

/// The stretches i and j, from a point to the next.
struct Crossing {
  int i = 0, j = 0;
  double lnt = 0;
};

/// A solution on the line with its tangent by ln T.
struct OnLine {
  Point x{}, dx{};
  double bulk_density = 0;
};

bool is_seam(const Table& table, int j) {
  return table.vap_idx > 1 && j == table.vap_idx - 1;
}

/// How often ln T or ln P turns along the table; a line without loops turns once in each at most.
bool may_have_loops(std::size_t n, const Table& table) {
  for (std::size_t v = n; v < n + 2; ++v) {
    int turns = 0;
    double last = 0;
    for (int j = 1; j < table.npnt; ++j) {
      if (is_seam(table, j)) continue;
      const double step = table.point(j + 1)[v] - table.point(j)[v];
      if (step * last < 0) ++turns;
      if (step != 0) last = step;
    }
    if (turns > 1) return true;
  }
  return table.vap_idx > 1;
}

/// The next crossing of two stretches in the plane of ln T and ln P, behind `after` in the order of (i, j).
bool next_crossing(std::size_t n, const Table& table, Crossing& c) {
  int i = c.i, j = c.j;
  for (;;) {
    ++j;
    if (i == 0 || j >= table.npnt) {
      ++i;
      j = i + 2;
    }
    if (i + 2 >= table.npnt) return false;
    if (is_seam(table, i) || is_seam(table, j)) continue;
    const Point &a = table.point(i), &b = table.point(i + 1), &u = table.point(j), &v = table.point(j + 1);
    if (std::max(a[n], b[n]) < std::min(u[n], v[n]) || std::max(u[n], v[n]) < std::min(a[n], b[n]) ||
        std::max(a[n + 1], b[n + 1]) < std::min(u[n + 1], v[n + 1]) ||
        std::max(u[n + 1], v[n + 1]) < std::min(a[n + 1], b[n + 1]))
      continue;
    const double at_ = b[n] - a[n], ap = b[n + 1] - a[n + 1], ut = v[n] - u[n], up = v[n + 1] - u[n + 1];
    const double det = at_ * up - ap * ut, dt = u[n] - a[n], dp = u[n + 1] - a[n + 1];
    if (det == 0) continue;
    const double s = (dt * up - dp * ut) / det, r = (dt * ap - dp * at_) / det;
    // Chords of curved lines: a crossing near the end of one may show on the next.
    if (s < -0.05 || s > 1.05 || r < -0.05 || r > 1.05) continue;
    c = {i, j, a[n] + s * at_};
    return true;
  }
}

/// The state of the line on the stretch behind point j at ln T.
bool solve_on(const Fluid& fluid, const Table& table, int j, double lnt, OnLine& s) {
  const auto n = at(fluid.n);
  const Arena::Frame frame(fluid.eos.arena());
  Saturation system(fluid.eos, fluid.n, fluid.z, table.beta(j));
  system.selectors = table.selectors[at(j - 1)];
  if (s.x[n] == 0) {
    const Point &a = table.point(j), &b = table.point(j + 1);
    const double share = a[n] != b[n] ? (lnt - a[n]) / (b[n] - a[n]) : 0.0;
    for (std::size_t i = 0; i < n + 2; ++i) s.x[i] = a[i] + share * (b[i] - a[i]);
  } else {
    for (std::size_t i = 0; i < n + 2; ++i) s.x[i] += s.dx[i] * (lnt - s.x[n]);
  }
  s.x[n] = lnt;
  if (!system.solve(s.x, fluid.n, lnt)) return false;
  system.tangent(s.dx);
  s.bulk_density = system.bulk().rho;
  return true;
}

/// Whether the feed is in equilibrium with two different phases, not with one that both stretches have.
bool are_apart(std::size_t n, const Table& table, const Crossing& c, const OnLine& first, const OnLine& second) {
  const double same_side = table.beta(c.i) == table.beta(c.j) ? 1.0 : -1.0;
  double apart = 0;
  for (std::size_t i = 0; i < n; ++i) apart = std::max(apart, std::abs(first.x[i] - same_side * second.x[i]));
  return apart > 1e-3;
}

/// Newton's method on the difference of the pressures of both stretches.
bool refine(const Fluid& fluid, const Table& table, const Crossing& c, OnLine& first, OnLine& second) {
  const auto n = at(fluid.n);
  double lnt = c.lnt, last = HUGE_VAL;
  for (int pass = 0; pass < 12; ++pass) {
    if (!solve_on(fluid, table, c.i, lnt, first) || !solve_on(fluid, table, c.j, lnt, second)) return false;
    if (!are_apart(n, table, c, first, second)) return false;
    const double step =
        std::clamp((second.x[n + 1] - first.x[n + 1]) / (first.dx[n + 1] - second.dx[n + 1]), -0.1, 0.1);
    if (!std::isfinite(step)) return false;
    // Two liquids of nearly one composition hand rounding on to their pressure a thousandfold.
    const bool rounding = std::abs(step) < 1e-9 && std::abs(step) > 0.3 * last;
    if (std::abs(step) < 1e-13 || rounding)
      return std::abs(first.bulk_density / second.bulk_density - 1.0) < 1e-6 && std::abs(lnt - c.lnt) < 0.05;
    lnt += step;
    last = std::abs(step);
  }
  return false;
}

double distance(std::size_t n, const Point& a, const Point& b) {
  return std::abs(a[n] - b[n]) + std::abs(a[n + 1] - b[n + 1]);
}

void cut(std::size_t n, Table& table, const Crossing& c, const OnLine& first, const OnLine& second) {
  const int shift = c.j - c.i - 2, seam = table.vap_idx;
  const Point before = table.point(c.i), behind = table.point(c.j + 1);
  int kept = 0;
  for (int e = 0; e < table.extrema_count; ++e) {
    Table::Extremum extremum = table.extrema[at(e)];
    if (extremum.after > c.i && extremum.after < c.j) continue;
    if (extremum.after == c.i && distance(n, extremum.x, before) > distance(n, first.x, before)) continue;
    if (extremum.after == c.j && distance(n, extremum.x, behind) > distance(n, second.x, behind)) continue;
    if (extremum.after >= c.j) extremum.after -= shift;
    table.extrema[at(kept++)] = extremum;
  }
  table.extrema_count = kept;
  const Selectors of_first = table.selectors[at(c.i - 1)], of_second = table.selectors[at(c.j - 1)];
  for (int k = c.j + 1; k <= table.npnt; ++k) table.copy_point(k, k - shift);
  table.npnt -= shift;
  const auto put = [&](int j, const OnLine& s, Selectors selectors) {
    table.point(j) = s.x;
    table.tangent(j) = s.dx;
    table.selectors[at(j - 1)] = selectors;
  };
  put(c.i + 1, first, of_first);
  put(c.i + 2, second, of_second);
  if (seam > c.j)
    table.vap_idx -= shift;
  else if (seam > c.i)
    table.vap_idx = c.i + 2;
}

}  // namespace

int meeting_of_runs(const Fluid& fluid, const Table& table) {
  const auto n = at(fluid.n);
  OnLine first, second;
  for (Crossing c; next_crossing(n, table, c); first = second = {})
    if (c.i < table.vap_idx && c.j >= table.vap_idx && refine(fluid, table, c, first, second)) return c.i;
  return 0;
}

bool cut_loops(const Fluid& fluid, Table& table) {
  const auto n = at(fluid.n);
  if (!may_have_loops(n, table)) return false;
  bool any = false;
  Crossing c;
  for (int tries = 0; tries < 20 && next_crossing(n, table, c); ++tries) {
    OnLine first, second;
    if (!refine(fluid, table, c, first, second)) continue;
    cut(n, table, c, first, second);
    any = true;
    c = {};
  }
  if (any) ++fluid.eos.work.statistics.cut_lines;
  return any;
}

}  // namespace tessarel::envelope
