// Assembling the reduced residual Helmholtz energy a and the compressibility factor z of a prepared state from their
// terms. Each evaluation has two steps: `..._blocks` computes the building blocks at a density, `assemble` puts them
// together. The number type decides what comes out: with a density of type Taylor<1, 2>, say, the result carries z,
// z_rho and z_rhorho.
#pragma once

#include "eos/mixture_state.hpp"

namespace tessarel::eos {

/// The result type of a temperature-dependent T and a density-dependent R: the one that carries derivatives.
template <class T, class R>
using Wider = std::conditional_t<numerics::is_taylor<R>, R, T>;

/// The building blocks of a at one state; the density is included where the assembly needs it.
template <class N>
struct HelmholtzBlocks {
  double mbar;
  N rho, a_hs, chain;  ///< chain: sum x_i (m_i - 1) ln g_ii
  N c1, i1, i2, m2es3, m2e2s3;
  N assoc;  ///< sum x_i n_ia (ln X + (1 - X) / 2)
  std::array<N, fluid_module::max_types> a2, a3;
  bool associates, is_polar;
  int status;  ///< of the site iteration
};

/// The terms of a with the sign with which they enter the sum.
template <class N>
struct HelmholtzTerms {
  N hs, chain, disp, assoc, polar;
};

/// The blocks of z: densities slopes take the place of the values that z does not need.
template <class N>
struct CompressibilityBlocks {
  double mbar;
  N rho, z_hs, chain;  ///< chain: sum x_i (m_i - 1) rho g_rho / g
  N m2es3, m2e2s3;
  N di1, c1_i2_slope;  ///< d(eta I1)/d eta and d(eta C1 I2)/d eta
  N assoc;             ///< -1/2 sum x_i n_ia (1 - X_ia) weighted with 1 + d ln g / d ln rho
  std::array<N, fluid_module::max_types> a2, a3, da2, da3;  ///< slopes times rho
  bool associates, is_polar;
  int status;
};

template <class T, class R>
Wider<T, R> packing_fraction(const MixtureState<T>& s, const R& rho) {
  return rho * s.zeta_rho[3];
}

/// bond_kl = rho x_l strength_kl g_kl of the site system, `g` from the reduced free volume u = 1 / (1 - eta).
template <class T, class N>
void fill_bonds(const MixtureState<T>& s, const N& rho, const N& u, N* bond) {
  const auto& a = s.association;
  const auto n = at(a.classes);
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t l = 0; l < n; ++l) {
      const int i = a.component[k], j = a.component[l];
      const N g = contact(u, s.contact_k(i, j));
      bond[k * n + l] = rho * g * a.strength[k * n + l] * s.comp.x[at(j)];
    }
  }
}

/// The site system of a state at a density: its bonds and unbonded fractions, in the caller's arena frame.
template <class N>
struct SiteFractions {
  const N* bond;
  const N* x;
  int status;
};
template <class T, class N>
SiteFractions<N> unbonded_fractions(const MixtureState<T>& s, const N& rho, const N& u, double tolerance) {
  const auto& a = s.association;
  N* bond = arena.take<N>(at(a.classes) * at(a.classes));
  N* x = arena.take<N>(at(a.classes));
  fill_bonds(s, rho, u, bond);
  return {bond, x, solve_unbonded(a.classes, a.types, bond, tolerance, x)};
}

/// `tolerance` is that of the site iteration.
template <class T, class R>
void prepare_a_blocks(const MixtureState<T>& s, const R& density, double tolerance, HelmholtzBlocks<Wider<T, R>>& b) {
  using N = Wider<T, R>;
  const N rho(density);
  const N eta = rho * s.zeta_rho[3];
  const N u = inverse(1.0 - eta);
  const N log_free = log_1p(-eta);
  b.mbar = s.mbar;
  b.rho = rho;
  b.a_hs = s.closed ? hard_sphere_a_closed(eta, u) : hard_sphere_a(eta, u, log_free, s.hs_first, s.hs_second);
  const N excess = eta * u;
  b.chain = log_free * (-s.chain_sum);
  for (int i = 0; i < s.chains; ++i) {
    if (s.chain_weight[at(i)] == 0) continue;
    b.chain += log_contact_rest(N(excess * s.chain_k[at(i)])) * s.chain_weight[at(i)];
  }
  b.c1 = c1(eta, s.mbar);
  b.i1 = integral(s.apar, eta);
  b.i2 = integral(s.bpar, eta);
  b.m2es3 = N(s.m2es3);
  b.m2e2s3 = N(s.m2e2s3);
  b.associates = s.associates;
  b.is_polar = s.is_polar;
  b.status = 0;
  b.assoc = N(0.0);
  if (s.associates) {
    const Arena::Frame frame(arena);
    const auto& a = s.association;
    const auto [bond, x, status] = unbonded_fractions(s, rho, u, tolerance);
    b.status = status;
    for (std::size_t k = 0; k < at(a.classes); ++k)
      b.assoc += (log(x[k]) + (1.0 - x[k]) * 0.5) * (a.sites[k] * s.comp.x[at(a.component[k])]);
  }
  if (s.is_polar) {
    for (int type = tables.first_type; type <= tables.last_type; ++type) {
      b.a2[at(type)] = rho * polar_polynomial(s.polar.second[at(type)], eta);
      b.a3[at(type)] = rho * rho * polar_polynomial(s.polar.third[at(type)], eta);
    }
  }
}

