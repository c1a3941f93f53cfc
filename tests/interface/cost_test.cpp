// What calls cost in evaluations of the equation of state: pressures of the density and state searches, phases of the
// flashes. A fault in a quick route, a slope, a start or a tolerance shows here first: what stands behind it finds the
// same state at another cost. data/evaluations.txt holds the counts; a line that differs is printed as it should stand.
#include <gnu/libc-version.h>

#include <functional>
#include <map>
#include <sstream>

#include "interface/host.hpp"
#include "interface/session_boundary.hpp"
#include "interface/state_dispatch.hpp"
#include "tessarel/routines.h"

namespace {

using host::Call;
using Counts = std::vector<long long>;

constexpr const char* pairs[] = {"TP", "Tv", "vP", "Ts", "vu", "vh", "vs", "Pu", "Ph", "Ps", "hs", "Pq", "Tq", "vq"};

long long evaluations() {
  const auto& statistics = host::session().work.statistics;
  return statistics.pressures + statistics.fugacities;
}

long long cost_of(const std::function<void()>& call) {
  const long long before = evaluations();
  call();
  return evaluations() - before;
}

/// The last bit of exp, log and pow decides where a search over a search ends, and is that of one mathematics library
/// on one kind of processor.
bool same_arithmetic() {
  return std::string_view(gnu_get_libc_version()) == "2.36" && __builtin_cpu_supports("fma") != 0;
}

class Costs : public testing::Test {
 protected:
  Costs() {
    std::ifstream file(TEST_DATA_DIR "/evaluations.txt");
    for (std::string line; std::getline(file, line);) {
      const std::size_t colon = line.rfind(':');
      std::istringstream numbers(line.substr(colon + 1));
      for (long long number = 0; numbers >> number;) known_[line.substr(0, colon)].push_back(number);
    }
  }

  void expect(const std::string& title, const Counts& counts) {
    const Counts& known = known_[title];
    bool same = counts.size() == known.size();
    for (std::size_t k = 0; same && k < counts.size(); ++k)
      same = same_arithmetic() ? counts[k] == known[k] : counts[k] <= known[k] + known[k] / 4 + 10;
    std::string line = title + ":";
    for (const long long count : counts) line += ' ' + std::to_string(count);
    EXPECT_TRUE(same) << line;
  }

 private:
  std::map<std::string, Counts> known_;
};

struct State {
  std::vector<std::string> names;
  std::vector<double> z;
  double t, p, q;  ///< of two phases of a pure fluid at t; else -1

