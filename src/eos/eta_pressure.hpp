// The innermost loop of the library: pressure and its first two derivatives by the packing fraction, for the density
// iteration. The formulas are those of the terms with the derivatives by u = 1 / (1 - eta) written out; nothing that
// depends on temperature and composition alone is computed here, and no exponential or logarithm is taken.
#pragma once

#include "eos/residual.hpp"

namespace tessarel::eos {

/// A function of eta with its first two derivatives.
struct EtaDerivatives {
  double value, first, second;
};

/// Packing fraction of closest packed spheres.
inline constexpr double closest_packing = 0.74;

/// Where a Newton step in eta may land: within (0, 0.9], or one of two places to start again.
constexpr double bounded_eta(double eta) {
  return eta > 0.9 ? 0.6 : eta <= 0 ? 1e-10 : eta;
}

/// z of a prepared state.
EtaDerivatives z_eta12(const MixtureState<double>& s, double eta);

/// The part of one term in z, Association or Polar.
template <class Term>
EtaDerivatives z_term_eta12(const MixtureState<double>& s, double eta);

/// p [Pa], dp/deta, d2p/deta2 of a prepared state.
EtaDerivatives p_eta12(const MixtureState<double>& s, double eta);

}  // namespace tessarel::eos
