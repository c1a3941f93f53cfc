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
        tc_(fluid.limits.tc) {}

  int trace();

 private:
  struct Corrected {
    int iterations = 0;
    int ierr = 0;
  };

  int run(int beta, double start_pressure);
  int second_run();
  int complete(int first_end, int& beta);
  void end_at(int last);
  [[nodiscard]] int last_on_labels(int first) const;
  void label_two_liquids(int last);
  [[nodiscard]] bool lies_on(int j, const Selectors& selectors) const;
  [[nodiscard]] bool vapour_is_stable(const Point& x) const;
  [[nodiscard]] bool liquid_is_stable(const Point& x) const;
  [[nodiscard]] bool first_run_counts(int points, bool crossed, int end) const;
  void start(int beta, double start_pressure, Point& x);
  Corrected newtonsolver(Saturation& system, bool first, Point& x, Point& dx);
  [[nodiscard]] std::size_t selectspecvar(const Point& dx) const;
  [[nodiscard]] double calcstepsize(int iterations, double dsmax) const;
  void extrapolate(double ds, Point& x) const;
  void update_cubic(bool has_last, const Point& x, const Point& dx);
  void cp_and_extrema(const Point& x, const Point& dx);
  void critpntstrategy(Point& x);
  template <class Drop>
  bool rewind(Saturation& system, std::size_t spec, const Selectors* selectors, Drop drop, Point& x);
  bool goes_on_by_lnk(Saturation& system, Point& x);
  bool goes_on_as_two_liquids(Saturation& system, Point& x);
  void turn_selectors(Saturation& system, const Point& x) const;
  void add_extremum(std::size_t variable, double s, bool minimum);
  [[nodiscard]] bool meets_at_critical(bool crossed) const;
  [[nodiscard]] double contrast() const;
  void find_critical_between(double h, std::size_t k);
  [[nodiscard]] bool opposite(const Point& x, const Point& last) const;
  [[nodiscard]] double scale_of(const Point& x) const { return largest_lnk(fluid_.n, fluid_.z, x); }

  const Fluid& fluid_;
  Table& table_;
  std::size_t n_;
  Saturation bubble_, dew_;
  Saturation* system_ = nullptr;
  struct Critical {
    double t = 0, p = 0, rho = 0;  ///< [K], [Pa], [1/A3]; 0: not found
  };
  std::array<Critical, 2> critical_{};  ///< of the run on the bubble and on the dew side
  int beta_ = 0;                        ///< the run at work
  double tc_;                           ///< critical temperature as known so far in this run [K]
  Cubic cubic_;
  std::size_t spec_ = 0;
  double ds_ = 1;
  Selectors at_point_{};                     ///< selectors at the newest point
  double contrast_ = 0, last_contrast_ = 0;  ///< of both phases at the newest point and the one before
  bool crossed_ = false;                     ///< the run has passed a critical point
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
  const std::size_t k = Table::largest(fluid_.n, last);
  return last[k] * x[k] < 0;
}

/// The labels of the phases turn where the line passes the critical point: the predictor lies beyond it when the
/// largest ln K has changed its sign.
void Tracer::turn_selectors(Saturation& system, const Point& x) const {
  system.selectors = at_point_;
  if (opposite(x, table_.point(table_.npnt)) && meets_at_critical(false))
    system.selectors = selectors_of(!at_point_.turned());
}

/// How far the phases differ in density: by the logarithm of the volume that their segments fill, since at high
/// pressure a liquid of large molecules can have fewer moles in a volume than its gas.
double Tracer::contrast() const {
  const fluid::Parameters& p = fluid_.eos.parameters();
  const auto filled = [&](const flash::Phase& phase) {
    double sum = 0;
    for (std::size_t i = 0; i < n_; ++i) sum += phase.x[i] * p.mseg[i] * p.sigma[i] * p.sigma[i] * p.sigma[i];
    return sum * phase.rho;
  };
  return std::log(filled(system_->liquid()) / filled(system_->vapour()));
}

