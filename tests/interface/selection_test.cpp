// Selection of fluids: arguments, re-selection, marks, failures.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "interface/host.hpp"

namespace {

class Selection : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(host::select({"propane"}, {1}), "No errors"); }
  void TearDown() override { host::session().simplified = false; }
};

TEST_F(Selection, BadArgumentsAreRefusedAndChangeNothing) {
  const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
  const std::string fractions =
      "TESSAREL error: mole fractions must be finite numbers, none negative, and not all zero...";
  const std::string names_missing = "TESSAREL error: names of the components are missing...";
  const std::string null = "TESSAREL error: null pointer argument...";
  const char* names = "ethane          n-butane        ";
  const std::int32_t two = 2;
  const auto refused = [](const std::int32_t* nf, const char* list, std::size_t length, const double* z,
                          const std::string& expected) {
    std::array<char, 120> err{};
    tessarel_setfluid(nf, list, z, err.data(), length, err.size());
    EXPECT_EQ(host::text(err.data(), err.size()), expected);
    EXPECT_EQ(host::parameters().n, 1);
    EXPECT_EQ(host::session().names[0].trimmed(), "propane");
    EXPECT_EQ(host::session().z[0], 1.0);
    EXPECT_FALSE(host::session().simplified);
  };
  const double fine[] = {1, 0};
  for (const std::int32_t& count : {0, 21, std::numeric_limits<std::int32_t>::min()})
    refused(&count, names, 16, fine, "TESSAREL error: number of components must be 1 to 20...");
  refused(nullptr, names, 16, fine, null);
  refused(&two, names, 16, nullptr, null);
  refused(&two, nullptr, 16, fine, names_missing);
  for (const std::size_t none : {std::size_t{0}, static_cast<std::size_t>(-16)})
    refused(&two, names, none, fine, names_missing);
  for (const auto& z : std::vector<std::array<double, 2>>{
           {nan, 0.5}, {0.5, nan}, {inf, 0.5}, {0.5, -inf}, {1.1, -0.1}, {0, 0}, {111, 0}, {110.5, 0.5}})
    refused(&two, names, 16, z.data(), fractions);
}

TEST_F(Selection, OnlyAnotherNameOrNumberReads) {
  using Names = std::vector<std::string>;
  for (const auto& [names, width, sigma] : {std::tuple{Names{"propane"}, 7u, 4.5},
                                            {Names{"propane"}, 100u, 4.5},
                                            {Names{"propane", "ethane"}, 32u, 3.6184},
                                            {Names{"propane", "n-butane"}, 16u, 3.6184},
                                            {Names{"propane"}, 32u, 3.6184}}) {
    host::parameters().sigma[0] = 4.5;  // overwritten by a read
    EXPECT_EQ(host::select(names, std::vector<double>(names.size(), 0.5), width), "No errors");
    EXPECT_EQ(host::parameters().sigma[0], sigma);
    EXPECT_EQ(host::session().z[0], 0.5);
  }
}

TEST_F(Selection, FailedReadIsForgottenBySameNames) {
  const std::string message = host::select({"no such fluid"}, {1});
  EXPECT_EQ(message.substr(0, 34), "Error opening fluid data file of /");
  EXPECT_NE(message.find("no such fluid.saf"), std::string::npos);
  EXPECT_EQ(host::session().z[0], 1.0);
  // What the failure has left is no fluid to calculate with.
  EXPECT_EQ(host::at_tp("TP Lph", 300, 1e6).err, "TESSAREL error: no fluid selected...");
  EXPECT_EQ(host::select({"no such fluid"}, {1}), "No errors");
  EXPECT_NE(host::at_tp("TP Lph", 300, 1e6).err, "TESSAREL error: no fluid selected...");
  EXPECT_EQ(host::select({"no\nsuch\x7f"}, {1}).find_first_of("\n\x7f"), std::string::npos);
}

