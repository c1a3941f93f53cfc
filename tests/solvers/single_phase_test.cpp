// The searches of the single-phase solvers where they do not go straight to the root.
#include "solvers/single_phase.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "common/test_fluid.hpp"

namespace tessarel::testing {
namespace {

using namespace solvers;

/// What `solver` says to the state at (t, p) of `start`; the state comes back where it succeeds.
Message found_again(const char* name, Solver* start, Solver* solver, double t, double p) {
  const TestFluid f({name}, {1});
  double v = 0, u = 0, h = 0, s = 0;
  EXPECT_EQ(start(f.fluid(), t, p, v, u, h, s), no_errors);
  double found_t = solver == ts_1ph ? t : 0, found_p = solver == hs_lph || solver == hs_vph ? 0 : p, found_v = v;
  const Message message = solver(f.fluid(), found_t, found_p, found_v, u, h, s);
  if (ok(message)) {
    EXPECT_NEAR(found_t, t, 1e-8 * t) << name;
    EXPECT_NEAR(found_p, p, 1e-6 * p) << name;
  }
  return message;
}

// At the ends of the full range of temperature the density iteration fails or meets the other phase; ranges narrowed up
// to five times hold the root. Pressures are not tried again; the ends are 1000 K and 1000 Pa.
TEST(SinglePhaseSolvers, RangesOfTheSearches) {
  constexpr Message open = "Brent_Root: root not bracketed...";
  struct {
    const char* fluid;
    Solver *start, *solver;
    double t, p;
    Message message;
  } cases[] = {
      {"n-decane", tp_lph, ph_lph, 300, 1e7, no_errors},   {"n-decane", tp_lph, ps_lph, 300, 1e7, no_errors},
      {"n-decane", tp_lph, pu_lph, 300, 1e7, no_errors},   {"n-decane", tp_lph, ph_lph, 500, 5e8, no_errors},
      {"n-decane", tp_lph, ph_lph, 300, 1e3, no_errors},   {"toluene", tp_lph, ph_lph, 300, 1e3, no_errors},
      {"n-decane", tp_vph, ph_vph, 300, 5e8, no_errors},   {"n-decane", tp_vph, pu_vph, 300, 5e8, no_errors},
      {"n-decane", tp_vph, ps_vph, 300, 5e8, no_errors},   {"biphenyl", tp_lph, ph_lph, 200, 5e8, no_errors},
      {"n-eicosane", tp_vph, ph_vph, 190, 1e9, no_errors}, {"toluene", tp_lph, hs_lph, 200, 1e5, open},
      {"propane", tp_lph, hs_lph, 200, 1e5, open},         {"methanol", tp_vph, hs_vph, 200, 1e5, open},
      {"propane", tp_vph, pv_1ph, 990, 1e5, no_errors},    {"propane", tp_vph, pv_1ph, 1010, 1e5, open},
      {"propane", tp_vph, hs_vph, 300, 1100, no_errors},   {"propane", tp_vph, hs_vph, 300, 700, open},
      {"propane", tp_vph, ts_1ph, 300, 1100, no_errors},   {"propane", tp_vph, ts_1ph, 300, 700, open},
  };
  for (const auto& c : cases)
    EXPECT_EQ(found_again(c.fluid, c.start, c.solver, c.t, c.p), c.message) << c.fluid << " " << c.t << " " << c.p;
}

TEST(SinglePhaseSolvers, FailureKeepsTheOutputsButTheUnknown) {
  const TestFluid selected({"propane"}, {1});
  const eos::Fluid f = selected.fluid();
  struct {
    Solver* solver;
    std::size_t unknown;
  } cases[] = {{pv_1ph, 0}, {ts_1ph, 2}, {vu_1ph, 0}, {vh_1ph, 0}, {vs_1ph, 0}, {pu_lph, 0}, {pu_vph, 0},
               {ph_lph, 0}, {ph_vph, 0}, {ps_lph, 0}, {ps_vph, 0}, {hs_lph, 1}, {hs_vph, 1}};
  for (const auto& c : cases) {
    // No state of propane has any two of these.
    std::array<double, 6> state = {300, 1e15, 1e-3, 1e15, 1e15, 1e15};
    std::array<double, 6> expected = state;
    expected[c.unknown] = 0;
    EXPECT_NE(c.solver(f, state[0], state[1], state[2], state[3], state[4], state[5]), "No errors");
    EXPECT_EQ(state, expected);
  }
}

// The ends of a search by entropy are densities: where these cannot be found, that is the failure.
TEST(SinglePhaseSolvers, EntropyAtTemperatureNeedsItsEnds) {
  const TestFluid selected({"propane"}, {1});
  const eos::Fluid f = selected.fluid();
  double t = std::nan(""), p = 1, v = 2, u = 3, h = 4, s = 5;
  EXPECT_EQ(ts_1ph(f, t, p, v, u, h, s), "No convergence calculating density from T and P");
  EXPECT_EQ(v, 2);
}

}  // namespace
}  // namespace tessarel::testing
