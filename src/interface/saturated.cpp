// The property call that returns the overall state and the volumes and energies of both phases, without derivatives.
#include <algorithm>

#include "interface/boundary.hpp"
#include "interface/dispatch.hpp"
#include "interface/unit_conversion.hpp"
#include "tessarel/tessarel.h"

extern "C" void tessarel_tmdpropsat(const char* spec, double* t, double* p, double* v, double* h, double* s, double* u,
                                    double* q, double* x, double* y, double* v_l, double* v_v, double* h_l, double* h_v,
                                    double* s_l, double* s_v, double* u_l, double* u_v, char* err, size_t spec_len,
                                    size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  const TextField errors{err, err_len};
  errors.assign(no_errors);
  Session* const selected =
      session_of_call({t, p, v, h, s, u, q, x, y, v_l, v_v, h_l, h_v, s_l, s_v, u_l, u_v}, errors);
  if (selected == nullptr) return;
  Session& session = *selected;
  const int n = session.n();
  const double* z = session.z.data();
  std::copy_n(z, n, x);
  std::copy_n(z, n, y);
  InputSpec input = read_input_spec(input_text(spec, spec_len), false);
  input.phase = all_phases;
  guarded(errors, [&] {
    Solution r{{*t, *p, *v, *u, *h, *s, *q}, session.phases, x, y};
    const bool solved = dispatch(session, of_saturated, input, r, errors);
    *t = r.state.t, *p = r.state.p, *v = r.state.v, *u = r.state.u, *h = r.state.h, *s = r.state.s, *q = r.state.q;
    if (input.first == 'T' && input.second == 'P' && !input.single_phase) {
      const solvers::PhaseValues& values = session.phases = r.phases;
      *v_v = values.v[1], *u_v = values.u[1], *h_v = values.h[1], *s_v = values.s[1];
      *v_l = values.v[2], *u_l = values.u[2], *h_l = values.h[2], *s_l = values.s[2];
    }
    if (solved && !input.single_phase) {
      normalise(n, x);
      normalise(n, y);
    }
  });

  const auto convert = [&](int phase, double& volume, std::initializer_list<double*> energies) {
    const EngineeringUnits units(session.model.parameters, composition_of(phase, n, z, x, y));
    units.volume(volume);
    for (double* energy : energies) units.caloric(*energy);
  };
  EngineeringUnits::temperature(*t);
  EngineeringUnits::pressure(*p);
  convert(overall_phase, *v, {u, h, s});
  convert(liquid_phase, *v_l, {u_l, h_l, s_l});
  convert(vapour_phase, *v_v, {u_v, h_v, s_v});
}
TESSAREL_FORTRAN_TWIN(tessarel_tmdpropsat);
