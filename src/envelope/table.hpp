// The traced phase envelope of a mixture: points along the line of zero amount of one phase.
#pragma once

#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

#include "fluid/parameters.hpp"

namespace tessarel::envelope {

/// ln K of each component (K = y / x, vapour over liquid), then ln T [K], ln P [bar].
using Point = std::array<double, fluid::nmax + 2>;

/// Which density root the phase in the place of the liquid and the one in the place of the vapour take: 1 the liquid-
/// like, -1 the vapour-like. Both turn round at a critical point. Two liquids of which one has a vapour-like root as
/// well take the liquid-like one.
struct Selectors {
  int liquid = 1, vapour = -1;
  [[nodiscard]] bool turned() const { return liquid < 0; }
  [[nodiscard]] bool alike() const { return liquid == vapour; }
};
inline Selectors selectors_of(bool turned) {
  return turned ? Selectors{-1, 1} : Selectors{1, -1};
}
inline constexpr Selectors two_liquids{1, 1};

struct Table {
  static constexpr int capacity = 5000;

  std::array<Point, capacity> points;    ///< point j, counted from 1, at [j - 1]
  std::array<Point, capacity> tangents;  ///< derivatives by the variable that was specified at the point
  std::array<Selectors, capacity> selectors{};
  int npnt = 0;      ///< points in use
  int vap_idx = 0;   ///< first point of the dew side, 0 while there is none
  int idx_cp = 0;    ///< the critical point, 0 if none
  bool gap = false;  ///< the two runs did not meet
  int debug = 0;     ///< above 0 the steps of a trace print

  /// A turning point of T or P between two points of the table.
  struct Extremum {
    int after = 0;  ///< the point before it; below 1 where that is gone
    Point x{};
    bool of_t = false, minimum = false;  ///< of P otherwise, a maximum otherwise
  };
  std::array<Extremum, 8> extrema{};
  int extrema_count = 0;

  double tmaxpe = 0, p_tmaxpe = 0, pmaxpe = 0, t_pmaxpe = 0;  ///< cricondentherm and cricondenbar [K, bar]
  double tminpe = 0, p_tminpe = 0, pminpe = 0, t_pminpe = 0;  ///< minima between the ends
  double tcrtpe = 0, pcrtpe = 0;                              ///< critical point on the line [K, bar]
  double rho_crtpe = 0;                                       ///< ... its density [1/A3]
  double tminbub = 0, tmindew = 0;                            ///< temperatures of the ends

  [[nodiscard]] Point& point(int j) { return points[fluid::at(j - 1)]; }
  [[nodiscard]] const Point& point(int j) const { return points[fluid::at(j - 1)]; }
  [[nodiscard]] Point& tangent(int j) { return tangents[fluid::at(j - 1)]; }
  [[nodiscard]] const Point& tangent(int j) const { return tangents[fluid::at(j - 1)]; }
  /// Vapour fraction of point j and of the line behind it.
  [[nodiscard]] int beta(int j) const { return vap_idx != 0 && vap_idx <= j ? 1 : 0; }

  /// The component whose ln K is largest at `x`.
  [[nodiscard]] static std::size_t largest(int n, const Point& x) {
    std::size_t k = 0;
    for (std::size_t i = 1; i < fluid::at(n); ++i)
      if (std::abs(x[i]) > std::abs(x[k])) k = i;
    return k;
  }

  template <class... Values>
  void say(const char* format, Values... values) const {
    if (debug <= 0) return;
    if constexpr (sizeof...(values) > 0)
      std::printf(format, values...);
    else
      std::fputs(format, stdout);
    std::fputc('\n', stdout);
  }

  void copy_point(int from, int to) {
    point(to) = point(from);
    tangent(to) = tangent(from);
    selectors[fluid::at(to - 1)] = selectors[fluid::at(from - 1)];
  }
  void swap_points(int a, int b) {
    std::swap(point(a), point(b));
    std::swap(tangent(a), tangent(b));
    std::swap(selectors[fluid::at(a - 1)], selectors[fluid::at(b - 1)]);
  }
};

}  // namespace tessarel::envelope
