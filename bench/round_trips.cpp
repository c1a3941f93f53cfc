// Round trips of the property call: states made from T and P, or of a pure fluid also from T and q, are handed back as
// every pair of properties that describes them, and must return. docs/robustness.md has the counts.
//
// A state counts as returned if all its properties agree to 1e-8, P from a given v with what rounding of v makes of it;
// or if another stable state was returned that has the two properties asked for.
#include "round_trips.hpp"

#include <chrono>
#include <map>

namespace {

constexpr double tolerance = 1e-8;

struct Counts {
  long returned = 0, another = 0, missed = 0;
  double time = 0, slowest = 0;
};

}  // namespace

int main(int argc, char** argv) {
  using namespace round_trips;
  const Options options(argc, argv);
  std::array<std::array<Counts, pair_count>, 2> counts{};
  std::map<std::string, long> causes;
  std::array<long, 2> trips{}, misses{};
  for (const Selection& selection : selections) {
    const Fluid fluid(selection);
    if (!options.only.empty() && fluid.title() != options.only) continue;
    long missed = 0, two = 0;
    const int made = for_each_state(fluid, options.states, [&](const State& known) {
      two += Fluid::two_phases(known) ? 1 : 0;
      for (std::size_t k = 0; k < pair_count; ++k) {
        const std::string pair = pairs[k];
        if (!describes(pair, known)) continue;
        const double a = known.value[index_of(pair[0])], b = known.value[index_of(pair[1])];
        const auto start = std::chrono::steady_clock::now();
        const State found = fluid.call(pair, a, b);
        const double time = std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
        Counts& c = counts[fluid.pure() ? 0 : 1][k];
        c.time += time;
        c.slowest = std::max(c.slowest, time);
        ++trips[fluid.pure() ? 0 : 1];
        const bool v_given = pair.find('v') != std::string::npos;
        const bool good = found.err == "No errors";
        if (good && fluid.deviation(found, known, v_given, tolerance) <= 1.0) {
          ++c.returned;
          continue;
        }
        if (good && fluid.is_another(found, pair, a, b, tolerance)) {
          ++c.another;
          continue;
        }
        ++c.missed;
        ++missed;
        ++misses[fluid.pure() ? 0 : 1];
        ++causes[pair + ": " + (good ? "wrong state" : found.err)];
        if (options.verbose)
          std::printf("%s %s: T = %.15g, P = %.15g, q = %.10g; %s, T = %.15g, P = %.15g, q = %.10g\n",
                      fluid.title().c_str(), pair.c_str(), known.value[0], known.value[1], known.value[6],
                      found.err.c_str(), found.value[0], found.value[1], found.value[6]);
      }
    });
    std::printf("%s: %d states, %ld of two phases, %ld misses\n", fluid.title().c_str(), made, two, missed);
    std::fflush(stdout);
  }
  for (std::size_t kind = 0; kind < 2; ++kind) {
    std::printf(
        "\n| pair, %s | returned | another state | missed | mean us | slowest us |\n|---|---:|---:|---:|---:|---:|\n",
        kind == 0 ? "pure fluids" : "mixtures");
    for (std::size_t k = 0; k < pair_count; ++k) {
      const Counts& c = counts[kind][k];
      const long all = c.returned + c.another + c.missed;
      std::printf("| %s | %ld | %ld | %ld | %.0f | %.0f |\n", pairs[k], c.returned, c.another, c.missed,
                  all > 0 ? c.time / static_cast<double>(all) : 0.0, c.slowest);
    }
  }
  std::printf("\n%ld of %ld missed with pure fluids, %ld of %ld with mixtures.\n", misses[0], trips[0], misses[1],
              trips[1]);
  for (const auto& [cause, number] : causes) std::printf("%ld times %s\n", number, cause.c_str());
  return misses[0] * 2000 <= trips[0] && misses[1] * 1000 <= trips[1] ? 0 : 1;
}
