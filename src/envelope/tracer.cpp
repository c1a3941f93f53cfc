#include "envelope/tracer.hpp"

#include <algorithm>
#include <cmath>

#include "envelope/criticality.hpp"
#include "eos/pressure.hpp"
#include "flash/adapters.hpp"
#include "flash/pt_flash.hpp"

namespace tessarel::envelope {

using eos::Fluid;
using flash::pascal_per_bar;
using fluid::at;
using fluid::Vector;

namespace {

class Tracer {
 public:
  Tracer(const Fluid& fluid, Table& table)
      : fluid_(fluid),
        table_(table),
        n_(at(fluid.n)),
        bubble_(fluid.eos, fluid.n, fluid.z, 0.0),
        dew_(fluid.eos, fluid.n, fluid.z, 1.0),
        tc_(fluid.limits.tc),
        pc_(fluid.limits.pc) {}

  int trace();

 private:
  struct Corrected {
    int iterations = 0;
    int ierr = 0;
  };

  int run(int beta, double start_pressure);
  int second_run();
  [[nodiscard]] bool vapour_is_stable(const Point& x) const;
  [[nodiscard]] bool liquid_is_stable(const Point& x) const;
  [[nodiscard]] bool first_run_counts(int points, bool crossed) const;
  void start(int beta, double start_pressure, Point& x);
  Corrected newtonsolver(Saturation& system, bool first, Point& x, Point& dx);
  [[nodiscard]] std::size_t selectspecvar(const Point& dx) const;
  [[nodiscard]] double calcstepsize(int iterations, double dsmax) const;
  void extrapolate(double ds, Point& x) const;
  void update_cubic(bool has_last, const Point& x, const Point& dx);
  void cp_and_extrema(const Point& x, const Point& dx);
  void critpntstrategy(Point& x);
  void turn_selectors(Saturation& system, const Point& x) const;
  void refine_extremum(std::size_t variable, double s, double& value, double& companion);
  [[nodiscard]] bool is_critical_crossing() const;
  [[nodiscard]] bool opposite(const Point& x, const Point& last) const;
  [[nodiscard]] double scale_of(const Point& x) const { return largest_lnk(fluid_.n, fluid_.z, x); }

