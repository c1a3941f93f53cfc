// A state found from temperature and pressure comes back from every other pair of its properties.
#include <gtest/gtest.h>

#include "interface/host.hpp"

namespace {

using host::Call;

constexpr double tolerance = 1e-8;

void expect_close(double value, double expected, double scale, const char* what) {
  EXPECT_LE(std::abs(value - expected), tolerance * scale) << what << " " << value << " instead of " << expected;
}

void expect_same_state(const Call& result, const Call& expected) {
  expect_close(result.t + 273.15, expected.t + 273.15, expected.t + 273.15, "t");
  expect_close(result.p, expected.p, expected.p, "p");
  expect_close(result.v, expected.v, expected.v, "v");
  // Energies have no natural zero: R T of a light fluid is of the order of 100 kJ/kg.
  expect_close(result.u, expected.u, std::max(std::abs(expected.u), 100.0), "u");
  expect_close(result.h, expected.h, std::max(std::abs(expected.h), 100.0), "h");
  expect_close(result.s, expected.s, std::max(std::abs(expected.s), 1.0), "s");
}

/// Keeps of `inputs` what the pair names and spoils the rest.
Call only_pair(const Call& inputs, std::string_view pair) {
  constexpr double junk = 1.2345e30;
  Call kept;
  const auto keep = [&](char name, double Call::*field) {
    kept.*field = pair.find(name) == std::string_view::npos ? junk : inputs.*field;
  };
  keep('T', &Call::t);
  keep('P', &Call::p);
  keep('v', &Call::v);
  keep('u', &Call::u);
  keep('h', &Call::h);
  keep('s', &Call::s);
  return kept;
}

class RoundTrip : public testing::TestWithParam<host::Case> {};

TEST_P(RoundTrip, EveryPairReturnsTheState) {
  const host::Case& fluid = GetParam();
  ASSERT_EQ(host::select(fluid.names, fluid.z), "No errors");
  const double mass = host::molar_mass(fluid.z);
  for (const bool liquid : {true, false}) {
    const std::string suffix = liquid ? " Lph" : " Vph";
    const Call start = liquid ? host::at_tp("TP Lph", fluid.t_liquid, fluid.p_liquid)
                              : host::at_tp("TP Vph", fluid.t_vapour, fluid.p_vapour);
    ASSERT_EQ(start.err, "No errors");
    for (const char* pair : {"TP", "Tv", "vP", "Ts", "vu", "vh", "vs", "Pu", "Ph", "Ps", "hs"}) {
      SCOPED_TRACE(pair + suffix);
      Call call = only_pair(host::to_inputs(start, mass), pair);
      call.run(pair + suffix);
      EXPECT_EQ(call.err, "No errors");
      expect_same_state(call, start);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Fluids, RoundTrip, testing::ValuesIn(host::cases()), host::case_name);

// The state just described is a liquid or a vapour, not twice the same root.
TEST(RoundTrip, BranchesDiffer) {
  ASSERT_EQ(host::select({"propane"}, {1}), "No errors");
  const Call liquid = host::at_tp("TP Lph", 300, 9e5), vapour = host::at_tp("TP Vph", 300, 9e5);
  EXPECT_GT(vapour.v / liquid.v, 10);
  EXPECT_GT(vapour.h - liquid.h, 250);
}

}  // namespace