  [[nodiscard]] std::string title() const {
    std::ostringstream out;
    for (const std::string& name : names) out << name << ' ';
    out << t << " K " << p / 1e5 << " bar";
    return out.str();
  }
  /// The state in molar SI units, with the fluid selected.
  [[nodiscard]] Call known() const {
    EXPECT_EQ(host::select(names, z), "No errors");
    Call call;
    call.t = t, call.p = p, call.q = q;
    call.run(q < 0 ? "TP" : "Tq");
    EXPECT_EQ(call.err, "No errors");
    return host::to_inputs(call, host::molar_mass(z));
  }
  [[nodiscard]] bool has(const char* pair, const Call& known) const {
    if (pair[1] == 'q') return known.q > 0 && known.q < 1;
    return q < 0 || std::string_view(pair) != "TP";
  }
  /// Another composition in between, so that no call profits from the one before.
  void select_anew() const {
    ASSERT_EQ(host::select({"ethane"}, {1}), "No errors");
    ASSERT_EQ(host::select(names, z), "No errors");
  }
};

const State states[] = {
    {{"propane"}, {1}, 300, 0, 0.3},
    {{"propane"}, {1}, 300, 50e5, -1},
    {{"propane"}, {1}, 350, 5e5, -1},
    {{"propane"}, {1}, 420, 80e5, -1},
    {{"water"}, {1}, 450, 0, 0.7},
    {{"water"}, {1}, 350, 10e5, -1},
    {{"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5, -1},
    {{"methane", "n-butane"}, {0.5, 0.5}, 260, 150e5, -1},
    {{"methane", "n-butane"}, {0.5, 0.5}, 380, 20e5, -1},
    {{"carbon dioxide", "n-decane", "methane"}, {0.6, 0.25, 0.15}, 350, 100e5, -1},
    {{"water", "methanol"}, {0.4, 0.6}, 350, 1.2e5, -1},
    {{"acetone", "n-hexane"}, {0.3, 0.7}, 330, 50e5, -1},
};

TEST_F(Costs, OfEveryPair) {
  for (const State& s : states) {
    const Call known = s.known();
    Counts counts;
    for (const char* pair : pairs) {
      if (!s.has(pair, known)) continue;
      s.select_anew();
      Call call;
      for (const char letter : {pair[0], pair[1]}) call.*host::field_named(letter) = known.*host::field_named(letter);
      counts.push_back(cost_of([&] { call.run(pair); }));
      EXPECT_EQ(call.err, "No errors") << s.title() << ' ' << pair;
    }
    expect(s.title(), counts);
  }
}

/// The searches behind the quick routes come back to the same states.
TEST_F(Costs, OfTheSearches) {
  for (const State& s : states) {
    if (s.names[0] == "water" && s.names.size() == 2) continue;
    const Call known = s.known();
    Counts counts;
    for (const std::string pair : pairs) {
      const bool beyond = pair == "vq" && s.names.size() > 2;  // the search alone does not find it
      if (pair == "TP" || beyond || !s.has(pair.c_str(), known)) continue;
      s.select_anew();
      tessarel::interface::Session& session = host::session();
      tessarel::interface::SessionBoundary boundary(session);
      const auto spec = tessarel::interface::read_input_spec(pair);
      const auto row = tessarel::interface::find_state_row(spec);
      const auto solver = tessarel::interface::solver_of(*row, spec, session.n() == 1);
      Call given;
      given.t = given.p = given.v = given.u = given.h = given.s = given.q = 1;
      for (const char letter : pair) given.*host::field_named(letter) = known.*host::field_named(letter);
      tessarel::solvers::State found{given.t, given.p, given.v, given.u, given.h, given.s, given.q};
      tessarel::solvers::Context context{session.fluid(), boundary, false};
      context.last_pressure += tessarel::flash::most_pressures_of_a_call;
      std::string message;
      std::array<double, 20> x{}, y{};
      counts.push_back(cost_of([&] { message = solver(context, found, x.data(), y.data()).text(); }));
      SCOPED_TRACE(s.title() + ' ' + pair);
      EXPECT_EQ(message, "No errors");
      EXPECT_NEAR(found.t, known.t, 1e-8 * known.t);
      EXPECT_NEAR(found.v, known.v, 1e-7 * known.v);
      EXPECT_NEAR(found.q, known.q, 1e-7);
    }
    expect("searches: " + s.title(), counts);
  }
}

struct Mixture {
  std::vector<std::string> names;
  std::vector<double> z;
  double t, p;
};

// Closed and open lines, retrograde, azeotropic, nearly pure, with two liquids: what the traces and flashes are made
// for.
const Mixture mixtures[] = {
    {{"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5},
    {{"methane", "ethane", "propane", "n-butane", "nitrogen"}, {0.85, 0.07, 0.04, 0.02, 0.02}, 210, 30e5},
    {{"water", "methanol"}, {0.4, 0.6}, 350, 2e5},
    {{"carbon dioxide", "water"}, {0.5, 0.5}, 320, 10e5},
    {{"acetone", "n-hexane"}, {0.3, 0.7}, 340, 2e5},
    {{"ethane", "propane"}, {0.6, 0.4}, 270, 15e5},
    {{"methane", "n-decane"}, {0.9, 0.1}, 350, 100e5},
    {{"nitrogen", "methane", "ethane"}, {0.3, 0.5, 0.2}, 150, 20e5},
    {{"carbon dioxide", "propane"}, {0.6, 0.4}, 290, 30e5},
    {{"methanol", "n-hexane"}, {0.5, 0.5}, 330, 1.5e5},
    {{"water", "n-hexane"}, {0.3, 0.7}, 360, 2e5},
    {{"ethanol", "water"}, {0.3, 0.7}, 360, 1.5e5},
    {{"r32", "r125", "r134a"}, {0.38, 0.18, 0.44}, 290, 10e5},
    {{"hydrogen", "methane"}, {0.3, 0.7}, 150, 30e5},
    {{"benzene", "cyclohexane"}, {0.54, 0.46}, 355, 1.2e5},
    {{"propane", "propylene"}, {0.5, 0.5}, 300, 11e5},
    {{"water", "methane"}, {0.3, 0.7}, 400, 50e5},
    {{"acetone", "chloroform", "methanol"}, {0.4, 0.3, 0.3}, 330, 1.2e5},
    {{"methane", "propane"}, {0.999, 0.001}, 150, 10e5},
    {{"nitrogen", "oxygen", "argon"}, {0.7812, 0.2096, 0.0092}, 90, 2e5},
    {{"n-pentane", "n-decane"}, {0.01, 0.99}, 400, 0.5e5},
    {{"hydrogen sulfide", "carbon dioxide", "methane", "ethane", "n-hexane", "toluene"},
     {0.15, 0.1, 0.5, 0.1, 0.1, 0.05},
     300,
     60e5},
};

/// The trace, bubble and dew points along it, a dew point without it, the critical point of a mixture by both searches.
TEST_F(Costs, OfTheEnvelope) {
  constexpr std::size_t room = 5000;
  std::vector<double> t(room), p(room), x(20 * room), y(20 * room);
  for (const Mixture& m : mixtures) {
    const auto n = static_cast<std::int32_t>(m.names.size());
    std::array<double, 20> fractions{};
    std::array<char, 100> err{};
    double result = 0, rho = 0;
    std::int32_t code = 0, points = 0;
    ASSERT_EQ(host::select(m.names, m.z), "No errors");
    Counts counts{cost_of([&] { tessarel_calc_phaseenv(&n, m.z.data(), &code); })};
    tessarel_phaseenvelope(&points, t.data(), p.data(), x.data(), y.data());
    for (int k = 1; k < 10; ++k) {
      const auto point = static_cast<std::size_t>(points * k / 10);
      const double t_k = t[point] + 273.15, p_k = p[point] * 1e5;
      for (const auto routine : {tessarel_calc_bubble_t, tessarel_calc_dew_t})
        counts.push_back(cost_of([&] { routine(&p_k, fractions.data(), &result, err.data(), err.size()); }));
      for (const auto routine : {tessarel_calc_bubble_p, tessarel_calc_dew_p})
        counts.push_back(cost_of([&] { routine(&t_k, fractions.data(), &result, err.data(), err.size()); }));
    }
    counts.push_back(cost_of([&] { tessarel_criticalpoint(&result, &result, &rho, err.data(), err.size()); }));
    ASSERT_EQ(host::select(m.names, m.z), "No errors");
    counts.push_back(cost_of([&] { host::at_tp("TP", 1.05 * m.t, m.p); }));
    ASSERT_EQ(host::select(m.names, m.z), "No errors");
    counts.push_back(cost_of([&] { tessarel_critmixt_newton(err.data(), err.size()); }));
    expect("envelope: " + m.names[0] + ' ' + m.names[1], counts);
  }
}

/// The flash on a grid of temperatures and pressures, and the general flash back from its states.
TEST_F(Costs, OfFlashes) {
  for (const Mixture& m : mixtures) {
    ASSERT_EQ(host::select(m.names, m.z), "No errors");
    std::array<double, 20> x{}, y{}, x2{}, y2{};
    std::array<char, 100> err{};
    double beta = 0, t2 = 0, p2 = 0, v = 0, u = 0, h = 0, s = 0, q = 0;
    Counts flashes, general, stepwise;
    for (const double t_ratio : {0.9, 1.0, 1.05})
      for (const double p_ratio : {0.05, 0.5, 1.0, 2.0, 6.0}) {
        const double t = t_ratio * m.t, p = p_ratio * m.p;
        flashes.push_back(
            cost_of([&] { tessarel_calc_pt_flash(&t, &p, x.data(), y.data(), &beta, err.data(), err.size()); }));
        stepwise.push_back(
            cost_of([&] { tessarel_calc_flash_michelsen(&t, &p, x.data(), y.data(), &beta, err.data(), err.size()); }));
        stepwise.push_back(
            cost_of([&] { tessarel_calc_flash_velda(&t, &p, x.data(), y.data(), &beta, err.data(), err.size()); }));
        const auto mode = [&](std::int32_t number, double a, double b) {
          general.push_back(cost_of([&] {
            tessarel_calc_ab_flash(&number, &a, &b, &t2, &p2, &v, &u, &h, &s, &q, x2.data(), y2.data(), err.data(),
                                   err.size());
          }));
        };
        if (p_ratio != 1.0) continue;
        mode(1, p, t);
        const std::array<double, 4> known{v, u, h, s};
        mode(2, p, known[2]);
        mode(3, p, known[3]);
        mode(4, t, known[0]);
        mode(5, known[0], known[1]);
      }
    expect("flash: " + m.names[0] + ' ' + m.names[1], flashes);
    expect("steps of the flash: " + m.names[0] + ' ' + m.names[1], stepwise);
    expect("general flash: " + m.names[0] + ' ' + m.names[1], general);
  }
}

/// Saturation and spinodal of pure fluids, from the triple point to the critical point, and densities at both.
TEST_F(Costs, OfPureFluids) {
  for (const char* name : {"methane", "propane", "n-decane", "water", "methanol", "acetone", "hydrogen", "toluene"}) {
    ASSERT_EQ(host::select({name}, {1}), "No errors");
    std::array<char, 100> err{};
    const auto field = [&](auto* routine, double& given, auto&... results) {
      return cost_of([&] { routine(&given, &results..., err.data(), err.size()); });
    };
    Counts counts;
    double a = 0, b = 0;
    for (double reduced : {0.4, 0.6, 0.8, 0.95, 0.99, 0.999, 0.99999, 0.9999998}) {
      double t = reduced * host::session().limits.tc, p = 0, tsat = 0;
      counts.push_back(field(tessarel_calc_psat, t, p));
      counts.push_back(field(tessarel_calc_tsat, p, tsat));
      counts.push_back(field(tessarel_calc_vspin, t, a, b));
      counts.push_back(field(tessarel_calc_pspin, t, a, b));
      counts.push_back(field(tessarel_calc_tspin, p, a, b));
      const double rise = 1.1 * p, fall = 0.9 * p;
      for (const std::int32_t phase : {0, 1, 2})
        for (const double* given : {&rise, &fall})
          counts.push_back(cost_of([&] { tessarel_calc_v(&t, given, &phase, &a, err.data(), err.size()); }));
    }
    expect(std::string("pure: ") + name, counts);
  }
}

}  // namespace
