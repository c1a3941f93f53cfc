// Critical points: averages of a mixture, what a failure leaves, and the two-level search by its own conditions.
#include "envelope/critical_point.hpp"

#include <cmath>
#include <map>

#include "common/test_fluid.hpp"
#include "envelope/criticality.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "eos/pressure.hpp"

namespace tessarel::testing {
namespace {

using namespace envelope;

/// At the averages of the components the vapour-like volume is that of the averaged pressure.
TEST(CriticalPoint, AveragesOfAMixture) {
  const TestFluid f({"methane", "propane"}, {0.25, 0.75});
  const fluid::Limits& l = f.limits;
  EXPECT_NEAR(eos::calc_p(f.eos, 2, f.z, l.tc, 1 / l.rhoc), l.pc, 1e-6 * l.pc);
  EXPECT_NEAR(l.rhoc, 8468.80384, 1e-4);
  EXPECT_TRUE(l.tcritherm == l.tc && l.tcribar == l.tc && l.pcritherm == l.pc && l.pcribar == l.pc);
  EXPECT_EQ(TestFluid({"propane"}, {1.0}).limits.tcritherm, 0);
}

/// A failed search leaves its start estimates, and the components behind it unknown.
TEST(CriticalPoint, FailureOfAComponent) {
  for (const int failing : {1, 0}) {
    TestFluid f({"methane", "propane"}, {0.5, 0.5});
    const auto k = static_cast<std::size_t>(failing);
    f.session.model.parameters.epsil[k] = std::nan("");
    f.session.update();
    fluid::Limits& l = f.session.limits;
    EXPECT_TRUE(critpoint(f.eos, 2, f.z, l).text().starts_with("Critical point: "));
    EXPECT_EQ(l.tci[k], l.tc);
    EXPECT_DOUBLE_EQ(l.tc, 700 * f.parameters.omega[k] + 150);
    EXPECT_EQ(l.pci[k], 5e6);
    if (failing == 1) {
      EXPECT_NEAR(l.rhoc, TestFluid({"methane"}, {1.0}).limits.rhoc, 1e-9 * l.rhoc);
    } else {
      EXPECT_EQ(l.tci[1], -8888.8);
      EXPECT_EQ(l.rhoc, -8888.8);
    }
  }
}

/// Where the acentric factor gives no start: the slope and the curvature of the isotherm vanish all the same.
TEST(CriticalPoint, StartsByTheDispersionEnergy) {
  for (const char* name : {"xenon", "chlorine"}) {
    const TestFluid f({name}, {1.0});
    const fluid::Limits& l = f.limits;
    EXPECT_EQ(f.session.work.statistics.critical_searches, 0) << name;
    const auto p = [&](double change) { return eos::calc_p(f.eos, 1, f.z, l.tc, (1 + change) / l.rhoc); };
    EXPECT_NEAR(p(1e-3), p(-1e-3), 1e-7 * l.pc) << name;
    EXPECT_NEAR(p(0), l.pc, 1e-9 * l.pc) << name;
  }
}

/// Q against differences of ln f at constant volume, and the cubic form against differences of Q's quadratic form.
TEST(CriticalPoint, ConditionsAgainstDifferences) {
  for (const auto& names :
       {std::vector<std::string>{"methane", "n-butane", "propane"}, {"water", "methanol", "acetone"}}) {
    const TestFluid f(names, {0.5, 0.3, 0.2});
    const double t = 1.1 * f.limits.tc, rho = 0.003, step = 1e-5;
    double q[9];
    criticality_matrix(f.eos, 3, f.z, f.z, t, rho, {q, 3});
    for (std::size_t j = 0; j < 3; ++j) {
      double f_up[3], f_down[3];
      for (const bool up : {true, false}) {
        double x[3], total = 1.0 + (up ? step : -step);
        for (std::size_t i = 0; i < 3; ++i) x[i] = (f.z[i] + (i == j ? total - 1.0 : 0.0)) / total;
        eos::calc_lnfug_rho(f.eos, 3, x, t, rho * total, up ? f_up : f_down);
      }
      for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(q[3 * i + j], std::sqrt(f.z[i] * f.z[j]) * (f_up[i] - f_down[i]) / (2 * step), 1e-7);
    }
    const double u[] = {0.6, -0.48, 0.64}, s = 1e-4;
    double form[2];
    for (const bool up : {true, false}) {
      double moved[3], total = 0;
      for (std::size_t i = 0; i < 3; ++i) total += moved[i] = f.z[i] + (up ? s : -s) * std::sqrt(f.z[i]) * u[i];
      criticality_matrix(f.eos, 3, moved, f.z, t, rho * total, {q, 3});
      form[up ? 1 : 0] = 0;
      for (std::size_t k = 0; k < 9; ++k) form[up ? 1 : 0] += u[k / 3] * q[k] * u[k % 3];
    }
    EXPECT_NEAR(cubic_form(f.eos, 3, f.z, t, rho, u), (form[1] - form[0]) / (2 * s), 1e-5);
  }
}

/// Of sixteen mixtures: by the search along the limit of stability, and by the two-level search.
TEST(CriticalPoint, ReferenceMixtures) {
  std::map<std::string, double> reference;
  for (const auto& row : read_reference("envelopes.csv"))
    reference[row[0] + "," + row[1] + "," + row[2]] = std::strtod(row[3].c_str(), nullptr);
  int mixtures = 0;
  for (const auto& row : read_reference("envelopes.csv")) {
    if (row[2] != "tcrit") continue;
    SCOPED_TRACE(row[0] + " " + row[1]);
    ++mixtures;
    const Mixture mixture(row[0]);
    TestFluid f(mixture.names, mixture.x);
    set_kij(f.session, row[1]);
    f.session.update();
    const double tc = std::strtod(row[3].c_str(), nullptr), pc = reference[row[0] + "," + row[1] + ",pcrit"];
    double t = 0, rho = 0;
    ASSERT_TRUE(critical_point(f.eos, f.n, f.z, f.limits.tc, t, rho));
    EXPECT_NEAR(t, tc, 1e-10 * tc);
    EXPECT_NEAR(eos::calc_p_rho(f.eos, f.n, f.z, t, rho), pc, 1e-10 * pc);
    fluid::Limits l = f.limits;
    EXPECT_EQ(critmixt_newton(f.eos, f.n, f.z, l), no_errors);
    EXPECT_NEAR(l.tc, tc, 1e-10 * tc);
    EXPECT_NEAR(l.pc, pc, 1e-10 * pc);
  }
  EXPECT_EQ(mixtures, 16);
}

/// From a start nearby the two-level iterations find the same point; from far away they end with their codes.
TEST(CriticalPoint, TwoLevelSearch) {
  const TestFluid f({"methane", "n-butane"}, {0.5, 0.5});
  double t = 0, rho = 0;
  ASSERT_TRUE(critical_point(f.eos, 2, f.z, f.limits.tc, t, rho));
  double near_t = 1.02 * t, near_rho = 0.95 * rho, q[4];
  EXPECT_EQ(cubic_newton(f.eos, false, 2, f.z, near_rho, near_t), 0);
  EXPECT_NEAR(near_t, t, 1e-6 * t);
  EXPECT_NEAR(near_rho, rho, 1e-5 * rho);
  near_t = 1.02 * t;
  EXPECT_EQ(det_q_newton(f.eos, false, 2, f.z, rho, near_t, q), 0);
  EXPECT_NEAR(q[0] * q[3] - q[1] * q[2], 0, 1e-5);
  double lost = 300;
  EXPECT_EQ(det_q_newton(f.eos, false, 2, f.z, 1e-6, lost, q), 321);
  // Water and n-hexane split at every temperature where this composition is dense: the line of stability has no end.
  TestFluid open({"water", "n-hexane"}, {0.5, 0.5});
  fluid::Limits l = open.limits;
  const Message message = critmixt_newton(open.eos, 2, open.z, l);
  EXPECT_TRUE(message == no_errors ? l.pc > 0 && l.pc < 1e9 : message.text() == "Critical point calulation failed...");
}

}  // namespace
}  // namespace tessarel::testing
