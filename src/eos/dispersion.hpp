// Dispersion term of PC-SAFT (Gross & Sadowski 2001, doi:10.1021/ie0003887):
//
//   a_disp = -pi rho (2 I1(eta, m) m2es3 + m C1(eta, m) I2(eta, m) m2e2s3),    m the mean segment number.
//
// The compressibility expression C1 is written with u = 1 / (1 - eta) and s = 1 / (2 - eta), in which its two parts
// fall apart into plain powers:
//
//   (8 eta - 2 eta^2) / (1 - eta)^4                                 = 6 u^4 - 4 u^3 - 2 u^2
//   (20 eta - 27 eta^2 + 12 eta^3 - 2 eta^4) / ((1-eta)(2-eta))^2   = 3 u^2 - 4 s^2 - 2
#pragma once

#include <array>

#include "eos/energies.hpp"
#include "eos/moments.hpp"

namespace tessarel::eos {

using Powers = std::array<double, 7>;  ///< coefficients of eta^0 to eta^6

/// Universal constants of the integrals (Gross & Sadowski 2001, doi:10.1021/ie0003887, table 1): [power][order in the
/// mean segment number].
inline constexpr std::array<std::array<double, 3>, 7> ap = {{{0.91056314451539, -0.3084016918272, -0.09061483509767},
                                                             {0.63612814494991, 0.18605311591713, 0.4527842806392},
                                                             {2.68613478913903, -2.50300472586548, 0.59627007280101},
                                                             {-26.5473624914884, 21.4197936296668, -1.72418291311787},
                                                             {97.7592087835073, -65.2558853303492, -4.13021125311661},
                                                             {-159.5915408656, 83.3186804808856, 13.7766318697211},
                                                             {91.2977740839123, -33.7469229297323, -8.67284703679646}}};
inline constexpr std::array<std::array<double, 3>, 7> bp = {
    {{0.72409469413165, -0.5755498075345, 0.09768831158356},
     {2.2382791860938, 0.69950955214436, -0.255757498161},
     {-4.00258494846342, 3.89256733895307, -9.15585615297321},
     {-21.00357681484648, -17.21547164777212, 20.64207597439724},
     {26.8556413626615, 192.6722644652495, -38.80443005206285},
     {206.5513384066188, -161.8264616487648, 93.6267740770146},
     {-355.6023561220795, -165.2076934555607, -29.66690558514725}}};

/// The weights 1, (m-1)/m, (m-1)(m-2)/m^2 of the three columns at mean segment number `m`, which may carry derivatives.
template <class N>
std::array<N, 2> mean_segment_weights(const N& m) {
  const N r = inverse(m);
  const N p = 1.0 - r;
  return {p, p * (p - r)};
}

/// Coefficients of an integral, apar or bpar, at the weights of a mean segment number.
template <class N>
std::array<N, 7> integral_coefficients(const std::array<std::array<double, 3>, 7>& constants,
                                       const std::array<N, 2>& w) {
  std::array<N, 7> c;
  for (std::size_t j = 0; j < 7; ++j) c[j] = w[0] * constants[j][1] + w[1] * constants[j][2] + constants[j][0];
  return c;
}

/// I1 or I2: sum of c_j eta^j.
template <class N, class C>
N integral(const std::array<C, 7>& c, const N& eta) {
  N sum = eta * c[6] + c[5];
  for (std::size_t j = 5; j-- > 0;) sum = sum * eta + c[j];
  return sum;
}

/// d(eta I1)/d eta or d(eta I2)/d eta: sum of (j + 1) c_j eta^j.
template <class N, class C>
N scaled_integral_slope(const std::array<C, 7>& c, const N& eta) {
  N sum = eta * (7.0 * c[6]) + 6.0 * c[5];
  for (std::size_t j = 5; j-- > 0;) sum = sum * eta + static_cast<double>(j + 1) * c[j];
  return sum;
}

/// The two parts of 1 / C1 = 1 + m chain + (1 - m) sphere.
template <class N>
struct InverseC1Parts {
  N chain, sphere;
};
template <class N>
InverseC1Parts<N> inverse_c1_parts(const N& u, const N& s) {
  const N u2 = u * u;
  return {u2 * (u2 * 6.0 - u * 4.0 - 2.0), u2 * 3.0 - s * s * 4.0 - 2.0};
}

/// 1 / C1 from u = 1 / (1 - eta), s = 1 / (2 - eta) and the mean segment number.
template <class N, class M>
N inverse_c1(const N& u, const N& s, const M& m) {
  const auto [chain, sphere] = inverse_c1_parts(u, s);
  return (chain - sphere) * m + sphere + 1.0;
}
template <class N, class M>
N c1(const N& eta, const M& m) {
  return inverse(inverse_c1(inverse(1.0 - eta), inverse(2.0 - eta), m));
}

/// d(1 / C1)/d eta, from the same powers.
template <class N, class M>
N inverse_c1_slope(const N& u, const N& s, const M& m) {
  const N u2 = u * u, u3 = u2 * u;
  const N chain = u3 * (u2 * 24.0 - u * 12.0 - 4.0);
  const N sphere = u3 * 6.0 - s * s * s * 8.0;
  return (chain - sphere) * m + sphere;
}

/// I1 or I2 over (mbar, eta).
template <int K, class S>
Taylor<2, K, S> integral_over_moments(const std::array<std::array<double, 3>, 7>& constants, double mbar,
                                      const numerics::ShiftedSeries<K, S>& eta) {
  const auto c = integral_coefficients(constants, mean_segment_weights(numerics::variable<Taylor<1, K>>(mbar)));
  Taylor<2, K, S> sum;
  for (int k = 0; k <= K; ++k) {
    Powers powers;
    for (std::size_t j = 0; j < powers.size(); ++j) powers[j] = c[j].c[at(k)];
    const auto polynomial = eta.lift(integral(powers, eta.plain));
    for (int l = 0; l + k <= K; ++l) sum.c[Taylor<2, K, S>::Monomials::index({k, l})] = polynomial.c[at(l)];
  }
  return sum;
}

struct Dispersion {
  /// The summands of the two mixture sums without 1/t and 1/t^2.
  struct Tables {
    fluid::Matrix energy;           ///< sqrt(epsil_i epsil_j) [K], before the correction by k_ij
    fluid::Matrix first;            ///< m_i m_j sig_ij^3 eps_ij, with constant k_ij
    fluid::Matrix second;           ///< m_i m_j sig_ij^3 eps_ij^2, with constant k_ij
    bool constant_energies = true;  ///< no k_ij is a temperature code and every saftpar is 0

