// The main property call: reads the input text, runs a solver, adds what `order` asks for, converts units.
#include <algorithm>
#include <cmath>

#include "eos/fugacity.hpp"
#include "interface/boundary.hpp"
#include "interface/dispatch.hpp"
#include "interface/sectmdprop.hpp"
#include "interface/unit_conversion.hpp"
#include "tessarel/tessarel.h"

extern "C" void tessarel_tmdprop(const char* spec, const int32_t* order, double* t, double* p, double* v, double* u,
                                 double* h, double* s, double* q, double* cv, double* dpdt, double* dpdv,
                                 double* d2pdt2, double* d2pdv2, double* d2pdtdv, double* dcvdt, double* x, double* y,
                                 double* lnphi, char* err, size_t spec_len, size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  const TextField errors{err, err_len};
  errors.assign(no_errors);
  Session* const selected = session_of_call(
      {order, t, p, v, u, h, s, q, cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt, x, y, lnphi}, errors);
  if (selected == nullptr) return;
  Session& session = *selected;
  const InputSpec input = read_input_spec(input_text(spec, spec_len));
  const int n = session.n();
  const double* z = session.z.data();

  guarded(errors, [&] {
    Solution r{{*t, *p, *v, *u, *h, *s, *q}, {}, x, y};
    const bool solved = dispatch(session, of_tmdprop, input, r, errors);
    *t = r.state.t, *p = r.state.p, *v = r.state.v, *u = r.state.u, *h = r.state.h, *s = r.state.s, *q = r.state.q;
    if (!solved) return;
    if (!input.single_phase && n > 1) {
      normalise(n, x);
      normalise(n, y);
    }
    const double* composition = composition_of(input.phase, n, z, x, y);
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

  const EngineeringUnits units(session.model.parameters, composition_of(input.phase, n, z, x, y));
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
