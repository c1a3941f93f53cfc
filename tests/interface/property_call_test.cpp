// The property call seen from a host: its text, its messages, its units.
#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "interface/host.hpp"
#include "tessarel/routines.h"

namespace {

using host::Call;

constexpr double propane_mass = 0.044097;  // kg/mol

class PropertyCall : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(host::select({"propane"}, {1}), "No errors"); }
};

constexpr double Call::*numbers[] = {&Call::t,      &Call::p,      &Call::v,       &Call::u,    &Call::h,
                                     &Call::s,      &Call::q,      &Call::cv,      &Call::dpdt, &Call::dpdv,
                                     &Call::d2pdt2, &Call::d2pdv2, &Call::d2pdtdv, &Call::dcvdt};
Call filled(double value) {
  Call call;
  for (const auto f : numbers) call.*f = value;
  return call;
}

TEST_F(PropertyCall, FourthPositionChoosesTheBranch) {
  const double liquid = host::at_tp("TP Lph", 300, 9e5).v, vapour = host::at_tp("TP Vph", 300, 9e5).v;
  for (const char* spec : {"TP lph", "TP vph", "TP  ph", "TPxVph", "TP Vph and more", "TP_?ph"})
    EXPECT_EQ(host::at_tp(spec, 300, 9e5).v, vapour) << spec;
  for (const char* spec : {"TPxLph", "TP Lphase   "}) EXPECT_EQ(host::at_tp(spec, 300, 9e5).v, liquid) << spec;
}

TEST_F(PropertyCall, Messages) {
  const std::string function = "TESSAREL error: calculation as function of ";
  const std::string bracket = "Brent_Root: root not bracketed...";
  const std::string finite = "TESSAREL error: input values must be finite numbers, temperature and volume positive...";
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const std::string_view spec : {"XX", "tp Vph   ", "", "T", "PT Vph"})
    EXPECT_EQ(filled(300).run(spec, 1).err, function + std::string(spec) + " not available.");
  for (const std::string spec : {"Pq Vph", "Tq Lph", "vq Vph", "Pm Vph", "Tm Lph"})
    EXPECT_EQ(filled(300).run(spec, 1).err,
              "Function '" + spec.substr(0, 2) + "' not available for single phase calculations...");
  struct {
    std::string_view spec;
    double t, p, v, h;
    std::string message;
  } cases[] = {
      {"TP Vph", 0, 1e5, 1, 0, finite},
      {"TP Vph", -5, 1e5, 1, 0, finite},
      {"TP Vph", nan, 1e5, 1, 0, finite},
      {"TP Lph", 300, nan, 1, 0, finite},
      {"Tv Lph", 300, 1e5, 0, 0, finite},
      {"vP Lph", 300, 1e5, -1, 0, finite},
      {"Ph Vph", 300, 1e5, 1, 1 / 0.0, finite},
      {"TP", 0.5, 1e5, 1, 0, "TESSAREL error: temperature must be 1 to 1e5 K and pressure at most 1e12 Pa..."},
      {"TP", 300, -1, 1, 0, "TESSAREL error: temperature and pressure must be positive finite numbers..."},
      {"Tv", 300, 1e5, 2e-5, 0, "TESSAREL error: the volume is below that of closest packing..."},
      {"vP", 300, -1e5, 1e-3, 0, "Pressure less than minimum pressure..."},
      {"Ph", 300, 1e5, 1, 1e12, "Input Ph: h > h(Tmax,P)"},
      {"Ph", 300, 1e5, 1, -1e12, "Input Ph: h < h(Tmin,P)"},
      {"vh", 300, 1e5, 1e-3, 1e12, "Input vh: h > h(Tmax,v)"},
      {"vh", 300, 1e5, 1e-3, -1e12, "Input vh: h < h(Pmin,v)"},
      {"TP Vph", 300, 0, 1, 0, finite},
      {"Ph Vph", 300, 1e5, 1, 1e12, bracket},
      {"Ph Lph", 300, 1e5, 1, -1e12, bracket},
      {"vh Vph", 300, 1e5, 1e-3, 1e12, bracket},
      {"vP Vph", 300, 1e9, 1e-2, 0, bracket},
  };
  for (const auto& c : cases) {
    Call call;
    std::tie(call.t, call.p, call.v, call.h) = std::tie(c.t, c.p, c.v, c.h);
    EXPECT_EQ(call.run(c.spec, 1).err, c.message) << "'" << c.spec << "'";
  }
}

// The temperature bracket of a volume-pressure search does not follow the fluid.
TEST_F(PropertyCall, SearchEndsAt150Kelvin) {
  for (const auto& [t, message] : {std::pair{140.0, "Brent_Root: root not bracketed..."}, {151.0, "No errors"}}) {
    Call call = host::to_inputs(host::at_tp("TP Lph", t, 20e5), propane_mass);
    EXPECT_EQ(call.run("vP Lph").err, message) << t;
  }
}

