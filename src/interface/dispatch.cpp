#include "interface/dispatch.hpp"

#include <algorithm>
#include <cmath>

#include "interface/boundary.hpp"
#include "interface/session_boundary.hpp"
#include "interface/state_dispatch.hpp"
#include "solvers/phase_mix.hpp"

namespace tessarel::interface {
namespace {

using namespace solvers;

Message at_tp(const Context& context, int phase, Solution& solution) {
  State& s = solution.state;
  PhaseValues& values = solution.phases;
  values.v[0] = s.v, values.u[0] = s.u, values.h[0] = s.h, values.s[0] = s.s;
  const Message message = tp_ph(context, s.t, s.p, phase, values, s.q, solution.x, solution.y);
  s.v = values.v[0], s.u = values.u[0], s.h = values.h[0], s.s = values.s[0];
  return message;
}

Message solve(Session& session, SessionBoundary& boundary, const Dialect& dialect, const StateRow& row,
              const InputSpec& spec, Solution& solution) {
  State& host = solution.state;
  if (const Message refused = check_pair(session, row, spec.single_phase, host); !ok(refused)) return refused;
  if (spec.single_phase) {
    auto* solver = spec.liquid ? row.liquid : row.vapour;
    return solver(session.fluid(), host.t, host.p, host.v, host.u, host.h, host.s);
  }
  const Context context{session.fluid(), boundary};
  State state = host;
  preset_component_alone(context, row.code, state, solution.x, solution.y);
  TwoPhaseSolver* solver = row.code == "hs" ? dialect.hs : solver_of(row, spec, context.pure());
  if (solver == nullptr) {
    host.q = state.q;
    return at_tp(context, spec.phase, solution);
  }
  const Message message = solver(context, state, solution.x, solution.y);
  if (ok(message)) host = state;
  return message;
}

}  // namespace

void preset_component_alone(const Context& context, std::string_view code, State& state, double* x, double* y) {
  if (context.n() == 1 || !context.pure()) return;
  if (code[1] != 'q') state.q = 1.0;
  fill_with_feed(context, x, y);
}

Session* session_of_call(std::initializer_list<const void*> arguments, TextField err) {
  Session& session = current_session();
  const bool missing = any_null(arguments);
  if (!missing && session.selected()) return &session;
  err.assign(missing ? null_argument : no_fluid);
  return nullptr;
}

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
  const StateRow* row = find_state_row(spec);
  if (row == nullptr || (row->code[1] == 'm' && !dialect.metastable)) {
    compose(err, {"TESSAREL error: calculation as function of ", spec.field, " not available."});
    return false;
  }
  if (spec.single_phase && row->liquid == nullptr) {
    compose(err,
            {"Function ", dialect.quote, row->code, dialect.quote, " not available for single phase calculations..."});
    return false;
  }
  SessionBoundary boundary(session);
  const Message message = solve(session, boundary, dialect, *row, spec, solution);
  const bool complete = is_complete(*row, solution.state);
  if (ok(message) && complete) return true;
  err.assign(ok(message) ? no_state : message);
  return false;
}

const double* composition_of(int phase, int n, const double* z, const double* x, const double* y) {
  const double* of_phase = phase == vapour_phase ? y : phase == liquid_phase ? x : z;
  // What no solver has written is the host's, which need not be a composition.
  const bool usable = std::all_of(of_phase, of_phase + n, [](double v) { return std::isfinite(v) && v >= 0; });
  return !usable || std::all_of(of_phase, of_phase + n, [](double v) { return v == 0; }) ? z : of_phase;
}

}  // namespace tessarel::interface
