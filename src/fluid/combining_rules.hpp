// Flags and pair parameters that follow from the parameters of the components.
#pragma once

#include "fluid/parameters.hpp"

namespace tessarel::fluid {

/// Association: `is_assoc`, and by the combining rules of Wolbach & Sandler (1998, doi:10.1021/ie970781l) the cross
/// volumes and energies. To be called again after association parameters have changed.
void setassocpar(Parameters& p);

/// `is_quapole`, `is_dipole`, `is_quadip`, `is_polar`, and the flags per component.
void set_polar_flags(Parameters& p);

/// The moment that makes a fluid polar; the dipole where there are both.
Moment moment_of(const Parameters& p);

}  // namespace tessarel::fluid