TEST_F(PropertyCall, FailureConvertsUnitsOfWhatIsThere) {
  Call failed = filled(1e12);  // a failed search zeroes the unknown
  EXPECT_EQ(failed.run("Ph Vph").t, -273.15);
  EXPECT_DOUBLE_EQ(failed.s, 1e9 / propane_mass);
  Call call = filled(2.0);
  call.cv = -8888.8;
  call.run("XX Vph", 1);
  const double f = 1 / propane_mass;
  EXPECT_DOUBLE_EQ(call.t, 2 - 273.15);
  EXPECT_DOUBLE_EQ(call.p, 2e-5);
  EXPECT_DOUBLE_EQ(call.v, 2 * f);
  for (const double value : {call.u, call.h, call.s}) EXPECT_DOUBLE_EQ(value, 2 * f / 1000);
  EXPECT_EQ(call.q, 2);
  EXPECT_EQ(call.cv, -8888.8);
  EXPECT_EQ(call.dpdt, 2);
  EXPECT_EQ(call.d2pdt2, 2);
  EXPECT_DOUBLE_EQ(call.dpdv, 2 / f);
  EXPECT_DOUBLE_EQ(call.d2pdv2, 2 / f / f);
  EXPECT_DOUBLE_EQ(call.d2pdtdv, 2 / f);
  EXPECT_DOUBLE_EQ(call.dcvdt, 2 * f);
}

TEST_F(PropertyCall, PhaseSuffixTakesTheMolarMassFromItsComposition) {
  for (const char* spec : {"XX vap", "XX liq"}) {
    Call call = filled(2.0);
    call.x[0] = spec[3] == 'l' ? 0.5 : 100;
    call.y[0] = spec[3] == 'v' ? 0.5 : 100;
    call.run(spec);
    EXPECT_DOUBLE_EQ(call.v, 2 / (0.5 * propane_mass)) << spec;
  }
}

TEST_F(PropertyCall, OrderSelectsTheOutputs) {
  const double one = 1, t = 300, p = 1e5;
  const std::int32_t n = 1, vapour = 2;
  double lnphi = 0;
  tessarel_calc_lnphi(&n, &one, &t, &p, &vapour, &lnphi);
  for (const std::int32_t order : {-1, 0, 1, 2, 3, 4, 5, std::numeric_limits<std::int32_t>::max()}) {
    Call call = filled(-8888.8);
    call.t = 300;
    call.p = 1e5;
    call.lnphi.fill(77);
    call.run("TP Vph", order);
    EXPECT_EQ(call.err, "No errors");
    const bool second = order == 1 || order == 3, fugacity = order == 2 || order == 3;
    EXPECT_EQ(call.cv != -8888.8, second) << order;
    EXPECT_EQ(call.d2pdt2 != -8888.8, second) << order;
    EXPECT_NEAR(call.lnphi[0], fugacity ? lnphi : 77, 1e-12) << order;
    EXPECT_EQ(call.lnphi[1], 77);
    EXPECT_EQ(call.q, -8888.8);
  }
}

TEST_F(PropertyCall, TextsKeepToTheirFields) {
  // What lies behind the field of the specification does not count.
  Call call = filled(300);
  EXPECT_EQ(call.run({"XX Lphase", 5}).err.substr(0, 49), "TESSAREL error: calculation as function of XX Lp ");
  EXPECT_EQ(filled(300).run({}).t, 300 - 273.15);
  constexpr auto negative = static_cast<std::size_t>(-1);
  struct {
    const char* spec;
    std::size_t size, width;
    const char* expected;
  } cases[] = {{"XX", 2, 5, "TESSA###"},
               {nullptr, 1000, 6, "TESSAR##"},
               {"XX", negative, negative, "########"},
               {"XX", 2, 0, "########"}};
  for (const auto& c : cases) {
    std::string field(8, '#');
    call.raw(c.spec, c.size, 0, &call.v, field.data(), c.width);
    EXPECT_EQ(field, c.expected);
  }
  call.raw("XX", 2, 0, &call.v, nullptr, 6);
}

