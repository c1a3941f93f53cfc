// Cost of the calls, to be read as ratios within one run: `yardstick` is the unit (yardstick.hpp).
// tools/bench_report.py prints the table of docs/performance.md from the JSON output.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "envelope/critical_point.hpp"
#include "envelope/queries.hpp"
#include "eos/caloric.hpp"
#include "eos/compressibility.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "eos/helmholtz.hpp"
#include "eos/pressure.hpp"
#include "flash/general_flash.hpp"
#include "flash/sensitivity.hpp"
#include "interface/session.hpp"
#include "solvers/psat_tsat.hpp"
#include "tessarel/tessarel.h"
#include "yardstick.hpp"

namespace tessarel::bench {
namespace {

using namespace eos;
using interface::Session;
using State = ::benchmark::State;

/// The session that the selections below work on.
Session& session() {
  return interface::current_session();
}

const std::vector<std::string> hydrocarbons = {"methane",    "ethane",      "propane",      "n-butane",    "n-pentane",
                                               "n-hexane",   "n-heptane",   "n-octane",     "n-nonane",    "n-decane",
                                               "isobutane",  "isopentane",  "cyclopentane", "cyclohexane", "n-undecane",
                                               "n-dodecane", "ethylene np", "propylene",    "toluene",     "argon"};

void select(const std::vector<std::string>& names, const std::vector<double>& x) {
  std::string field;
  for (std::string name : names) {
    name.resize(32, ' ');
    field += name;
  }
  const auto n = static_cast<std::int32_t>(names.size());
  std::string err(80, ' ');
  tessarel_setfluid(&n, field.data(), x.data(), err.data(), 32, err.size());
  if (err.compare(0, 9, "No errors") != 0) throw std::runtime_error(err);
}

/// The mixtures of the tables: the first n hydrocarbons; 0.4/0.3/0.2/0.1 for four, equal fractions otherwise.
std::vector<double> select_hydrocarbons(int n) {
  const auto size = static_cast<std::size_t>(n);
  std::vector<double> x(size, 1.0 / n);
  if (n == 4) x = {0.4, 0.3, 0.2, 0.1};
  select({hydrocarbons.begin(), hydrocarbons.begin() + n}, x);
  return x;
}

constexpr double liquid_t = 250, liquid_p = 1e7, vapour_t = 300, vapour_p = 1e6;
constexpr double small_step = 1e-9;  // the input changes with every call, so that nothing can be hoisted

/// Counts the pressures evaluated, and the passes of the site iterations, per call of the timed loop.
class Counted {
 public:
  explicit Counted(State& state) : state_(state), before_(session().work.statistics) {}
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ~Counted() {
    const auto calls = static_cast<double>(state_.iterations());
    state_.counters["pressures"] = static_cast<double>(session().work.statistics.pressures - before_.pressures) / calls;
    state_.counters["site_passes"] =
        static_cast<double>(session().work.statistics.site_passes - before_.site_passes) / calls;
    state_.counters["fugacities"] =
        static_cast<double>(session().work.statistics.fugacities - before_.fugacities) / calls;
  }

