// Hard-sphere and chain terms (Boublik 1970, doi:10.1063/1.1673824; Mansoori et al. 1971,
// doi:10.1063/1.1675048; Chapman et al. 1990, doi:10.1021/ie00104a021).
//
// At fixed temperature and composition the moments zeta_k of the diameter are proportional to the density, so every
// function here depends on the packing fraction eta = zeta3 alone, and with u = 1 / (1 - eta) becomes a polynomial:
//
//   z_hs = (u - 1) + A (u^2 - u) + B (2 u^3 - 3 u^2 + 1)
//   A    = 3 zeta1 zeta2 / (zeta0 eta)
//   B    = zeta2^3 / (zeta0 eta^2)
//   g_ij = u (1 + k_ij (u - 1)) (1 + 2 k_ij (u - 1))
//   k_ij = zeta2 / eta * d_i d_j / (d_i + d_j)
//
// The fluid of one diameter, and the simplified model of a mean diameter, are the case A = 3, B = 1, k = 1/2
// (Carnahan & Starling 1969).
#pragma once

#include "eos/moments.hpp"

namespace tessarel::eos {

/// psi(eta) = 1 / (eta (1 - eta)^2) + ln(1 - eta) / eta^2, the factor of zeta2^3 / zeta0 in a_hs. Its two parts cancel
/// at low density: there the power series, the sum of (k + 1 - 1/(k + 1)) eta^(k - 1) over k >= 1, takes over.
template <class N>
N hard_sphere_psi(const N& eta, const N& u, const N& log_free_volume) {
  constexpr double series_limit = 0.08;
  if (value(eta) < series_limit) {
    constexpr int terms = 20;
    N sum = eta * (terms + 1.0 - 1.0 / (terms + 1.0)) + (terms - 1.0 / terms);
    for (int k = terms - 2; k >= 1; --k) sum = sum * eta + (k + 1.0 - 1.0 / (k + 1.0));
    return sum;
  }
  const N r = inverse(eta);
  return r * (u * u + r * log_free_volume);
}

/// a_hs of a mixture: -ln(1 - eta) + A eta u + B eta^2 psi.
template <class N, class C>
N hard_sphere_a(const N& eta, const N& u, const N& log_free_volume, const C& a, const C& b) {
  return (eta * u) * a + (eta * eta * hard_sphere_psi(eta, u, log_free_volume)) * b - log_free_volume;
}

/// a_hs of one diameter: e (4 + e), e = eta / (1 - eta).
template <class N>
N hard_sphere_a_closed(const N& eta, const N& u) {
  const N e = eta * u;
  return e * (e + 4.0);
}

/// z_hs; `excess` = eta u = u - 1.
template <class N, class C>
N hard_sphere_z(const N& excess, const N& u, const C& a, const C& b) {
  // 2 u^3 - 3 u^2 + 1 = (u - 1)^2 (2 u + 1)
  return excess * ((u * a) + (excess * (u * 2.0 + 1.0)) * b + 1.0);
}

/// ln of the contact value: -ln(1 - eta) + ln((1 + y)(1 + 2 y)), y = k eta u; without its first part.
template <class N>
N log_contact_rest(const N& y) {
  return log_1p(y * (y * 2.0 + 3.0));
}

/// The contact value g, from y = k eta u or from k, and its derivative by u.
template <class N>
N contact_at(const N& u, const N& y) {
  return u * (y + 1.0) * (y * 2.0 + 1.0);
}
template <class N, class C>
N contact(const N& u, const C& k) {
  return contact_at(u, N((u - 1.0) * k));
}
template <class N, class C>
N contact_slope(const N& u, const C& k) {
  const N y = (u - 1.0) * k;
  return (y + 1.0) * (y * 2.0 + 1.0) + u * ((y * 4.0 + 3.0) * k);
}

/// d ln((1 + y)(1 + 2 y)) / d ln y = y / (1 + y) + 2 y / (1 + 2 y).
template <class N>
N log_contact_slope(const N& y) {
  return y * (y * 4.0 + 3.0) / ((y + 1.0) * (y * 2.0 + 1.0));
}

/// Diameter of component i (Gross & Sadowski 2001, eq. A.9).
template <class T>
T segment_diameter(const fluid::Parameters& p, std::size_t i, const T& inverse_t) {
  using std::exp;
  return p.sigma[i] * (1.0 - p.parat[i] * exp(inverse_t * (-3.0 * p.epsil[i])));
}

struct HardChain {
  struct Tables : NoTables {};

  template <class T>
  struct State {
    State() {}  // NOLINT(modernize-use-equals-default): a tuple would fill a defaulted one with zeros

    static constexpr bool present = true;

