#include "envelope/queries.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tessarel::envelope {

using eos::Fluid;
using fluid::at;

namespace {

constexpr int bad_given = 455, bad_what = 456, not_found = 461, only_dew = 462, only_bubble = 463, no_convergence = 470;

/// A stretch of the line between two neighbouring points, or a point and an extremum.
struct Stretch {
  int lower = 0;  ///< the point of the table before it
  Point a{}, b{};
};

bool is_trivial(const Fluid& fluid, const Point& x, const Saturation& system) {
  return largest_lnk(fluid.n, fluid.z, x) < 1e-7 && std::abs(system.liquid().rho / system.vapour().rho - 1.0) < 1e-6;
}

/// Start on a stretch: the point at which the specified variable has the value, by the share of the way.
Point share_of(const Stretch& s, std::size_t spec, double value, std::size_t size) {
  const double length = s.b[spec] - s.a[spec], share = length != 0 ? (value - s.a[spec]) / length : 0.0;
  Point x{};
  for (std::size_t i = 0; i < size; ++i) x[i] = s.a[i] + share * (s.b[i] - s.a[i]);
  x[spec] = value;
  return x;
}

/// The four points around the stretch, of the same run, interpolated by Neville's scheme; false where two coincide or
/// the variable turns.
bool estimatepoint(const Table& table, int lower, std::size_t spec, double value, std::size_t size, Point& x) {
  int first = table.vap_idx > 1 && lower >= table.vap_idx ? table.vap_idx : 1;
  int last = table.vap_idx > 1 && lower < table.vap_idx - 1 ? table.vap_idx - 1 : table.npnt;
  if (last - first < 3) return false;
  const int from = std::clamp(lower - 1, first, last - 3);
  return interpolate_four({&table.point(from), &table.point(from + 1), &table.point(from + 2), &table.point(from + 3)},
                          spec, value, size, x);
}

/// The component whose ln K changes most from a to b.
std::size_t moves_most(std::size_t n, const Point& a, const Point& b) {
  std::size_t k = 0;
  for (std::size_t i = 1; i < n; ++i)
    if (std::abs(b[i] - a[i]) > std::abs(b[k] - a[k])) k = i;
  return k;
}

/// Walks along the line from one end and calls `visit` for each stretch until it returns true.
template <class Visit>
bool walk(const Table& table, std::size_t n, bool upwards, Visit&& visit) {
  for (int k = 1; k < table.npnt; ++k) {
    const int lower = upwards ? k : table.npnt - k;
    if (table.gap && lower == table.vap_idx - 1) continue;
    // The extrema on this stretch, in the order of the line: by the ln K that moves most.
    const Point &begin = table.point(lower), &end = table.point(lower + 1);
    const std::size_t along = moves_most(n, begin, end);
    std::array<const Point*, 10> nodes{};
    std::size_t count = 0;
    nodes[count++] = &begin;
    for (int e = 0; e < table.extrema_count; ++e)
      if (table.extrema[at(e)].after == lower) nodes[count++] = &table.extrema[at(e)].x;
    std::sort(nodes.begin() + 1, nodes.begin() + static_cast<std::ptrdiff_t>(count),
              [&](const Point* a, const Point* b) {
                return std::abs((*a)[along] - begin[along]) < std::abs((*b)[along] - begin[along]);
              });
    nodes[count++] = &end;
    if (!upwards) std::reverse(nodes.begin(), nodes.begin() + static_cast<std::ptrdiff_t>(count));
    for (std::size_t i = 0; i + 1 < count; ++i)
      if (visit(Stretch{lower, *nodes[i], *nodes[i + 1]})) return true;
  }
  return false;
}

/// The first stretch on the way from one end that has the value; `exact` where it is that of `found.a`.
bool first_stretch(const Table& table, std::size_t n, bool upwards, std::size_t spec, double value, Stretch& found,
                   bool& exact) {
  return walk(table, n, upwards, [&](const Stretch& s) {
    const double a = s.a[spec] - value, b = s.b[spec] - value;
    // Within rounding of the end of the line or of an extremum.
    const bool touches = std::abs(a) < 2e-12 || std::abs(b) < 2e-12;
    if (!(a * b <= 0) && !touches) return false;
    found = s;
    exact = a == 0 || b == 0 || touches;
    if (exact && (std::abs(b) < std::abs(a))) std::swap(found.a, found.b);
    return true;
  });
}

/// The lowest value of a variable on a branch, from its end to the critical point or the other run. On an open line
/// that is not the value at the end.
double lowest_on_branch(const Table& table, bool upwards, std::size_t spec) {
  const int begin = upwards ? 1 : table.npnt, step = upwards ? 1 : -1;
  double lowest = table.point(begin)[spec];
  for (int j = begin; j >= 1 && j <= table.npnt; j += step) {
    lowest = std::min(lowest, table.point(j)[spec]);
    for (int e = 0; e < table.extrema_count; ++e)
      if (table.extrema[at(e)].after == (upwards ? j : j - 1)) lowest = std::min(lowest, table.extrema[at(e)].x[spec]);
    if (j == table.idx_cp || (table.vap_idx > 1 && j + (upwards ? 1 : 0) == table.vap_idx)) break;
  }
  return std::exp(lowest);
}

/// Beside a turning point of T or P the variable asked for hardly moves along the line: the point at which it has its
/// value, by false position (Illinois) over points solved at given ln K of the component k. Returns how far the
/// variable is off, which next to a critical point is rounding of any size; HUGE_VAL where no point was found.
double along_line(Saturation& system, const Stretch& stretch, std::size_t k, std::size_t spec, double value,
                  std::size_t size, Point& x) {
  Point low = stretch.a, high = stretch.b;
  double f_low = low[spec] - value, f_high = high[spec] - value;
  for (int pass = 0, side = 0; pass < 60; ++pass) {
    const auto solved_at = [&](double share) {
      for (std::size_t i = 0; i < size; ++i) x[i] = low[i] + share * (high[i] - low[i]);
      return std::isfinite(share) && system.solve(x, static_cast<int>(k), x[k], Finish::confirmed);
    };
    // Newton's method needs a start nearer to it where T and P go with the square of ln K: then from beside the ends.
    bool solved = pass <= 40 && solved_at(f_low / (f_low - f_high));
    for (const double share : {0.5, 0.9, 0.1, 0.99, 0.01}) solved = solved || solved_at(share);
    if (!solved) return HUGE_VAL;
    const double f = x[spec] - value;
    if (std::abs(f) < 1e-14 * (1.0 + std::abs(value)) || std::abs(high[k] - low[k]) < 1e-13) return std::abs(f);
    if (f * f_low > 0) {
      low = x;
      f_low = f;
      if (side == -1) f_high *= 0.5;
      side = -1;
    } else {
      high = x;
      f_high = f;
      if (side == 1) f_low *= 0.5;
      side = 1;
    }
  }
  return std::abs(x[spec] - value) < 1e-12 ? 0 : HUGE_VAL;
}

/// So near a critical point that the equations decide nothing: on the parabola through it with the value and the slope
/// at a point of small ln K. Its error goes with the third power of ln K.
bool beside_critical(Saturation& system, const Stretch& stretch, std::size_t k, std::size_t spec, double value,
                     std::size_t size, Point& x) {
  const bool first = stretch.a[k] == 0;
  const Point &critical = first ? stretch.a : stretch.b, &end = first ? stretch.b : stretch.a;
  if (critical[k] != 0 || std::abs(value - critical[spec]) > 3e-4) return false;
  constexpr double nearest = 3e-3, far = 1e-2;
  Point near = end, slope{};
  while (std::abs(near[k]) > nearest) {
    const double part = std::max(0.3, nearest / std::abs(near[k]));
    Point next{};
    for (std::size_t i = 0; i < size; ++i) next[i] = critical[i] + part * (near[i] - critical[i]);
    if (!system.solve(next, static_cast<int>(k), next[k], Finish::confirmed)) break;
    near = next;
  }
  if (std::abs(near[k]) > far || !system.solve(near, static_cast<int>(k), near[k], Finish::confirmed)) return false;
  system.tangent(slope);
  const auto linear = [&](std::size_t i) { return 2 * (near[i] - critical[i]) - slope[i] * near[k]; };
  const auto square = [&](std::size_t i) { return slope[i] * near[k] - (near[i] - critical[i]); };
  double share = (value - critical[spec]) / linear(spec);
  for (int pass = 0; pass < 50; ++pass) share = (value - critical[spec]) / (linear(spec) + square(spec) * share);
  if (!(share >= 0 && share <= 1.0)) return false;
  for (std::size_t i = 0; i < size; ++i) x[i] = critical[i] + share * (linear(i) + share * square(i));
  return true;
}

}  // namespace

