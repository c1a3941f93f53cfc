// The density of a phase whose state is near one evaluated before: the phase-split calculations evaluate the same phase
// many times while its composition settles.
#pragma once

#include "eos/eta_pressure.hpp"

namespace tessarel::eos {

/// Which density root of a phase is wanted. Where only one exists, that is taken.
enum class Root { lower_gibbs, liquid, vapour };

/// Where the searches of a phase's roots ended when it was last evaluated: at the packing fraction of a root, or at the
/// last point before one that shows that there is none; 0 before the first. They are starts: they change the path of a
/// search and not its result.
struct RootMemory {
  double liquid = 0, vapour = 0;
};

/// Packing fraction of the root of a prepared state at `p` [Pa]. Both roots are looked for; of two the one of lower
/// Gibbs energy a + z - 1 - ln z is taken, the vapour-like one on a tie. The roots are those of the density iteration
/// (density.hpp), which takes over where the search here does not end.
double find_root(const MixtureState<double>& state, double p, Root root, RootMemory& memory);

}  // namespace tessarel::eos