template <class N>
HelmholtzTerms<N> helmholtz_terms(const HelmholtzBlocks<N>& b) {
  HelmholtzTerms<N> terms;
  terms.hs = b.a_hs * b.mbar;
  terms.chain = -b.chain;
  terms.disp = (b.i1 * b.m2es3 * 2.0 + b.c1 * b.i2 * b.m2e2s3 * b.mbar) * b.rho * (-pi);
  terms.assoc = b.associates ? b.assoc : N(0.0);
  terms.polar = N(0.0);
  if (b.is_polar)
    for (int type = tables.first_type; type <= tables.last_type; ++type)
      terms.polar += pade(b.a2[at(type)], b.a3[at(type)]);
  return terms;
}

template <class N>
N assemble(const HelmholtzBlocks<N>& b) {
  const auto terms = helmholtz_terms(b);
  N a = terms.hs + terms.chain + terms.disp;
  if (b.associates) a += terms.assoc;
  if (b.is_polar) a += terms.polar;
  return a;
}

template <class T, class R>
void prepare_z_blocks(const MixtureState<T>& s, const R& density, CompressibilityBlocks<Wider<T, R>>& b) {
  using N = Wider<T, R>;
  const N rho(density);
  const N eta = rho * s.zeta_rho[3];
  const N u = inverse(1.0 - eta);
  const N excess = eta * u;
  b.mbar = s.mbar;
  b.rho = rho;
  b.z_hs = hard_sphere_z(excess, u, s.hs_first, s.hs_second);
  N slopes(0.0);
  for (int i = 0; i < s.chains; ++i) {
    if (s.chain_weight[at(i)] == 0) continue;
    slopes += log_contact_slope(N(excess * s.chain_k[at(i)])) * s.chain_weight[at(i)];
  }
  b.chain = excess * s.chain_sum + u * slopes;
  const N r = inverse(2.0 - eta);
  const N c = inverse(inverse_c1(u, r, s.mbar));
  b.di1 = scaled_integral_slope(s.apar, eta);
  b.c1_i2_slope =
      c * (scaled_integral_slope(s.bpar, eta) - c * inverse_c1_slope(u, r, s.mbar) * eta * integral(s.bpar, eta));
  b.m2es3 = N(s.m2es3);
  b.m2e2s3 = N(s.m2e2s3);
  b.associates = s.associates;
  b.is_polar = s.is_polar;
  b.status = 0;
  b.assoc = N(0.0);
  if (s.associates) {
    const Arena::Frame frame(arena);
    const auto& a = s.association;
    const auto n = at(a.classes);
    const auto [bond, x, status] = unbonded_fractions(s, rho, u, site_tolerance(numerics::value(density)));
    b.status = status;
    for (std::size_t k = 0; k < n; ++k) {
      N sum(0.0);
      for (std::size_t l = 0; l < n; ++l) {
        const auto kc = s.contact_k(a.component[k], a.component[l]);
        // rho g_rho / g = eta u^2 g_u / g
        const N slope = excess * u * contact_slope(u, kc) / contact(u, kc);
        sum += bond[k * n + l] * x[l] * (slope + 1.0);
      }
      b.assoc += x[k] * sum * (-0.5 * a.sites[k] * s.comp.x[at(a.component[k])]);
    }
  }
  if (s.is_polar) {
    for (int type = tables.first_type; type <= tables.last_type; ++type) {
      const auto& second = s.polar.second[at(type)];
      const auto& third = s.polar.third[at(type)];
      b.a2[at(type)] = rho * polar_polynomial(second, eta);
      b.a3[at(type)] = rho * rho * polar_polynomial(third, eta);
      b.da2[at(type)] = rho * polar_slope(second, eta, 1.0);
      b.da3[at(type)] = rho * rho * polar_slope(third, eta, 2.0);
    }
  }
}

template <class N>
N assemble(const CompressibilityBlocks<N>& b) {
  N z = b.z_hs * b.mbar - b.chain - (b.di1 * b.m2es3 * 2.0 + b.m2e2s3 * b.c1_i2_slope * b.mbar) * b.rho * pi + 1.0;
  if (b.associates) z += b.assoc;
  if (b.is_polar)
    for (int type = tables.first_type; type <= tables.last_type; ++type) {
      const auto k = at(type);
      z += pade_slope(b.a2[k], b.a3[k], b.da2[k], b.da3[k]);
    }
  return z;
}

/// a at a prepared state and density. The tolerance of the site iteration goes by the number density; the pure paths
/// let it go by the packing fraction instead.
template <class T, class R>
Wider<T, R> residual_a(const MixtureState<T>& s, const R& rho, double tolerance) {
  HelmholtzBlocks<Wider<T, R>> blocks;
  prepare_a_blocks(s, rho, tolerance, blocks);
  return assemble(blocks);
}
template <class T, class R>
Wider<T, R> residual_a(const MixtureState<T>& s, const R& rho) {
  return residual_a(s, rho, site_tolerance(numerics::value(rho)));
}

/// z at a prepared state and density.
template <class T, class R>
Wider<T, R> residual_z(const MixtureState<T>& s, const R& rho) {
  CompressibilityBlocks<Wider<T, R>> blocks;
  prepare_z_blocks(s, rho, blocks);
  return assemble(blocks);
}

}  // namespace tessarel::eos
