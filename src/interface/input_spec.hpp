// The text by which a host names an input pair and a phase, as "Ph Lph" or "TP vap".
#pragma once

#include <cstddef>
#include <string_view>

#include "support/text.hpp"

namespace tessarel::interface {

/// Phase codes of the input text.
enum PhaseCode : int { overall_phase = 0, liquid_phase = 1, vapour_phase = 2, all_phases = 3 };

struct InputSpec {
  std::string_view field;  ///< the text as handed in, with its padding
  char first, second;      ///< the input pair
  int phase = overall_phase;
  bool single_phase = false;
  bool liquid = false;  ///< branch of the single-phase mode
};

/// Positions behind the end of a short field count as blanks. `knows_all`: "all" asks for both phases.
inline InputSpec read_input_spec(std::string_view field, bool knows_all = false) noexcept {
  const auto position = [&](std::size_t i) { return i <= field.size() ? field[i - 1] : ' '; };
  InputSpec spec{field, position(1), position(2)};
  if (trimmed(field).size() < 6) return spec;
  const std::string_view suffix = field.substr(3, 3);
  if (suffix == "vap") {
    spec.phase = vapour_phase;
  } else if (suffix == "liq") {
    spec.phase = liquid_phase;
  } else if (suffix == "all" && knows_all) {
    spec.phase = all_phases;
  } else if (suffix.substr(1) == "ph") {
    spec.single_phase = true;
    spec.liquid = suffix[0] == 'L';
  }
  return spec;
}

}  // namespace tessarel::interface
