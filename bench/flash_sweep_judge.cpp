#include "flash_sweep_judge.hpp"

#include <algorithm>
#include <numeric>

#include "tessarel/routines.h"

namespace tessarel::sweep {
namespace {

double sum(const Vec& v) {
  return std::accumulate(v.begin(), v.end(), 0.0);
}

Vec normalised(Vec v) {
  const double total = sum(v);
  for (double& e : v) e /= total;
  return v;
}

double distance(const Vec& a, const Vec& b) {
  double d = 0;
  for (std::size_t i = 0; i < a.size(); ++i) d = std::max(d, std::abs(a[i] - b[i]));
  return d;
}

/// Solves (a + lambda I) x = b for a symmetric matrix by Cholesky's method, with the least lambda tried that makes it
/// positive definite. The step then descends.
Vec descend(const Vec& a, const Vec& b) {
  const std::size_t m = b.size();
  for (double lambda = 0;; lambda = std::max(4 * lambda, 0.02)) {
    Vec l(a), x(b);
    bool positive = true;
    for (std::size_t i = 0; i < m && positive; ++i) {
      l[i * m + i] += lambda;
      for (std::size_t j = 0; j <= i; ++j) {
        double s = l[i * m + j];
        for (std::size_t k = 0; k < j; ++k) s -= l[i * m + k] * l[j * m + k];
        if (i == j) positive = s > 1e-14;
        l[i * m + j] = i == j ? std::sqrt(s) : s / l[j * m + j];
      }
    }
    if (!positive && lambda < 1e6) continue;
    for (std::size_t i = 0; i < m; ++i) {
      for (std::size_t k = 0; k < i; ++k) x[i] -= l[i * m + k] * x[k];
      x[i] /= l[i * m + i];
    }
    for (std::size_t i = m; i-- > 0;) {
      for (std::size_t k = i + 1; k < m; ++k) x[i] -= l[k * m + i] * x[k];
      x[i] /= l[i * m + i];
    }
    return x;
  }
}

/// The vapour fraction of ideal phases with these K values, by bisection of the equation of Rachford and Rice; none
/// when there is none between 0 and 1.
std::optional<double> rachford_rice(const Vec& z, const Vec& ln_k) {
  const auto f = [&](double beta) {
    double s = 0;
    for (std::size_t i = 0; i < z.size(); ++i) s += z[i] / (beta + 1 / std::expm1(ln_k[i]));
    return s;
  };
  double low = 1e-14, high = 1 - 1e-14;
  if (!(f(low) > 0 && f(high) < 0)) return std::nullopt;
  for (int i = 0; i < 60 && high - low > 1e-16; ++i) (f((low + high) / 2) > 0 ? low : high) = (low + high) / 2;
  return (low + high) / 2;
}

}  // namespace

std::uint64_t Random::next() {
  std::uint64_t r = state_ += 0x9e3779b97f4a7c15U;
  r = (r ^ (r >> 30)) * 0xbf58476d1ce4e5b9U;
  r = (r ^ (r >> 27)) * 0x94d049bb133111ebU;
  return r ^ (r >> 31);
}

/// Marsaglia and Tsang's method; small shapes by the power of a uniform number.
double Random::gamma(double shape) {
  if (shape < 1) return gamma(shape + 1) * std::pow(uniform(), 1 / shape);
  const double d = shape - 1.0 / 3, c = 1 / std::sqrt(9 * d);
  for (;;) {
    const double a = normal(), v = (1 + c * a) * (1 + c * a) * (1 + c * a);
    if (v > 0 && std::log(uniform()) < a * a / 2 + d - d * v + d * std::log(v)) return d * v;
  }
}

Judge::Judge(const Vec& fractions, double t, double p, int effort)
    : n_(static_cast<std::int32_t>(fractions.size())), place_(), z_(), t_(t), p_(p), effort_(effort), feed_() {
  for (std::size_t i = 0; i < fractions.size(); ++i)
    if (fractions[i] > 0) place_.push_back(i);
  z_ = compress(fractions.data());
  feed_ = lower(z_);
}

Vec Judge::compress(const double* fractions) const {
  Vec out;
  for (const auto i : place_) out.push_back(fractions[i]);
  return out;
}

double Judge::density(const Vec& x, int root) const {
  double full[20] = {}, rho = 0;
  for (std::size_t i = 0; i < x.size(); ++i) full[place_[i]] = x[i];
  tessarel_calc_rho(&n_, full, &t_, &p_, &root, &rho);
  return rho;
}

Phase Judge::at_root(const Vec& x, int root, double rho) const {
  double full[20] = {}, lnphi[20];
  for (std::size_t i = 0; i < x.size(); ++i) full[place_[i]] = x[i];
  tessarel_calc_lnphi_tprho(&n_, full, &t_, &p_, &rho, lnphi);
  Phase out{x, root, rho, compress(lnphi), 0};
  for (std::size_t i = 0; i < x.size(); ++i)
    if (x[i] > 0) out.g += x[i] * (std::log(x[i]) + out.lnphi[i]);
  return out;
}

Phase Judge::lower(const Vec& x) const {
  const double rho_l = density(x, 1), rho_v = density(x, 2);
  Phase liquid = at_root(x, 1, rho_l);
  if (std::abs(rho_l - rho_v) < 1e-9 * rho_l) return liquid;
  Phase vapour = at_root(x, 2, rho_v);
  return vapour.g < liquid.g || !(liquid.g == liquid.g) ? vapour : liquid;
}

/// Whether the density solve has converged: what it leaves otherwise is no state at this pressure.
bool Judge::is_root(const Phase& phase) const {
  double full[20] = {}, p = 0, slope = 0;
  for (std::size_t i = 0; i < phase.x.size(); ++i) full[place_[i]] = phase.x[i];
  tessarel_calc_p_rho(&n_, full, &t_, &phase.rho, &p);
  tessarel_calc_dp_drho(&n_, full, &t_, &phase.rho, &slope);
  return std::abs(p - p_) <= 1e-8 * p_ + 1e-10 * phase.rho * std::abs(slope);
}

bool Judge::all_roots_found(const Vec& x) const {
  constexpr double densest = 0.74;  // packing fraction of spheres that touch
  double full[20] = {}, least = 0, greatest = 0;
  for (std::size_t i = 0; i < x.size(); ++i) full[place_[i]] = x[i];
  const double found[2] = {density(x, 1), density(x, 2)};
  const std::int32_t mixture = 0;
  tessarel_calc_rho_eta(&n_, full, &mixture, &t_, &densest, &greatest);
  if (found[0] > greatest || found[1] > greatest) return false;
  // Along the isotherm a stable root is where the pressure rises through p. All of them must be among those found.
  bool below = true;
  for (double eta = 1e-9; eta < densest; eta = std::min(1.3 * eta, eta + 0.005)) {
    double rho = 0, p = 0;
    tessarel_calc_rho_eta(&n_, full, &mixture, &t_, &eta, &rho);
    tessarel_calc_p_rho(&n_, full, &t_, &rho, &p);
    const auto here = [&](double root) { return root >= least * (1 - 1e-6) && root <= rho * (1 + 1e-6); };
    if (below && p >= p_ && !here(found[0]) && !here(found[1])) return false;
    below = p < p_;
    least = rho;
  }
  return true;
}

bool Judge::densities_hold(const Phase& phase) const {
  if (!all_roots_found(phase.x)) return false;
  for (std::size_t i = 0; i < z_.size(); ++i)
    for (const double change : {0.9, 0.99, 1.01, 1.1}) {
      Vec x(phase.x);
      x[i] *= change;
      if (!all_roots_found(normalised(x))) return false;
    }
  return true;
}

Vec Judge::lnphi_n(const Phase& phase) const {
  double full[20] = {}, dn[400];
  for (std::size_t i = 0; i < phase.x.size(); ++i) full[place_[i]] = phase.x[i];
  double dt[20], dp[20], dx[400];
  tessarel_calc_lnphi_tpxn(&n_, full, &t_, &p_, &phase.rho, dt, dp, dx, dn);
  Vec out;
  for (const auto i : place_)
    for (const auto j : place_) out.push_back(dn[i + static_cast<std::size_t>(n_) * j]);
  return out;
}

Vec Judge::plane(const Phase& at) const {
  Vec d(at.lnphi);
  for (std::size_t i = 0; i < d.size(); ++i) d[i] += std::log(at.x[i]);
  return d;
}

double Judge::gain(double beta, const Phase& x, const Phase& y) const {
  return (1 - beta) * (x.g - feed_.g) + beta * (y.g - feed_.g);
}

/// Where the search looks. In binaries everywhere, dense towards both ends; else where phases are likely: near the pure
/// components and the edges between two, at random, and around the phases on the plane.
std::vector<Vec> Judge::compositions(const std::vector<Phase>& touching, std::size_t& certain) const {
  const std::size_t m = z_.size();
  std::vector<Vec> out;
  Random random{m, 20};
  if (m == 1) return {Vec{1.0}};
  if (m == 2) {
    Vec grid;
    for (double a = -23; a < 23.1; a += 0.4) grid.push_back(1 / (1 + std::exp(a)));
    for (double a = 0.015; a < 0.99; a += 0.015) grid.push_back(a);
    for (const auto& phase : touching)
      for (const double a : {-0.5, -0.2, -0.07, -0.02, 0.02, 0.07, 0.2, 0.5})
        grid.push_back(1 / (1 + std::exp(a) * phase.x[1] / phase.x[0]));
    std::sort(grid.begin(), grid.end());
    // The second fraction is 1 - a, with the digits it has where it is small.
    for (const double a : grid)
      if (a > 1e-12) out.push_back({a, std::max(1 - a, 1e-14)});
    return out;
  }
  Vec ln_pure(m);
  for (std::size_t i = 0; i < m; ++i) {
    Vec w(m);
    for (std::size_t k = 0; k < m; ++k) w[k] = 1e-4 * z_[k];
    w[i] += 1;
    out.push_back(normalised(w));
    ln_pure[i] = lower(out.back()).lnphi[i];
  }
  const auto drawn = [&](auto weight) {
    Vec w(m);
    for (std::size_t k = 0; k < m; ++k) w[k] = weight(k) + 1e-12;
    out.push_back(normalised(w));
  };
  // Ideal phases in equilibrium with those on the plane: the volatility of the pure components to several powers.
  for (const auto& phase : touching) {
    for (const double power : {-3.0, -2.0, -1.0, -0.5, -0.2, 0.2, 0.5, 1.0, 2.0, 3.0})
      drawn([&](std::size_t k) { return phase.x[k] * std::exp(power * ln_pure[k]); });
    for (const double power : {-1.0, 0.5, 1.0})
      drawn([&](std::size_t k) { return phase.x[k] * std::exp(power * phase.lnphi[k]); });
    drawn([&](std::size_t k) { return phase.x[k] * std::exp(phase.lnphi[k] - ln_pure[k]); });
  }
  certain = out.size();
  for (std::size_t i = 0; i < m; ++i) {
    Vec w(m);
    for (std::size_t k = 0; k < m; ++k) w[k] = 0.5 * z_[k] + (i == k ? 0.5 : 0);
    out.push_back(normalised(w));
    for (std::size_t j = 0; j < i; ++j) {
      const auto steps = m <= 4 ? 9 : m <= 10 ? 3 : 1;
      for (int s = 1; s <= steps; ++s) {
        std::fill(w.begin(), w.end(), 1e-6);
        w[i] += static_cast<double>(s) / (steps + 1);
        w[j] += 1 - static_cast<double>(s) / (steps + 1);
        out.push_back(normalised(w));
      }
    }
  }
  for (const double concentration : {0.15, 0.5, 1.5})
    for (int i = 0; i < 30 * effort_; ++i) drawn([&](std::size_t) { return random.gamma(concentration); });
  for (int i = 0; i < 30 * effort_; ++i) drawn([&](std::size_t k) { return random.gamma(0.3) * std::sqrt(z_[k]); });
  for (const auto& phase : touching)
    for (const double width : {0.05, 0.3, 1.0, 3.0})
      for (int i = 0; i < 6 * effort_; ++i)
        drawn([&](std::size_t k) { return phase.x[k] * std::exp(width * random.normal()); });
  return out;
}

/// The most promising places of different regions. In binaries these are the minima of the distance along the grid.
/// Otherwise a phase is judged by what one substitution makes of it, w = exp(d - ln phi): a composition taken at random
/// lies high above the plane by its ideal mixing alone, and its fugacity coefficients tell more.
std::vector<Trial> Judge::starts(const Vec& d, const std::vector<Phase>& touching) const {
  const std::size_t m = z_.size();
  std::size_t certain = 0, number = 0;
  struct Place {
    bool certain;
    double rank;
    Trial trial;
    Vec next;
  };
  std::vector<Place> all, curves[2];
  for (const Vec& w : compositions(touching, certain)) {
    const bool is_certain = number++ < certain;
    const double rho[2] = {density(w, 1), density(w, 2)};
    for (int root = 1; root <= 2; ++root) {
      const bool same = root == 2 && std::abs(rho[0] - rho[1]) < 1e-9 * rho[0];
      if (same && m > 2) continue;
      Phase phase = same ? curves[0].back().trial.w : at_root(w, root, rho[root - 1]);
      double tpd = phase.g;
      for (std::size_t i = 0; i < m; ++i) tpd -= w[i] * d[i];
      if (!std::isfinite(tpd)) continue;
      Vec next(m);
      for (std::size_t i = 0; i < m; ++i) next[i] = std::exp(std::min(d[i] - phase.lnphi[i], 300.0));
      const double rank = m == 2 ? tpd : std::min(tpd, -std::log(sum(next)));
      (m == 2 ? curves[root - 1] : all)
          .push_back({is_certain, rank, {std::move(phase), tpd}, normalised(std::move(next))});
    }
  }
  for (const auto& curve : curves)
    for (std::size_t i = 0; i < curve.size(); ++i)
      if ((i == 0 || curve[i].rank <= curve[i - 1].rank) &&
          (i + 1 == curve.size() || curve[i].rank < curve[i + 1].rank))
        all.push_back(curve[i]);
  std::sort(all.begin(), all.end(),
            [](const Place& a, const Place& b) { return a.certain != b.certain ? a.certain : a.rank < b.rank; });
  std::vector<const Place*> chosen;
  int promising[2] = {};
  for (const auto& place : all) {
    int& count = promising[place.trial.w.root - 1];
    if (m > 2 && !place.certain && count == 20 * effort_) continue;
    const auto alike = [&](const Place* other) {
      return place.trial.w.root == other->trial.w.root &&
             distance(place.next, other->next) < (place.certain ? 0.005 : 0.04) &&
             distance(place.trial.w.x, other->trial.w.x) < 0.3;
    };
    if (m > 2 && std::any_of(chosen.begin(), chosen.end(), alike)) continue;
    chosen.push_back(&place);
    count += place.certain ? 0 : 1;
  }
  std::vector<Trial> out;
  for (const auto* place : chosen) out.push_back(place->trial);
  return out;
}

/// A local minimum of Michelsen's modified distance 1 + sum W (ln W + ln phi - d - 1) in the amounts W, at one density
/// root: damped substitution, then Newton's method in 2 sqrt(W) with the exact Hessian. Ends early in a known minimum.
Trial Judge::refine(const Trial& start, const Vec& d, const std::vector<Trial>& known) const {
  const std::size_t m = z_.size();
  const auto modified = [&](const Vec& ln_w, const Phase& w) {
    double s = 1;
    for (std::size_t i = 0; i < m; ++i) s += std::exp(ln_w[i]) * (ln_w[i] + w.lnphi[i] - d[i] - 1);
    return s;
  };
  const auto phase_of = [&](const Vec& ln_w) {
    Vec w(m);
    for (std::size_t i = 0; i < m; ++i) w[i] = std::exp(ln_w[i]);
    w = normalised(w);
    return at_root(w, start.w.root, density(w, start.w.root));
  };
  Phase phase = start.w;
  Vec ln_w(m), r(m);
  for (std::size_t i = 0; i < m; ++i) ln_w[i] = std::log(phase.x[i]);
  double value = modified(ln_w, phase);
  bool newton = false;
  for (int pass = 0; pass < 80; ++pass) {
    double norm = 0, total = 0;
    for (std::size_t i = 0; i < m; ++i) {
      r[i] = d[i] - phase.lnphi[i] - ln_w[i];
      norm = std::max(norm, std::exp(ln_w[i] / 2) * std::abs(r[i]));
      total += std::exp(ln_w[i]);
    }
    if (norm < 1e-11) break;
    const auto seen = [&](const Trial& other) {
      return distance(other.w.x, phase.x) < 1e-4 && std::abs(value - (1 - std::exp(-other.tpd))) < 1e-8;
    };
    if (pass >= 6 && value > -1e-10 && std::any_of(known.begin(), known.end(), seen)) break;
    newton = newton || pass >= 8;
    Vec step(r);
    if (newton) {
      Vec h = lnphi_n(phase), b(m);
      for (std::size_t i = 0; i < m; ++i) {
        for (std::size_t j = 0; j < m; ++j)
          h[i * m + j] = h[i * m + j] * std::exp((ln_w[i] + ln_w[j]) / 2) / total + (i == j ? 1 : 0);
        b[i] = std::exp(ln_w[i] / 2) * r[i];
      }
      step = descend(h, b);
      for (std::size_t i = 0; i < m; ++i) step[i] *= std::exp(-ln_w[i] / 2);
    }
    for (double& s : step) s = std::isfinite(s) ? std::clamp(s, newton ? -4.0 : -100.0, newton ? 4.0 : 100.0) : 0;
    bool lower_found = false;
    for (double damping = 1; damping > 1e-4 && !lower_found; damping *= 0.4) {
      Vec trial(m);
      for (std::size_t i = 0; i < m; ++i) trial[i] = std::clamp(ln_w[i] + damping * step[i], -300.0, 300.0);
      Phase next = phase_of(trial);
      const double there = modified(trial, next);
      lower_found = there < value + 1e-15;
      if (lower_found) value = there, ln_w = trial, phase = std::move(next);
    }
    if (!lower_found && newton) break;
    newton = newton || !lower_found;
  }
  Trial out{phase, phase.g};
  for (std::size_t i = 0; i < m; ++i) out.tpd -= phase.x[i] * d[i];
  return out;
}

std::vector<Trial> Judge::search(const Vec& d, const std::vector<Phase>& touching, double enough) const {
  std::vector<Trial> found, touched;
  for (const auto& phase : touching) touched.push_back({phase, 0});
  const auto candidates = starts(d, touching);
  // A place that lies below the plane needs no refinement to prove that the plane cuts.
  for (const auto& start : candidates)
    if (start.tpd < enough && is_root(start.w)) return {start};
  for (const auto& start : candidates) {
    std::vector<Trial> known(found);
    known.insert(known.end(), touched.begin(), touched.end());
    Trial end = refine(start, d, known);
    if (!std::isfinite(end.tpd) || !is_root(end.w)) continue;
    const auto back = [&](const Trial& o) { return distance(o.w.x, end.w.x) < 2e-4 && end.tpd > -1e-10; };
    if (std::any_of(touched.begin(), touched.end(), back)) continue;
    const auto seen = [&](const Trial& o) {
      return distance(o.w.x, end.w.x) < 1e-5 && std::abs(o.tpd - end.tpd) < 1e-8;
    };
    if (std::none_of(found.begin(), found.end(), seen)) found.push_back(end);
    if (end.tpd < enough) break;
  }
  if (found.empty()) found = touched;
  std::sort(found.begin(), found.end(), [](const Trial& a, const Trial& b) { return a.tpd < b.tpd; });
  return found;
}

/// The least Gibbs energy of two phases, each at its lower root: substitution, then Newton's method in the amounts of
/// y.
std::optional<Split> Judge::minimise(double beta, Phase x, Phase y) const {
  const std::size_t m = z_.size();
  double value = gain(beta, x, y);
  const double rounding = 1e-15 * (1 + std::abs(x.g) + std::abs(y.g));
  const auto take = [&](double b, const Vec& xs, const Vec& ys, double slack) {
    if (!(b > 1e-13 && b < 1 - 1e-13)) return false;
    Phase next_x = lower(normalised(xs)), next_y = lower(normalised(ys));
    const double there = gain(b, next_x, next_y);
    if (!(there < value + slack)) return false;
    value = there, beta = b, x = std::move(next_x), y = std::move(next_y);
    return true;
  };
  const auto substitute = [&](double slack) {
    Vec ln_k(m), xs(m), ys(m);
    for (std::size_t i = 0; i < m; ++i) ln_k[i] = x.lnphi[i] - y.lnphi[i];
    const auto b = rachford_rice(z_, ln_k);
    if (!b) return false;
    for (std::size_t i = 0; i < m; ++i) {
      xs[i] = z_[i] / (1 + *b * std::expm1(ln_k[i]));
      ys[i] = xs[i] * std::exp(ln_k[i]);
    }
    return take(*b, xs, ys, slack);
  };
  for (int pass = 0; pass < 100; ++pass) {
    Vec r(m), s(m), v(m), l(m), b(m);
    double norm = 0;
    for (std::size_t i = 0; i < m; ++i) {
      v[i] = beta * y.x[i], l[i] = (1 - beta) * x.x[i];
      s[i] = std::sqrt(v[i] * l[i] / z_[i]);
      r[i] = std::log(x.x[i] / y.x[i]) + x.lnphi[i] - y.lnphi[i];
      norm = std::max(norm, s[i] * std::abs(r[i]));
      b[i] = s[i] * r[i];
    }
    if (norm < 1e-13) break;
    if (pass < 10 && substitute(rounding)) continue;
    Vec h(m * m);
    const Vec dx = lnphi_n(x), dy = lnphi_n(y);
    for (std::size_t i = 0; i < m; ++i)
      for (std::size_t j = 0; j < m; ++j)
        h[i * m + j] = s[i] * s[j] * ((dy[i * m + j] - 1) / beta + (dx[i * m + j] - 1) / (1 - beta)) + (i == j ? 1 : 0);
    Vec step = descend(h, b);
    double most = 1;
    for (std::size_t i = 0; i < m; ++i) {
      step[i] *= s[i];
      most = std::min(most, 0.9 * (step[i] < 0 ? v[i] : l[i]) / std::max(std::abs(step[i]), 1e-300));
    }
    bool better = false;
    for (double damping = most; damping > 1e-5 * most && !better; damping *= 0.4) {
      Vec xs(m), ys(m);
      for (std::size_t i = 0; i < m; ++i) ys[i] = v[i] + damping * step[i], xs[i] = l[i] - damping * step[i];
      better = take(sum(ys), xs, ys, rounding);
    }
    if (!better) break;
  }
  // Components in traces weigh nothing in the Gibbs energy; substitution gives them their digits.
  for (int i = 0; i < 20; ++i) substitute(1e-10);
  if (!(value < -1e-14) || distance(x.x, y.x) < 1e-7) return std::nullopt;
  if (y.rho > x.rho) std::swap(x, y), beta = 1 - beta;
  return Split{beta, x, y, value};
}

std::vector<Split> Judge::splits_from(const std::vector<Trial>& trials, const Split* other) const {
  std::vector<Split> out;
  const auto add = [&](double beta, const Vec& xs, const Vec& ys) {
    auto split = minimise(beta, lower(normalised(xs)), lower(normalised(ys)));
    if (split) out.push_back(*split);
  };
  const std::size_t m = z_.size();
  for (const auto& trial : trials) {
    const Vec& w = trial.w.x;
    double most = 1;
    for (std::size_t i = 0; i < m; ++i) most = std::min(most, z_[i] / w[i]);
    double best = 0, least = 1e300;
    const auto rest = [&](double beta) {
      Vec l(m);
      for (std::size_t i = 0; i < m; ++i) l[i] = std::max(z_[i] - beta * w[i], 1e-30);
      return l;
    };
    for (const double part : {0.001, 0.03, 0.2, 0.5, 0.8, 0.97}) {
      const double g = gain(part * most, lower(normalised(rest(part * most))), trial.w);
      if (g < least) least = g, best = part * most;
    }
    if (best > 0) add(best, rest(best), w);
    if (!other) continue;
    for (const Phase* phase : {&other->x, &other->y}) {
      Vec ln_k(m), xs(m), ys(m);
      for (std::size_t i = 0; i < m; ++i) ln_k[i] = std::log(w[i] / phase->x[i]);
      const auto beta = rachford_rice(z_, ln_k);
      if (!beta) continue;
      for (std::size_t i = 0; i < m; ++i) {
        xs[i] = z_[i] / (1 + *beta * std::expm1(ln_k[i]));
        ys[i] = xs[i] * std::exp(ln_k[i]);
      }
      add(*beta, xs, ys);
    }
  }
  return out;
}

Answer Judge::settle(std::vector<Split> pool) const {
  Answer out;
  const auto less = [](const Split& a, const Split& b) { return a.gain < b.gain; };
  double last = 1e300;
  for (int round = 0; round < 8; ++round) {
    // Each round takes the best split that has not been looked at: a stable one has the least Gibbs energy of all.
    const auto best = std::min_element(pool.begin(), pool.end(), less);
    if (best == pool.end() || !(best->gain < last - 1e-12)) break;
    last = best->gain;
    out.split = *best;
    auto below = search(plane(best->beta > 0.5 ? best->y : best->x), {best->x, best->y}, -1e300);
    below.erase(std::remove_if(below.begin(), below.end(), [](const Trial& w) { return w.tpd > -1e-7; }), below.end());
    out.three = !below.empty();
    if (!out.three) break;
    if (below.size() > 4) below.resize(4);
    const Split from = *best;
    pool = splits_from(below, &from);
  }
  return out;
}

Answer Judge::solve() const {
  auto trials = search_feed();
  Answer out;
  const double least = trials.front().tpd;
  if (least > -1e-9) {
    out.stable = true;
  } else {
    trials.erase(std::remove_if(trials.begin(), trials.end(), [](const Trial& w) { return w.tpd > -1e-10; }),
                 trials.end());
    if (trials.size() > 5) trials.resize(5);
    out = settle(splits_from(trials, nullptr));
  }
  out.least = least;
  return out;
}

}  // namespace tessarel::sweep
