// The part of the equation of state that is fixed while the density varies: what temperature and composition alone
// decide. Every evaluation is made of a MixtureState and a function of the density on it; the density iteration
// prepares once and evaluates many times.
//
// T is the number type of the temperature: double, or a Taylor number that carries derivatives by t.
#pragma once

#include <array>
#include <cmath>

#include "eos/association.hpp"
#include "eos/dispersion.hpp"
#include "eos/hard_chain.hpp"
#include "eos/polar.hpp"
#include "eos/tables.hpp"
#include "fluid/kij.hpp"
#include "numerics/taylor.hpp"

namespace tessarel::eos {

using fluid_module::pi;
using fluid_module::pi_6;
using fluid_module::record;

/// The components an evaluation sums over: all of a mixture, or one alone at weight 1.
struct Components {
  int count = 0;
  std::array<int, nmax> index{};  ///< places in the record
  std::array<double, nmax> x;     ///< fractions; for a component alone 1
  bool single = false;            ///< one diameter: the closed forms apply
};

inline std::size_t at(int i) {
  return static_cast<std::size_t>(i);
}

/// `ipure` = 0: the mixture `x` of `n` components (x is not read for n = 1); i of 1 or more: component i alone.
inline Components select_components(int n, const double* x, int ipure) {
  Components c;
  if (ipure > 0 || n == 1) {
    c.count = 1;
    c.index[0] = ipure > 0 ? ipure - 1 : 0;
    c.x[0] = 1.0;
    c.single = true;
    return c;
  }
  c.count = n;
  for (int i = 0; i < n; ++i) {
    c.index[at(i)] = i;
    c.x[at(i)] = x[i];
  }
  return c;
}

/// Diameter of component i (Gross & Sadowski 2001, eq. A.9).
template <class T>
T segment_diameter(std::size_t i, const T& inverse_t) {
  using std::exp;
  return record.sigma[i] * (1.0 - record.parat[i] * exp(inverse_t * (-3.0 * record.epsil[i])));
}

/// eps(i) / epsil(i) = 1 + saftpar(i) / t.
template <class T>
T energy_ratio(std::size_t i, const T& inverse_t) {
  return inverse_t * record.saftpar[i] + 1.0;
}

/// sqrt of the product of two such ratios, the correction of a geometric mean.
template <class T>
T energy_ratio(std::size_t i, std::size_t j, const T& inverse_t) {
  using std::sqrt;
  if (record.saftpar[i] == 0 && record.saftpar[j] == 0) return T(1.0);
  return sqrt(energy_ratio(i, inverse_t) * energy_ratio(j, inverse_t));
}

/// eps_ij of two components at temperature t, with the k_ij in force.
template <class T>
T pair_energy(std::size_t i, std::size_t j, const T& t, const T& inverse_t) {
  const T geometric = energy_ratio(i, j, inverse_t) * tables.energy[i][j];
  return i == j ? geometric : (1.0 - kij_module::kij(record.k_ij[i][j], t)) * geometric;
}

/// The summands m_i m_j sig_ij^3 eps_ij and ... eps_ij^2 of the two mixture sums, without 1/t and 1/t^2.
template <class T>
void pair_terms(std::size_t i, std::size_t j, const T& t, const T& inverse_t, T& first, T& second) {
  const T eps = pair_energy(i, j, t, inverse_t);
  first = eps * (record.mseg[i] * record.mseg[j] * tables.sigma3[i][j]);
  second = first * eps;
}

template <class T>
struct MixtureState {
  Components comp;
  T t, inverse_t;
  bool closed = false;  ///< closed forms of one diameter: a component alone, or the simplified model

  double mbar = 0;    ///< mean segment number
  Powers apar, bpar;  ///< coefficients of I1 and I2

  std::array<T, nmax> d;      ///< segment diameters
  std::array<T, 4> zeta_rho;  ///< zeta_k / rho; zeta_rho[3] converts a number density to eta
  T rho_eta;                  ///< 1 / zeta_rho[3]: rho per eta
  T hs_first, hs_second;      ///< A and B of the hard-sphere forms
  int chains = 0;             ///< contact values in the chain term: one each, or one for all in the closed forms
  std::array<double, nmax> chain_weight;  ///< x_i (m_i - 1), or their sum; padded with 0 to an even number
  std::array<T, nmax> chain_k;            ///< k_ii of the contact values
  double chain_sum = 0;                   ///< sum of the weights

