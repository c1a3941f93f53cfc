// Derivatives of a by composition: the parts of the terms (moments.hpp), contracted with the derivatives of the
// moments.
//
// The scalar S may carry derivatives by t or rho, which gives a_tx, z_x = rho a_rhox and their like.
#pragma once

#include "eos/residual.hpp"

namespace tessarel::eos {

/// a and its composition derivatives up to order K at a prepared mixture state (ipure = 0).
template <int K, class T, class R>
void composition_derivatives(const MixtureState<T>& s, const R& rho, CompositionDerivatives<Wider<T, R>>& out);

}  // namespace tessarel::eos