Minima getminima(int n, const Table& table) {
  const Point &first = table.point(1), &last = table.point(table.npnt);
  const auto t = at(n);
  Minima m{std::exp(first[t]), std::exp(first[t + 1]), std::exp(last[t]), std::exp(last[t + 1])};
  if (table.vap_idx == 1) {
    std::swap(m.tbub, m.tdew);
    std::swap(m.pbub, m.pdew);
  }
  return m;
}

int calc_bubdew(const Fluid& fluid, const Table& table, char given, char what, double value, SaturationPoint& point,
                bool& interpolated) {
  const auto n = at(fluid.n), size = n + 2;
  interpolated = false;
  point.result = fluid::not_computed;
  std::copy_n(fluid.z, n, point.x.begin());
  std::copy_n(fluid.z, n, point.y.begin());
  if (given != 'P' && given != 'T') return bad_given;
  if (what != 'B' && what != 'D') return bad_what;
  const bool by_t = given == 'T', bubble = what == 'B';
  const double tc = table.tcrtpe, pc = table.pcrtpe;
  if (tc > 0 && std::abs(value - (by_t ? tc : pc)) < 1e-6) {
    point.result = by_t ? pc : tc;
    return 0;
  }
  if (table.npnt < 2) return not_found;
  const std::size_t spec = by_t ? n : n + 1;
  const bool upwards = bubble == (table.vap_idx != 1);
  const double low = lowest_on_branch(table, upwards, spec), high = by_t ? table.tmaxpe : table.pmaxpe;
  const double target = std::log(value);
  if (!(value >= low * (1.0 - 1e-12) && value <= high * (1.0 + 1e-12))) return (bubble ? 457 : 459) + (by_t ? 1 : 0);
  Stretch found;
  bool exact = false;
  if (!first_stretch(table, n, upwards, spec, target, found, exact)) return not_found;
  const Arena::Frame frame(fluid.eos.arena());
  const double beta = table.beta(found.lower);
  Saturation system(fluid.eos, fluid.n, fluid.z, beta);
  system.selectors = table.selectors[at(found.lower - 1)];
  Point x{};
  if (exact) {
    x = found.a;
    if (!system.prepare(x, static_cast<int>(spec), x[spec])) return no_convergence;
  } else {
    bool solved =
        estimatepoint(table, found.lower, spec, target, size, x) && system.solve(x, static_cast<int>(spec), target);
    const std::size_t other = by_t ? n + 1 : n, k = moves_most(n, found.a, found.b);
    const Point expected = share_of(found, spec, target, size);
    const auto beside = [&](std::size_t i, double slack) {
      const auto [least, most] = std::minmax(found.a[i], found.b[i]);
      return x[i] < least - slack * (most - least) || x[i] > most + slack * (most - least);
    };
    // A solution elsewhere on the line is another point. Next to a critical point any small ln K meets the equations
    // to rounding, so those at given T or P decide nothing there.
    constexpr double weak = 2e-3;
    const double k_moves = std::abs(found.b[k] - found.a[k]);
    const bool k_leads =
        k_moves > 0.3 * (std::abs(found.b[n] - found.a[n]) + std::abs(found.b[n + 1] - found.a[n + 1]));
    const auto off = [&] {
      const bool other_side = found.a[k] * found.b[k] >= 0 && x[k] * (found.a[k] + found.b[k]) <= 0;
      return beside(other, 0.3) || (k_leads && (other_side || beside(k, 0.1) || std::abs(x[k]) < weak)) ||
             is_trivial(fluid, x, system);
    };
    if (!solved || off()) {
      x = expected;
      solved = system.solve(x, static_cast<int>(spec), target) && !off();
    }
    if (!solved) {
      const double miss = along_line(system, found, k, spec, target, size, x);
      solved = miss < 1e-9;
      Point parabola{};
      if (!solved && beside_critical(system, found, k, spec, target, size, parabola)) {
        x = parabola;
        solved = true;
      }
      solved = solved || miss < 1e-7;
    }
    if (!solved) {
      interpolated = true;
      x = expected;
      if (!system.prepare(x, static_cast<int>(spec), target)) return no_convergence;
    }
  }
  // The feed is the liquid of a bubble query and the vapour of a dew query, whatever the labels are at the point.
  Vector liquid{}, vapour{};
  unwrap(fluid.n, fluid.z, beta, x, liquid.data(), vapour.data());
  (bubble ? point.y : point.x) = beta < 0.5 ? vapour : liquid;
  point.result = std::exp(by_t ? x[n + 1] : x[n]);
  return 0;
}