    void update(const fluid::Parameters& p) {
      const auto n = at(p.n);
      constant_energies = true;
      for (std::size_t i = 0; i < n; ++i) {
        if (p.saftpar[i] != 0) constant_energies = false;
        for (std::size_t j = 0; j < n; ++j) {
          const double k = i == j ? 0.0 : p.k_ij[i][j];
          if (k >= fluid::first_code) constant_energies = false;
          energy[i][j] = geometric_energy(p, i, j);
          const double eps = (1.0 - k) * energy[i][j];
          const double weight = pair_weight(p, i, j);
          first[i][j] = weight * eps;
          second[i][j] = weight * eps * eps;
        }
      }
    }

    /// m_i m_j sig_ij^3.
    static double pair_weight(const fluid::Parameters& p, std::size_t i, std::size_t j) {
      const double sigma = mean_diameter(p, i, j);
      return p.mseg[i] * p.mseg[j] * sigma * sigma * sigma;
    }

    /// The summands of a pair at temperature t.
    template <class T>
    void pair_terms(const fluid::Parameters& p, std::size_t i, std::size_t j, const T& t, const T& inverse_t,
                    T& first_term, T& second_term) const {
      const T eps = pair_energy(p, energy[i][j], i, j, t, inverse_t);
      first_term = eps * pair_weight(p, i, j);
      second_term = first_term * eps;
    }
  };

  template <class T>
  struct State {
    State() {}  // NOLINT(modernize-use-equals-default): a tuple would fill a defaulted one with zeros

    static constexpr bool present = true;

    Powers apar, bpar;  ///< coefficients of I1 and I2
    T m2es3, m2e2s3;    ///< the mixture sums [A3]

