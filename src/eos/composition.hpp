// Derivatives of a by composition, the mole fractions taken as independent variables.
//
// The hard-chain and dispersion terms depend on composition through six moments, the mean segment number, zeta1 to
// zeta3 (linear in x) and the two dispersion sums (quadratic), and through the weights of the chain term:
//
//   a = F(M(x)) + sum x_i h_i(zeta2, zeta3),   h_i = -(m_i - 1) ln g_ii.
//
// So F is differentiated by its moments, over numbers of two variables since no term has more that are not linear,
// and the result is contracted with the derivatives of the moments: a gradient costs about as much as a value, a
// Hessian about n squared. The fractions of associating components join as further moments; the polar terms are Pade
// forms of two polynomials in x and eta.
//
// The scalar S may carry derivatives by t or rho, which gives a_tx, z_x = rho a_rhox and their like.
#pragma once

#include "eos/mixture_state.hpp"
#include "eos/terms.hpp"

namespace tessarel::eos {

/// Where the derivatives go: arrays of n, n x n, n x n x n scalars. An order above K stays untouched and may be null.
template <class S>
struct CompositionDerivatives {
  S a;
  S* first = nullptr;
  S* second = nullptr;
  S* third = nullptr;
};

/// a and its composition derivatives up to order K at a prepared mixture state (ipure = 0).
template <int K, class T, class R>
void composition_derivatives(const MixtureState<T>& s, const R& rho, CompositionDerivatives<Wider<T, R>>& out);

}  // namespace tessarel::eos