int lacks_kind(int n, const Table& table, char given, char what, double value) {
  const bool bubble = what == 'B';
  if (table.idx_cp != 0 || table.vap_idx != (bubble ? 1 : 0)) return 0;
  const std::size_t spec = at(n) + (given == 'T' ? 0 : 1);
  Stretch up, down;
  bool exact = false;
  if (!first_stretch(table, at(n), true, spec, std::log(value), up, exact) ||
      !first_stretch(table, at(n), false, spec, std::log(value), down, exact))
    return 0;
  const bool once =
      up.lower == down.lower && std::minmax(up.a[spec], up.b[spec]) == std::minmax(down.a[spec], down.b[spec]);
  if (!once) return 0;
  return bubble ? only_dew : only_bubble;
}

bool dew_without_trace(const Fluid& fluid, double p, double& t) {
  const auto n = at(fluid.n);
  const Arena::Frame frame(fluid.eos.arena());
  Saturation system(fluid.eos, fluid.n, fluid.z, 1.0);
  Point x{};
  idealsolution(fluid, 1.0, fluid.n + 2, p, x);
  successsubst(fluid, 1.0, fluid.n + 2, x, 3);
  if (!system.solve(x, fluid.n + 1, std::log(p)) || is_trivial(fluid, x, system)) return false;
  t = std::exp(x[n]);
  return system.vapour().rho < system.liquid().rho;
}

