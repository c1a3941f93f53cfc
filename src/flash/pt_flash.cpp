#include "flash/pt_flash.hpp"

#include <algorithm>
#include <limits>

#include "flash/rachford_rice.hpp"
#include "flash/stability.hpp"
#include "flash/wilson.hpp"

namespace tessarel::flash {

Feed make_feed(const eos::Fluid& fluid, double t, double p) {
  Feed feed{{fluid.eos, fluid.n, t, p}, fluid.z, {}};
  std::copy_n(fluid.z, fluid.n, feed.phase.x.begin());
  evaluate(feed.c, feed.phase);
  feed.d = log_fugacities(fluid.n, feed.phase);
  for (int i = 0; i < fluid.n; ++i) feed.gibbs += fluid.z[i] * feed.d[at(i)];
  feed.wilson = wilson_lnk(fluid, t, p);
  return feed;
}

namespace {

/// A phase that has the feed's composition is the feed.
void evaluate_beside(const Feed& feed, Phase& phase) {
  if (std::equal(feed.z, feed.z + feed.c.n, phase.x.begin()))
    phase = feed.phase;
  else
    evaluate(feed.c, phase);
}

}  // namespace

void dirsub(const Feed& feed, Substitution& s) {
  const int n = feed.c.n;
  solrac(n, feed.z, s.lnk.data(), s.liquid.x.data(), s.vapour.x.data(), s.beta);
  evaluate_beside(feed, s.liquid);
  evaluate_beside(feed, s.vapour);
  s.errk = s.errmax = 0;
  for (int i = 0; i < n; ++i) {
    const auto k = at(i);
    s.lnk_new[k] = s.liquid.lnphi[k] - s.vapour.lnphi[k];
    s.dlnk[k] = s.lnk_new[k] - s.lnk[k];
    s.errk += feed.z[i] * s.dlnk[k] * s.dlnk[k];
    s.errmax = keep_largest(s.errmax, std::abs(s.dlnk[k]));
  }
  s.tmx = tangent_distance(n, feed.z, feed.d.data(), s.liquid);
  s.tmy = tangent_distance(n, feed.z, feed.d.data(), s.vapour);
  s.gmix = (1.0 - s.beta) * s.tmx + s.beta * s.tmy;
}

namespace {

/// One flash: Michelsen's scheme with what stands around it.
class Flash {
 public:
  Flash(const eos::Fluid& fluid, double t, double p) : feed_(make_feed(fluid, t, p)), z_(fluid.z), n_(fluid.n) {}

  PtResult run(bool warm, const double* x, const double* y);

 private:
  enum class Next { stability, from_trial, from_lnk };

  Next first_substitutions(bool warm, const double* x, const double* y);
  Next test_stability();
  void start_from_trial();
  [[nodiscard]] Split substituted_split() const;
  bool split_by_quick_route();
  void split_by_substitution();
  void decide_again();
  bool split_from(const double* trial);
  void keep_if_stable();
  bool improve_with(const double* trial);
  PtResult result();

  [[nodiscard]] const double* d() const { return feed_.d.data(); }
  [[nodiscard]] const Conditions& conditions() const { return feed_.c; }
  eos::Statistics& statistics() { return feed_.c.eos.work.statistics; }

