// What calls cost in pressures evaluated, from a fresh selection. A fault in a quick route, a slope or a start shows
// here first: the searches behind it find the same state at many times the cost.
#include <array>
#include <functional>

#include "interface/host.hpp"
#include "tessarel/routines.h"

namespace {

constexpr const char* pairs[] = {"TP", "Tv", "vP", "Ts", "vu", "vh", "vs", "Pu", "Ph", "Ps", "hs", "Pq", "Tq", "vq"};

struct State {
  std::vector<std::string> names;
  std::vector<double> z;
  double t, p, q;  ///< of two phases of a pure fluid at t; else -1
  std::array<int, 14> pressures;
};

const State states[] = {
    {{"propane"}, {1}, 300, 0, 0.3, {0, 8, 24, 20, 494, 494, 486, 35, 35, 35, 174, 24, 8, 162}},
    {{"propane"}, {1}, 300, 50e5, -1, {16, 8, 64, 68, 580, 580, 580, 61, 69, 64, 369, 0, 0, 0}},
    {{"propane"}, {1}, 350, 5e5, -1, {21, 10, 78, 85, 470, 470, 460, 93, 95, 87, 421, 0, 0, 0}},
    {{"propane"}, {1}, 420, 80e5, -1, {9, 0, 73, 107, 430, 430, 430, 65, 66, 65, 410, 0, 0, 0}},
    {{"water"}, {1}, 450, 0, 0.7, {0, 12, 38, 24, 564, 564, 576, 50, 50, 50, 226, 38, 12, 252}},
    {{"water"}, {1}, 350, 10e5, -1, {17, 10, 73, 62, 655, 665, 655, 78, 78, 85, 344, 0, 0, 0}},
    {{"methane", "n-butane"},
     {0.5, 0.5},
     300,
     40e5,
     -1,
     {88, 93, 94, 121, 100, 100, 101, 107, 94, 107, 94, 210, 212, 279}},
    {{"methane", "n-butane"},
     {0.5, 0.5},
     260,
     150e5,
     -1,
     {1788, 1844, 1866, 1862, 1869, 1884, 1860, 1869, 1856, 1856, 1826, 0, 0, 0}},
    {{"methane", "n-butane"},
     {0.5, 0.5},
     380,
     20e5,
     -1,
     {142, 149, 192, 176, 155, 155, 155, 179, 167, 179, 162, 0, 0, 0}},
    {{"carbon dioxide", "n-decane", "methane"},
     {0.6, 0.25, 0.15},
     350,
     100e5,
     -1,
     {131, 138, 142, 154, 143, 131, 143, 151, 139, 151, 149, 271, 282, 428}},
    {{"water", "methanol"},
     {0.4, 0.6},
     350,
     1.2e5,
     -1,
     {135, 595, 1662, 138, 351, 351, 351, 1481, 1188, 1243, 222, 265, 280, 371}},
    {{"acetone", "n-hexane"}, {0.3, 0.7}, 330, 50e5, -1, {71, 77, 162, 119, 86, 84, 84, 106, 95, 106, 91, 0, 0, 0}},
};

long long& count() {
  return host::session().work.statistics.pressures;
}

TEST(Costs, OfEveryPair) {
  for (const State& s : states) {
    ASSERT_EQ(host::select(s.names, s.z), "No errors");
    const double mass = host::molar_mass(s.z);
    host::Call known;
    known.t = s.t, known.p = s.p, known.q = s.q;
    known.run(s.q < 0 ? "TP" : "Tq");
    ASSERT_EQ(known.err, "No errors");
    known = host::to_inputs(known, mass);
    std::array<long long, 14> cost{};
    bool dear = false;
    for (std::size_t k = 0; k < cost.size(); ++k) {
      const char* pair = pairs[k];
      if ((pair[1] == 'q' && !(known.q > 0 && known.q < 1)) || (k == 0 && s.q >= 0)) continue;
      // Another composition in between, so that no call profits from the one before.
      ASSERT_EQ(host::select({"ethane"}, {1}), "No errors");
      ASSERT_EQ(host::select(s.names, s.z), "No errors");
      host::Call call;
      call.*host::field_named(pair[0]) = known.*host::field_named(pair[0]);
      call.*host::field_named(pair[1]) = known.*host::field_named(pair[1]);
      const long long before = count();
      EXPECT_EQ(call.run(pair).err, "No errors") << pair;
      cost[k] = count() - before;
      dear = dear || cost[k] > s.pressures[k] + s.pressures[k] / 20;
    }
    std::string found;
    for (const long long c : cost) found += std::to_string(c) + ", ";
    EXPECT_FALSE(dear) << s.names[0] << " at " << s.t << " K: " << found;
  }
}

/// The trace, a bubble and a dew point on it, a dew point without it, the critical point of a mixture.
TEST(Costs, OfTheEnvelope) {
  const struct {
    std::vector<std::string> names;
    std::vector<double> z;
    double p;
    std::array<int, 5> pressures;
  } mixtures[] = {{{"methane", "n-butane"}, {0.5, 0.5}, 40e5, {1662, 23, 24, 183, 319}},
                  {{"methane", "ethane", "propane", "n-butane", "nitrogen"},
                   {0.85, 0.07, 0.04, 0.02, 0.02},
                   30e5,
                   {1511, 28, 20, 125, 516}},
                  {{"water", "methanol"}, {0.4, 0.6}, 2e5, {2288, 23, 21, 190, 178}},
                  {{"carbon dioxide", "water"}, {0.5, 0.5}, 10e5, {2646, 24, 24, 129, 0}},
                  {{"acetone", "n-hexane"}, {0.3, 0.7}, 2e5, {2756, 21, 21, 130, 65}}};
  for (const auto& m : mixtures) {
    const auto n = static_cast<std::int32_t>(m.names.size());
    std::array<double, 20> fractions{};
    std::array<char, 100> err{};
    double t = 0, p = 0, rho = 0;
    std::int32_t code = 0;
    const std::function<void()> calls[] = {
        [&] { tessarel_calc_phaseenv(&n, m.z.data(), &code); },
        [&] { tessarel_calc_bubble_t(&m.p, fractions.data(), &t, err.data(), err.size()); },
        [&] { tessarel_calc_dew_t(&m.p, fractions.data(), &t, err.data(), err.size()); },
        [&] { host::at_tp("TP", 1.02 * t, m.p); },
        [&] { tessarel_criticalpoint(&t, &p, &rho, err.data(), err.size()); }};
    std::string found;
    bool dear = false;
    ASSERT_EQ(host::select({"ethane"}, {1}), "No errors");
    for (std::size_t k = 0; k < std::size(calls); ++k) {
      // The queries go by the trace before them.
      if (k == 0 || k == 3) {
        ASSERT_EQ(host::select(m.names, m.z), "No errors");
      }
      const long long before = count();
      calls[k]();
      const long long cost = count() - before;
      found += std::to_string(cost) + ", ";
      dear = dear || cost > m.pressures[k] + m.pressures[k] / 20;
    }
    EXPECT_FALSE(dear) << m.names[0] << ": " << found;
  }
}

}  // namespace