/// At a critical point the densities meet as ln K vanishes; at an azeotrope they do not. By the straight line through
/// the newest two points, `crossed`: which lie on both sides of ln K = 0.
bool Tracer::meets_at_critical(bool crossed) const {
  const Point& newest = table_.point(table_.npnt);
  const std::size_t k = Table::largest(fluid_.n, newest);
  const bool alone = table_.npnt == std::max(table_.vap_idx, 1);
  if (alone) return std::abs(contrast_) < 12.0 * std::abs(newest[k]) + 1e-6;
  const double a = newest[k], b = table_.point(table_.npnt - 1)[k];
  const double at_zero = contrast_ - a * (contrast_ - last_contrast_) / (a - b);
  const double size = crossed ? std::max(std::abs(contrast_), std::abs(last_contrast_)) : std::abs(contrast_);
  return std::abs(at_zero) < 0.5 * size;
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
        table_.say("Error: bad starting point....");
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
    table_.say("Backtracking....");
    ds_ *= 0.6;
    if (limit > std::abs(ds_) || std::abs(ds_) < 1e-10) {
      table_.say("Step too small, we are stuck....");
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
void Tracer::add_extremum(std::size_t variable, double s, bool minimum) {
  const int last = table_.npnt;
  if (table_.extrema_count == static_cast<int>(table_.extrema.size())) return;
  Point interpolated;
  for (std::size_t i = 0; i < n_ + 2; ++i) interpolated[i] = cubic_.value(i, s);
  Point x = interpolated;
  // The step may have passed a critical point behind the extremum.
  const bool passed = table_.selectors[at(last - 1)].turned() != table_.selectors[at(last - 2)].turned();
  system_->selectors = passed && opposite(x, table_.point(last)) ? selectors_of(!at_point_.turned()) : at_point_;
  Point critical{};
  const Critical& known = critical_[at(beta_)];
  if (known.t > 0) {
    critical[n_] = std::log(known.t);
    critical[n_ + 1] = std::log(known.p / pascal_per_bar);
  }
  const auto near = [&](std::size_t i, double slack) { return std::abs(x[i] - interpolated[i]) < slack; };
  const std::size_t other = variable == n_ ? n_ + 1 : n_;
  if (!find_turning_point(*system_, fluid_.n, variable, spec_, known.t > 0 ? &critical : nullptr, x) ||
      !near(variable, 0.05) || !near(other, 0.3))
    x = interpolated;
  table_.extrema[at(table_.extrema_count++)] = {last - 1, x, variable == n_, minimum};
  table_.say("  %s.%s %12.5f%12.5f", minimum ? "Min" : "Max", variable == n_ ? "T" : "P", std::exp(x[n_]),
             std::exp(x[n_ + 1]));
}

/// The critical point on the last step, of length h, on which ln K of component k changes its sign: refined to the
/// root of its conditions, which must lie on this step.
void Tracer::find_critical_between(double h, std::size_t k) {
  const Point &now = table_.point(table_.npnt), &old = table_.point(table_.npnt - 1);
  double s = -h * now[k] / (now[k] - old[k]);
  for (int pass = 0; pass < 6; ++pass) {
    double step = -cubic_.value(k, s) / cubic_.slope(k, s);
    if (!std::isfinite(step)) break;
    while (h != 0 && std::abs(step) >= std::abs(h)) step *= 0.5;
    s += step;
    if (!(std::abs(step) > 0.001)) break;
  }
  const double t_line = std::exp(cubic_.value(n_, s)), p_line = std::exp(cubic_.value(n_ + 1, s)) * pascal_per_bar;
  const auto on_step = [&](std::size_t i, double found, double expected) {
    return std::abs(std::log(found / expected)) < 0.5 * std::abs(now[i] - old[i]) + 1e-3;
  };
  Critical found{t_line, 0, 0.5 * (system_->liquid().rho + system_->vapour().rho)};
  if (refine_critical(fluid_.eos, fluid_.n, fluid_.z, found.t, found.rho)) {
    found.p = eos::calc_p_rho(fluid_.eos, fluid_.n, fluid_.z, found.t, found.rho);
    if (on_step(n_, found.t, t_line) && on_step(n_ + 1, found.p, p_line)) critical_[at(beta_)] = found;
  }
  // Kept as interpolated where the refinement leads away.
  if (critical_[at(beta_)].t == 0)
    critical_[at(beta_)] = {t_line, p_line, 0.5 * (system_->liquid().rho + system_->vapour().rho)};
  tc_ = critical_[at(beta_)].t;
  table_.say("**Crit**%12.5f%12.5f", tc_, critical_[at(beta_)].p / pascal_per_bar);
}

void Tracer::cp_and_extrema(const Point& x, const Point& dx) {
  const Point &now = table_.point(table_.npnt), &old = table_.point(table_.npnt - 1);
  const double h = x[spec_] - old[spec_];
  const std::size_t k = Table::largest(fluid_.n, dx);
  if (now[k] * old[k] <= 0 && critical_[at(beta_)].t == 0 && meets_at_critical(true)) find_critical_between(h, k);
  for (std::size_t i = n_; i < n_ + 2; ++i) {
    const Point& tangent = table_.tangent(table_.npnt - 1);
    if (!(tangent[i] / tangent[spec_] * cubic_.c[1][i] <= 0)) continue;
    const double c2 = cubic_.c[1][i], c3 = cubic_.c[2][i], c4 = cubic_.c[3][i];
    const double w = -(c3 + (c3 < 0 ? -1.0 : 1.0) * std::sqrt(std::max(c3 * c3 - 3.0 * c2 * c4, 0.0)));
    double s = c4 != 0 ? w / (3.0 * c4) : 1e300;
    if (!((s + h) * s <= 0) && w != 0) s = c2 / w;
    if (!((s + h) * s <= 0)) continue;
    add_extremum(i, s, c3 + 3.0 * c4 * s > 0);
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
      table_.say("Too close to critical point: step size adjustment...");
      ds_ = old / 3.0 - old;
      extrapolate(ds_, x);
    }
  } else if (spec_ == n_) {
    const double t = std::exp(next), u = t / tc_;
    if (u > 0.999 && u < 1.001) {
      table_.say("Temperature too close to critical point: step size adjustment...");
      ds_ = std::log(t * (tc_ > t ? 0.999 : 1.001)) - old;
      extrapolate(ds_, x);
    }
  }
}

/// Takes back the newest points as long as `drop` wants it, and makes the one then newest the start of the next step,
/// with `spec` specified and the roots `selectors` if they hold there.
template <class Drop>
bool Tracer::rewind(Saturation& system, std::size_t spec, const Selectors* selectors, Drop drop, Point& x) {
  const int begin = std::max(table_.vap_idx, 1);
  int last = table_.npnt;
  while (last > begin && drop(table_.point(last))) --last;
  if (last == begin) return false;
  Point step{}, dx{};
  for (const int j : {last - 1, last}) {
    x = table_.point(j);
    system.selectors = selectors != nullptr ? *selectors : table_.selectors[at(j - 1)];
    if (!system.prepare(x, static_cast<int>(spec), x[spec]) || system.residual() > 1e-8 || !system.correction(step))
      return false;
    last_contrast_ = contrast_;
    contrast_ = contrast();
  }
  system.tangent(dx);
  at_point_ = table_.selectors[at(last - 1)] = system.selectors;
  table_.npnt = last;
  while (table_.extrema_count > 0 && table_.extrema[at(table_.extrema_count - 1)].after >= last) --table_.extrema_count;
  spec_ = spec;
  update_cubic(false, x, dx);
  return true;
}

/// A way on for a run that is stuck beside a critical point with T or P specified: where the phases become alike over a
/// long piece of the line, these leave ln K open to several digits, and Newton's method does not settle. From where the
/// largest ln K is twice that of the newest point, to its mirror image.
bool Tracer::goes_on_by_lnk(Saturation& system, Point& x) {
  const Point end = table_.point(table_.npnt);
  const std::size_t k = Table::largest(fluid_.n, end);
  if (spec_ < n_ || scale_of(end) > 0.01) return false;
  const auto drop = [&](const Point& p) { return std::abs(p[k]) < 2.0 * std::abs(end[k]); };
  if (!rewind(system, k, nullptr, drop, x)) return false;
  ds_ = -2.0 * x[k];
  extrapolate(ds_, x);
  return true;
}

/// A way on for a dew run that follows a second liquid and is stuck where a vapour-like root appears beside its own.
bool Tracer::goes_on_as_two_liquids(Saturation& system, Point& x) {
  const std::size_t spec = spec_;
  const Point end = table_.point(table_.npnt);
  if (&system == &bubble_) return false;
  const auto drop = [&](const Point& p) { return std::abs(p[spec] - end[spec]) < 1e-3; };
  if (!rewind(system, spec, &two_liquids, drop, x)) return false;
  ds_ = 2.0 * (end[spec] - x[spec]);
  extrapolate(ds_, x);
  return true;
}

int Tracer::run(int beta, double start_pressure) {
  Saturation& system = beta == 0 ? bubble_ : dew_;
  system_ = &system;
  Point x{}, dx{};
  crossed_ = false;
  beta_ = beta;
  critical_[at(beta)] = {};
  tc_ = fluid_.limits.tc;
  start(beta, start_pressure, x);
  at_point_ = system.selectors = {1, -1};
  ds_ = 1;
  cubic_ = {};
  bool first = true, by_lnk = false, by_liquids = false;
  double t = std::exp(x[n_]);
  const double lowest = t - 1.0;
  const fluid::Parameters& p = fluid_.eos.parameters();
  constexpr double lowest_lnp = -12.0;  // 6e-6 bar
  const double highest = *std::min_element(p.tmax.begin(), p.tmax.begin() + fluid_.n);
  for (;;) {
    // Below the pressure at which runs begin a line of two liquids goes on to none at all.
    if (!first && (t < lowest || t > highest || table_.point(table_.npnt)[n_ + 1] < lowest_lnp)) return 0;
    const Corrected corrected = newtonsolver(system, first, x, dx);
    if (corrected.ierr == step_too_small && !by_lnk && goes_on_by_lnk(system, x)) {
      by_lnk = true;
      continue;
    }
    if (corrected.ierr == step_too_small && !by_liquids && goes_on_as_two_liquids(system, x)) {
      by_liquids = true;
      continue;
    }
    if (corrected.ierr != 0) return corrected.ierr;
    at_point_ = system.selectors;
    last_contrast_ = contrast_;
    contrast_ = contrast();
    ++table_.npnt;
    if (first && beta == 1) table_.vap_idx = table_.npnt;
    table_.point(table_.npnt) = x;
    table_.tangent(table_.npnt) = dx;
    table_.selectors[at(table_.npnt - 1)] = at_point_;
    if (at_point_.turned()) crossed_ = true;
    t = std::exp(x[n_]);
    table_.say("%5d%4d%4d%14.6f%12.5f%3d", table_.npnt, corrected.iterations, static_cast<int>(spec_) + 1,
               std::exp(x[n_ + 1]), t - 273.15, beta);
    spec_ = selectspecvar(dx);
    const double dsmax = 1.0 + 0.15 * scale_of(x);
    if (!first) ds_ = calcstepsize(corrected.iterations, dsmax);
    update_cubic(!first, x, dx);
    if (!first) cp_and_extrema(x, dx);
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

/// Whether a first run of so many points belongs beside a second one that ends at the point `end`: it does not where it
/// is the line of a liquid that is about to split, or a piece of what the second run has passed.
bool Tracer::first_run_counts(int points, bool crossed, int end) const {
  if (crossed && critical_[0].t > 0) {
    Point critical{};
    critical[n_] = std::log(critical_[0].t * (1.0 + 1e-4));
    critical[n_ + 1] = std::log(critical_[0].p / pascal_per_bar);
    return liquid_is_stable(critical);
  }
  if (crossed_ && table_.point(1)[n_] > table_.point(end)[n_]) return false;
  return liquid_is_stable(table_.point((points + 1) / 2));
}

/// The run from the low end of the dew line.
int Tracer::second_run() {
  int ierr = run(1, 0);
  for (const double pressure : {1e-3, 1e-2, 0.1, 1.0, 5.0})
    if (ierr == bad_start) ierr = run(1, pressure);
  return ierr;
}

/// Whether a point of the line is met by the phases on these roots, whatever was found before.
bool Tracer::lies_on(int j, const Selectors& selectors) const {
  const Arena::Frame frame(fluid_.eos.arena());
  Saturation fresh(fluid_.eos, fluid_.n, fluid_.z, table_.beta(j));
  fresh.selectors = selectors;
  const Point& x = table_.point(j);
  return fresh.prepare(x, fluid_.n, x[n_]) && fresh.residual() < 1e-8;
}

/// Ends the line at its point `last`.
void Tracer::end_at(int last) {
  table_.npnt = last;
  for (int e = 0; e < table_.extrema_count; ++e)
    if (table_.extrema[at(e)].after >= last) table_.extrema[at(e)].after = 0;
}

/// The last of the points from `first` on before one at which the phases are not on the roots that their labels say:
/// the line has then followed a phase whose root is the other one by now.
int Tracer::last_on_labels(int first) const {
  int j = first;
  const auto labelled = [&](const Selectors& s) { return !s.alike() && lies_on(j, s); };
  while (j <= table_.npnt && labelled(table_.selectors[at(j - 1)])) ++j;
  return j - 1;
}

/// The points behind `last` are those of two liquids as long as both have that root.
void Tracer::label_two_liquids(int last) {
  int j = last + 1;
  for (; j <= table_.npnt && lies_on(j, two_liquids); ++j) table_.selectors[at(j - 1)] = two_liquids;
  end_at(j - 1);
}

/// The second run, and what of both is the boundary. Sets `beta` as the clean-up wants it; returns how it ended.
int Tracer::complete(int first_end, int& beta) {
  const bool crossed = crossed_;
  end_at(last_on_labels(1));
  const int points = table_.npnt, extrema = table_.extrema_count;
  if (first_end == 0) ++fluid_.eos.work.statistics.added_runs;
  beta = 1;
  const int second_end = second_run();
  if (second_end == bad_start) {
    if (points < 2) return bad_start;
    // What the first run has is kept.
    beta = 0;
    table_.npnt = points;
    table_.extrema_count = extrema;
    table_.vap_idx = 0;
    critical_[1] = {};
    return first_end == bad_start ? bad_start : 0;
  }
  if (second_end == 0 && crossed_ && !table_.selectors[at(table_.npnt - 1)].alike()) {
    critical_[0] = {};
    return 0;
  }
  // Behind its labels the second run goes on as a line of two liquids, of which the first one, crossing it, tells how
  // much is the boundary.
  const int labelled = last_on_labels(table_.vap_idx);
  const bool whole = points > 0 && first_run_counts(points, crossed, labelled);
  label_two_liquids(labelled);
  turn_second_run(table_);
  const int met = meeting_of_runs(fluid_, table_);
  const bool begins = whole || (met > 1 && liquid_is_stable(table_.point((met + 1) / 2)));
  if (met > 0 && begins && cut_loops(fluid_, table_)) {
    if (!whole) critical_[0] = {};
    beta = 0;
    return 0;
  }
  turn_second_run(table_);
  end_at(labelled);
  if (!whole) {
    drop_first_run(table_);
    critical_[0] = {};
    beta = 0;
    return 0;
  }
  return pressure_too_high;  // or another early end: the clean-up treats them alike
}

int Tracer::trace() {
  table_.npnt = table_.vap_idx = table_.idx_cp = 0;
  table_.extrema_count = 0;
  table_.gap = false;
  table_.tcrtpe = table_.pcrtpe = table_.rho_crtpe = 0;
  table_.tminpe = table_.p_tminpe = table_.pminpe = table_.t_pminpe = 0;
  table_.pmaxpe = table_.p_tmaxpe = fluid_.limits.pc / pascal_per_bar;
  table_.tmaxpe = table_.t_pmaxpe = fluid_.limits.tc;
  int beta = 0;
  int ierr = run(0, 0);
  // A line that passes no critical point, or ends at a vapour that splits, is not the whole boundary.
  if (ierr != 0 || !crossed_ || !vapour_is_stable(table_.point(table_.npnt))) ierr = complete(ierr, beta);
  postprocphaseenv(fluid_.n, beta, table_, ierr);
  if (ierr != 0) return ierr;
  cut_loops(fluid_, table_);
  resetextrema(fluid_.n, table_);
  for (const Critical& found : critical_) {
    if (found.t == 0) continue;
    ierr = insertcritpnt(fluid_.n, found.t, found.p / pascal_per_bar, table_);
    if (ierr != 0) continue;
    table_.tcrtpe = found.t;
    table_.pcrtpe = found.p / pascal_per_bar;
    table_.rho_crtpe = found.rho;
    return 0;
  }
  return no_critical_point;
}

}  // namespace

int calc_phaseenv(const Fluid& fluid, Table& table, int debug) {
  table.debug = debug;
  const Arena::Frame frame(fluid.eos.arena());
  return Tracer(fluid, table).trace();
}

}  // namespace tessarel::envelope