    T first, second;  ///< A and B of the hard-sphere forms
    int chains = 0;   ///< contact values in the chain term: one each, or one for all in the closed forms
    std::array<double, nmax> weight;  ///< x_i (m_i - 1), or their sum; padded with 0 to an even number
    std::array<T, nmax> k;            ///< k_ii of the contact values, padded likewise
    double weights = 0;               ///< sum of the weights

    void prepare(const MixtureState<T>& s) {
      const auto& c = s.comp;
      const fluid::Vector& mseg = s.parameters().mseg;
      double sum = 0;
      for (int i = 0; i < c.count; ++i) {
        weight[at(i)] = c.x[at(i)] * (mseg[at(c.index[at(i)])] - 1.0);
        sum += weight[at(i)];
      }
      weights = sum;
      if (s.closed) {
        first = T(3.0);
        second = T(1.0);
        chains = 1;
        weight[0] = weights;
        k[0] = T(0.5);
      } else {
        const T ratio = s.zeta_rho[2] * s.rho_eta;  // zeta2 / eta
        first = s.sum_d * ratio * (3.0 / s.mbar);
        second = s.sum_d2 * ratio * ratio * (1.0 / s.mbar);
        chains = c.count;
        for (int i = 0; i < c.count; ++i) k[at(i)] = s.d[at(i)] * ratio * 0.5;
      }
      if (chains % 2 != 0) {
        weight[at(chains)] = 0;
        k[at(chains)] = T(0.0);
      }
    }

    template <class U>
    void lift(const State<U>& from, Arena&) {
      first = numerics::lifted<T>(from.first);
      second = numerics::lifted<T>(from.second);
      chains = from.chains;
      for (int i = 0; i < chains; ++i) {
        weight[at(i)] = from.weight[at(i)];
        k[at(i)] = numerics::lifted<T>(from.k[at(i)]);
      }
      weights = from.weights;
    }

    template <class N>
    N a(const MixtureState<T>& s, Point<N>& q) const {
      const N log_free = log_1p(-q.eta);
      const N hs = s.closed ? hard_sphere_a_closed(q.eta, q.u) : hard_sphere_a(q.eta, q.u, log_free, first, second);
      const N excess = q.eta * q.u;
      N chain = log_free * (-weights);
      for (int i = 0; i < chains; ++i) {
        if (weight[at(i)] == 0) continue;
        chain += log_contact_rest(N(excess * k[at(i)])) * weight[at(i)];
      }
      return hs * s.mbar - chain;
    }

    template <class N>
    N z(const MixtureState<T>& s, Point<N>& q) const {
      const N excess = q.eta * q.u;
      N slopes(0.0);
      for (int i = 0; i < chains; ++i) {
        if (weight[at(i)] == 0) continue;
        slopes += log_contact_slope(N(excess * k[at(i)])) * weight[at(i)];
      }
      return hard_sphere_z(excess, q.u, first, second) * s.mbar - (excess * weights + q.u * slopes);
    }
  };

  /// The hard-sphere part and the logarithms of the contact values are functions of the moments; the weights of the
  /// chain term depend on the fractions directly: h_i = (m_i - 1)(L - l_i(w)) with L = ln(1 - zeta3),
  /// w = zeta2 / (1 - zeta3) and ln g_ii = -L + l_i(w). In the simplified model l_i = 0 and L is -ln g.
  template <int K, class T, class S>
  class Composition : public NoComposition {
   public:
    explicit Composition(const MixtureState<T>& s) : s_(s), simplified_(s.eos->simplified) {}