/// Records and critical points are remembered: by what they are of, so that trial parameters leave no trace.
TEST_F(Selection, EarlierSelectionsLeaveNothing) {
  const std::vector<std::string> mixture{"water", "acetone", "carbon dioxide", "methanol"};
  const auto limits_after = [&](bool fresh) {
    std::int64_t number = 0, first = 0;
    std::array<char, 80> err{};
    tessarel_session_new(&number, err.data(), err.size());
    tessarel_session_use(&number, err.data(), err.size());
    if (!fresh) {
      EXPECT_EQ(host::select({"acetone"}, {1}), "No errors");
      host::session().model.parameters.epsil[0] *= 1.01;
      tessarel::interface::derive(host::session());
      tessarel::interface::analyse(host::session());
      EXPECT_EQ(host::select({"carbon dioxide", "acetone", "methanol"}, {0.2, 0.2, 0.6}), "No errors");
    }
    EXPECT_EQ(host::select(mixture, {0.1, 0.2, 0.3, 0.4}), "No errors");
    const auto limits = host::session().limits;
    tessarel_session_use(&first, err.data(), err.size());
    tessarel_session_free(&number, err.data(), err.size());
    return limits;
  };
  const auto a = limits_after(true), b = limits_after(false);
  EXPECT_EQ(a.tc, b.tc);
  EXPECT_EQ(a.rhoc, b.rhoc);
  for (std::size_t i = 0; i < mixture.size(); ++i) {
    EXPECT_EQ(a.tci[i], b.tci[i]);
    EXPECT_EQ(a.pci[i], b.pci[i]);
  }
}

TEST_F(Selection, RangeIsSharedByTheComponents) {
  EXPECT_EQ(host::session().limits.tlowest, 130);
  EXPECT_EQ(host::session().limits.plowest, 1.0);
  ASSERT_EQ(host::select({"methane", "n-butane", "ethane"}, {0.5, 0.3, 0.2}), "No errors");
  EXPECT_EQ(host::session().limits.tlowest, 149);
  EXPECT_EQ(host::session().limits.thighest, 1000);
  EXPECT_EQ(host::session().limits.plowest, 1000.0);
  EXPECT_EQ(host::session().limits.plowest_bub, 1000.0);
  EXPECT_EQ(host::session().limits.phighest, 5e7);
}

TEST_F(Selection, MarkedFractionSelectsTheSimplifiedModelForGood) {
  const std::vector<double> marked = {111.7, 0.3}, plain = {0.7, 0.3};
  ASSERT_EQ(host::select({"methane", "n-hexane"}, plain), "No errors");
  const double mass = host::molar_mass(plain);
  const double pressure = host::at_tv(300, 1e-4).p;
  ASSERT_EQ(host::select({"methane", "n-hexane"}, marked), "No errors");
  EXPECT_NEAR(host::session().z[0], 0.7, 1e-14);
  EXPECT_NEAR(host::molar_mass(marked), mass, 1e-15);
  const double simplified = host::at_tv(300, 1e-4).p;
  EXPECT_GT(std::abs(simplified / pressure - 1), 1e-3);
  ASSERT_EQ(host::select({"methane", "n-hexane"}, plain), "No errors");
  EXPECT_NEAR(host::at_tv(300, 1e-4).p, simplified, 1e-9 * std::abs(simplified));
  // From now on the mark is taken off whatever array is handed in.
  EXPECT_NEAR(host::molar_mass(plain), mass - 111 * 0.016043, 1e-12);
}

TEST_F(Selection, ZeroFractionAddsNothing) {
  ASSERT_EQ(host::select({"methane", "ethane"}, {0.6, 0.4}), "No errors");
  const host::Call two = host::at_tp("TP Lph", 180, 60e5, 1);
  ASSERT_EQ(host::select({"methane", "n-hexane", "ethane"}, {0.6, 0, 0.4}), "No errors");
  const host::Call three = host::at_tp("TP Lph", 180, 60e5, 1);
  ASSERT_EQ(three.err, "No errors");
  for (double host::Call::*f : {&host::Call::v, &host::Call::h, &host::Call::s, &host::Call::u, &host::Call::cv,
                                &host::Call::dpdv, &host::Call::d2pdtdv, &host::Call::dcvdt})
    EXPECT_NEAR(three.*f, two.*f, 1e-10 * std::abs(two.*f));
}

// Association and polar terms enter by selection alone: pressures of the published model in 40-digit arithmetic.
TEST(SelectedModel, PressureHasEveryTerm) {
  struct {
    const char* name;
    double t, rho, z;  // rho in 1/A3
  } cases[] = {{"water", 450, 0.0002, 9.2971944503655573e-1}, {"acetone", 320, 0.0078, 3.1551850365748627e-2}};
  for (const auto& c : cases) {
    ASSERT_EQ(host::select({c.name}, {1}), "No errors");
    const double expected = 13806622.169047227 * c.z * c.t * c.rho / 1e5;
    EXPECT_NEAR(host::at_tv(c.t, 6.022045e-7 / c.rho).p, expected,
                1e-10 * std::abs(expected) / std::min(1.0, std::abs(c.z)))
        << c.name;
  }
}

