// What becomes of the raw points of a trace: which runs survive, wrinkles, overlap, extrema, the critical point.
#include <algorithm>
#include <cmath>

#include "envelope/tracer.hpp"

namespace tessarel::envelope {

using fluid::at;

namespace {

/// Moves the points from..npnt to `to`.. in both tables.
void move_down(Table& table, int from, int to) {
  const int count = table.npnt - from + 1;
  for (int e = 0; e < table.extrema_count; ++e) {
    Table::Extremum& extremum = table.extrema[at(e)];
    if (extremum.after >= from)
      extremum.after -= from - to;
    else if (extremum.after >= to)
      extremum.after = -1;  // on the part that goes
  }
  for (int k = 0; k < count; ++k) table.copy_point(from + k, to + k);
}

void removewrinkles(int n, Table& table) {
  const int vap = table.vap_idx, last = table.npnt;
  int liquid_cut = vap, vapour_cut = last + 1;
  if (last < 2) return;
  for (std::size_t i = 0; i < at(n + 2); ++i) {
    bool falling = false, rise = false, fall = false;
    if (vap != 2) falling = table.point(2)[i] < table.point(1)[i];
    for (int j = 3; j <= last; ++j) {
      const double p = table.point(j)[i], q = table.point(j - 1)[i];
      if (j == vap) continue;
      if (j == vap + 1) {
        falling = p < q;
        rise = fall = false;
        continue;
      }
      if (falling) {
        rise = rise || q < p;
        fall = p < q && rise;
      } else {
        fall = fall || p < q;
        rise = q < p && fall;
      }
      if (!(rise && fall)) continue;
      if (j >= vap) {
        vapour_cut = std::min(j - 1, vapour_cut);
        break;
      }
      liquid_cut = std::min(j - 1, liquid_cut);
    }
  }
  if (liquid_cut < vap) {
    table.say("****** Remove wrinkle from liquid line...");
    move_down(table, vap, liquid_cut);
    table.npnt = liquid_cut + table.npnt - vap;
    table.vap_idx = liquid_cut;
  }
  // The number is that from before the move, but for points that are no longer there.
  if (vapour_cut <= last) {
    table.say("****** Remove wrinkle from vapour line...");
    table.npnt = std::min(vapour_cut - 1, table.npnt);
  }
}

void cut_overlap(int n, Table& table) {
  const std::size_t p = at(n + 1);
  const int last = table.npnt, v = table.vap_idx;
  if (v < 3) return;
  const double a = table.point(v - 1)[p], b = table.point(v - 2)[p];
  const bool rising = b < a;
  int k = last + 1;
  if (rising) {
    for (int j = v; j <= last; ++j)
      if (a <= table.point(j)[p]) {
        k = j - 1;
        break;
      }
  } else {
    for (int j = last; j >= v; --j)
      if (a <= table.point(j)[p]) {
        k = j + 1;
        break;
      }
  }
  if (k <= v) return;
  if (k == last + 1) {
    k = rising ? v : last;
    for (int j = v; j <= last; ++j) {
      const int at_j = rising ? j : last - (j - v);
      if (table.point(at_j)[p] > table.point(k)[p]) k = at_j;
    }
  }
  if (k <= v || k > last) return;
  table.say("****** Remove overlapping part...%6d%6d", v, k);
  move_down(table, k, v);
  table.npnt = last + v - k;
}

void leave_gap(Table& table) {
  table.gap = true;
  table.say("****** Gap between bubble and dew line...");
}

void removeoverlap(int n, Table& table) {
  const std::size_t p = at(n + 1);
  bool down = false, up = false;
  for (int j = 2; j <= table.npnt; ++j) {
    const double now = table.point(j)[p], before = table.point(j - 1)[p];
    if (now < before) {
      if (down && up) {
        cut_overlap(n, table);
        return;
      }
      down = true;
    } else if (now > before && down) {
      up = true;
    }
  }
  leave_gap(table);
}

}  // namespace

void removeoverlap2(int n, Table& table) {
  const int v = table.vap_idx;
  if (v < 3 || v + 1 > table.npnt) return;
  const auto size = at(n + 2);
  /// Whether variable i of the seam lies between those of two points.
  const auto between = [&](std::size_t i, int a, int b) {
    const double seam = table.point(v)[i];
    return (table.point(a)[i] - seam) * (table.point(b)[i] - seam) <= 0;
  };
  bool all = true;
  for (std::size_t i = 0; i < size; ++i) all = all && between(i, v - 1, v + 1);
  if (all) {
    table.say("vap_idx between vap_idx-1 and vap_idx+1 --> No overlap!");
    leave_gap(table);
    return;
  }
  table.say("vap_idx NOT between vap_idx-1 and vap_idx+1 --> further checking...");
  for (int j = 2; j < v; ++j)
    for (std::size_t i = 0; i < size; ++i)
      if (between(i, j - 1, j)) {
        table.say("vap_idx between other values then vap_idx-1 and vap_idx+1 --> overlap");
        cut_overlap(n, table);
        return;
      }
  table.say("vap_idx NOT between other values then vap_idx-1 and vap_idx+1 --> further checking...");
  for (std::size_t i = 0; i < size; ++i) {
    double most = table.point(1)[i];
    for (int j = 2; j < v; ++j) most = std::max(most, table.point(j)[i]);
    if (table.point(v)[i] > most && table.point(v - 2)[i] > table.point(v - 1)[i]) {
      table.say("vap_idx is a max point and vap_idx-2 > vap_idx-1 --> overlap");
      cut_overlap(n, table);
      return;
    }
  }
  table.say("vap_idx is a max point but vap_idx-2 < vap_idx-1 --> NO overlap");
  leave_gap(table);
}

void drop_first_run(Table& table) {
  const int count = table.npnt - table.vap_idx + 1;
  move_down(table, table.vap_idx, 1);
  table.npnt = count;
  table.vap_idx = 1;
}

void turn_second_run(Table& table) {
  for (int a = table.vap_idx, b = table.npnt; a < b; ++a, --b) table.swap_points(a, b);
  for (int e = 0; e < table.extrema_count; ++e)
    if (table.extrema[at(e)].after >= table.vap_idx)
      table.extrema[at(e)].after = table.vap_idx + table.npnt - 1 - table.extrema[at(e)].after;
}

void postprocphaseenv(int n, int beta, Table& table, int& ierr) {
  table.gap = false;
  if (ierr == bad_start) return;
  if (beta == 1 && ierr == 0) {
    drop_first_run(table);
    return;
  }
  if (beta == 1) {
    removewrinkles(n, table);
    // The line runs from one end to the other; a second run that is left alone begins it with its dew end.
    if (table.vap_idx > 1) {
      turn_second_run(table);
      removeoverlap(n, table);
    }
  }
  ierr = 0;
}

void resetextrema(int n, Table& table) {
  const auto t = at(n), p = t + 1;
  if (table.npnt == 0) return;
  Point hottest = table.point(1), highest = hottest;
  const auto consider = [&](const Point& x) {
    if (x[t] > hottest[t]) hottest = x;
    if (x[p] > highest[p]) highest = x;
  };
  for (int j = 2; j <= table.npnt; ++j) consider(table.point(j));
  table.tminpe = table.p_tminpe = table.pminpe = table.t_pminpe = 0;
  for (int e = 0; e < table.extrema_count; ++e) {
    const Table::Extremum& extremum = table.extrema[at(e)];
    if (extremum.after < 1) continue;
    if (!extremum.minimum) {
      consider(extremum.x);
    } else if (extremum.of_t) {
      table.tminpe = std::exp(extremum.x[t]);
      table.p_tminpe = std::exp(extremum.x[p]);
    } else {
      table.pminpe = std::exp(extremum.x[p]);
      table.t_pminpe = std::exp(extremum.x[t]);
    }
  }
  table.tmaxpe = std::exp(hottest[t]);
  table.p_tmaxpe = std::exp(hottest[p]);
  table.pmaxpe = std::exp(highest[p]);
  table.t_pmaxpe = std::exp(highest[t]);
  const bool dew_first = table.vap_idx == 1;
  table.tminbub = std::exp(table.point(dew_first ? table.npnt : 1)[t]);
  table.tmindew = std::exp(table.point(dew_first ? 1 : table.npnt)[t]);
}

int insertcritpnt(int n, double tc, double pc, Table& table) {
  const auto size = at(n);
  const double lnt = std::log(tc), lnp = std::log(pc);
  double tmax = -1e300, pmax = -1e300;
  for (int j = 1; j <= table.npnt; ++j) {
    tmax = std::max(tmax, table.point(j)[size]);
    pmax = std::max(pmax, table.point(j)[size + 1]);
  }
  const auto spans = [&](int j, std::size_t i, double value, double most) {
    const double a = table.point(j)[i], b = table.point(j + 1)[i];
    return (a - value) * (b - value) <= 0 || (most < value && (a == most || b == most));
  };
  const auto in_range = [&](int j) { return spans(j, size, lnt, tmax) && spans(j, size + 1, lnp, pmax); };
  std::array<int, 16> changes{};
  std::size_t count = 0;
  int place = 0;
  for (int j = 1; j < table.npnt && place == 0; ++j) {
    bool all = true;
    for (std::size_t i = 0; i < size; ++i) {
      const double product = table.point(j)[i] * table.point(j + 1)[i];
      all = all && (j == table.vap_idx - 1 ? product >= 0 : product <= 0);
    }
    if (!all) continue;
    if (count < changes.size()) changes[count++] = j;
    if (in_range(j)) place = j;
  }
  const char* how = " CP inserted in expected way...";
  // Elsewhere by T and P, where the largest ln K changes its sign: others can do so beside it.
  for (int j = 1; j < table.npnt && place == 0; ++j) {
    const std::size_t k = Table::largest(n, table.point(j));
    const double product = table.point(j)[k] * table.point(j + 1)[k];
    if (in_range(j) && (j == table.vap_idx - 1 ? product >= 0 : product <= 0)) {
      place = j;
      how = " CP inserted just fitting between pressure and temperature...";
    }
  }
  if (place == 0) how = " CP inserted just fitting between ln K values...";
  // A critical point on a part of the line that is gone belongs nowhere.
  const auto far = [&](int j) {
    constexpr double reach = 0.1;
    const auto off = [&](int point) { return std::abs(table.point(point)[size] - lnt); };
    return std::min(off(j), off(j + 1)) > reach;
  };
  count = static_cast<std::size_t>(
      std::remove_if(changes.begin(), changes.begin() + static_cast<std::ptrdiff_t>(count), far) - changes.begin());
  if (place == 0 && count == 1) place = changes[0];
  if (place == 0 && count > 1) {
    double best = 1e300;
    for (std::size_t k = 0; k < count; ++k) {
      const int j = changes[k];
      if (j < 2) continue;
      const double t = table.point(j)[size], p = table.point(j)[size + 1], t1 = table.point(j - 1)[size],
                   t2 = table.point(j + 1)[size];
      const double d = std::abs(t - t1) + std::abs(t - t2) + std::abs(p - t1) + std::abs(p - t2);
      if (d < best) {
        best = d;
        place = j;
      }
    }
  }
  if (place == 0) {
    table.say(" CP cannot be inserted...");
    return no_critical_point;
  }
  table.say(how);
  for (int j = table.npnt; j > place; --j) table.copy_point(j, j + 1);
  for (int e = 0; e < table.extrema_count; ++e) {
    Table::Extremum& extremum = table.extrema[at(e)];
    const std::size_t k = Table::largest(n, table.point(place));
    const bool beyond = extremum.after == place && extremum.x[k] * table.point(place)[k] < 0;
    if (extremum.after > place || beyond) ++extremum.after;
  }
  ++table.npnt;
  Point& inserted = table.point(place + 1);
  inserted = {};
  inserted[size] = lnt;
  inserted[size + 1] = lnp;
  table.tangent(place + 1) = {};
  table.selectors[at(place)] = table.selectors[at(place + 1)];
  if (place < table.vap_idx) ++table.vap_idx;
  table.idx_cp = place + 1;
  return 0;
}

}  // namespace tessarel::envelope
