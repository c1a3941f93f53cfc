// A state found from temperature and pressure comes back from every other pair of its properties.
#include <gtest/gtest.h>

#include "interface/host.hpp"

namespace {

using host::Call;

/// A property, its letter in the specification and what its difference is compared with at least: energies have no
/// natural zero, R T of a light fluid is of the order of 100 kJ/kg.
struct Property {
  char letter;
  double Call::*field;
  double offset, scale;
};
constexpr Property properties[] = {{'T', &Call::t, 273.15, 0}, {'P', &Call::p, 0, 0},   {'v', &Call::v, 0, 0},
                                   {'u', &Call::u, 0, 100},    {'h', &Call::h, 0, 100}, {'s', &Call::s, 0, 1}};

TEST(RoundTrip, EveryPairReturnsTheState) {
  host::at_states(0, [](std::string_view spec, const Call& start, const host::Case&, double mass) {
    const Call inputs = host::to_inputs(start, mass);
    for (const std::string pair : {"TP", "Tv", "vP", "Ts", "vu", "vh", "vs", "Pu", "Ph", "Ps", "hs"}) {
      Call call;
      for (const Property& a : properties)  // what the pair does not name is spoilt
        call.*a.field = pair.find(a.letter) == std::string::npos ? 1.2345e30 : inputs.*a.field;
      EXPECT_EQ(call.run(pair + std::string(spec.substr(2))).err, "No errors") << pair;
      for (const auto& [letter, field, offset, scale] : properties)
        EXPECT_NEAR(call.*field, start.*field, 1e-8 * std::max(std::abs(start.*field + offset), scale))
            << letter << " from " << pair;
    }
  });
}

}  // namespace
