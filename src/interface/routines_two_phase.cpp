// Exports of the state solvers that know the phase boundary, and of the minimiser of theirs.
#include <cmath>

#include "interface/dispatch.hpp"
#include "interface/flash_checks.hpp"
#include "interface/routines_support.hpp"
#include "interface/session_boundary.hpp"
#include "interface/state_dispatch.hpp"

using namespace tessarel;
using namespace tessarel::interface;

namespace {

/// The arguments that the solvers share, as pointers of the host.
struct HostArguments {
  double *t, *p, *v, *u, *h, *s, *q, *x, *y;
};

/// Runs a solver of the pair `code`: its checks, its state in and out.
void solve(std::string_view code, solvers::TwoPhaseSolver& solver, const HostArguments& host, TextField err) {
  Session& session = current_session();
  SessionBoundary boundary(session);
  report(session, {host.t, host.p, host.v, host.u, host.h, host.s, host.q, host.x, host.y}, err, [&]() -> Message {
    solvers::State state{*host.t, *host.p, *host.v, *host.u, *host.h, *host.s, *host.q};
    const StateRow& row = *find_state_row(code);
    if (const Message refused = check_pair(session, row, false, state); !ok(refused)) return refused;
    const solvers::Context context{session.fluid(), boundary};
    preset_component_alone(context, code, state, host.x, host.y);
    const Message message = solver(context, state, host.x, host.y);
    if (!ok(message)) return message;
    if (!is_complete(row, state)) return no_state;
    *host.t = state.t, *host.p = state.p, *host.v = state.v;
    *host.u = state.u, *host.h = state.h, *host.s = state.s, *host.q = state.q;
    return message;
  });
}

}  // namespace

extern "C" {

#define SOLVER(name, code)                                                                                     \
  void tessarel_##name(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x, \
                       double* y, char* err, size_t err_len) {                                                 \
    solve(code, solvers::name, {t, p, v, u, h, s, q, x, y}, {err, err_len});                                   \
  }
SOLVER(tp, "TP")
SOLVER(tp_new, "TP")
SOLVER(tp_l, "TP")
SOLVER(tp_v, "TP")
SOLVER(tv_1, "Tv")
SOLVER(tv, "Tv")
SOLVER(tv_old, "Tv")
SOLVER(vp, "vP")
SOLVER(ts, "Ts")
SOLVER(vu, "vu")
SOLVER(vu_new, "vu")
SOLVER(vh, "vh")
SOLVER(vs, "vs")
SOLVER(pu, "Pu")
SOLVER(ph, "Ph")
SOLVER(ps, "Ps")
SOLVER(pu_simple, "Pu")
SOLVER(ph_simple, "Ph")
SOLVER(ps_simple, "Ps")
SOLVER(ph_new, "Ph")
SOLVER(ps_new, "Ps")
SOLVER(hs, "hs")
SOLVER(hs_simple, "hs")
SOLVER(pq, "Pq")
SOLVER(tq, "Tq")
SOLVER(vq, "vq")
SOLVER(pm, "Pm")
SOLVER(tm, "Tm")
#undef SOLVER

void tessarel_tp_ph(double* t, double* p, const int32_t* phase, double* v, double* u, double* h, double* s, double* q,
                    double* x, double* y, char* err, size_t err_len) {
  Session& session = current_session();
  SessionBoundary boundary(session);
  report(session, {t, p, phase, v, u, h, s, q, x, y}, {err, err_len}, [&]() -> Message {
    if (*phase < 0 || *phase > 3) return "TESSAREL error: phase code must be 0 to 3...";
    if (const Message refused = check_flash(session, *t, *p); !ok(refused)) return refused;
    solvers::PhaseValues values{};
    for (std::size_t i = 0; i < 3; ++i) values.v[i] = v[i], values.u[i] = u[i], values.h[i] = h[i], values.s[i] = s[i];
    const Message message = solvers::tp_ph({session.fluid(), boundary}, *t, *p, *phase, values, *q, x, y);
    for (std::size_t i = 0; i < 3; ++i) v[i] = values.v[i], u[i] = values.u[i], h[i] = values.h[i], s[i] = values.s[i];
    return !ok(message) || std::isfinite(v[0] + u[0] + h[0] + s[0]) ? message : no_state;
  });
}

double tessarel_brent_extreme(const int32_t* mode, const int32_t* sign, const double* fixed, const double* a,
                              const double* b, double* xbest, char* err, size_t err_len) {
  Session& session = current_session();
  SessionBoundary boundary(session);
  double best = not_a_number;
  report(session, {mode, sign, fixed, a, b, xbest}, {err, err_len}, [&]() -> Message {
    // T or P varies; P or T, or with the volume q, is fixed.
    const bool by_p = *mode == 0, by_t = *mode == 1;
    for (const double end : {*a, *b})
      if (const Message refused = check_flash(session, by_p ? *fixed : end,
                                              by_p   ? end
                                              : by_t ? *fixed
                                                     : 1e5);
          !ok(refused))
        return refused;
    return solvers::brent_extreme({session.fluid(), boundary}, *mode, *sign, *fixed, *a, *b, *xbest, best);
  });
  return best;
}

}  // extern "C"