TEST_F(PropertyCall, NullPointersAndNoFluidWriteNothing) {
  std::array<char, 60> err{};
  const auto message_to = [&](double* v) {
    Call state = filled(7);
    state.raw("TP Vph", 6, 1, v, err.data(), err.size());
    for (const auto f : numbers) EXPECT_EQ(state.*f, 7);
    EXPECT_EQ(state.x[0] + state.y[0] + state.lnphi[0], 0);
    return host::text(err.data(), err.size());
  };
  EXPECT_EQ(message_to(nullptr), "TESSAREL error: null pointer argument...");

  const int n = std::exchange(host::parameters().n, 0);
  double v = 7, mass = 7;
  const double z = 1;
  EXPECT_EQ(message_to(&v), "TESSAREL error: no fluid selected...");
  EXPECT_EQ(v, 7);
  EXPECT_EQ(tessarel_fluidparameter("mseg", err.data(), 4, err.size()), -8888.8);
  EXPECT_EQ(host::text(err.data(), err.size()), "TESSAREL error: no fluid selected...");
  tessarel_fluidinfo(&z, &mass, nullptr, nullptr, nullptr, nullptr, &v, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(mass, -8888.8);
  EXPECT_EQ(v, 7);
  host::parameters().n = n;
}

// Whatever comes in, the call ends, and "No errors" comes with finite numbers only.
void try_extreme_inputs() {
  for (const char* spec :
       {"TP Lph", "TP Vph", "Tv Vph", "vP Lph", "Ts Vph", "vu Vph", "vh Vph", "vs Vph", "Pu Lph", "Ph Vph", "Ps Lph",
        "hs Lph", "hs Vph", "TP",     "TP vap", "TP_new", "Tv",     "Tv_old", "vP",     "Ts",     "vu",     "vh",
        "vs liq", "Pu",     "Ph",     "Ps",     "hs",     "Pq",     "Tq",     "vq",     "Pm",     "Tm"})
    for (const double first : {5e-324, 1e-30, 1e-6, 1.0, 1e6, 1e300, -1e-3, -1e5, 0.0})
      for (const double second : {5e-324, 1e-30, 1e-6, 1.0, 1e6, 1e300, -1e-3, -1e5, 0.0}) {
        Call call = filled(first);
        for (double Call::*f : {&Call::v, &Call::h, &Call::s, &Call::q}) call.*f = second;
        call.run(spec, 3);
        if (call.err != "No errors") continue;
        for (double Call::*f : {&Call::t, &Call::p, &Call::v, &Call::u, &Call::h, &Call::s, &Call::cv, &Call::dpdv})
          EXPECT_TRUE(std::isfinite(call.*f)) << spec << " " << first << " " << second;
      }
}
TEST_F(PropertyCall, ExtremeInputsEndInFiniteNumbersOrAMessage) {
  try_extreme_inputs();
}
TEST(PropertyCallOfMixtures, ExtremeInputsEndInFiniteNumbersOrAMessage) {
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  try_extreme_inputs();
}

// A phase of a state of two phases is the feed of that composition at the same T and P, on the root of its name.
TEST(PropertyCallOfMixtures, PhaseSuffixReducesToThePhase) {
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  const Call whole = host::at_tp("TP", 300, 40e5, 3);
  ASSERT_EQ(whole.err, "No errors");
  ASSERT_TRUE(whole.q > 0 && whole.q < 1);
  const Call vapour = host::at_tp("TP vap", 300, 40e5, 3), liquid = host::at_tp("TP liq", 300, 40e5, 3);
  const double v = (1 - whole.q) * liquid.v * host::molar_mass({whole.x[0], whole.x[1]}) +
                   whole.q * vapour.v * host::molar_mass({whole.y[0], whole.y[1]});
  EXPECT_NEAR(v, whole.v * host::molar_mass({0.5, 0.5}), 1e-14);
  for (std::size_t i = 0; i < 2; ++i)  // equal fugacities
    EXPECT_NEAR(std::log(whole.x[i]) + liquid.lnphi[i], std::log(whole.y[i]) + vapour.lnphi[i], 1e-10);
  for (const auto& [phase, x, root] : {std::tuple{vapour, whole.y, "TP Vph"}, {liquid, whole.x, "TP Lph"}}) {
    ASSERT_EQ(host::select({"methane", "n-butane"}, {x[0], x[1]}), "No errors");
    const Call alone = host::at_tp(root, 300, 40e5, 3);
    for (double Call::*f : {&Call::v, &Call::h, &Call::s, &Call::u, &Call::cv, &Call::dpdv})
      EXPECT_NEAR(alone.*f, phase.*f, 1e-9 * std::abs(phase.*f)) << root;
  }
}

// One phase has the composition of the feed; the phase that is not there gives no infinite volume.
TEST(PropertyCallOfMixtures, SuffixOfAPhaseThatIsNotThere) {
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  const Call whole = host::at_tp("TP", 400, 1e5);
  ASSERT_EQ(whole.q, 1.0);
  for (const char* spec : {"TP vap", "TP liq"}) {
    const Call call = host::at_tp(spec, 400, 1e5, 2);
    EXPECT_EQ(call.err, "No errors") << spec;
    EXPECT_TRUE(std::isfinite(call.v)) << spec;
  }
  EXPECT_EQ(host::at_tp("TP vap", 400, 1e5).v, whole.v);
}

}  // namespace
