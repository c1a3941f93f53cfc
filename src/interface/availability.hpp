// What this version does not calculate yet. A request that needs it is answered with a text and never with a number
// that lacks a term; this file is the only place that knows.
#pragma once

#include "fluid/fluid_module.hpp"
#include "support/text.hpp"

namespace tessarel::availability {

inline constexpr Message only_single_phase =
    " not available yet: only single-phase states, with \"Lph\" or \"Vph\" in positions 4 to 6...";
inline constexpr Message no_solver = " not available yet: its solver is not part of this version...";

/// The term of the equation of state that the selected fluid needs and that is missing, as a message.
inline Message model_gap() noexcept {
  using fluid_module::record;
  if (record.is_assoc)
    return "TESSAREL error: the association term is not available yet: fluid has association sites...";
  if (record.is_polar) return "TESSAREL error: the polar term is not available yet: fluid has a polar component...";
  return no_errors;
}

/// Marks the results of the fluid analysis, which has no critical point yet.
inline void mark_missing_results() noexcept {
  using fluid_module::not_computed, fluid_module::record;
  record.tc = record.pc = record.rhoc = not_computed;
  record.tcritherm = record.pcritherm = record.tcribar = record.pcribar = not_computed;
  record.tci.fill(not_computed);
  record.pci.fill(not_computed);
}

}  // namespace tessarel::availability
