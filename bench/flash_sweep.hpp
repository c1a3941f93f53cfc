// What the two modes of the flash sweep share.
#pragma once

#include <cmath>
#include <cstdint>
#include <functional>
#include <string>

#include "flash_sweep_judge.hpp"
#include "flash_sweep_mixtures.hpp"

namespace tessarel::sweep {

struct Options {
  int states = 2000;  ///< for each mixture
  std::uint64_t seed = 1;
  int threads = 1;
  int effort = 1;
  std::string mixture;  ///< empty: all
};

/// What the flash says at a state.
struct Flash {
  enum class Kind { one_phase, two_phases, failure } kind = Kind::failure;
  std::string text;
  double beta = 0;
  Vec x, y;
};

/// A mixture, a state of it, and its selection.
struct State {
  std::size_t mixture = 0;
  const Vec* z = nullptr;
  double t = 0, p = 0;
};

Flash flash(const State& state);
/// Writes one line on a wrong or failing state to the standard error.
void report(const State& state, const std::string& what, double tpd = NAN, const Vec& w = {});
std::string trimmed(const char* text, std::size_t size);

/// Calls `judge` for every state of the options, spread over threads with a session each. The calls for one state are
/// made on one thread, with the mixture selected.
void for_each_state(const Options& options, const std::function<void(const State&)>& judge);

/// Returns the number of states that do not come back.
long round_trips(const Options& options);

}  // namespace tessarel::sweep
