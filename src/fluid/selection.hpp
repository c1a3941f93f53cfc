// Flags and mixture parameters that follow from the parameters of the components, module fluid_module.
#pragma once

namespace tessarel::fluid_module {

/// Association: `is_assoc`, and by the combining rules of Wolbach & Sandler (1998) the cross volumes and energies.
/// To be called again after association parameters have changed.
void setassocpar();

/// `is_quapole`, `is_dipole`, `is_quadip`, `is_polar`, and the flags per component.
void set_polar_flags();

/// `del`: 1 on the diagonal up to `n`, 0 elsewhere.
void set_kronecker_delta();

}  // namespace tessarel::fluid_module