 private:
  State& state_;
  Statistics before_;
};

void unit(State& state) {
  const double x[] = {0.4, 0.3, 0.2, 0.1};
  double t = 300;
  for (auto _ : state) benchmark::DoNotOptimize(yardstick(t += small_step, 0.006, x));
}
BENCHMARK(unit)->Name("yardstick");

/// Registers `call(eos, n, x, t)` at a density of 0.01 for the hydrocarbons.
template <class Call>
void stack(const std::string& name, Call call, std::initializer_list<int> counts) {
  for (const int n : counts) {
    benchmark::RegisterBenchmark((name + "/" + std::to_string(n)).c_str(), [n, call](State& state) {
      const auto x = select_hydrocarbons(n);
      const Eos eos = session().eos();
      double t = liquid_t;
      for (auto _ : state) call(eos, n, x.data(), t += small_step);
    });
  }
}

template <class F>
auto scalar(F f) {
  return [f](const Eos& eos, int n, const double* x, double t) { benchmark::DoNotOptimize(f(eos, n, x, t, 0.01)); };
}
template <class F>
auto mixture_z(F f) {
  return [f](const Eos& eos, int n, const double* x, double t) { benchmark::DoNotOptimize(f(eos, n, x, 0, t, 0.01)); };
}
template <class F>
auto array(F f) {
  return [f](const Eos& eos, int n, const double* x, double t) {
    static double out[8000];
    f(eos, n, x, t, 0.01, out);
    benchmark::DoNotOptimize(out[0]);
  };
}

void register_stack() {
  const auto all = {1, 2, 4, 10, 20};
  const auto two = {4, 20};
  stack("calc_a", scalar(calc_a), all);
  stack("calc_z", mixture_z(calc_z), all);
  stack("calc_da_dt", scalar(calc_da_dt), two);
  stack("calc_d2a_dt2", scalar(calc_d2a_dt2), two);
  stack("calc_d3a_dt3", scalar(calc_d3a_dt3), two);
  stack("calc_da_drho", scalar(calc_da_drho), two);
  stack("calc_d2a_drho2", scalar(calc_d2a_drho2), two);
  stack("calc_d3a_drho3", scalar(calc_d3a_drho3), two);
  stack("calc_d4a_drho4", scalar(calc_d4a_drho4), two);
  stack("calc_da_dx", array(calc_da_dx), two);
  stack("calc_d2a_dxdx", array(calc_d2a_dxdx), two);
  stack("calc_d3a_dxdxdx", array(calc_d3a_dxdxdx), two);
  stack("calc_d2a_dtdx", array(calc_d2a_dtdx), two);
  stack("calc_d2a_drhodx", array(calc_d2a_drhodx), two);
  stack("calc_da_dn", array(calc_da_dn), two);
  stack("calc_d2a_dndn", array(calc_d2a_dndn), two);
  stack("calc_d3a_dndndn", array(calc_d3a_dndndn), two);
  stack("calc_dz_dt", scalar(calc_dz_dt), two);
  stack("calc_d2z_dt2", scalar(calc_d2z_dt2), two);
  stack("calc_dz_drho", mixture_z(calc_dz_drho), two);
  stack("calc_d2z_drho2", mixture_z(calc_d2z_drho2), two);
  stack("calc_d3z_drho3", mixture_z(calc_d3z_drho3), two);
  stack("calc_d2z_dtdrho", scalar(calc_d2z_dtdrho), two);
  stack("calc_dz_dx", array(calc_dz_dx), two);
  stack("calc_d2z_dxdx", array(calc_d2z_dxdx), two);
  stack("calc_dz_dn", array(calc_dz_dn), two);
  stack("calc_d2z_dndn", array(calc_d2z_dndn), two);
  stack("calc_dp_drho", scalar(calc_dp_drho), two);
  stack("calc_d2p_dndn", array(calc_d2p_dndn), two);
  stack("calc_cv", scalar(calc_cv), two);
}

void eta_pass(State& state) {
  const auto x = select_hydrocarbons(static_cast<int>(state.range(0)));
  const Eos eos = session().eos();
  const Arena::Frame frame(eos.arena());
  MixtureState<double> prepared;
  prepare(eos, prepared, session().n(), x.data(), 0, liquid_t);
  double eta = 0.4;
  for (auto _ : state) benchmark::DoNotOptimize(p_eta12(prepared, eta += 1e-12));
}
BENCHMARK(eta_pass)->Name("calc_p_eta12 pass")->Arg(1)->Arg(4)->Arg(20);

void density(State& state) {
  const auto x = select_hydrocarbons(static_cast<int>(state.range(0)));
  const Fluid f = session().fluid();
  const bool liquid = state.range(1) == 1;
  double t = liquid ? liquid_t : vapour_t, v = 0;
  const Counted counted(state);
  for (auto _ : state) {
    calc_v(f.eos, f.n, f.z, t += small_step, liquid ? liquid_p : vapour_p, liquid ? 1 : 2, v);
    benchmark::DoNotOptimize(v);
  }
}
BENCHMARK(density)->Name("calc_v")->ArgsProduct({{1, 2, 4, 10, 20}, {1, 2}});

void caloric(State& state) {
  select_hydrocarbons(static_cast<int>(state.range(0)));
  const Fluid f = session().fluid();
  double t = liquid_t, v = 0, h = 0, s = 0, u = 0;
  calc_v(f.eos, f.n, f.z, t, liquid_p, 1, v);
  for (auto _ : state) {
    calc_hsu(f.eos, f.n, f.z, t += small_step, liquid_p, v, h, s, u);
    benchmark::DoNotOptimize(h + s + u);
  }
}
BENCHMARK(caloric)->Name("calc_hsu")->Arg(1)->Arg(2)->Arg(4)->Arg(10)->Arg(20);

struct FugacityCase {
  std::string name;
  std::vector<std::string> fluids;  ///< empty: the first `n` hydrocarbons
  int n;
  double t, p;
  int phase;
};

void register_fugacity() {
  const std::vector<FugacityCase> cases = {
      {"hydrocarbons 2 vapour", {}, 2, vapour_t, vapour_p, 2},
      {"hydrocarbons 4 vapour", {}, 4, vapour_t, vapour_p, 2},
      {"hydrocarbons 10 vapour", {}, 10, vapour_t, vapour_p, 2},
      {"hydrocarbons 20 vapour", {}, 20, vapour_t, vapour_p, 2},
      {"hydrocarbons 4 liquid", {}, 4, liquid_t, liquid_p, 1},
      {"water methanol liquid", {"water", "methanol"}, 2, 300, 1e6, 1},
      {"water methanol vapour", {"water", "methanol"}, 2, 400, 1e5, 2},
      {"ethanol water acetone n-hexane liquid", {"ethanol", "water", "acetone", "n-hexane"}, 4, 300, 1e6, 1},
      {"acetone dimethyl ether liquid", {"acetone", "dimethyl ether"}, 2, 300, 1e6, 1},
  };
  for (const auto& c : cases) {
    const auto prepare = [c] {
      if (c.fluids.empty()) return select_hydrocarbons(c.n);
      std::vector<double> x(c.fluids.size(), 1.0 / static_cast<double>(c.fluids.size()));
      select(c.fluids, x);
      return x;
    };
    benchmark::RegisterBenchmark(("calc_lnphi/" + c.name).c_str(), [c, prepare](State& state) {
      const auto x = prepare();
      const Eos eos = session().eos();
      double t = c.t, lnphi[20];
      const Counted counted(state);
      for (auto _ : state) {
        calc_lnphi(eos, c.n, x.data(), t += small_step, c.p, c.phase, lnphi);
        benchmark::DoNotOptimize(lnphi[0]);
      }
    });
    benchmark::RegisterBenchmark(("calc_lnphi_n/" + c.name).c_str(), [c, prepare](State& state) {
      const auto x = prepare();
      const Eos eos = session().eos();
      double t = c.t, lnphi[20], dn[400];
      for (auto _ : state) {
        calc_lnphi_n(eos, c.n, x.data(), t += small_step, c.p, c.phase, lnphi, dn);
        benchmark::DoNotOptimize(dn[0]);
      }
    });
    benchmark::RegisterBenchmark(("calc_lnphi_tpn/" + c.name).c_str(), [c, prepare](State& state) {
      const auto x = prepare();
      const Eos eos = session().eos();
      double t = c.t, lnphi[20], dt[20], dp[20], dn[400];
      for (auto _ : state) {
        calc_lnphi_tpn(eos, c.n, x.data(), t += small_step, c.p, c.phase, lnphi, dt, dp, dn);
        benchmark::DoNotOptimize(dn[0]);
      }
    });
  }
}

void property_call(State& state) {
  select_hydrocarbons(static_cast<int>(state.range(0)));
  const std::int32_t order = 1;
  double x[20], y[20], lnphi[20], cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt, v, u, h, s, q;
  char err[80];
  double start = liquid_t;
  for (auto _ : state) {
    double t = start += small_step, p = liquid_p;
    tessarel_tmdprop("TP Lph", &order, &t, &p, &v, &u, &h, &s, &q, &cv, &dpdt, &dpdv, &d2pdt2, &d2pdv2, &d2pdtdv,
                     &dcvdt, x, y, lnphi, err, 6, sizeof err);
    benchmark::DoNotOptimize(h);
  }
}
BENCHMARK(property_call)->Name("tessarel_tmdprop TP Lph, order 1")->Arg(1)->Arg(2)->Arg(4)->Arg(10)->Arg(20);

void selection(State& state) {
  const int n = static_cast<int>(state.range(0));
  const bool repeated = state.range(1) == 1;
  const std::vector<double> x = select_hydrocarbons(n);
  const std::vector<std::string> names{hydrocarbons.begin(), hydrocarbons.begin() + n};
  std::vector<std::string> others = names;
  others[0] = "nitrogen";
  for (auto _ : state) {
    if (!repeated) {
      state.PauseTiming();
      select(others, x);
      state.ResumeTiming();
    }
    select(names, x);
  }
}
BENCHMARK(selection)->Name("tessarel_setfluid, new(0) or repeated(1)")->ArgsProduct({{1, 2, 4, 10, 20}, {0, 1}});

void saturation(State& state, const std::string& fluid, double fraction) {
  select({fluid}, {1.0});
  const Fluid f = session().fluid();
  double t = fraction < 1 ? fraction * f.limits.tc : fraction, psat = 0;
  const Counted counted(state);
  for (auto _ : state) {
    solvers::calc_psat(f, t += small_step, psat);
    benchmark::DoNotOptimize(psat);
  }
}

void register_saturation() {
  for (const auto* fluid : {"propane", "methanol"})
    for (const double fraction : {0.5, 0.7, 0.9})
      benchmark::RegisterBenchmark(
          (std::string("calc_psat/") + fluid + " at " + std::to_string(fraction).substr(0, 3) + " tc").c_str(),
          [fluid, fraction](State& state) { saturation(state, fluid, fraction); });
  benchmark::RegisterBenchmark("calc_psat/propane at 300 K", [](State& state) { saturation(state, "propane", 300); });
  for (const auto* fluid : {"propane", "methanol"})
    benchmark::RegisterBenchmark((std::string("calc_tsat/") + fluid + " at 10 bar").c_str(), [fluid](State& state) {
      select({fluid}, {1.0});
      const Fluid f = session().fluid();
      double p = 1e6, tsat = 0;
      const Counted counted(state);
      for (auto _ : state) {
        solvers::calc_tsat(f, p += small_step, tsat);
        benchmark::DoNotOptimize(tsat);
      }
    });
  benchmark::RegisterBenchmark("critpoint/propane", [](State& state) {
    select({"propane"}, {1.0});
    const Fluid f = session().fluid();
    fluid::Limits limits;
    for (auto _ : state) envelope::critpoint(f.eos, f.n, f.z, limits);
  });
}

/// The flashes, from nothing but the feed; k_ij of 0.
struct FlashCase {
  const char* name;
  std::vector<std::string> fluids;
  std::vector<double> z;
  double t, p;
};
const std::vector<FlashCase>& flash_cases() {
  static const std::vector<std::string> gas = {"methane", "ethane", "propane", "n-butane", "nitrogen np"};
  static const std::vector<double> fractions = {0.85, 0.07, 0.04, 0.02, 0.02};
  static const std::vector<FlashCase> list = {
      {"methane/n-butane 300 K 40 bar", {"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5},
      {"natural gas 200 K 30 bar", gas, fractions, 200, 30e5},
      {"natural gas 280 K 30 bar, one phase", gas, fractions, 280, 30e5},
      {"ten hydrocarbons 350 K 20 bar",
       {hydrocarbons.begin(), hydrocarbons.begin() + 10},
       std::vector<double>(10, 0.1),
       350,
       20e5},
      {"water/methanol 346 K 1 bar", {"water", "methanol"}, {0.5, 0.5}, 346, 1e5},
      {"water/methanol 300 K 10 bar, one phase", {"water", "methanol"}, {0.5, 0.5}, 300, 10e5},
  };
  return list;
}

Fluid select_case(const FlashCase& c) {
  select(c.fluids, c.z);
  session().model.parameters.k_ij = {};
  session().update();
  return session().fluid();
}

void register_flash() {
  for (const FlashCase& c : flash_cases()) {
    benchmark::RegisterBenchmark((std::string("calc_pt_flash/") + c.name).c_str(), [&c](State& state) {
      const Fluid f = select_case(c);
      double t = c.t;
      const Counted counted(state);
      for (auto _ : state)
        benchmark::DoNotOptimize(flash::flmain(f, t += small_step, c.p, false, nullptr, nullptr).beta);
    });
    for (int mode = 2; mode <= 5; ++mode)
      benchmark::RegisterBenchmark(
          ("calc_ab_flash mode " + std::to_string(mode) + "/" + c.name).c_str(), [&c, mode](State& state) {
            const Fluid f = select_case(c);
            flash::AbResult known, result;
            flash::calc_ab_flash(f, 1, c.p, c.t, known);
            double a = mode == 4 ? c.t : mode == 5 ? known.v : c.p;
            const double b = mode == 2 ? known.h : mode == 3 ? known.s : mode == 4 ? known.v : known.u;
            const Counted counted(state);
            for (auto _ : state) {
              flash::calc_ab_flash(f, mode, a *= 1.0 + 1e-12, b, result);
              benchmark::DoNotOptimize(result.t);
            }
          });
    benchmark::RegisterBenchmark((std::string("tessarel_flash_sensitivity/") + c.name).c_str(), [&c](State& state) {
      const Fluid f = select_case(c);
      flash::Sensitivity result;
      double t = c.t;
      const Counted counted(state);
      for (auto _ : state) flash::flash_sensitivity(f, t += small_step, c.p, result);
    });
  }
}

/// A trace, and a query in the middle of each branch of the traced table.
void register_envelope() {
  for (const std::size_t index : {std::size_t{0}, std::size_t{1}, std::size_t{4}}) {
    const FlashCase& c = flash_cases()[index];
    const std::string name(c.name, std::string_view(c.name).find(" 3") != std::string_view::npos
                                       ? std::string_view(c.name).find(" 3")
                                       : std::string_view(c.name).find(" 2"));
    benchmark::RegisterBenchmark(("calc_phaseenv/" + name).c_str(), [&c](State& state) {
      const Fluid f = select_case(c);
      const auto table = std::make_unique<envelope::Table>();
      const Counted counted(state);
      for (auto _ : state) benchmark::DoNotOptimize(envelope::calc_phaseenv(f, *table));
    });
    for (const char what : {'B', 'D'})
      benchmark::RegisterBenchmark(("calc_bubdew P " + std::string(1, what) + "/" + name).c_str(), [&c, what](
                                                                                                       State& state) {
        const Fluid f = select_case(c);
        const auto table = std::make_unique<envelope::Table>();
        envelope::calc_phaseenv(f, *table);
        const envelope::Minima ends = envelope::getminima(f.n, *table);
        double p = std::sqrt(std::max(what == 'B' ? ends.pbub : ends.pdew, 0.1) * table->pmaxpe);
        envelope::SaturationPoint point;
        bool interpolated = false;
        const Counted counted(state);
        for (auto _ : state)
          benchmark::DoNotOptimize(envelope::calc_bubdew(f, *table, 'P', what, p *= 1.0 + 1e-10, point, interpolated));
      });
  }
}

/// One property call on two of the values of a state; the first changes with every call.
struct HostCall {
  double t = 0, p = 0, v = 0, u = 0, h = 0, s = 0, q = 1;
  double cv = 0, dpdt = 0, dpdv = 0, d2pdt2 = 0, d2pdv2 = 0, d2pdtdv = 0, dcvdt = 0;
  double x[20] = {}, y[20] = {}, lnphi[20] = {};
  char err[80] = {};

  void run(const std::string& pair, std::int32_t order = 0) {
    tessarel_tmdprop(pair.data(), &order, &t, &p, &v, &u, &h, &s, &q, &cv, &dpdt, &dpdv, &d2pdt2, &d2pdv2, &d2pdtdv,
                     &dcvdt, x, y, lnphi, err, pair.size(), sizeof err);
  }
  double& value(char property) {
    switch (property) {
      case 'T':
        return t;
      case 'P':
        return p;
      case 'v':
        return v;
      case 'u':
        return u;
      case 'h':
        return h;
      case 's':
        return s;
      default:
        return q;
    }
  }
};

/// The result of a call as molar SI values.
HostCall as_inputs(HostCall result, double molar_mass) {
  result.t += 273.15;
  result.p *= 1e5;
  result.v *= molar_mass;
  for (double* energy : {&result.u, &result.h, &result.s}) *energy *= molar_mass * 1000.0;
  return result;
}

/// A new composition of the natural gas selected, alone and with one state of one phase.
void register_selection() {
  for (const bool with_state : {false, true})
    benchmark::RegisterBenchmark(
        with_state ? "selection, new composition, and TP/natural gas" : "selection, new composition/natural gas",
        [with_state](State& state) {
          const FlashCase& c = flash_cases()[2];
          select_case(c);
          std::vector<double> z = c.z;
          int count = 0;
          const Counted counted(state);
          for (auto _ : state) {
            const double step = 1e-9 * (++count % 1000);
            z[0] = c.z[0] + step, z[1] = c.z[1] - step;
            select(c.fluids, z);
            if (!with_state) continue;
            HostCall call;
            call.t = c.t;
            call.p = c.p;
            call.run("TP");
            benchmark::DoNotOptimize(call.h);
          }
        });
}

void register_states() {
  static const std::vector<std::string> pairs = {"TP", "Tv", "vP", "Ts", "vu", "vh", "vs",
                                                 "Pu", "Ph", "Ps", "hs", "Pq", "Tq", "vq"};
  static const FlashCase propane = {"propane 300 K, two phases", {"propane"}, {1.0}, 300, 0};
  const auto add = [](const FlashCase& c, bool by_q, const std::string& pair) {
    benchmark::RegisterBenchmark(("tessarel_tmdprop " + pair + "/" + c.name).c_str(), [&c, by_q, pair](State& state) {
      select_case(c);
      double mass = 0;
      tessarel_fluidinfo(c.z.data(), &mass, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                         nullptr);
      HostCall known;
      known.t = c.t;
      known.p = c.p;
      known.q = 0.4;
      known.run(by_q ? "Tq" : "TP");
      const HostCall inputs = as_inputs(known, mass);
      double first = HostCall(inputs).value(pair[0]);
      // What is traced once for a composition is not what a call costs.
      HostCall warm = inputs;
      warm.run(pair);
      const Counted counted(state);
      for (auto _ : state) {
        HostCall call = inputs;
        call.value(pair[0]) = first *= 1.0 + 1e-13;
        call.run(pair);
        benchmark::DoNotOptimize(call.h);
      }
      if (std::string(warm.err, 9) != "No errors") state.SkipWithError(warm.err);
    });
  };
  for (const std::string& pair : pairs) {
    add(flash_cases()[0], false, pair);
    add(propane, true, pair);
    if (pair.back() != 'q') add(flash_cases()[2], false, pair);
  }
}

/// Property calls on as many threads as the argument says, each with a session of its own.
void threads(State& state) {
  std::int64_t number = 0;
  std::string err(80, ' ');
  tessarel_session_new(&number, err.data(), err.size());
  tessarel_session_use(&number, err.data(), err.size());
  select_hydrocarbons(4);
  const std::int32_t order = 1;
  double x[20], y[20], lnphi[20], cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt, v, u, h, s, q;
  double start = liquid_t;
  for (auto _ : state) {
    double t = start += small_step, p = liquid_p;
    tessarel_tmdprop("TP Lph", &order, &t, &p, &v, &u, &h, &s, &q, &cv, &dpdt, &dpdv, &d2pdt2, &d2pdv2, &d2pdtdv,
                     &dcvdt, x, y, lnphi, err.data(), 6, err.size());
    benchmark::DoNotOptimize(h);
  }
  state.SetItemsProcessed(state.iterations());
  const std::int64_t first = 0;
  tessarel_session_use(&first, err.data(), err.size());
  tessarel_session_free(&number, err.data(), err.size());
}
BENCHMARK(threads)->Name("tessarel_tmdprop TP Lph on threads")->Threads(1)->Threads(2)->UseRealTime();

}  // namespace
}  // namespace tessarel::bench

int main(int argc, char** argv) {
  tessarel::bench::register_stack();
  tessarel::bench::register_fugacity();
  tessarel::bench::register_saturation();
  tessarel::bench::register_flash();
  tessarel::bench::register_envelope();
  tessarel::bench::register_selection();
  tessarel::bench::register_states();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
