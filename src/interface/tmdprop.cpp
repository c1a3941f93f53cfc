// The main property call: reads the input text, runs a solver, adds what `order` asks for, converts units.
#include <algorithm>
#include <array>
#include <cmath>

#include "eos/fugacity.hpp"
#include "interface/availability.hpp"
#include "interface/boundary.hpp"
#include "interface/input_spec.hpp"
#include "interface/sectmdprop.hpp"
#include "interface/session.hpp"
#include "interface/unit_conversion.hpp"
#include "solvers/single_phase.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

constexpr Message bad_input = "TESSAREL error: input values must be finite numbers, temperature and volume positive...";
constexpr Message no_state = "TESSAREL error: no finite state found for the input values...";

struct State {
  double &t, &p, &v, &u, &h, &s;
};

/// The solvers of an input pair; null where there is none.
struct Row {
  std::string_view code;
  solvers::Solver *liquid, *vapour;  ///< single-phase mode, "L" and any other branch
  Message no_single_phase;
};

using namespace solvers;
constexpr std::array<Row, 16> rows = {{
    {"TP", tp_lph, tp_vph, {}},
    {"Tv", tv_1ph, tv_1ph, {}},
    {"vP", pv_1ph, pv_1ph, {}},
    {"Ts", ts_1ph, ts_1ph, {}},
    {"vu", vu_1ph, vu_1ph, {}},
    {"vh", vh_1ph, vh_1ph, {}},
    {"vs", vs_1ph, vs_1ph, {}},
    {"Pu", pu_lph, pu_vph, {}},
    {"Ph", ph_lph, ph_vph, {}},
    {"Ps", ps_lph, ps_vph, {}},
    {"hs", hs_lph, hs_vph, {}},
    {"Pq", nullptr, nullptr, "Function 'Pq' not available for single phase calculations..."},
    {"Tq", nullptr, nullptr, "Function 'Tq' not available for single phase calculations..."},
    {"vq", nullptr, nullptr, "Function 'vq' not available for single phase calculations..."},
    {"Pm", nullptr, nullptr, "Function 'Pm' not available for single phase calculations..."},
    {"Tm", nullptr, nullptr, "Function 'Tm' not available for single phase calculations..."},
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
        return true;
    }
  });
}

bool all_finite(std::initializer_list<double> values) {
  return std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); });
}

/// Runs the solver that `spec` names. Writes the message; false unless it is "No errors".
bool dispatch(const eos::Fluid& fluid, const InputSpec& spec, const State& state, TextField err) {
  constexpr std::string_view unavailable = "TESSAREL error: calculation as function of ";
  const auto fail = [&](Message message) {
    err.assign(message);
    return false;
  };
  const std::array<char, 2> code = {spec.first, spec.second};
  const auto* row = std::find_if(rows.begin(), rows.end(),
                                 [&](const Row& r) { return r.code == std::string_view(code.data(), code.size()); });
  if (row == rows.end()) {
    compose(err, {unavailable, spec.field, " not available."});
    return false;
  }
  if (!spec.single_phase) {
    const Message why = row->liquid != nullptr ? only_single_phase : no_solver;
    compose(err, {unavailable, trimmed(spec.field), why.text()});
    return false;
  }
  if (row->liquid == nullptr) return fail(row->no_single_phase);
  if (!valid_inputs(row->code, state)) return fail(bad_input);

  auto* solver = spec.liquid ? row->liquid : row->vapour;
  if (const Message message = solver(fluid, state.t, state.p, state.v, state.u, state.h, state.s); !ok(message))
    return fail(message);
  if (!all_finite({state.t, state.p, state.v, state.u, state.h, state.s})) return fail(no_state);
  return true;
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
  const double* composition = input.phase == vapour_phase ? y : input.phase == liquid_phase ? x : session.z.data();
  const eos::Eos eos = session.eos();
  const int n = session.n();

  guarded(errors, [&] {
    if (!dispatch(session.fluid(), input, {*t, *p, *v, *u, *h, *s}, errors)) return;
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

  const EngineeringUnits units(session.model.parameters, composition);
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
