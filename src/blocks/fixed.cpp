#include "blocks/fixed.hpp"

#include "blocks/arrays.hpp"

namespace tessarel::blocks {

using T3 = Taylor<1, 3>;

namespace {

Four derivatives(const T3& f) {
  Four out;
  for (int k = 0; k < 4; ++k) out[at(k)] = numerics::derivative(f, k);
  return out;
}

/// A number at `value` whose slope is `slope`.
T3 moving(double value, double slope) {
  T3 r(value);
  r.c[1] = slope;
  return r;
}

/// Strengths between the site classes from those between the site types.
void set_strength(const Eos& eos, eos::MixtureState<double>& s, int n, const double* delta_t0) {
  const auto& classes = eos.model.of<eos::Association>().classes;
  auto& association = s.term<eos::Association>();
  const auto count = at(association.classes), size = at(n);
  double* strength = eos.arena().take<double>(count * count);
  const auto first_type = [](const eos::Association::SiteClass& c) {
    std::size_t a = 0;
    while (!c.member[a]) ++a;
    return a;
  };
  std::size_t row = 0;
  for (const auto& k : classes) {
    if (k.component >= n) continue;
    std::size_t column = 0;
    for (const auto& l : classes) {
      if (l.component >= n) continue;
      double& sum = strength[row * count + column++] = 0;
      for (std::size_t b = 0; b < l.member.size(); ++b)
        if (l.member[b])
          sum += eos.parameters().nhb_no[at(l.component)][b] *
                 delta_t0[at(k.component) + size * (at(l.component) + size * (first_type(k) + 5 * b))];
    }
    ++row;
  }
  association.strength = strength;
}

}  // namespace

void prepare_fixed(const Eos& eos, eos::MixtureState<double>& s, int n, const double* x, double t,
                   const FixedState& f) {
  eos::prepare(eos, s, n, x, 0, t);
  s.zeta_rho[3] = 1.0 / f.conv;
  s.term<eos::Dispersion>().m2es3 = f.m2es3;
  s.term<eos::Dispersion>().m2e2s3 = f.m2e2s3;
  if (!s.closed) {
    s.zeta_rho[1] = f.zeta1r, s.zeta_rho[2] = f.zeta2r;
    const double ratio = f.zeta2r * f.conv;
    auto& chain = s.term<eos::HardChain>();
    chain.first = 3.0 * f.zeta1r * ratio / f.zeta0r;
    chain.second = f.zeta2r * ratio * ratio / f.zeta0r;
    for (int i = 0; i < n; ++i) {
      s.d[at(i)] = f.d[i];
      chain.k[at(i)] = ratio * f.dij[i + n * i];
    }
  }
  if (s.term<eos::Association>().present) set_strength(eos, s, n, f.delta_t0);
}

Four contact_rho123(double eta) {
  return derivatives(eos::contact(inverse(1.0 - moving(eta, eta)), 0.5));
}

Four c1_eta123(const Eos& eos, double eta) {
  return derivatives(eos::c1(moving(eta, 1.0), eos.work.means.mmean));
}

Four scaled_integral_eta123(const Eos& eos, int which, double eta) {
  const T3 e = moving(eta, 1.0);
  return derivatives(e * eos::integral(which == 0 ? eos.work.means.apar : eos.work.means.bpar, e));
}

Four contact_pair(int n, const double* d, double zeta2, double zeta3, int i, int j, ContactVariable by) {
  const double rate = by == ContactVariable::rho ? 1.0 : 1.0 / zeta3;  // relative change for a unit step
  const T3 u = inverse(1.0 - moving(zeta3, by == ContactVariable::rho ? zeta3 : 1.0));
  if (n == 1) return derivatives(eos::contact(u, 0.5));
  const double q = i == j ? d[i] * 0.5 : d[i] * d[j] / (d[i] + d[j]);
  return derivatives(eos::contact_at(u, T3(moving(zeta2, zeta2 * rate) * u * q)));
}

double association_of_pure(const Eos& eos, double rho, double eta, const double* delta_t) {
  const auto& p = eos.parameters();
  const double g = eos::contact(1.0 / (1.0 - eta), 0.5);
  constexpr std::size_t most = fluid::max_sites;
  const auto count = at(p.nhb_typ[0]);
  std::array<double, most> types{}, x{};
  std::array<double, most * most> bond{};
  types.fill(1.0);
  for (std::size_t a = 0; a < count; ++a)
    for (std::size_t b = 0; b < count; ++b) bond[a * count + b] = rho * g * delta_t[b + most * a] * p.nhb_no[0][b];
  eos::solve_unbonded(eos.arena(), p.nhb_typ[0], types.data(), bond.data(), eos::site_tolerance(eta), x.data());
  double a_ass = 0;
  for (std::size_t a = 0; a < count; ++a) a_ass += p.nhb_no[0][a] * (std::log(x[a]) + (1.0 - x[a]) / 2.0);
  return a_ass;
}

double polar_of_pure(const Eos& eos, double t, double rho, double eta, double u) {
  const Scope scope{eos};
  const double x = 1.0;
  Four second{}, third{};
  double a2[3], a3[3];
  const double* in1[] = {&t, &eta, &u};
  double* integrals[] = {second.data(), third.data()};
  evaluate<j2j3>(scope, in1, integrals);
  const double* in2[] = {&x, &t, &rho, second.data(), third.data()};
  double* terms[] = {a2, a3};
  evaluate<a2a3>(scope, in2, terms);
  double a_pol = 0;
  const PolarTypes types = polar_types(scope);
  for (int type = types.first; type <= types.last; ++type) a_pol += eos::pade(a2[type], a3[type]);
  return a_pol;
}

}  // namespace tessarel::blocks