  Feed feed_;
  const double* z_;
  int n_;
  Substitution s_{};
  double tm1_ = 0, tm2_ = 0;  ///< distances of the liquid-like and the vapour-like trial phase
  bool proven_ = false;       ///< the feed was shown to be unstable
  bool into_feed_ = false;    ///< a test ended by running into the feed
  bool two_phases_ = false;   ///< the scheme's steps found a split, whatever became of it
  int code_ = 0;
  bool accepted_ = false;  ///< `split_` is the answer
  Split split_{};
  std::array<Vector, 2> minima_{};  ///< at which the two usual tests converged
  std::size_t minima_count_ = 0;
  Vector trial_{};  ///< a non-trivial trial phase at a distance too small for the usual test
  bool has_trial_ = false;
};

Flash::Next Flash::first_substitutions(bool warm, const double* x, const double* y) {
  s_.lnk = feed_.wilson;
  if (warm) {
    set_composition(s_.liquid, n_, x);
    set_composition(s_.vapour, n_, y);
    evaluate(conditions(), s_.liquid);
    evaluate(conditions(), s_.vapour);
    for (std::size_t i = 0; i < at(n_); ++i) s_.lnk[i] = s_.liquid.lnphi[i] - s_.vapour.lnphi[i];
  }
  dirsub(feed_, s_);
  s_.lnk = s_.lnk_new;
  for (int pass = 0; pass < 3 && s_.beta > 0 && s_.beta < 1; ++pass) {
    dirsub(feed_, s_);
    s_.lnk = s_.lnk_new;
    proven_ = s_.gmix < -1e-8 || s_.tmx < -1e-8 || s_.tmy < -1e-8;
    if (s_.gmix < -1e-8) return Next::from_lnk;
    if (s_.tmx < -1e-8 || s_.tmy < -1e-8) {
      tm1_ = s_.tmx;
      tm2_ = s_.tmy;
      return Next::from_trial;
    }
    solrac(n_, z_, s_.lnk.data(), s_.liquid.x.data(), s_.vapour.x.data(), s_.beta);
  }
  return Next::stability;
}

Flash::Next Flash::test_stability() {
  for (int i = 0; i < n_; ++i) {
    const double k = bounded_exp(feed_.wilson[at(i)]);
    s_.liquid.x[at(i)] = z_[i] / k;
    s_.vapour.x[at(i)] = z_[i] * k;
  }
  const bool liquid_first = s_.beta > 0.5;
  for (const bool liquid_like : {liquid_first, !liquid_first}) {
    Vector& trial = liquid_like ? s_.liquid.x : s_.vapour.x;
    const double* known[] = {z_};
    const TestResult test = hebmin(conditions(), z_, d(), known, true, trial.data());
    (liquid_like ? tm1_ : tm2_) = test.tm;
    into_feed_ = into_feed_ || test.trivial;
    if (test.split) {
      two_phases_ = proven_ = true;
      if (test.conv != 0) return Next::from_trial;
      code_ = 2;
      return Next::stability;
    }
    if (test.conv == 0) {
      code_ = 2;
      return Next::stability;
    }
    if (test.trivial) continue;
    minima_[minima_count_++] = trial;
    if (test.tm < -1e-13) {
      trial_ = trial;
      has_trial_ = true;
    }
  }
  code_ = 3;
  return Next::stability;
}

void Flash::start_from_trial() {
  s_.beta = 0.5;
  const bool from_liquid = tm2_ > tm1_;
  for (std::size_t i = 0; i < at(n_); ++i) {
    const double ratio = from_liquid ? z_[i] / s_.liquid.x[i] : s_.vapour.x[i] / z_[i];
    s_.lnk[i] = z_[i] > 0 ? std::log(ratio) : 0.0;
  }
  trial_ = from_liquid ? s_.liquid.x : s_.vapour.x;
  has_trial_ = true;
  dirsub(feed_, s_);
  s_.lnk = s_.lnk_new;
}

/// Where the substitutions stand.
Split Flash::substituted_split() const {
  Split split;
  split.liquid = s_.liquid;
  split.vapour = s_.vapour;
  split.beta = s_.beta;
  split.lnk = s_.lnk;
  return split;
}

bool Flash::split_by_quick_route() {
  if (!(s_.beta > 0 && s_.beta < 1)) return false;
  Split split = substituted_split();
  if (!balance(n_, z_, split)) return false;
  if (!(split.beta > 0 && split.beta < 1)) return false;
  if (!minimise(conditions(), z_, d(), split) || !acceptable(conditions(), z_, split)) return false;
  split_ = split;
  return accepted_ = true;
}

/// Three cycles of three substitutions and a dominant-eigenvalue step, then the minimiser if they have not converged.
void Flash::split_by_substitution() {
  ++statistics().substituted_splits;
  const auto n = at(n_);
  bool stopped = false;
  for (int cycle = 0; cycle < 3 && !stopped; ++cycle) {
    double e2 = 0, e3 = 0;
    bool converged = false;
    for (int pass = 1; pass <= 3 && !converged; ++pass) {
      dirsub(feed_, s_);
      s_.lnk = s_.lnk_new;
      converged = s_.errmax < 1e-7;
      if (pass == 2) e2 = s_.errk;
      if (pass == 3) e3 = s_.errk;
    }
    if (converged) continue;
    const double lambda = std::min(0.95, std::sqrt(e3 / e2)), g0 = s_.gmix;
    const Vector saved = s_.lnk;
    for (std::size_t i = 0; i < n; ++i) s_.lnk[i] += lambda / (1.0 - lambda) * s_.dlnk[i];
    dirsub(feed_, s_);
    stopped = !(g0 + 1e-10 > s_.gmix);
    s_.lnk = stopped ? saved : s_.lnk_new;
  }
  two_phases_ = true;
  solrac(n_, z_, s_.lnk.data(), s_.liquid.x.data(), s_.vapour.x.data(), s_.beta);
  Split split = substituted_split();
  const bool converged = s_.errmax < 1e-7;
  const bool inside = s_.beta > 0 && s_.beta < 1;
  bool solved = false;
  if (converged) {
    solved = polish(conditions(), z_, d(), split);
  } else {
    ++statistics().minimisers;
    solved = inside && minimise(conditions(), z_, d(), split);
    s_.liquid = split.liquid;
    s_.vapour = split.vapour;
    s_.beta = split.beta;
    if (!solved) code_ = 1;
  }
  if (solved && acceptable(conditions(), z_, split)) {
    split_ = split;
    accepted_ = true;
  }
}

bool Flash::split_from(const double* trial) {
  Split split;
  if (!minimise_from_trial(conditions(), z_, d(), trial, split)) return false;
  split_ = split;
  return accepted_ = true;
}

/// Where the scheme's steps end without two phases, or with a failure: more starts, and the minimiser from what they
/// find.
void Flash::decide_again() {
  if (std::count_if(z_, z_ + n_, [](double v) { return v > 0; }) < 2) {
    code_ = 3;
    return;
  }
  if (has_trial_ && split_from(trial_.data())) {
    ++statistics().rescued_splits;
    return;
  }
  const bool failed = code_ != 3;
  // A gas has no other gas beside it.
  const bool dense = feed_.c.p / (fluid::pressure_factor * feed_.c.t * feed_.phase.rho) < 0.5;
  const double* known[] = {z_};
  const Trial wide = search_widely(conditions(), z_, d(), known, {minima_.data(), minima_count_},
                                   {.ideal_gas = failed || dense, .middle = failed});
  if (wide.found) {
    proven_ = true;
    if (split_from(wide.y.data())) {
      ++statistics().wide_splits;
      return;
    }
  } else if (Vector beside{};
             (into_feed_ || wide.into_known) && !locally_stable(conditions(), feed_.phase, beside.data())) {
    const TestResult test = hebmin(conditions(), z_, d(), {known, 0}, true, beside.data());
    proven_ = proven_ || test.tm < -1e-10;
    if (test.tm < 0 && split_from(beside.data())) {
      ++statistics().wide_splits;
      return;
    }
  }
  // One phase only if nothing lies below its tangent plane and the searches are to be trusted.
  code_ = proven_ ? 1 : wide.all_converged ? 3 : 2;
}

bool Flash::improve_with(const double* trial) {
  const Split current = split_;
  Split best = current;
  const auto consider = [&](Split& candidate, bool solved) {
    if (solved && acceptable(conditions(), z_, candidate) && candidate.change < best.change - 1e-12) best = candidate;
  };
  for (const Phase* partner : {&current.liquid, &current.vapour}) {
    Split candidate;
    candidate.liquid = *partner;
    set_composition(candidate.vapour, n_, trial);
    candidate.lnk = log_ratios(n_, z_, candidate);
    if (balance(n_, z_, candidate) && candidate.beta > 0 && candidate.beta < 1)
      consider(candidate, minimise(conditions(), z_, d(), candidate));
  }
  Split candidate;
  consider(candidate, minimise_from_trial(conditions(), z_, d(), trial, candidate));
  if (!(best.change < current.change)) return false;
  split_ = best;
  return true;
}

/// The phases of a split lie on one tangent plane; where a third composition lies below it, a split with it is better,
/// or there are three phases.
void Flash::keep_if_stable() {
  for (int round = 0; round < 4; ++round) {
    const Trial third = third_phase(conditions(), z_, split_);
    if (!third.found) return;
    if (!improve_with(third.y.data())) {
      ++statistics().three_phases;
      return;
    }
  }
}

PtResult Flash::run(bool warm, const double* x, const double* y) {
  if (!std::isfinite(feed_.gibbs)) {
    PtResult none;
    none.beta = std::numeric_limits<double>::quiet_NaN();
    none.code = 4;
    return none;
  }
  Next next = first_substitutions(warm, x, y);
  if (next == Next::stability) next = test_stability();
  if (next != Next::stability) {
    if (next == Next::from_trial) start_from_trial();
    if (!split_by_quick_route()) split_by_substitution();
  }
  if (!accepted_) decide_again();
  if (accepted_) keep_if_stable();
  return result();
}

PtResult Flash::result() {
  PtResult r;
  r.single = feed_.phase;
  if (accepted_) {
    set_labels(n_, split_);
    r.beta = split_.beta;
    r.x = split_.liquid.x;
    r.y = split_.vapour.x;
    r.split = split_;
    return r;
  }
  r.code = code_;
  r.beta = s_.beta;
  r.x = s_.liquid.x;
  r.y = s_.vapour.x;
  if (!two_phases_ || code_ == 3) {
    if (r.beta <= 0) {
      std::copy_n(z_, n_, r.x.begin());
      std::fill_n(r.y.begin(), n_, 0.0);
    }
    if (r.beta >= 1) {
      std::fill_n(r.x.begin(), n_, 0.0);
      std::copy_n(z_, n_, r.y.begin());
    }
  }
  // A test can end at amounts beyond the range of numbers, which nothing depends on.
  for (Vector* tested : {&r.x, &r.y})
    if (code_ == 3 && std::any_of(tested->begin(), tested->begin() + n_, [](double x) { return !std::isfinite(x); }))
      std::copy_n(z_, n_, tested->begin());
  return r;
}

}  // namespace

PtResult flmain(const eos::Fluid& fluid, double t, double p, bool warm, const double* x, const double* y) {
  return Flash(fluid, t, p).run(warm, x, y);
}

Message message_of(int n, const PtResult& r) {
  const auto is_nan = [](double v) { return std::isnan(v); };
  if (std::isnan(r.beta) || std::any_of(r.x.begin(), r.x.begin() + n, is_nan) ||
      std::any_of(r.y.begin(), r.y.begin() + n, is_nan))
    return "Michelsen's Flash calculation: unexpected error, NaN's calculated...";
  switch (r.code) {
    case 0:
      return no_errors;
    case 1:
      return "Michelsen's Flash calculation: no convergence second order minimizer";
    case 2:
      return "Michelsen's Flash calculation: no convergence stability analysis";
    case 3:
      return no_phase_split;
    default:
      return "Michelsen's Flash calculation: unexpected error...";
  }
}

Message calc_pt_flash(const eos::Fluid& fluid, double t, double p, double* x, double* y, double& beta) {
  const bool warm = x[0] < 0;
  if (warm) x[0] = -x[0];
  const PtResult r = flmain(fluid, t, p, warm, x, y);
  std::copy_n(r.x.begin(), fluid.n, x);
  std::copy_n(r.y.begin(), fluid.n, y);
  beta = r.beta;
  return message_of(fluid.n, r);
}

Message calc_flash_velda(const eos::Fluid& fluid, double t, double p, double* x, double* y, double& beta) {
  const auto n = at(fluid.n);
  PtResult r;
  r.beta = -std::numeric_limits<double>::infinity();
  Vector k = wilson_lnk(fluid, t, p, 5.37);
  for (std::size_t i = 0; i < n; ++i) k[i] = std::exp(k[i]);
  for (int cycle = 0; cycle < 100; ++cycle) {
    double f = 0, slope = 0, change_x = 0, change_y = 0;
    for (std::size_t i = 0; i < n; ++i) {
      const double ratio = (k[i] - 1.0) / (1.0 + r.beta * (k[i] - 1.0));
      f += fluid.z[i] * ratio;
      slope -= fluid.z[i] * ratio * ratio;
    }
    const double last = r.beta;
    r.beta = std::fmin(1.0, r.beta - f / slope);  // 1 after the start, where the quotient is 0/0
    if (r.beta < -10.0 || r.beta > 10.0) break;
    for (std::size_t i = 0; i < n; ++i) {
      const double liquid = fluid.z[i] / (1.0 + r.beta * (k[i] - 1.0)), vapour = k[i] * liquid;
      change_x += std::abs(liquid - r.x[i]);
      change_y += std::abs(vapour - r.y[i]);
      r.x[i] = liquid;
      r.y[i] = vapour;
    }
    if (std::abs(r.beta - last) < 1e-9 && change_x < 1e-9 && change_y < 1e-9) break;
    Vector liquid{}, vapour{};
    eos::calc_lnphi(fluid.eos, fluid.n, r.x.data(), t, p, 1, liquid.data());
    eos::calc_lnphi(fluid.eos, fluid.n, r.y.data(), t, p, 2, vapour.data());
    for (std::size_t i = 0; i < n; ++i) k[i] = liquid[i] / vapour[i];
  }
  std::copy_n(r.x.begin(), n, x);
  std::copy_n(r.y.begin(), n, y);
  beta = r.beta;
  return message_of(fluid.n, r);
}

}  // namespace tessarel::flash