  T m2es3, m2e2s3;  ///< the dispersion sums

  bool associates = false, is_polar = false;
  AssociationState<T> association;
  PolarState<T> polar;

  /// k_ij of the contact value of two components, by their places.
  [[nodiscard]] T contact_k(int i, int j) const {
    if (closed) return T(0.5);
    if (i == j) return chain_k[at(i)];
    return zeta_rho[2] * rho_eta * (d[at(i)] * d[at(j)] / (d[at(i)] + d[at(j)]));
  }
};

template <class T>
void prepare_diameters(MixtureState<T>& s) {
  const Components& c = s.comp;
  s.closed = c.single || record.is_simp;
  s.mbar = 0;
  s.chain_sum = 0;
  T z1(0.0), z2(0.0), z3(0.0);
  for (int i = 0; i < c.count; ++i) {
    const auto k = at(c.index[at(i)]);
    const double xm = c.x[at(i)] * record.mseg[k];
    s.d[at(i)] = segment_diameter(k, s.inverse_t);
    const T d1 = s.d[at(i)] * xm;
    const T d2 = d1 * s.d[at(i)];
    z1 += d1;
    z2 += d2;
    z3 += d2 * s.d[at(i)];
    s.mbar += xm;
    s.chain_weight[at(i)] = c.x[at(i)] * (record.mseg[k] - 1.0);
    s.chain_sum += s.chain_weight[at(i)];
  }
  s.zeta_rho = {T(pi_6 * s.mbar), z1 * pi_6, z2 * pi_6, z3 * pi_6};
  s.rho_eta = numerics::inverse(s.zeta_rho[3]);
  if (s.closed) {
    s.hs_first = T(3.0);
    s.hs_second = T(1.0);
    s.chains = 1;
    s.chain_weight[0] = s.chain_sum;
    s.chain_k[0] = T(0.5);
  } else {
    const T ratio = s.zeta_rho[2] * s.rho_eta;  // zeta2 / eta
    s.hs_first = z1 * ratio * (3.0 / s.mbar);
    s.hs_second = z2 * ratio * ratio * (1.0 / s.mbar);
    s.chains = c.count;
    for (int i = 0; i < c.count; ++i) s.chain_k[at(i)] = s.d[at(i)] * ratio * 0.5;
  }
  if (s.chains % 2 != 0) {
    s.chain_weight[at(s.chains)] = 0;
    s.chain_k[at(s.chains)] = T(0.0);
  }
}

template <class T>
void prepare_dispersion(MixtureState<T>& s) {
  const auto weights = mean_segment_weights(s.mbar);
  s.apar = integral_coefficients(ap, weights);
  s.bpar = integral_coefficients(bp, weights);
  const Components& c = s.comp;
  T first(0.0), second(0.0);
  if (tables.constant_energies) {
    double sum1 = 0, sum2 = 0;
    for (int i = 0; i < c.count; ++i) {
      const auto& row1 = tables.first[at(c.index[at(i)])];
      const auto& row2 = tables.second[at(c.index[at(i)])];
      double cross1 = 0, cross2 = 0;
      for (int j = 0; j < i; ++j) {
        cross1 += c.x[at(j)] * row1[at(j)];
        cross2 += c.x[at(j)] * row2[at(j)];
      }
      const auto self = at(c.index[at(i)]);
      sum1 += c.x[at(i)] * (2.0 * cross1 + c.x[at(i)] * row1[self]);
      sum2 += c.x[at(i)] * (2.0 * cross2 + c.x[at(i)] * row2[self]);
    }
    first = T(sum1);
    second = T(sum2);
  } else {
    for (int i = 0; i < c.count; ++i) {
      for (int j = 0; j <= i; ++j) {
        T term1, term2;
        pair_terms(at(c.index[at(i)]), at(c.index[at(j)]), s.t, s.inverse_t, term1, term2);
        const double weight = (i == j ? 1.0 : 2.0) * c.x[at(i)] * c.x[at(j)];
        first += term1 * weight;
        second += term2 * weight;
      }
    }
  }
  s.m2es3 = first * s.inverse_t;
  s.m2e2s3 = second * s.inverse_t * s.inverse_t;
}

template <class T>
void prepare_polar(MixtureState<T>& s, const std::array<int, nmax>& places) {
  const T second_factor = s.inverse_t * s.inverse_t * second_order_factor;
  const T third_factor = s.inverse_t * s.inverse_t * s.inverse_t * third_order_factor;
  const auto weight = [&](int i) {
    const int place = places[at(i)];
    return place < 0 ? 0.0 : s.comp.x[at(place)];
  };
  for (int type = tables.first_type; type <= tables.last_type; ++type) {
    std::array<T, 5> sum2, sum3;
    sum2.fill(T(0.0));
    sum3.fill(T(0.0));
    for (const PolarPair& p : tables.pairs[at(type)]) {
      const double w = weight(p.i) * weight(p.j);
      if (w == 0) continue;
      const T softening = energy_ratio(at(p.i), at(p.j), s.inverse_t) * s.inverse_t;
      for (std::size_t k = 0; k < 5; ++k) sum2[k] += pair_coefficient(p, k, softening) * w;
    }
    for (const PolarTriplet& p : tables.triplets[at(type)]) {
      const double w = weight(p.i) * weight(p.j) * weight(p.k);
      for (std::size_t k = 0; k < 5; ++k) sum3[k] += T(p.c[k] * w);
    }
    for (std::size_t k = 0; k < 5; ++k) {
      s.polar.second[at(type)][k] = sum2[k] * second_factor;
      s.polar.third[at(type)][k] = sum3[k] * third_factor;
    }
  }
}

/// Prepares temperature `t` and the composition. The association arrays belong to the caller's arena frame.
template <class T>
void prepare(MixtureState<T>& s, int n, const double* x, int ipure, const T& t) {
  s.comp = select_components(n, x, ipure);
  s.t = t;
  s.inverse_t = numerics::inverse(t);
  prepare_diameters(s);
  prepare_dispersion(s);
  const auto pure = at(ipure > 0 ? ipure - 1 : 0);
  s.associates = ipure > 0 ? record.is_assoc_cmp[pure] : record.is_assoc;
  s.is_polar = ipure > 0 ? record.is_polar_cmp[pure] : record.is_polar;
  if (!s.associates && !s.is_polar) return;
  std::array<int, nmax> places;
  places.fill(-1);
  for (int i = 0; i < s.comp.count; ++i) places[at(s.comp.index[at(i)])] = i;
  if (s.associates) s.association = prepare_association(t, places);
  if (s.is_polar) prepare_polar(s, places);
}

/// A state prepared over numbers T of the temperature alone, as one over numbers N whose variable 0 is the temperature:
/// cheaper than preparing over N. The association arrays live in the caller's arena frame.
template <class N, class T>
MixtureState<N> lifted_state(const MixtureState<T>& s) {
  using numerics::lifted;
  MixtureState<N> r;
  r.comp = s.comp;
  r.t = lifted<N>(s.t);
  r.inverse_t = lifted<N>(s.inverse_t);
  r.closed = s.closed;
  r.mbar = s.mbar;
  r.apar = s.apar;
  r.bpar = s.bpar;
  for (int i = 0; i < s.comp.count; ++i) r.d[at(i)] = lifted<N>(s.d[at(i)]);
  for (std::size_t k = 0; k < 4; ++k) r.zeta_rho[k] = lifted<N>(s.zeta_rho[k]);
  r.rho_eta = lifted<N>(s.rho_eta);
  r.hs_first = lifted<N>(s.hs_first);
  r.hs_second = lifted<N>(s.hs_second);
  r.chains = s.chains;
  r.chain_weight = s.chain_weight;
  for (int i = 0; i < s.chains; ++i) r.chain_k[at(i)] = lifted<N>(s.chain_k[at(i)]);
  r.chain_sum = s.chain_sum;
  r.m2es3 = lifted<N>(s.m2es3);
  r.m2e2s3 = lifted<N>(s.m2e2s3);
  r.associates = s.associates;
  r.is_polar = s.is_polar;
  if (s.associates) {
    const auto& a = s.association;
    const auto size = at(a.classes) * at(a.classes);
    N* strength = arena.take<N>(size);
    for (std::size_t i = 0; i < size; ++i) strength[i] = lifted<N>(a.strength[i]);
    r.association = {a.classes, a.component, a.types, a.sites, strength};
  }
  if (s.is_polar) {
    for (int type = tables.first_type; type <= tables.last_type; ++type) {
      for (std::size_t k = 0; k < 5; ++k) {
        r.polar.second[at(type)][k] = lifted<N>(s.polar.second[at(type)][k]);
        r.polar.third[at(type)][k] = lifted<N>(s.polar.third[at(type)][k]);
      }
    }
  }
  return r;
}

}  // namespace tessarel::eos
