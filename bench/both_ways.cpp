// Both ways to a state: each pair of known states is solved with the quick routes and by the searches behind them, and
// both must end in the same state. docs/robustness.md has the counts.
//
// Two results agree if all their properties do to 1e-9, P that is not given with what rounding of v makes of it. Where
// they differ, each may be a stable state that has the two properties.
#include <chrono>

#include "interface/session_boundary.hpp"
#include "interface/state_dispatch.hpp"
#include "round_trips.hpp"

namespace {

using namespace round_trips;
using namespace tessarel;

constexpr double tolerance = 1e-9;

struct Counts {
  long agree = 0, nearly = 0, another = 0, differ = 0, quick_alone = 0, search_alone = 0, neither = 0;
  long long most_pressures[2] = {};
  double slowest[2] = {};
};

/// A pair solved by one of the ways.
struct Way {
  State found;
  long long pressures = 0;
  double time = 0;
  [[nodiscard]] bool good() const { return found.err == "No errors"; }

  Way(const std::string& pair, const State& known, bool quick) {
    interface::Session& session = interface::current_session();
    interface::SessionBoundary boundary(session);
    const interface::InputSpec spec = interface::read_input_spec(pair);
    solvers::TwoPhaseSolver* solver = interface::solver_of(*interface::find_state_row(spec), spec, session.n() == 1);
    std::array<double, 7> given;
    given.fill(1.0);
    for (const char letter : pair) given[index_of(letter)] = known.value[index_of(letter)];
    const auto& [t, p, v, u, h, s, q] = given;
    solvers::State state{t, p, v, u, h, s, q};
    const long long before = session.work.statistics.pressures;
    const auto start = std::chrono::steady_clock::now();
    solvers::Context context{session.fluid(), boundary, quick};
    // A search over a search alone takes more than a call allows.
    if (!quick) context.last_pressure += flash::most_pressures_of_a_call;
    const Message message = solver(context, state, found.x.data(), found.y.data());
    time = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    pressures = session.work.statistics.pressures - before;
    found.value = {state.t, state.p, state.v, state.u, state.h, state.s, state.q};
    found.err = message.text();
  }
};

}  // namespace

int main(int argc, char** argv) {
  const Options options(argc, argv);
  std::array<std::array<Counts, pair_count>, 2> counts{};
  long all = 0, unexplained = 0;
  for (const Selection& selection : selections) {
    const Fluid fluid(selection);
    if (!options.only.empty() && fluid.title() != options.only) continue;
    for_each_state(fluid, options.states, [&](const State& known) {
      for (std::size_t k = 0; k < pair_count; ++k) {
        const std::string pair = pairs[k];
        if (!describes(pair, known)) continue;
        const double a = known.value[index_of(pair[0])], b = known.value[index_of(pair[1])];
        const std::array<Way, 2> ways = {Way(pair, known, true), Way(pair, known, false)};
        const auto& [quick, search] = ways;
        ++all;
        Counts& c = counts[fluid.pure() ? 0 : 1][k];
        for (std::size_t i = 0; i < 2; ++i) {
          c.most_pressures[i] = std::max(c.most_pressures[i], ways[i].pressures);
          c.slowest[i] = std::max(c.slowest[i], ways[i].time);
        }
        long Counts::*end = &Counts::differ;
        const double deviation =
            quick.good() && search.good()
                ? fluid.deviation(search.found, quick.found, pair.find('P') == std::string::npos, tolerance)
                : 0.0;
        if (!quick.good() || !search.good())
          end = quick.good() ? &Counts::quick_alone : search.good() ? &Counts::search_alone : &Counts::neither;
        else if (deviation <= 1.0)
          end = &Counts::agree;
        else if (deviation <= 10.0)
          end = &Counts::nearly;
        else if (fluid.is_another(quick.found, pair, a, b, 1e-8) && fluid.is_another(search.found, pair, a, b, 1e-8))
          end = &Counts::another;
        ++(c.*end);
        const bool differ = end == &Counts::differ;
        unexplained += differ ? 1 : 0;
        const bool slow = quick.pressures > options.slow;
        if (slow || (options.verbose && end != &Counts::agree))
          std::printf(
              "%s %s: T = %.15g, P = %.15g, q = %.10g; %.1f ms, %lld; %s, T = %.15g, P = %.15g, q = %.10g; "
              "%.1f ms, %lld; %s, T = %.15g, P = %.15g, q = %.10g; %.2g\n",
              fluid.title().c_str(), pair.c_str(), known.value[0], known.value[1], known.value[6], quick.time,
              quick.pressures, quick.found.err.c_str(), quick.found.value[0], quick.found.value[1],
              quick.found.value[6], search.time, search.pressures, search.found.err.c_str(), search.found.value[0],
              search.found.value[1], search.found.value[6], deviation);
      }
    });
    std::fprintf(stderr, "%s\n", fluid.title().c_str());
  }
  for (std::size_t kind = 0; kind < 2; ++kind) {
    std::printf(
        "\n| pair, %s | to 1e-9 | to 1e-8 | other states | differ | quick alone | search alone | neither | most "
        "pressures, "
        "quick | search | slowest ms, quick | search |\n|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n",
        kind == 0 ? "pure fluids" : "mixtures");
    for (std::size_t k = 0; k < pair_count; ++k) {
      const Counts& c = counts[kind][k];
      std::printf("| %s | %ld | %ld | %ld | %ld | %ld | %ld | %ld | %lld | %lld | %.1f | %.1f |\n", pairs[k], c.agree,
                  c.nearly, c.another, c.differ, c.quick_alone, c.search_alone, c.neither, c.most_pressures[0],
                  c.most_pressures[1], c.slowest[0], c.slowest[1]);
    }
  }
  std::printf("\n%ld pairs, %ld differ.\n", all, unexplained);
  return 0;
}