    void add_outer(const S& rho, const std::array<S, 4>& zeta, int, OuterDerivatives<S>& out) {
      const numerics::ShiftedSeries<K, S> series(zeta[3]);
      const auto& eta = series.plain;
      const auto u_plain = inverse(1.0 - eta);
      const auto log_plain = log_1p(-eta);
      const auto of_eta = [&](const auto& f) { return power_times(zeta[2], 0, series.lift(f)); };
      const auto& chain = s_.template term<HardChain>();
      if (simplified_) {
        add_term(out, of_eta(hard_sphere_a_closed(eta, u_plain)), moment::zeta2, moment::zeta3, S(s_.mbar),
                 moment::mbar);
        using P = typename numerics::ShiftedSeries<K, S>::Plain;
        log_free_ = of_eta(log_plain - log_contact_rest(P(eta * u_plain * 0.5)));
        add_term(out, log_free_, moment::zeta2, moment::zeta3, S(chain.weights), -1);
        w_ = N(0.0);  // no l_i
        std::fill_n(rest_.begin(), s_.comp.count, E(0.0));
        return;
      }
      const S kappa = inverse(rho * pi_6);  // mbar / zeta0
      const E u = series.lift(u_plain);
      const E psi = series.lift(hard_sphere_psi(eta, u_plain, log_plain));
      log_free_ = of_eta(log_plain);
      w_ = power_times(zeta[2], 1, u);
      add_term(out, N(-log_free_), moment::zeta2, moment::zeta3, S(s_.mbar), moment::mbar);
      add_term(out, N(w_ * (kappa * 3.0)), moment::zeta2, moment::zeta3, zeta[1], moment::zeta1);
      E sum(0.0);
      double weights = 0;
      for (int i = 0; i < s_.comp.count; ++i) {
        const double weight = s_.comp.x[at(i)] * component_weight(at(i));
        const E w = seeded<E>(w_.c[0], 0);
        rest_[at(i)] = log_contact_rest(E(w * S(s_.d[at(i)] * 0.5)));
        sum += rest_[at(i)] * weight;
        weights += weight;
      }
      add_term(out, N(power_times(zeta[2], 3, psi) * kappa + log_free_ * weights - compose(sum, w_)), moment::zeta2,
               moment::zeta3, S(1.0), -1);
    }

    void add_direct(const S&, const std::array<S, 4>&, const MomentGradients<S>& g,
                    CompositionDerivatives<S>& out) const {
      const std::size_t n = g.n;
      for (std::size_t i = 0; i < n; ++i) out.first[i] += (log_free_.c[0] - rest(i, 0)) * component_weight(i);
      if constexpr (K >= 2) {
        const S* log_free1 = gradient(log_free_, g);
        const S* w1 = gradient(w_, g);
        std::array<double, nmax> weight;
        std::array<S, nmax> slope;
        for (std::size_t i = 0; i < n; ++i) {
          weight[i] = component_weight(i);
          slope[i] = rest(i, 1) * weight[i];
        }
        // h_i,j + h_j,i, in a form whose loop over j the compiler packs into vectors.
        for (std::size_t i = 0; i < n; ++i) {
          S* row = &out.second(i, 0);
          const S log_free1_i = log_free1[i], w1_i = w1[i], slope_i = slope[i];
          const double weight_i = weight[i];
          for (std::size_t j = 0; j <= i; ++j)
            row[j] += (log_free1[j] * weight_i - slope_i * w1[j]) + (log_free1_i * weight[j] - slope[j] * w1_i);
        }
        if constexpr (K >= 3) {
          const auto log_free2 = hessian(log_free_, g), w2 = hessian(w_, g);
          const auto second = [&](std::size_t i, std::size_t j, std::size_t k) {
            return S((log_free2(j, k) - rest(i, 2) * w1[j] * w1[k] - rest(i, 1) * w2(j, k)) * weight[i]);
          };
          for (std::size_t i = 0; i < n; ++i)
            for (std::size_t j = i; j < n; ++j)
              for (std::size_t k = j; k < n; ++k)
                out.third(i, j, k) += second(i, j, k) + second(j, i, k) + second(k, i, j);
        }
      }
    }

   private:
    using N = Taylor<2, K, S>;  ///< over (zeta2, zeta3)
    using E = Taylor<1, K, S>;

    [[nodiscard]] double component_weight(std::size_t i) const {
      return s_.parameters().mseg[at(s_.comp.index[i])] - 1.0;
    }
    [[nodiscard]] S rest(std::size_t i, int order) const { return numerics::derivative(rest_[i], order); }

    const S* gradient(const N& f, const MomentGradients<S>& g) const {
      S* r = s_.arena().template take<S>(g.n);
      for (std::size_t i = 0; i < g.n; ++i) r[i] = f.c[1] * g[moment::zeta2][i] + f.c[2] * g[moment::zeta3][i];
      return r;
    }
    numerics::Square<S> hessian(const N& f, const MomentGradients<S>& g) const {
      using numerics::derivative;
      const numerics::Square<S> r{s_.arena().template take<S>(g.n * g.n), g.n};
      const S* z2 = g[moment::zeta2];
      const S* z3 = g[moment::zeta3];
      for (std::size_t i = 0; i < g.n; ++i)
        for (std::size_t j = 0; j < g.n; ++j)
          r(i, j) = derivative(f, 2, 0) * z2[i] * z2[j] + derivative(f, 0, 2) * z3[i] * z3[j] +
                    derivative(f, 1, 1) * (z2[i] * z3[j] + z3[i] * z2[j]);
      return r;
    }

    const MixtureState<T>& s_;
    bool simplified_;
    N log_free_, w_;            ///< L and w
    std::array<E, nmax> rest_;  ///< l_i over w
  };
};

}  // namespace tessarel::eos
