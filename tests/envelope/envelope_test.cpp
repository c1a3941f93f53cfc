// The traced envelope against reference extrema and points, and against the conditions it has to meet.
#include <memory>

#include "common/test_fluid.hpp"
#include "envelope/critical_point.hpp"
#include "envelope/queries.hpp"
#include "flash/pt_flash.hpp"
#include "solvers/psat_tsat.hpp"

namespace tessarel::testing {
namespace {

using namespace envelope;

/// A mixture of a reference row and its envelope.
struct Traced {
  Traced(const std::string& components, const std::string& kij)
      : fluid(Mixture(components).names, Mixture(components).x) {
    set_kij(fluid.session, kij);
    fluid.session.update();
    EXPECT_EQ(calc_phaseenv(fluid.fluid(), *table), 0);
  }
  TestFluid fluid;
  std::unique_ptr<Table> table = std::make_unique<Table>();
};

/// Calls `check(traced, quantity, value)` for each row.
template <class Check>
void for_each_row(const char* file, Check&& check) {
  std::unique_ptr<Traced> traced;
  std::string last;
  for (const auto& row : read_reference(file)) {
    if (row[0] + row[1] != last) {
      last = row[0] + row[1];
      traced = std::make_unique<Traced>(row[0], row[1]);
    }
    SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
    check(*traced, row[2], std::strtod(row[3].c_str(), nullptr));
  }
}

TEST(Envelope, ReferenceExtrema) {
  int rows = 0;
  for_each_row("envelopes.csv", [&](const Traced& traced, const std::string& quantity, double value) {
    const Table& t = *traced.table;
    const std::pair<const char*, double> values[] = {{"tcrit", t.tcrtpe},     {"pcrit", t.pcrtpe * 1e5},
                                                     {"tcritherm", t.tmaxpe}, {"pcritherm", t.p_tmaxpe * 1e5},
                                                     {"tcribar", t.t_pmaxpe}, {"pcribar", t.pmaxpe * 1e5}};
    for (const auto& [name, got] : values)
      if (quantity == name) {
        // The cricondentherm of methanol/ethanol lies 5 micro-kelvin above the critical point: its pressure is open.
        const double tolerance = traced.fluid.parameters.compname[0].trimmed() == "methanol" ? 1e-7 : 1e-8;
        EXPECT_NEAR(got, value, tolerance * value);
        ++rows;
      }
  });
  EXPECT_GT(rows, 80);
}

TEST(Envelope, ReferencePoints) {
  int rows = 0, out_of_range = 0;
  for_each_row("envelopes.csv", [&](const Traced& traced, const std::string& quantity, double value) {
    const auto mark = quantity.find('@');
    if (mark == std::string::npos) return;
    const bool by_t = quantity.find("_p@") != std::string::npos;
    const double given = std::strtod(quantity.c_str() + mark + 1, nullptr);
    SaturationPoint point;
    bool interpolated = true;
    const eos::Fluid fluid = traced.fluid.fluid();
    const int code = calc_bubdew(fluid, *traced.table, by_t ? 'T' : 'P', quantity[0] == 'b' ? 'B' : 'D',
                                 by_t ? given : given / 1e5, point, interpolated);
    if (code == 457 || code == 458) {
      // Below the lowest temperature of the fluid.
      EXPECT_LT(by_t ? given : value, fluid.limits.tlowest);
      ++out_of_range;
      return;
    }
    ASSERT_EQ(code, 0);
    EXPECT_FALSE(interpolated);
    EXPECT_NEAR(by_t ? point.result * 1e5 : point.result, value, 1e-9 * value);
    ++rows;
  });
  EXPECT_GT(rows, 200);
  EXPECT_LT(out_of_range, 12);
}

/// Pressures and incipient phases of bubble and dew points computed with 30 digits.
TEST(Envelope, ReferenceEquilibria) {
  int values = 0;
  for (const auto& row : read_reference("equilibria.csv")) {
    if (row[0] != "bubble" && row[0] != "dew") continue;
    SCOPED_TRACE(row[0] + " " + row[1] + " " + row[4]);
    TestFluid f(Mixture(row[1]), row[2], false);
    ASSERT_EQ(critpoint(f.eos, f.n, f.z, f.session.limits), no_errors);
    ASSERT_EQ(solvers::calc_ptrange(f.parameters, f.session.limits), no_errors);
    const auto table = std::make_unique<Table>();
    ASSERT_EQ(calc_phaseenv(f.fluid(), *table), 0);
    SaturationPoint point;
    bool interpolated = true;
    ASSERT_EQ(calc_bubdew(f.fluid(), *table, 'T', row[0] == "bubble" ? 'B' : 'D', std::strtod(row[3].c_str(), nullptr),
                          point, interpolated),
              0);
    const double expected = std::strtod(row[5].c_str(), nullptr);
    const Vector& incipient = row[0] == "bubble" ? point.y : point.x;
    const Vector& feed = row[0] == "bubble" ? point.x : point.y;
    const double value = row[4] == "p" ? point.result * 1e5 : incipient[static_cast<std::size_t>(row[4].back() - '1')];
    EXPECT_NEAR(value, expected, 1e-9 * expected);
    for (std::size_t i = 0; i < 2; ++i) EXPECT_NEAR(feed[i], f.z[i], 1e-12);
    ++values;
  }
  EXPECT_GE(values, 6);
}

/// Where there are two points at a temperature or pressure both lie on the line, and the query gives one of them.
TEST(Envelope, RetrogradePoints) {
  int rows = 0, queried = 0;
  for_each_row("envelopes_retrograde.csv", [&](const Traced& traced, const std::string& quantity, double value) {
    const double given = std::strtod(quantity.c_str() + quantity.find('@') + 1, nullptr);
    const bool by_t = quantity.find("_p_") != std::string::npos;
    const double t = by_t ? given : value, p = (by_t ? value : given) / 1e5;
    const eos::Fluid fluid = traced.fluid.fluid();
    const Table& table = *traced.table;
    const auto n = static_cast<std::size_t>(fluid.n);
    int nearest = 1;
    const auto distance = [&](int j) {
      return std::abs(table.point(j)[n] - std::log(t)) + 0.1 * std::abs(table.point(j)[n + 1] - std::log(p));
    };
    for (int j = 2; j <= table.npnt; ++j)
      if (j != table.idx_cp && distance(j) < distance(nearest)) nearest = j;
    // From the neighbours too: a critical point may lie between the nearest and the one sought.
    double found = 0;
    for (int j = std::max(nearest - 2, 1); j <= std::min(nearest + 2, table.npnt); ++j) {
      Saturation line(fluid.eos, fluid.n, fluid.z, table.beta(j));
      line.selectors = table.selectors[static_cast<std::size_t>(j - 1)];
      Point x = table.point(j);
      if (line.solve(x, fluid.n + 1, std::log(p)) && std::abs(std::exp(x[n]) - t) < std::abs(found - t))
        found = std::exp(x[n]);
    }
    EXPECT_NEAR(found, t, 1e-8 * t);
    SaturationPoint point;
    bool interpolated = true;
    ASSERT_EQ(
        calc_bubdew(fluid, table, by_t ? 'T' : 'P', quantity[0] == 'b' ? 'B' : 'D', by_t ? t : p, point, interpolated),
        0);
    if (std::abs(point.result / (by_t ? p : t) - 1) < 1e-9) ++queried;
    ++rows;
  });
  EXPECT_EQ(rows, 48);
  EXPECT_EQ(queried, 24);
}

/// Nothing changes to first order beside a turning point: differences of queries on both sides of it.
TEST(Envelope, ExtremaAreFlat) {
  for (const char* mixture : {
           "methane:0.5|n-butane:0.5",
           "methane:0.7|ethane:0.1|propane:0.1|n-hexane:0.05|n-octane:0.05",
       }) {
    const Traced traced(mixture, "");
    const Table& t = *traced.table;
    const auto at = [&](char given, char what, double value) {
      SaturationPoint point;
      bool interpolated = true;
      EXPECT_EQ(calc_bubdew(traced.fluid.fluid(), t, given, what, value, point, interpolated), 0) << mixture;
      EXPECT_FALSE(interpolated);
      return point.result;
    };
    const double h = 1e-3;
    const double below = at('P', 'D', t.p_tmaxpe * (1 - h)), above = at('P', 'D', t.p_tmaxpe * (1 + h));
    EXPECT_LT(std::max(below, above), t.tmaxpe) << mixture;
    EXPECT_LT(std::abs(above - below), 0.05 * (t.tmaxpe - std::min(above, below))) << mixture;
    // The side of the cricondenbar that a walk meets first is the one it comes from.
    const bool from_bubble = t.t_pmaxpe < t.tcrtpe;
    const double colder = at('T', from_bubble ? 'B' : 'D', t.t_pmaxpe * (1 - h)),
                 hotter = at('T', from_bubble ? 'B' : 'D', t.t_pmaxpe * (1 + h));
    if (t.t_pmaxpe * (1 + h) > t.tcrtpe && !from_bubble) continue;
    EXPECT_LT(std::max(colder, hotter), t.pmaxpe) << mixture;
    EXPECT_LT(std::abs(hotter - colder), 0.05 * (t.pmaxpe - std::min(hotter, colder))) << mixture;
  }
}

/// Two runs that stopped early, by their pressures, the second from its low end; temperatures rise along both.
TEST(Envelope, RunsThatStoppedEarly) {
  const auto table = std::make_unique<Table>();
  const auto fill = [&](const std::vector<double>& first, const std::vector<double>& second) {
    table->npnt = 0;
    table->extrema_count = 0;
    table->vap_idx = static_cast<int>(first.size()) + 1;
    for (const auto* run : {&first, &second})
      for (std::size_t k = 0; k < run->size(); ++k) {
        Point& x = table->point(++table->npnt) = {};
        x[0] = run == &first ? 9.0 - static_cast<double>(k) : static_cast<double>(k) - 9.0;
        x[1] = static_cast<double>(k) + (run == &first ? 0.0 : 20.0);
        x[2] = (*run)[k];
      }
  };
  const auto pressures = [&] {
    std::vector<double> p;
    for (int j = 1; j <= table->npnt; ++j) p.push_back(table->point(j)[2]);
    return p;
  };
  const struct {
    std::vector<double> first, second, joined;
    bool gap;
  } cases[] = {
      // The pressure rises through the seam and falls behind it.
      {{1, 2, 3, 4}, {0.5, 1.5, 2.5, 3.5, 4.5}, {1, 2, 3, 4, 4.5, 3.5, 2.5, 1.5, 0.5}, true},
      // Past its maximum the first run meets the second, which has begun higher.
      {{1, 2, 4, 3.8}, {0.5, 1.5, 3.5, 4.2, 4.5}, {1, 2, 4, 3.8, 3.5, 1.5, 0.5}, false},
      // A wrinkle at the end of each run; what is left of the second meets the first at its highest pressure.
      {{1, 2, 4, 3, 3.5}, {0.5, 1.5, 2.5, 2.2, 2.4}, {1, 2, 4, 2.5, 1.5, 0.5}, false},
  };
  for (const auto& c : cases) {
    fill(c.first, c.second);
    int ierr = step_too_small;
    postprocphaseenv(1, 1, *table, ierr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(pressures(), c.joined);
    EXPECT_EQ(table->gap, c.gap);
  }
  // The other form of the join: the seam lies between its neighbours in all variables, or among earlier points in one.
  fill({1, 2, 3, 4}, {5, 6, 7});
  for (int j = 1; j <= table->npnt; ++j) table->point(j)[0] = table->point(j)[1] = j;
  removeoverlap2(1, *table);
  EXPECT_TRUE(table->gap);
  table->gap = false;
  fill({1, 2, 4, 3.8}, {4.5, 4.2, 3.5, 1.5, 0.5});
  for (int j = 5; j <= table->npnt; ++j) table->point(j)[1] = 1.5;
  for (const int after : {2, 5, 7}) table->extrema[static_cast<std::size_t>(table->extrema_count++)].after = after;
  removeoverlap2(1, *table);
  EXPECT_EQ(table->extrema[0].after, 2);
  EXPECT_EQ(table->extrema[1].after, -1);  // on the part that went
  EXPECT_EQ(table->extrema[2].after, 5);
  EXPECT_FALSE(table->gap);
  EXPECT_EQ(pressures(), (std::vector<double>{1, 2, 4, 3.8, 3.5, 1.5, 0.5}));
}

/// Where the critical point goes among points of ln K, T and P, and what moves with it.
TEST(Envelope, PlaceOfTheCriticalPoint) {
  const struct {
    const char* what;
    std::vector<double> lnk, t, p;
    int seam;
    double tc, pc;
    int place;  // 0: nowhere
  } cases[] = {
      {"where ln K changes its sign", {2, 1, -1, -2}, {300, 320, 340, 330}, {10, 20, 30, 15}, 5, 330, 25, 3},
      {"at a point of it", {2, 0, -1, -2}, {300, 330, 340, 330}, {10, 25, 30, 15}, 5, 330, 25, 2},
      {"at the seam of two runs, where it keeps it",
       {2, 1, 1, 2},
       {300, 320, 340, 330},
       {10, 20, 30, 15},
       3,
       330,
       25,
       3},
      {"of ln K alone, near in T", {2, 1, -1, -2}, {300, 320, 340, 330}, {10, 20, 30, 15}, 5, 330, 8, 3},
      {"of ln K alone, far from it", {2, 1, -1, -2}, {300, 320, 340, 330}, {10, 20, 30, 15}, 5, 250, 8, 0},
      {"the flatter of two near changes", {2, -1, 1, -2}, {300, 340, 330, 350}, {10, 15, 25, 35}, 5, 335, 8, 4},
      {"the third of three changes, by P", {2, -1, 1, -2}, {300, 340, 330, 350}, {10, 15, 25, 35}, 5, 335, 30, 4},
  };
  for (const auto& c : cases) {
    const auto table = std::make_unique<Table>();
    table->vap_idx = c.seam;
    for (std::size_t k = 0; k < c.lnk.size(); ++k)
      table->point(++table->npnt) = {c.lnk[k], std::log(c.t[k]), std::log(c.p[k])};
    table->extrema_count = 2;
    table->extrema[0].after = 1;
    table->extrema[1].after = 3;
    table->extrema[1].x[0] = -1.5;
    const int code = insertcritpnt(1, c.tc, c.pc, *table);
    EXPECT_EQ(code, c.place == 0 ? no_critical_point : 0) << c.what;
    EXPECT_EQ(table->idx_cp, c.place) << c.what;
    EXPECT_EQ(table->npnt, c.place == 0 ? 4 : 5) << c.what;
    if (c.place == 0) continue;
    EXPECT_NEAR(table->point(c.place)[1], std::log(c.tc), 1e-15) << c.what;
    EXPECT_EQ(table->extrema[0].after, 1) << c.what;
    EXPECT_EQ(table->extrema[1].after, 4) << c.what;
  }
}

/// All ln K vanish at an azeotrope too, which is no critical point: the line's is the one of the search.
TEST(Envelope, AzeotropesAreNotCritical) {
  const std::tuple<const char*, const char*, double> mixtures[] = {{"ethanol", "water", 0.8},
                                                                   {"acetone", "n-hexane", 0.88},
                                                                   {"methanol", "benzene", 0.868},
                                                                   {"methanol", "acetone", 0.252},
                                                                   {"ethane", "carbon dioxide", 0.35}};
  for (const auto& [first, second, share] : mixtures) {
    const TestFluid f({first, second}, {share, 1 - share});
    const auto table = std::make_unique<Table>();
    ASSERT_EQ(calc_phaseenv(f.fluid(), *table), 0) << first;
    double t = 0, rho = 0;
    ASSERT_TRUE(critical_point(f.eos, f.n, f.z, f.limits.tc, t, rho)) << first;
    EXPECT_NEAR(table->tcrtpe, t, 1e-8 * t) << first;
    EXPECT_NEAR(table->rho_crtpe, rho, 1e-6 * rho) << first;
  }
}

/// Next to the cricondenbar the walk from the bubble end meets the bubble side first, and no state of ln K near 0.
TEST(Envelope, QueriesBesideTheMaximum) {
  for (const double share : {0.6, 0.725, 0.75}) {
    const TestFluid f({"ethane", "propane"}, {share, 1 - share});
    const auto table = std::make_unique<Table>();
    ASSERT_EQ(calc_phaseenv(f.fluid(), *table), 0);
    double last = 0;
    for (const double below : {1e-2, 3e-3, 1e-3, 3e-4, 1e-4, 1e-5}) {
      SaturationPoint point;
      bool interpolated = true;
      ASSERT_EQ(calc_bubdew(f.fluid(), *table, 'P', 'B', table->pmaxpe * (1 - below), point, interpolated), 0);
      EXPECT_FALSE(interpolated);
      EXPECT_LT(point.result, table->t_pmaxpe) << share << " " << below;
      EXPECT_GT(point.result, last) << share << " " << below;
      last = point.result;
    }
  }
}

/// Next to the critical point the slope of the line goes on as it did, though the equations decide less and less.
TEST(Envelope, QueriesBesideTheCriticalPoint) {
  const std::pair<std::vector<std::string>, Values> mixtures[] = {
      {{"methane", "n-butane"}, {0.5, 0.5}},
      {{"methane", "ethane", "propane", "n-butane", "nitrogen"}, {0.85, 0.07, 0.04, 0.02, 0.02}}};
  for (const auto& [names, z] : mixtures) {
    const TestFluid f(names, z);
    const auto table = std::make_unique<Table>();
    ASSERT_EQ(calc_phaseenv(f.fluid(), *table), 0);
    for (const bool by_t : {true, false}) {
      if (!by_t && table->t_pmaxpe < table->tcrtpe) continue;  // the bubble line falls to the critical point
      const double given = by_t ? table->tcrtpe : table->pcrtpe, asked = by_t ? table->pcrtpe : table->tcrtpe;
      const auto slope = [&](double share) {
        SaturationPoint point;
        bool interpolated = true;
        const double value = given * (1 - share);
        EXPECT_EQ(calc_bubdew(f.fluid(), *table, by_t ? 'T' : 'P', 'B', value, point, interpolated), 0);
        EXPECT_FALSE(interpolated) << share;
        return (point.result - asked) / (value - given);
      };
      const double near = slope(6e-4), far = slope(1.2e-3);
      for (const double share : {3e-4, 1e-4, 3e-5, 1e-5, 3e-6, 1e-6, 1e-7})
        EXPECT_NEAR(slope(share) / (near + (near - far) * (1 - share / 6e-4)), 1, 1e-4) << share;
    }
  }
}

/// A light gas with some methanol: a bubble line up to a three-phase point, from there the boundary to a second liquid,
/// whose phases have a vapour-like root beside theirs. The flash has two phases below and one above.
TEST(Envelope, BubbleLineThatMeetsASecondLiquid) {
  const struct {
    const char* gas;
    double share;
    std::vector<double> temperatures;
    bool critical;
  } cases[] = {{"ethane", 0.95, {180, 267.3, 282, 310}, false},
               {"carbon dioxide", 0.95, {268.5, 294.2, 310}, false},
               {"ethane", 0.8, {180, 238.2, 305, 311.5}, true}};
  for (const auto& c : cases) {
    const TestFluid f({c.gas, "methanol"}, {c.share, 1 - c.share});
    const auto table = std::make_unique<Table>();
    calc_phaseenv(f.fluid(), *table);
    EXPECT_EQ(table->idx_cp > 0, c.critical) << c.gas;
    for (const double t : c.temperatures) {
      SaturationPoint point;
      bool interpolated = true;
      ASSERT_EQ(calc_bubdew(f.fluid(), *table, 'T', 'B', t, point, interpolated), 0) << c.gas << t;
      EXPECT_EQ(lacks_kind(f.n, *table, 'T', 'B', t), 0) << c.gas << t;
      EXPECT_FALSE(interpolated) << c.gas << t;
      const auto phases = [&](double share) {
        return flash::flmain(f.fluid(), t, point.result * share * 1e5, false, nullptr, nullptr).code == 3 ? 1 : 2;
      };
      EXPECT_EQ(phases(1 - 1e-5), 2) << c.gas << t;
      EXPECT_EQ(phases(1 + 1e-5), 1) << c.gas << t;
    }
  }
}

/// The vapour is the phase of fewer moles in a volume, also where that is the one rich in the heavy component.
TEST(Envelope, VapourFractionOfInvertedDensities) {
  const TestFluid f({"methane", "n-decane"}, {0.5, 0.5});
  for (const double beta : {0.1, 0.4}) {
    SaturationPoint point;
    if (calc_prop_q(f.fluid(), beta, 'T', 300, point) != 0) continue;
    const double balance = (f.z[0] - point.x[0]) / (point.y[0] - point.x[0]);
    EXPECT_NEAR(balance, beta, 1e-9);
  }
}

/// States of a given vapour fraction are those of the flash.
TEST(Envelope, StatesOfAVapourFraction) {
  const TestFluid f({"methane", "n-butane"}, {0.5, 0.5});
  for (const double beta : {0.0, 1e-6, 0.3, 0.9, 1.0})
    for (const char given : {'T', 'P'}) {
      SaturationPoint point;
      ASSERT_EQ(calc_prop_q(f.fluid(), beta, given, given == 'T' ? 290.0 : 35.0, point), 0) << beta << given;
      const double t = given == 'T' ? 290.0 : point.result, p = (given == 'T' ? point.result : 35.0) * 1e5;
      if (beta == 0 || beta == 1) continue;
      const auto flashed = flash::flmain(f.fluid(), t, p, false, nullptr, nullptr);
      ASSERT_EQ(flashed.code, 0);
      EXPECT_NEAR(flashed.beta, beta, 1e-9);
      EXPECT_NEAR(flashed.x[0], point.x[0], 1e-9);
    }
}

}  // namespace
}  // namespace tessarel::testing