int calc_prop_q(const Fluid& fluid, double beta, char given, double value, SaturationPoint& point) {
  const auto n = at(fluid.n);
  point = {};
  if (given != 'P' && given != 'T') return bad_given;
  const bool by_t = given == 'T';
  const int spec = fluid.n + (by_t ? 1 : 2);
  const Arena::Frame frame(fluid.eos.arena());
  Point x{};
  idealsolution(fluid, beta, spec, value, x);
  successsubst(fluid, beta, by_t ? fluid.n + 1 : fluid.n + 2, x);
  x[at(spec - 1)] = std::log(value);
  const auto solve = [&](double fraction, bool& turned) {
    Saturation system(fluid.eos, fluid.n, fluid.z, fraction);
    const bool solved = system.solve(x, spec - 1, std::log(value)) && !is_trivial(fluid, x, system);
    turned = system.vapour().rho > system.liquid().rho;
    return solved;
  };
  bool turned = false;
  if (!solve(beta, turned)) return no_convergence;
  if (turned) {
    // The vapour is the phase of fewer moles in a volume: here the one that was taken for the liquid.
    for (std::size_t i = 0; i < n; ++i) x[i] = -x[i];
    if (!solve(beta, turned) || turned) return no_convergence;
  }
  unwrap(fluid.n, fluid.z, beta, x, point.x.data(), point.y.data());
  point.result = std::exp(by_t ? x[n + 1] : x[n]);
  return 0;
}

Message errorstring(int ierr, FixedText<64>& text) {
  switch (ierr) {
    case 0:
      return no_errors;
    case bad_given:
      return "Bubble/dew point calc.: enter 'P' for pressure or 'T' for temperature.";
    case bad_what:
      return "Bubble/dew point calc.: enter 'B' for bubble or 'D' for dew point.";
    case 457:
      return "Bubble point calculation: input pressure out of range.";
    case 458:
      return "Bubble point calculation: input temperature out of range.";
    case 459:
      return "Dew point calculation: input pressure out of range.";
    case 460:
      return "Dew point calculation: input temperature out of range.";
    case not_found:
      return "Bubble/dew point calc.: crash safety error...";
    case only_dew:
      return "Bubble point calc.: input condition is dew point condition.";
    case only_bubble:
      return "Dew point calc.: input condition is bubble point condition.";
    case 464:
      return "Bubble/dew point calc.: error in polynomial interpolation...";
    case no_convergence:
      return "Bubble/dew point calc.: too slow or no convergence.";
    case 471:
      return "Bubble/dew point calc.: gap in calculated saturation line.";
    case pressure_too_high:
      return "Phase envelop calc.: max. pressure exceeded....";
    default: {
      char line[64];
      const int length = std::snprintf(line, sizeof line, "Bubble/dew point unknown error. Code =%d", ierr);
      text.assign(std::string_view(line, static_cast<std::size_t>(length)));
      return Message::of(text.trimmed());
    }
  }
}

}  // namespace tessarel::envelope