  const Fluid& fluid_;
  Table& table_;
  std::size_t n_;
  Saturation bubble_, dew_;
  Saturation* system_ = nullptr;
  double tc_, pc_;           ///< critical point as known so far [K, Pa]
  double rho_critical_ = 0;  ///< its density once found, 0 before
  Cubic cubic_;
  std::size_t spec_ = 0;
  double ds_ = 1;
  Selectors at_point_{};                            ///< selectors at the newest point
  double density_ratio_ = 0;                        ///< ln (rho_liquid / rho_vapour) at the newest point
  double last_density_ratio_ = 0, last_scale_ = 0;  ///< of the point before, and its largest |ln K|
  bool crossed_ = false;                            ///< the run has passed a critical point
};

/// The first point; `start_pressure` [bar] of the dew side, if positive, in place of the usual one.
void Tracer::start(int beta, double start_pressure, Point& x) {
  const fluid::Parameters& p = fluid_.eos.parameters();
  double value = 0;
  if (beta == 0) {
    value = *std::max_element(p.tmin.begin(), p.tmin.begin() + fluid_.n);
  } else {
    value = std::min(std::max(std::exp(table_.point(1)[n_ + 1]) / 100.0, 0.0001), 1e-5);
    if (start_pressure > 0) value = start_pressure;
  }
  int spec = fluid_.n + (beta == 0 ? 1 : 2);
  for (int tries = 0; tries <= 10; ++tries) {
    idealsolution(fluid_, beta, spec, value, x);
    if (beta == 0 && std::exp(x[n_ + 1]) < 1e-5) idealsolution(fluid_, beta, fluid_.n + 2, 1e-5, x);
    successsubst(fluid_, beta, fluid_.n + 2, x);
    const bool good = std::all_of(x.begin(), x.begin() + fluid_.n + 2, [](double v) { return std::isfinite(v); });
    if (good || beta == 1) break;
    value += 10.0;
  }
  spec_ = n_ + 1;
}

/// Whether the largest ln K of `last` has the other sign at x.
bool Tracer::opposite(const Point& x, const Point& last) const {
  std::size_t k = 0;
  for (std::size_t i = 0; i < n_; ++i)
    if (std::abs(last[i]) > std::abs(last[k])) k = i;
  return last[k] * x[k] < 0;
}

/// The labels of the phases turn where the line passes the critical point: the predictor lies beyond it when the
/// largest ln K has changed its sign.
void Tracer::turn_selectors(Saturation& system, const Point& x) const {
  system.selectors = at_point_;
  if (table_.npnt == 0 || !is_critical_crossing()) return;
  if (opposite(x, table_.point(table_.npnt))) system.selectors = selectors_of(!at_point_.turned());
}

/// At a critical point the densities meet as ln K vanishes; at an azeotrope they do not.
bool Tracer::is_critical_crossing() const {
  const double scale = scale_of(table_.point(table_.npnt));
  if (!(last_scale_ > scale)) return std::abs(density_ratio_) < 12.0 * scale + 1e-6;
  const double slope = (last_density_ratio_ - density_ratio_) / (last_scale_ - scale);
  return std::abs(density_ratio_ - slope * scale) < 0.5 * std::abs(density_ratio_);
}

Tracer::Corrected Tracer::newtonsolver(Saturation& system, bool first, Point& x, Point& dx) {
  const double limit = 1e-4 * std::abs(ds_);
  double previous = 1, error = 1;
  Corrected result;
  double value = x[spec_];
  if (!first) turn_selectors(system, x);
  for (;;) {
    ++result.iterations;
    Point step{};
    bool evaluated = false, done = false;
    if (result.iterations <= 15) {
      evaluated = system.prepare(x, static_cast<int>(spec_), value) && system.correction(step);
      if (evaluated) {
        error = system.apply(step, x);
        done = system.converged(error, previous);
        if (!done && result.iterations > 1 && next_is_rounding(error, previous)) {
          done = true;
          ++result.iterations;  // the one spared counts for the step length
        }
        if (done) system.tangent(dx);
      }
    }
    const bool trivial = done && scale_of(x) < 1e-7;
    if (done && !trivial) return result;
    if (first) {
      if (!evaluated || error > 10 || trivial) {
        result.ierr = bad_start;
        return result;
      }
      previous = error;
      continue;
    }
    if (evaluated && !trivial && error < 0.01 && error < previous) {
      previous = error;
      continue;
    }
    ds_ *= 0.6;
    if (limit > std::abs(ds_) || std::abs(ds_) < 1e-10) {
      result.ierr = step_too_small;
      return result;
    }
    extrapolate(ds_, x);
    value = x[spec_];
    turn_selectors(system, x);
    result.iterations = 0;
    previous = 1;
  }
}

/// The variable that changes most along `dx`, T and P counted twice; the present one along none.
std::size_t Tracer::selectspecvar(const Point& dx) const {
  double largest = 0;
  std::size_t spec = spec_;
  for (std::size_t i = 0; i < n_ + 2; ++i) {
    const double weight = (i < n_ ? 1.0 : 2.0) * std::abs(dx[i]);
    if (weight > largest) {
      largest = weight;
      spec = i;
    }
  }
  return spec;
}

double Tracer::calcstepsize(int iterations, double dsmax) const {
  static constexpr double factors[] = {2.0, 1.5, 1.2, 1.1, 1.0};
  double step = table_.point(table_.npnt)[spec_] - table_.point(table_.npnt - 1)[spec_];
  step *= iterations <= 5 ? factors[iterations - 1] : 0.5;
  const double stretch = spec_ >= n_ ? 2.5 : 1.0;
  step = std::clamp(step * stretch, -dsmax, dsmax) / stretch;
  return step;
}

void Tracer::update_cubic(bool has_last, const Point& x, const Point& dx) {
  Cubic next;
  next.c[0] = x;
  const double along = has_last ? dx[spec_] : std::abs(dx[spec_]);
  for (std::size_t i = 0; i < n_ + 2; ++i) next.c[1][i] = dx[i] / along;
  if (has_last) {
    const Point &old = cubic_.c[0], &slope = cubic_.c[1];
    const double h = x[spec_] - old[spec_];
    for (std::size_t i = 0; i < n_ + 2; ++i) {
      // Hermite: value and slope at the old point, s = -h.
      const double m = slope[i] / slope[spec_], b = next.c[1][i], d = (old[i] - x[i]) / (h * h), e = (m - b) / h;
      next.c[2][i] = 3.0 * (d + b / h) + e;
      next.c[3][i] = (2.0 * (d + b / h) + e) / h;
    }
  }
  cubic_ = next;
}

void Tracer::extrapolate(double ds, Point& x) const {
  const int last = table_.npnt;
  const Point& newest = table_.point(last);
  if (table_.vap_idx + 4 <= last &&
      interpolate_four({&table_.point(last - 3), &table_.point(last - 2), &table_.point(last - 1), &newest}, spec_,
                       newest[spec_] + ds, n_ + 2, x))
    return;
  const bool cubic = last > 1 && selectspecvar(table_.tangent(last - 1)) == spec_;
  for (std::size_t i = 0; i < n_ + 2; ++i) x[i] = cubic ? cubic_.value(i, ds) : cubic_.c[0][i] + cubic_.c[1][i] * ds;
}

/// The turning point of T or P beside s on the line, refined; kept as interpolated where this leads away.
void Tracer::refine_extremum(std::size_t variable, double s, double& value, double& companion) {
  const std::size_t other = variable == n_ ? n_ + 1 : n_;
  Point x;
  for (std::size_t i = 0; i < n_ + 2; ++i) x[i] = cubic_.value(i, s);
  // The step may have passed a critical point behind the extremum.
  const int last = table_.npnt;
  const bool passed = table_.turned[at(last - 1)] != table_.turned[at(last - 2)];
  system_->selectors = passed && opposite(x, table_.point(last)) ? selectors_of(!at_point_.turned()) : at_point_;
  Point critical{};
  critical[n_] = std::log(tc_);
  critical[n_ + 1] = std::log(pc_ / pascal_per_bar);
  if (!find_turning_point(*system_, fluid_.n, variable, spec_, rho_critical_ > 0 ? &critical : nullptr, x)) return;
  const double found = std::exp(x[variable]), beside = std::exp(x[other]);
  if (std::abs(found / value - 1.0) > 0.05 || std::abs(beside / companion - 1.0) > 0.3) return;
  value = found;
  companion = beside;
  if (table_.extrema_count < static_cast<int>(table_.extrema.size()))
    table_.extrema[at(table_.extrema_count++)] = {table_.npnt - 1, x};
}

void Tracer::cp_and_extrema(const Point& x, const Point& dx) {
  const Point &now = table_.point(table_.npnt), &old = table_.point(table_.npnt - 1);
  const double h = x[spec_] - old[spec_];
  std::size_t k = 0;
  for (std::size_t i = 0; i < n_; ++i)
    if (std::abs(dx[i]) > std::abs(dx[k])) k = i;
  const double a = now[k], b = old[k];
  if (a * b <= 0 && rho_critical_ == 0) {
    double s = -h * a / (a - b);
    for (int pass = 0; pass < 6; ++pass) {
      double step = -cubic_.value(k, s) / cubic_.slope(k, s);
      while (std::abs(step) >= std::abs(h)) step *= 0.5;
      s += step;
      if (!(std::abs(step) > 0.001)) break;
    }
    double t = std::exp(cubic_.value(n_, s));
    double rho = 0.5 * (system_->liquid().rho + system_->vapour().rho);
    const double p = std::exp(cubic_.value(n_ + 1, s));
    const double t_line = t;
    if (refine_critical(fluid_.eos, fluid_.n, fluid_.z, t, rho) && std::abs(t / t_line - 1.0) < 0.05) {
      rho_critical_ = table_.rho_crtpe = rho;
      table_.tcrtpe = tc_ = t;
      pc_ = eos::calc_p_rho(fluid_.eos, fluid_.n, fluid_.z, t, rho);
      table_.pcrtpe = pc_ / pascal_per_bar;
    } else if (is_critical_crossing()) {
      table_.tcrtpe = tc_ = t_line;
      table_.pcrtpe = p;
      pc_ = p * pascal_per_bar;
      rho_critical_ = rho;
    }
  }
  for (std::size_t i = n_; i < n_ + 2; ++i) {
    const Point& tangent = table_.tangent(table_.npnt - 1);
    if (!(tangent[i] / tangent[spec_] * cubic_.c[1][i] <= 0)) continue;
    const double c2 = cubic_.c[1][i], c3 = cubic_.c[2][i], c4 = cubic_.c[3][i];
    const double w = -(c3 + (c3 < 0 ? -1.0 : 1.0) * std::sqrt(std::max(c3 * c3 - 3.0 * c2 * c4, 0.0)));
    double s = c4 != 0 ? w / (3.0 * c4) : 1e300;
    if (!((s + h) * s <= 0) && w != 0) s = c2 / w;
    if (!((s + h) * s <= 0)) continue;
    double t = std::exp(cubic_.value(n_, s)), p = std::exp(cubic_.value(n_ + 1, s));
    const bool minimum = c3 + 3.0 * c4 * s > 0;
    if (i == n_) {
      refine_extremum(i, s, t, p);
      (minimum ? table_.tminpe : table_.tmaxpe) = t;
      (minimum ? table_.p_tminpe : table_.p_tmaxpe) = p;
    } else {
      refine_extremum(i, s, p, t);
      (minimum ? table_.pminpe : table_.pmaxpe) = p;
      (minimum ? table_.t_pminpe : table_.t_pmaxpe) = t;
    }
  }
}

/// Steps near the critical point: over it to its mirror image, or a third of the way.
void Tracer::critpntstrategy(Point& x) {
  const double old = table_.point(table_.npnt)[spec_], next = x[spec_];
  if (spec_ < n_) {
    const double r = old / next;
    if (old * next <= 0) {
      const double target = -r > 3 ? old / 3.0 : -old;
      ds_ = target - old;
      extrapolate(ds_, x);
    } else if (r > 3) {
      ds_ = old / 3.0 - old;
      extrapolate(ds_, x);
    }
  } else if (spec_ == n_) {
    const double t = std::exp(next), u = t / tc_;
    if (u > 0.999 && u < 1.001) {
      ds_ = std::log(t * (tc_ > t ? 0.999 : 1.001)) - old;
      extrapolate(ds_, x);
    }
  }
}

int Tracer::run(int beta, double start_pressure) {
  Saturation& system = beta == 0 ? bubble_ : dew_;
  system_ = &system;
  Point x{}, dx{};
  crossed_ = false;
  start(beta, start_pressure, x);
  at_point_ = system.selectors = {1, -1};
  ds_ = 1;
  cubic_ = {};
  bool first = true;
  double t = std::exp(x[n_]);
  const double lowest = t - 1.0;
  const fluid::Parameters& p = fluid_.eos.parameters();
  const double highest = *std::min_element(p.tmax.begin(), p.tmax.begin() + fluid_.n);
  for (;;) {
    if (!first && (t < lowest || t > highest)) return 0;
    const Corrected corrected = newtonsolver(system, first, x, dx);
    if (corrected.ierr != 0) return corrected.ierr;
    at_point_ = system.selectors;
    last_density_ratio_ = density_ratio_;
    last_scale_ = first ? 0.0 : scale_of(table_.point(table_.npnt));
    density_ratio_ = std::log(system.liquid().rho / system.vapour().rho);
    ++table_.npnt;
    table_.point(table_.npnt) = x;
    table_.tangent(table_.npnt) = dx;
    table_.turned[at(table_.npnt - 1)] = at_point_.turned();
    if (at_point_.turned()) crossed_ = true;
    t = std::exp(x[n_]);
    spec_ = selectspecvar(dx);
    const double dsmax = 1.0 + 0.15 * scale_of(x);
    if (!first) ds_ = calcstepsize(corrected.iterations, dsmax);
    update_cubic(!first, x, dx);
    if (!first) cp_and_extrema(x, dx);
    if (first && beta == 1) table_.vap_idx = table_.npnt;
    extrapolate(ds_, x);
    if (!first) critpntstrategy(x);
    first = false;
    if (table_.npnt >= (beta == 0 ? 2500 : Table::capacity - 1)) return table_full;
    if (std::exp(x[n_ + 1]) > 1000.0) return pressure_too_high;
  }
}

/// Whether the feed is one phase a little hotter than at a point of its dew line. If not, another liquid is there
/// before.
bool Tracer::vapour_is_stable(const Point& x) const {
  return flash::flmain(fluid_, std::exp(x[n_]) * (1.0 + 1e-4), std::exp(x[n_ + 1]) * pascal_per_bar, false, nullptr,
                       nullptr)
             .code == 3;
}

/// The same at a little more pressure than at a point of its bubble line.
bool Tracer::liquid_is_stable(const Point& x) const {
  return flash::flmain(fluid_, std::exp(x[n_]), std::exp(x[n_ + 1]) * pascal_per_bar * (1.0 + 1e-3), false, nullptr,
                       nullptr)
             .code == 3;
}

/// Whether a first run of so many points belongs beside a second one: it does not where it is the line of a liquid that
/// is about to split, or a piece of what the second run has passed.
bool Tracer::first_run_counts(int points, bool crossed) const {
  if (crossed) {
    Point critical{};
    critical[n_] = std::log(tc_ * (1.0 + 1e-4));
    critical[n_ + 1] = std::log(pc_ / pascal_per_bar);
    return liquid_is_stable(critical);
  }
  if (crossed_ && table_.point(1)[n_] > table_.point(table_.npnt)[n_]) return false;
  return liquid_is_stable(table_.point((points + 1) / 2));
}

/// The run from the low end of the dew line.
int Tracer::second_run() {
  int ierr = run(1, 0);
  for (const double pressure : {1e-3, 1e-2, 0.1, 1.0, 5.0})
    if (ierr == bad_start) ierr = run(1, pressure);
  return ierr;
}

int Tracer::trace() {
  table_.npnt = table_.vap_idx = table_.idx_cp = 0;
  table_.extrema_count = 0;
  table_.gap = false;
  table_.tcrtpe = table_.pcrtpe = table_.rho_crtpe = 0;
  table_.tminpe = table_.p_tminpe = table_.pminpe = table_.t_pminpe = 0;
  table_.pmaxpe = table_.p_tmaxpe = pc_ / pascal_per_bar;
  table_.tmaxpe = table_.t_pmaxpe = tc_;
  table_.valid = true;
  int beta = 0;
  int ierr = run(0, 0);
  // A line that passes no critical point, or ends at a vapour that splits, is not the whole boundary.
  const bool crossed = crossed_;
  if (ierr != 0 || !crossed || !vapour_is_stable(table_.point(table_.npnt))) {
    if (ierr == 0) ++fluid_.eos.work.statistics.added_runs;
    const int first_run = table_.npnt, first_end = ierr;
    const int extrema = table_.extrema_count;
    beta = 1;
    ierr = second_run();
    if (ierr == bad_start && first_run > 1) {
      // What the first run has is kept.
      beta = 0;
      ierr = first_end == bad_start ? bad_start : 0;
      table_.npnt = first_run;
      table_.extrema_count = extrema;
      table_.vap_idx = 0;
    } else if (ierr != bad_start && !(ierr == 0 && crossed_)) {
      if (first_run == 0 || !first_run_counts(first_run, crossed)) {
        drop_first_run(table_);
        beta = 0;
        ierr = 0;
      } else {
        ierr = pressure_too_high;
      }
    }
  }
  if (beta == 1 && ierr != 0 && ierr != bad_start) {
    turn_second_run(table_);
    if (cut_loops(fluid_, table_)) {
      beta = 0;
      ierr = 0;
    } else {
      turn_second_run(table_);
    }
  }
  postprocphaseenv(fluid_.n, beta, table_, ierr);
  if (ierr == 0) {
    if (table_.vap_idx == 1) reset_maxima(fluid_.n, table_);  // without those of the run that is gone
    cut_loops(fluid_, table_);
    resetextrema(fluid_.n, table_);
    ierr = rho_critical_ > 0 ? insertcritpnt(fluid_.n, tc_, pc_ / pascal_per_bar, table_) : no_critical_point;
  }
  return ierr;
}

}  // namespace

int calc_phaseenv(const Fluid& fluid, Table& table) {
  const Arena::Frame frame(fluid.eos.arena());
  return Tracer(fluid, table).trace();
}

}  // namespace tessarel::envelope
