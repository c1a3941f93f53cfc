// What an evaluation takes besides its state: the model of the selected fluid, the working storage, the choice of the
// simplified model.
#pragma once

#include "eos/terms.hpp"
#include "fluid/parameters.hpp"
#include "support/arena.hpp"

namespace tessarel::eos {

/// A fluid or mixture as the equation of state sees it: constant between selections, read by any number of threads.
struct Model {
  fluid::Parameters parameters;
  Terms::Tables tables;  ///< what follows from the parameters alone

  /// Makes `tables` anew. To be called after any parameter has changed; a new composition needs nothing.
  void update() {
    std::apply([this](auto&... of_term) { (of_term.update(parameters), ...); }, tables);
  }
  template <class Term>
  [[nodiscard]] const typename Term::Tables& of() const {
    return std::get<typename Term::Tables>(tables);
  }
};

/// Work done since the start, for measurements alone.
struct Statistics {
  long long pressures = 0, site_passes = 0;  ///< calls of p_eta12, and passes of the site iterations inside
  long long fugacities = 0;                  ///< phases evaluated by the phase-split calculations
  // Phase splits: those left to the substitutions; of these, to the minimiser; found from the trial phase of a usual
  // test though the usual steps led nowhere; found only by the wider starts; reported though a third phase exists.
  long long substituted_splits = 0, minimisers = 0, rescued_splits = 0, wide_splits = 0, three_phases = 0;
  // General flashes: those left to the search in t and p, and to the bracket behind it.
  long long state_function_searches = 0, bracketed_searches = 0;
  // Envelopes: second runs after a first one that ended without an error but was not the whole line; lines cut where
  // they cross themselves.
  long long added_runs = 0, cut_lines = 0;
  long long interpolated_queries = 0;  ///< bubble and dew points read from the table without convergence
  long long critical_searches = 0;     ///< critical points of pure fluids left to the search on the slope
  long long critical_scans = 0;        ///< critical points of mixtures left to the search along the limit of stability
  // Saturation of pure fluids: left to the search between the spinodals, and to the iteration on equal fugacities.
  long long bounded_saturations = 0, iterated_saturations = 0;
  // State solvers: answers of the quick routes, those left to the bracketed searches, those that a scan found behind
  // these. Phases whose stable density root is not the one that their name would take.
  long long quick_states = 0, searched_states = 0, scanned_states = 0, other_roots = 0;
};

/// Mean segment number of a composition and the coefficients of I1 and I2 at that number, with derivatives by it: what
/// the building-block functions of the dispersion term share from call to call.
struct MeanSegments {
  double mmean = 1.0;
  Powers apar{}, apar_x{}, apar_xx{}, apar_xxx{};
  Powers bpar{}, bpar_x{}, bpar_xx{}, bpar_xxx{};
};

/// What one thread writes on while it evaluates.
struct Workspace {
  Arena arena;
  Statistics statistics;
  MeanSegments means;

  /// Makes room for the evaluations of `model`, so that none of the usual ones allocates.
  void reserve(const Model& model) {
    // The largest demand: a few arrays over the pairs of site classes, of numbers with ten coefficients.
    const std::size_t classes = model.of<Association>().classes.size();
    arena.reserve((1U << 16U) + classes * classes * sizeof(double) * 10 * 8);
  }
};

/// The equation of state of one model, on one workspace: the leading argument of every evaluation.
struct Eos {
  const Model& model;
  Workspace& work;
  bool simplified = false;  ///< the hard-chain form of a mean diameter

  [[nodiscard]] const fluid::Parameters& parameters() const { return model.parameters; }
  [[nodiscard]] Arena& arena() const { return work.arena; }
};

}  // namespace tessarel::eos