    void prepare(const MixtureState<T>& s) {
      const auto weights = mean_segment_weights(s.mbar);
      apar = integral_coefficients(ap, weights);
      bpar = integral_coefficients(bp, weights);
      const auto& c = s.comp;
      const Tables& tables = s.template tables<Dispersion>();
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
            tables.pair_terms(s.parameters(), at(c.index[at(i)]), at(c.index[at(j)]), s.t, s.inverse_t, term1, term2);
            const double weight = (i == j ? 1.0 : 2.0) * c.x[at(i)] * c.x[at(j)];
            first += term1 * weight;
            second += term2 * weight;
          }
        }
      }
      m2es3 = first * s.inverse_t;
      m2e2s3 = second * s.inverse_t * s.inverse_t;
    }

    template <class U>
    void lift(const State<U>& from, Arena&) {
      apar = from.apar, bpar = from.bpar;
      m2es3 = numerics::lifted<T>(from.m2es3);
      m2e2s3 = numerics::lifted<T>(from.m2e2s3);
    }

    template <class N>
    N a(const MixtureState<T>& s, Point<N>& q) const {
      const N i1 = integral(apar, q.eta), i2 = integral(bpar, q.eta);
      return (i1 * N(m2es3) * 2.0 + c1(q.eta, s.mbar) * i2 * N(m2e2s3) * s.mbar) * q.rho * (-pi);
    }

    template <class N>
    N z(const MixtureState<T>& s, Point<N>& q) const {
      const N r = inverse(2.0 - q.eta);
      const N c = inverse(inverse_c1(q.u, r, s.mbar));
      const N i1_slope = scaled_integral_slope(apar, q.eta);
      const N c1_i2_slope = c * (scaled_integral_slope(bpar, q.eta) -
                                 c * inverse_c1_slope(q.u, r, s.mbar) * q.eta * integral(bpar, q.eta));
      return -((i1_slope * N(m2es3) * 2.0 + N(m2e2s3) * c1_i2_slope * s.mbar) * q.rho * pi);
    }
  };

  template <int K, class T, class S>
  class Composition : public NoComposition {
   public:
    explicit Composition(const MixtureState<T>& s) : s_(s) {}

    void add_outer(const S& rho, const std::array<S, 4>& zeta, int, OuterDerivatives<S>& out) const {
      using N = Taylor<2, K, S>;
      using E = Taylor<1, K, S>;
      const auto& state = s_.template term<Dispersion>();
      const numerics::ShiftedSeries<K, S> series(zeta[3]);
      const auto parts = inverse_c1_parts(inverse(1.0 - series.plain), inverse(2.0 - series.plain));
      const E chain = series.lift(parts.chain), sphere = series.lift(parts.sphere);
      const S mbar(s_.mbar);
      const N inverse_c1 = power_times(mbar, 1, E(chain - sphere)) + power_times(mbar, 0, E(sphere + 1.0));
      add_term(out, N(integral_over_moments<K>(ap, s_.mbar, series) * (rho * (-2.0 * pi))), moment::mbar, moment::zeta3,
               S(state.m2es3), moment::m2es3);
      add_term(out,
               N(power_times(mbar, 1, E(rho * (-pi))) * (integral_over_moments<K>(bp, s_.mbar, series) / inverse_c1)),
               moment::mbar, moment::zeta3, S(state.m2e2s3), moment::m2e2s3);
    }

    void fill_gradients(const MomentGradients<S>& g, int) const {
      const Tables& tables = s_.template tables<Dispersion>();
      if (tables.constant_energies) {
        fill(
            g,
            [&tables](std::size_t i, std::size_t j, double& term1, double& term2) {
              term1 = tables.first[i][j];
              term2 = tables.second[i][j];
            },
            0.0);
      } else {
        fill(
            g,
            [&](std::size_t i, std::size_t j, T& term1, T& term2) {
              tables.pair_terms(s_.parameters(), i, j, s_.t, s_.inverse_t, term1, term2);
            },
            T(0.0));
      }
    }

   private:
    /// The row sums and the Hessians of the two mixture sums; with constant energies over plain numbers.
    template <class PairTerms, class Zero>
    void fill(const MomentGradients<S>& g, PairTerms&& pair_terms, Zero zero) const {
      const T scale1 = s_.inverse_t * 2.0, scale2 = s_.inverse_t * s_.inverse_t * 2.0;
      for (std::size_t i = 0; i < g.n; ++i) {
        auto sum1 = zero, sum2 = zero;
        for (std::size_t j = 0; j < g.n; ++j) {
          auto term1 = zero, term2 = zero;
          pair_terms(at(s_.comp.index[i]), at(s_.comp.index[j]), term1, term2);
          sum1 += term1 * s_.comp.x[j];
          sum2 += term2 * s_.comp.x[j];
          if constexpr (K >= 2) {
            g.hessian[0](i, j) = S(term1 * scale1);
            g.hessian[1](i, j) = S(term2 * scale2);
          }
        }
        g[moment::m2es3][i] = S(sum1 * scale1);
        g[moment::m2e2s3][i] = S(sum2 * scale2);
      }
    }

    const MixtureState<T>& s_;
  };
};

}  // namespace tessarel::eos