TEST(FluidReport, CriticalPointsAreFoundAtSelection) {
  double tc = 0, pc = 0;
  std::array<double, 2> tci{}, pci{};
  const auto report = [&](const double* z) {
    tessarel_fluidinfo(z, nullptr, &tc, &pc, nullptr, nullptr, nullptr, tci.data(), pci.data(), nullptr, nullptr);
  };
  const std::vector<double> z = {0.25, 0.75};
  for (const double first : {0.25, 0.6}) {  // the second time by composition alone
    ASSERT_EQ(host::select({"methane", "propane"}, {first, 1 - first}), "No errors");
    report(z.data());
    EXPECT_NEAR(tc, first * tci[0] + (1 - first) * tci[1], 1e-10);
    EXPECT_NEAR(pc, first * pci[0] + (1 - first) * pci[1], 1e-6);
  }
}

TEST(FluidReport, VersionAndScalars) {
  std::array<std::int32_t, 5> version = {0, 0, 0, 0, 77};
  tessarel_getversion(version.data());
  EXPECT_EQ(version, (std::array<std::int32_t, 5>{2, 5, 1, 20, 77}));
  tessarel_getversion(nullptr);

  const std::vector<double> z = {0.25, 0.75};
  ASSERT_EQ(host::select({"methane", "n-butane"}, z), "No errors");
  double mass = 0, tc = 0, pc = 0, tmin = 0, tmax = 0;
  std::array<double, 3> masses{0, 0, 77}, tci{0, 0, 77}, pci{0, 0, 77}, tmins{0, 0, 77}, tmaxs{0, 0, 77};
  tessarel_fluidinfo(z.data(), &mass, &tc, &pc, &tmin, &tmax, masses.data(), tci.data(), pci.data(), tmins.data(),
                     tmaxs.data());
  EXPECT_NEAR(mass, 0.25 * 0.016043 + 0.75 * 0.058124, 1e-16);
  EXPECT_NEAR(masses[0], 0.016043, 1e-17);
  EXPECT_EQ(tmins, (std::array<double, 3>{91, 149, 77}));
  EXPECT_EQ(tmaxs, (std::array<double, 3>{1000, 1000, 77}));
  EXPECT_EQ(tmin, 149);
  EXPECT_EQ(tmax, 1000);
  for (const auto& list : {masses, tci, pci}) EXPECT_EQ(list[2], 77);
  tessarel_fluidinfo(nullptr, &mass, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(mass, -8888.8);
}

TEST(FluidReport, ParametersOfTheFirstComponent) {
  ASSERT_EQ(host::select({"propane", "methane"}, {0.5, 0.5}), "No errors");
  std::array<char, 60> err{};
  for (const auto& [name, value] : std::vector<std::pair<std::string, double>>{{"omega", 0.1521},
                                                                               {"mseg", 2.002},
                                                                               {"sigma   ", 3.6184},
                                                                               {"epsil", 208.11},
                                                                               {"dipole", 0},
                                                                               {"quapole", 0},
                                                                               {"polariz", 6.29}}) {
    EXPECT_EQ(tessarel_fluidparameter(name.data(), err.data(), name.size(), err.size()), value);
    EXPECT_EQ(host::text(err.data(), err.size()), "No errors");
  }
  for (const std::string name : {"SIGMA", " sigma", "parat  ", ""}) {
    EXPECT_EQ(tessarel_fluidparameter(name.data(), err.data(), name.size(), err.size()), -8888.8);
    EXPECT_EQ(host::text(err.data(), err.size()),
              "TESSAREL parameter " + name.substr(0, name.find_last_not_of(' ') + 1) + " not available...");
  }
  EXPECT_EQ(tessarel_fluidparameter(nullptr, nullptr, 0, 0), -8888.8);
}

TEST(FluidReport, GreetingLine) {
  testing::internal::CaptureStdout();
  tessarel_sub();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "****** Hello from the TESSAREL    ******\n");
}

}  // namespace
