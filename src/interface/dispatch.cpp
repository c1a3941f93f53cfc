#include "interface/dispatch.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "interface/boundary.hpp"
#include "interface/flash_checks.hpp"
#include "interface/session_boundary.hpp"
#include "solvers/single_phase.hpp"

namespace tessarel::interface {
namespace {

using namespace solvers;

constexpr Message bad_input = "TESSAREL error: input values must be finite numbers, temperature and volume positive...";

/// The solvers of an input pair; null where there is none.
struct Row {
  std::string_view code;
  TwoPhaseSolver *pure, *mixture;
  std::string_view variant;  ///< the whole text that asks for another solver:
  TwoPhaseSolver *variant_pure, *variant_mixture;
  Solver *liquid, *vapour;  ///< single-phase mode, "L" and any other branch
};

// Without a solver of its own: "TP", which distinguishes the phases; "hs", in which the calls differ.
constexpr std::array<Row, 16> rows = {{
    {"TP", nullptr, nullptr, "TP_new", tp_new, tp_new, tp_lph, tp_vph},
    {"Tv", tv, tv, "Tv_old", tv_old, tv_old, tv_1ph, tv_1ph},
    {"vP", vp, vp, {}, {}, {}, pv_1ph, pv_1ph},
    {"Ts", ts, ts, {}, {}, {}, ts_1ph, ts_1ph},
    {"vu", vu, vu, "vu_new", vu_new, vu_new, vu_1ph, vu_1ph},
    {"vh", vh, vh, {}, {}, {}, vh_1ph, vh_1ph},
    {"vs", vs, vs, {}, {}, {}, vs_1ph, vs_1ph},
    {"Pu", pu, pu_simple, {}, {}, {}, pu_lph, pu_vph},
    {"Ph", ph, ph_simple, "Ph_new", ph, ph_new, ph_lph, ph_vph},
    {"Ps", ps, ps_simple, "Ps_new", ps, ps_new, ps_lph, ps_vph},
    {"hs", nullptr, nullptr, {}, {}, {}, hs_lph, hs_vph},
    {"Pq", pq, pq, {}, {}, {}, {}, {}},
    {"Tq", tq, tq, {}, {}, {}, {}, {}},
    {"vq", vq, vq, {}, {}, {}, {}, {}},
    {"Pm", pm, pm, {}, {}, {}, {}, {}},
    {"Tm", tm, tm, {}, {}, {}, {}, {}},
}};

/// The two values that the code names must be there: temperature and volume enter logarithms.
bool valid_inputs(std::string_view code, const State& state) {
  return std::all_of(code.begin(), code.end(), [&](char property) {
    switch (property) {
      case 'T':
        return std::isfinite(state.t) && state.t > 0;
      case 'v':
        return std::isfinite(state.v) && state.v > 0;
      case 'P':
        return std::isfinite(state.p);
      case 'u':
        return std::isfinite(state.u);
      case 'h':
        return std::isfinite(state.h);
      case 's':
        return std::isfinite(state.s);
      default:
        return std::isfinite(state.q);
    }
  });
}

Message at_tp(const Context& context, int phase, Solution& solution) {
  State& s = solution.state;
  PhaseValues& values = solution.phases;
  values.v[0] = s.v, values.u[0] = s.u, values.h[0] = s.h, values.s[0] = s.s;
  const Message message = tp_ph(context, s.t, s.p, phase, values, s.q, solution.x, solution.y);
  s.v = values.v[0], s.u = values.u[0], s.h = values.h[0], s.s = values.s[0];
  return message;
}

Message solve_equilibrium(Session& session, SessionBoundary& boundary, const Dialect& dialect, const Row& row,
                          const InputSpec& spec, Solution& solution) {
  if (session.n() > 1 && !adds_up(session.n(), session.z.data())) return bad_fractions;
  const Context context{session.fluid(), boundary};
  const bool variant = !row.variant.empty() && same_text(spec.field, row.variant);
  auto* solver =
      variant ? (context.pure() ? row.variant_pure : row.variant_mixture) : (context.pure() ? row.pure : row.mixture);
  if (row.code == "hs") solver = dialect.hs;
  return solver == nullptr ? at_tp(context, spec.phase, solution)
                           : solver(context, solution.state, solution.x, solution.y);
}

}  // namespace

bool all_finite(std::initializer_list<double> values) {
  return std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); });
}

void normalise(int n, double* fractions) {
  double sum = 0;
  for (int i = 0; i < n; ++i) sum += fractions[i];
  if (sum == 0.0 || sum == 1.0) return;
  for (int i = 0; i < n; ++i) fractions[i] /= sum;
}

bool dispatch(Session& session, const Dialect& dialect, const InputSpec& spec, Solution& solution, TextField err) {
  const auto fail = [&](Message message) {
    err.assign(message);
    return false;
  };
  const std::array<char, 2> pair = {spec.first, spec.second};
  const auto* row = std::find_if(rows.begin(), rows.end(),
                                 [&](const Row& r) { return r.code == std::string_view(pair.data(), pair.size()); });
  if (row == rows.end() || (row->code[1] == 'm' && !dialect.metastable)) {
    compose(err, {"TESSAREL error: calculation as function of ", spec.field, " not available."});
    return false;
  }
  if (spec.single_phase && row->liquid == nullptr) {
    compose(err,
            {"Function ", dialect.quote, row->code, dialect.quote, " not available for single phase calculations..."});
    return false;
  }
  State& s = solution.state;
  if (!valid_inputs(row->code, s)) return fail(bad_input);

  SessionBoundary boundary(session);
  const Message message = spec.single_phase
                              ? (spec.liquid ? row->liquid : row->vapour)(session.fluid(), s.t, s.p, s.v, s.u, s.h, s.s)
                              : solve_equilibrium(session, boundary, dialect, *row, spec, solution);
  if (!ok(message)) return fail(message);
  // The energies of a liquid in tension are not computed.
  const bool caloric = row->code != "Tm";
  if (!all_finite({s.t, s.p, s.v}) || (caloric && !all_finite({s.u, s.h, s.s}))) return fail(no_state);
  return true;
}

}  // namespace tessarel::interface
