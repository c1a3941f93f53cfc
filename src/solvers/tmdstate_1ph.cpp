#include "solvers/tmdstate_1ph.hpp"

#include <array>
#include <cstdint>

#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "eos/pressure.hpp"
#include "solvers/brent.hpp"

namespace tessarel::tmdstate_1ph {
namespace {

using calc_hsu_module::calc_hsu;
using calc_p_module::calc_p;
using calc_vrho_module::calc_v;

constexpr int liquid = 1, vapour = 2;  // phase codes of calc_v
constexpr double low_t = 150, high_t = 1000;
constexpr double low_p = 1000, high_p = 1e8;
constexpr int retries = 5;

Message at_tp(int phase, double t, double p, double& v, double& u, double& h, double& s) {
  double volume = 0;
  if (const Message err = calc_v(t, p, phase, volume); !ok(err)) return err;
  v = volume;
  return calc_hsu(t, p, v, h, s, u);
}

/// One solver: which forward calculation it inverts and between which ends of the unknown.
struct Search {
  StateIndex known;  ///< the property of the pair that the forward calculation reads
  StateIndex unknown, target;
  Solver* forward;
  double a, b;
  bool retry;  ///< narrow the temperature bracket and try again after a failure
};

/// The static vectors of one solver; nested searches run on their own.
struct Workspace {
  std::array<double, 6> vars{};
  std::array<std::int32_t, 2> ptr{};
};

Message solve(const Search& search, Workspace& work, std::array<double*, 6> state) {
  double* vars = work.vars.data();
  const auto given = [&](StateIndex index) -> double& { return *state[static_cast<std::size_t>(index - 1)]; };
  double a = search.a, b = search.b;
  Message err = no_errors;
  double root = 0;
  for (int attempt = 0; attempt <= retries; ++attempt) {
    entry(vars, search.known) = given(search.known);
    entry(vars, search.target) = given(search.target);
    work.ptr = {search.unknown, search.target};
    root = brent_root_1ph(*search.forward, a, b, vars, work.ptr.data(), err);
    if (ok(err) || !search.retry) break;
    a *= 0.95;  // the hot end
    b *= 1.05;  // the cold end
  }
  if (ok(err)) {
    for (std::size_t i = 0; i < state.size(); ++i) *state[i] = work.vars[i];
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

/// The driver on the static vectors of the solver that owns `search`.
template <const Search& search>
Message solve(double& t, double& p, double& v, double& u, double& h, double& s) {
  static Workspace work;
  return solve(search, work, {&t, &p, &v, &u, &h, &s});
}

}  // namespace

Message tp_lph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return at_tp(liquid, t, p, v, u, h, s);
}

Message tp_vph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return at_tp(vapour, t, p, v, u, h, s);
}

Message tv_1ph(double& t, double& p, double& v, double& u, double& h, double& s) {
  p = calc_p(t, v);
  return calc_hsu(t, p, v, h, s, u);
}

Message ts_1ph(double& t, double& p, double& v, double& u, double& h, double& s) {
  double dense = 0, dilute = 0;
  if (const Message err = calc_v(t, high_p, vapour, dense); !ok(err)) return err;
  if (const Message err = calc_v(t, low_p, vapour, dilute); !ok(err)) return err;
  static Workspace work;
  return solve({kT, kV, kS, tv_1ph, dense, dilute, false}, work, {&t, &p, &v, &u, &h, &s});
}

Message pv_1ph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<pv_search>(t, p, v, u, h, s);
}
Message vu_1ph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<vu_search>(t, p, v, u, h, s);
}
Message vh_1ph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<vh_search>(t, p, v, u, h, s);
}
Message vs_1ph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<vs_search>(t, p, v, u, h, s);
}
Message pu_lph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<pu_l_search>(t, p, v, u, h, s);
}
Message pu_vph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<pu_v_search>(t, p, v, u, h, s);
}
Message ph_lph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<ph_l_search>(t, p, v, u, h, s);
}
Message ph_vph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<ph_v_search>(t, p, v, u, h, s);
}
Message ps_lph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<ps_l_search>(t, p, v, u, h, s);
}
Message ps_vph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<ps_v_search>(t, p, v, u, h, s);
}
Message hs_lph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<hs_l_search>(t, p, v, u, h, s);
}
Message hs_vph(double& t, double& p, double& v, double& u, double& h, double& s) {
  return solve<hs_v_search>(t, p, v, u, h, s);
}

}  // namespace tessarel::tmdstate_1ph
