// The main property call: reads the input text, runs a solver, adds what `order` asks for, converts units.
#include <algorithm>
#include <cmath>

#include "eos/fugacity.hpp"
#include "interface/boundary.hpp"
#include "interface/input_spec.hpp"
#include "interface/sectmdprop.hpp"
#include "interface/session_boundary.hpp"
#include "interface/state_dispatch.hpp"
#include "interface/unit_conversion.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

constexpr Message no_state = "TESSAREL error: no finite state found for the input values...";

/// The properties in the host's arguments.
struct HostState {
  double &t, &p, &v, &u, &h, &s, &q;

  [[nodiscard]] solvers::State value() const { return {t, p, v, u, h, s, q}; }
  void assign(const solvers::State& state) const {
    t = state.t, p = state.p, v = state.v, u = state.u, h = state.h, s = state.s, q = state.q;
  }
  [[nodiscard]] bool is_finite() const {
    return std::isfinite(t) && std::isfinite(p) && std::isfinite(v) && std::isfinite(u) && std::isfinite(h) &&
           std::isfinite(s);
  }
};

bool all_finite(std::initializer_list<double> values) {
  return std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); });
}

/// "TP": its results are there also after a failed flash.
Message solve_tp(const solvers::Context& context, int phase, const HostState& host, double* x, double* y) {
  solvers::PhaseValues values{};
  const Message message = solvers::tp_ph(context, host.t, host.p, phase, values, host.q, x, y);
  host.v = values.v[0], host.u = values.u[0], host.h = values.h[0], host.s = values.s[0];
  return message;
}

/// Runs the solver that `spec` names.
Message dispatch(Session& session, const InputSpec& spec, const StateRow& row, const HostState& host, double* x,
                 double* y, SessionBoundary& boundary) {
  if (const Message refused = check_pair(session, row, spec.single_phase, host.value()); !ok(refused)) return refused;
  if (spec.single_phase) {
    auto* solver = spec.liquid ? row.liquid : row.vapour;
    return solver(session.fluid(), host.t, host.p, host.v, host.u, host.h, host.s);
  }
  const solvers::Context context{session.fluid(), boundary};
  solvers::TwoPhaseSolver* solver = solver_of(row, spec, context.pure());
  if (solver == nullptr) return solve_tp(context, spec.phase, host, x, y);
  solvers::State state = host.value();
  const Message message = solver(context, state, x, y);
  if (ok(message)) host.assign(state);
  return message;
}

/// Phase compositions of a mixture are handed out with a sum of 1; a phase that is not there has the sum 0.
void normalise(int n, double* x) {
  double sum = 0;
  for (int i = 0; i < n; ++i) sum += x[i];
  if (sum == 0 || sum == 1.0) return;
  for (int i = 0; i < n; ++i) x[i] /= sum;
}

/// The composition that a phase code stands for. A phase that is not there has that of the whole.
const double* composition_of(const Session& session, int phase, const double* x, const double* y) {
  const double* of_phase = phase == vapour_phase ? y : phase == liquid_phase ? x : session.z.data();
  return std::all_of(of_phase, of_phase + session.n(), [](double v) { return v == 0; }) ? session.z.data() : of_phase;
}

}  // namespace
}  // namespace tessarel::interface

extern "C" void tessarel_tmdprop(const char* spec, const int32_t* order, double* t, double* p, double* v, double* u,
                                 double* h, double* s, double* q, double* cv, double* dpdt, double* dpdv,
                                 double* d2pdt2, double* d2pdv2, double* d2pdtdv, double* dcvdt, double* x, double* y,
                                 double* lnphi, char* err, size_t spec_len, size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  const TextField errors{err, err_len};
  errors.assign(no_errors);
  if (any_null({order, t, p, v, u, h, s, q, cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt, x, y, lnphi})) {
    errors.assign(null_argument);
    return;
  }
  Session& session = current_session();
  if (!session.selected()) {
    errors.assign(no_fluid);
    return;
  }
  const InputSpec input = read_input_spec(input_text(spec, spec_len));
  const int n = session.n();
  const HostState host{*t, *p, *v, *u, *h, *s, *q};

  guarded(errors, [&] {
    const StateRow* row = find_state_row(input);
    if (row == nullptr) {
      compose(errors, {"TESSAREL error: calculation as function of ", input.field, " not available."});
      return;
    }
    if (input.single_phase && row->liquid == nullptr) {
      compose(errors, {"Function '", row->code, "' not available for single phase calculations..."});
      return;
    }
    SessionBoundary boundary(session);
    const Message message = dispatch(session, input, *row, host, x, y, boundary);
    // "Tm" leaves u, h and s alone where the pressure is negative.
    const bool complete = row->code == "Tm" ? all_finite({*t, *p, *v}) : host.is_finite();
    if (!ok(message) || !complete) {
      errors.assign(ok(message) ? no_state : message);
      return;
    }
    if (!input.single_phase && n > 1) {
      normalise(n, x);
      normalise(n, y);
    }
    const double* composition = composition_of(session, input.phase, x, y);
    const eos::Eos eos = session.eos();
    const double rho = fluid::avogadro_factor / *v;
    if (*order == 1 || *order == 3) {
      const SecondOrder d = calc_sectmdprop(eos, n, composition, *t, rho);
      *cv = d.cv;
      *dpdt = d.dpdt;
      *dpdv = d.dpdv;
      *d2pdt2 = d.d2pdt2;
      *d2pdv2 = d.d2pdv2;
      *d2pdtdv = d.d2pdtdv;
      *dcvdt = d.dcvdt;
      if (!all_finite({d.cv, d.dpdt, d.dpdv, d.d2pdt2, d.d2pdv2, d.d2pdtdv, d.dcvdt})) errors.assign(no_state);
    }
    if (*order == 2 || *order == 3) {
      eos::calc_lnphi_tprho(eos, n, composition, *t, *p, rho, lnphi);
      if (!std::all_of(lnphi, lnphi + n, [](double value) { return std::isfinite(value); })) errors.assign(no_state);
    }
  });

  const EngineeringUnits units(session.model.parameters, composition_of(session, input.phase, x, y));
  units.volume(*v);
  for (double* energy : {u, h, s}) units.caloric(*energy);
  EngineeringUnits::temperature(*t);
  EngineeringUnits::pressure(*p);
  units.heat_capacity(*cv);
  units.per_volume(*dpdv);
  units.per_volume_squared(*d2pdv2);
  units.per_volume(*d2pdtdv);
  units.heat_capacity_slope(*dcvdt);
}
TESSAREL_FORTRAN_TWIN(tessarel_tmdprop);
