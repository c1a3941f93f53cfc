// The searches of the single-phase solvers where they do not go straight to the root.
#include "solvers/single_phase.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "common/test_fluid.hpp"
#include "solvers/brent.hpp"

namespace tessarel::testing {
namespace {

using namespace solvers;

// At the ends of the full range of temperature the density iteration fails or meets the other phase; the narrowed
// range holds the root.
TEST(SinglePhaseSolvers, NarrowTheRangeAfterAFailure) {
  struct {
    const char* fluid;
    double t, p;
    Message first;  ///< of a search over the full range
  } cases[] = {
      {"n-decane", 300, 1e7, "No convergence calculating density from T and P"},
      {"n-decane", 500, 5e8, "No convergence calculating density from T and P"},
      {"n-decane", 300, 1e3, "Brent_Root: root not bracketed..."},
      {"toluene", 300, 1e3, "Brent_Root: root not bracketed..."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.fluid);
    const TestFluid selected({c.fluid}, {1});
    const eos::Fluid f = selected.fluid();
    double t = c.t, p = c.p, v = 0, u = 0, h = 0, s = 0;
    ASSERT_EQ(tp_lph(f, t, p, v, u, h, s), "No errors");
    double vars[6] = {0, p, 0, 0, h, 0};
    const std::int32_t ptr[2] = {kT, kH};
    Message err;
    brent_root_1ph([&](auto&... state) { return tp_lph(f, state...); }, 1000, 150, vars, ptr, err);
    EXPECT_EQ(err, c.first);
    for (Solver* solver : {ph_lph, ps_lph, pu_lph}) {
      double found_t = 0, found_p = p, found_v = 0, found_u = u, found_h = h, found_s = s;
      EXPECT_EQ(solver(f, found_t, found_p, found_v, found_u, found_h, found_s), "No errors");
      EXPECT_NEAR(found_t, t, 1e-8 * t);
      EXPECT_NEAR(found_v, v, 1e-8 * v);
    }
  }
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
