#include "solvers/single_phase.hpp"

#include <array>
#include <cstdint>

#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "eos/pressure.hpp"
#include "solvers/brent.hpp"

namespace tessarel::solvers {
namespace {

using eos::Fluid;

constexpr int liquid = 1, vapour = 2;  // phase codes of calc_v
constexpr double low_t = 150, high_t = 1000;
constexpr double low_p = 1000, high_p = 1e8;
constexpr int retries = 5;

Message at_tp(const Fluid& fluid, int phase, double t, double p, double& v, double& u, double& h, double& s) {
  double volume = 0;
  if (const Message err = eos::calc_v(fluid.eos, fluid.n, fluid.z, t, p, phase, volume); !ok(err)) return err;
  v = volume;
  return eos::calc_hsu(fluid.eos, fluid.n, fluid.z, t, p, v, h, s, u);
}

/// One solver: which forward calculation it inverts and between which ends of the unknown.
struct Search {
  StateIndex known;  ///< the property of the pair that the forward calculation reads
  StateIndex unknown, target;
  Solver* forward;
  double a, b;
  bool retry;  ///< narrow the temperature bracket and try again after a failure
};

Message solve(const Fluid& fluid, const Search& search, std::array<double*, 6> state) {
  std::array<double, 6> vars{};
  const std::array<std::int32_t, 2> ptr = {search.unknown, search.target};
  const auto given = [&](StateIndex index) -> double& { return *state[static_cast<std::size_t>(index - 1)]; };
  const auto forward = [&](double& t, double& p, double& v, double& u, double& h, double& s) {
    return search.forward(fluid, t, p, v, u, h, s);
  };
  double a = search.a, b = search.b;
  Message err = no_errors;
  double root = 0;
  for (int attempt = 0; attempt <= retries; ++attempt) {
    entry(vars.data(), search.known) = given(search.known);
    entry(vars.data(), search.target) = given(search.target);
    root = brent_root_1ph(forward, a, b, vars.data(), ptr.data(), err);
    if (ok(err) || !search.retry) break;
    a *= 0.95;  // the hot end
    b *= 1.05;  // the cold end
  }
  if (ok(err)) {
    for (std::size_t i = 0; i < state.size(); ++i) *state[i] = vars[i];
  }
  given(search.unknown) = root;
  return err;
}

// With `retry` the first end must be the hot one.
constexpr Search pv_search{kV, kT, kP, tv_1ph, high_t, low_t, false};
constexpr Search vu_search{kV, kT, kU, tv_1ph, high_t, low_t, false};
constexpr Search vh_search{kV, kT, kH, tv_1ph, high_t, low_t, false};
constexpr Search vs_search{kV, kT, kS, tv_1ph, high_t, low_t, false};
constexpr Search pu_l_search{kP, kT, kU, tp_lph, high_t, low_t, true};
constexpr Search pu_v_search{kP, kT, kU, tp_vph, high_t, low_t, true};
constexpr Search ph_l_search{kP, kT, kH, tp_lph, high_t, low_t, true};
constexpr Search ph_v_search{kP, kT, kH, tp_vph, high_t, low_t, true};
constexpr Search ps_l_search{kP, kT, kS, tp_lph, high_t, low_t, true};
constexpr Search ps_v_search{kP, kT, kS, tp_vph, high_t, low_t, true};
constexpr Search hs_l_search{kH, kP, kS, ph_lph, high_p, low_p, false};
constexpr Search hs_v_search{kH, kP, kS, ph_vph, high_p, low_p, false};

}  // namespace

Message tp_lph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return at_tp(fluid, liquid, t, p, v, u, h, s);
}

Message tp_vph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return at_tp(fluid, vapour, t, p, v, u, h, s);
}

Message tv_1ph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  p = eos::calc_p(fluid.eos, fluid.n, fluid.z, t, v);
  return eos::calc_hsu(fluid.eos, fluid.n, fluid.z, t, p, v, h, s, u);
}

Message ts_1ph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  double dense = 0, dilute = 0;
  if (const Message err = eos::calc_v(fluid.eos, fluid.n, fluid.z, t, high_p, vapour, dense); !ok(err)) return err;
  if (const Message err = eos::calc_v(fluid.eos, fluid.n, fluid.z, t, low_p, vapour, dilute); !ok(err)) return err;
  return solve(fluid, {kT, kV, kS, tv_1ph, dense, dilute, false}, {&t, &p, &v, &u, &h, &s});
}

Message pv_1ph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, pv_search, {&t, &p, &v, &u, &h, &s});
}
Message vu_1ph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, vu_search, {&t, &p, &v, &u, &h, &s});
}
Message vh_1ph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, vh_search, {&t, &p, &v, &u, &h, &s});
}
Message vs_1ph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, vs_search, {&t, &p, &v, &u, &h, &s});
}
Message pu_lph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, pu_l_search, {&t, &p, &v, &u, &h, &s});
}
Message pu_vph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, pu_v_search, {&t, &p, &v, &u, &h, &s});
}
Message ph_lph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, ph_l_search, {&t, &p, &v, &u, &h, &s});
}
Message ph_vph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, ph_v_search, {&t, &p, &v, &u, &h, &s});
}
Message ps_lph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, ps_l_search, {&t, &p, &v, &u, &h, &s});
}
Message ps_vph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, ps_v_search, {&t, &p, &v, &u, &h, &s});
}
Message hs_lph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, hs_l_search, {&t, &p, &v, &u, &h, &s});
}
Message hs_vph(const Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve(fluid, hs_v_search, {&t, &p, &v, &u, &h, &s});
}

}  // namespace tessarel::solvers
