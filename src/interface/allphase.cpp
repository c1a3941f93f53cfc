// The property call that returns the overall state and, of two phases, those of each phase.
#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "eos/fugacity.hpp"
#include "interface/boundary.hpp"
#include "interface/dispatch.hpp"
#include "interface/sectmdprop.hpp"
#include "interface/unit_conversion.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

/// Places in the arrays of three.
enum Place : std::size_t { overall = 0, vapour = 1, liquid = 2 };
constexpr std::array<Place, 3> places = {overall, vapour, liquid};

/// The second-order set, an array of three for each.
struct SecondOrderFields {
  double *cv, *dpdt, *dpdv, *d2pdt2, *d2pdv2, *d2pdtdv, *dcvdt;

  [[nodiscard]] std::array<double*, 7> all() const { return {cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt}; }
  void store(Place k, const SecondOrder& d) const {
    cv[k] = d.cv, dpdt[k] = d.dpdt, dpdv[k] = d.dpdv;
    d2pdt2[k] = d.d2pdt2, d2pdv2[k] = d.d2pdv2, d2pdtdv[k] = d.d2pdtdv, dcvdt[k] = d.dcvdt;
  }
  void convert(Place k, const EngineeringUnits& units) const {
    units.caloric(cv[k]);  // without a test for the mark
    units.per_volume(dpdv[k]);
    units.per_volume_squared(d2pdv2[k]);
    units.per_volume(d2pdtdv[k]);
    units.caloric(dcvdt[k]);  // kJ, unlike the call with one state
  }
};

/// The caloric and volumetric values, an array of three for each.
struct StateFields {
  double *v, *u, *h, *s;

  void convert(Place k, const EngineeringUnits& units) const {
    units.volume(v[k]);
    for (double* field : {u, h, s}) units.caloric(field[k]);
  }
};

/// The phase code of a place; the overall one has that of the text.
int phase_at(Place k, const InputSpec& spec) {
  return k == vapour ? vapour_phase : k == liquid ? liquid_phase : spec.phase;
}

/// What `order` asks for at one place.
bool evaluate(const eos::Eos& eos, int n, std::int32_t order, Place k, const double* composition, const Solution& r,
              double v, const SecondOrderFields& second, double* lnphi) {
  const double rho = fluid::avogadro_factor / v;
  bool finite = true;
  if (order == 1 || order == 3) {
    second.store(k, calc_sectmdprop(eos, n, composition, r.state.t, rho));
    for (const double* field : second.all()) finite = finite && std::isfinite(field[k]);
  }
  if (order == 2 || order == 3) {
    double* column = lnphi + static_cast<std::size_t>(n) * k;
    eos::calc_lnphi_tprho(eos, n, composition, r.state.t, r.state.p, rho, column);
    finite = finite && std::all_of(column, column + n, [](double value) { return std::isfinite(value); });
  }
  return finite;
}

}  // namespace
}  // namespace tessarel::interface

extern "C" void tessarel_tmdprop_allphase(const char* spec, const int32_t* order, double* t, double* p, double* v,
                                          double* u, double* h, double* s, double* q, double* cv, double* dpdt,
                                          double* dpdv, double* d2pdt2, double* d2pdv2, double* d2pdtdv, double* dcvdt,
                                          double* x, double* y, double* lnphi, char* err, size_t spec_len,
                                          size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  const TextField errors{err, err_len};
  errors.assign(no_errors);
  Session* const selected = session_of_call(
      {order, t, p, v, u, h, s, q, cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt, x, y, lnphi}, errors);
  if (selected == nullptr) return;
  Session& session = *selected;
  const int n = session.n();
  const double* z = session.z.data();
  std::copy_n(z, n, x);
  std::copy_n(z, n, y);
  const SecondOrderFields second{cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt};
  const StateFields first{v, u, h, s};
  for (double* field : second.all()) std::fill_n(field, 3, fluid::not_computed);
  for (double* field : {v, u, h, s}) std::fill_n(field + 1, 2, fluid::not_computed);

  const InputSpec input = read_input_spec(input_text(spec, spec_len), true);
  Solution r{{*t, *p, *v, *u, *h, *s, *q}, {}, x, y};
  for (auto* values : {&r.phases.v, &r.phases.u, &r.phases.h, &r.phases.s}) values->fill(fluid::not_computed);
  bool two_phases = false;
  guarded(errors, [&] {
    const bool solved = dispatch(session, of_allphase, input, r, errors);
    *t = r.state.t, *p = r.state.p, *q = r.state.q;
    v[overall] = r.state.v, u[overall] = r.state.u, h[overall] = r.state.h, s[overall] = r.state.s;
    for (const Place k : {vapour, liquid})
      v[k] = r.phases.v[k], u[k] = r.phases.u[k], h[k] = r.phases.h[k], s[k] = r.phases.s[k];
    two_phases = *q > 0 && *q < 1;
    if (!solved) return;
    if (!input.single_phase && *q >= 0 && *q <= 1) {
      normalise(n, x);
      normalise(n, y);
    }
    const bool by_phases = two_phases && input.phase == all_phases;
    for (const Place k : places) {
      // Only "TP" knows the volumes of the phases.
      if (by_phases == (k == overall) || v[k] == fluid::not_computed) continue;
      const double* composition = two_phases ? composition_of(phase_at(k, input), n, z, x, y) : z;
      if (!evaluate(session.eos(), n, *order, k, composition, r, v[k], second, lnphi)) errors.assign(no_state);
    }
  });

  const auto units_of = [&](Place k) {
    return EngineeringUnits(session.model.parameters, composition_of(phase_at(k, input), n, z, x, y));
  };
  EngineeringUnits::temperature(*t);
  EngineeringUnits::pressure(*p);
  first.convert(overall, units_of(overall));
  if (!two_phases) second.convert(overall, units_of(overall));
  if (!two_phases || input.phase != all_phases) return;
  for (const Place k : {vapour, liquid}) {
    if (v[k] == fluid::not_computed) continue;
    first.convert(k, units_of(k));
    second.convert(k, units_of(k));
  }
  // Documented: hosts know this element in MJ.
  if (v[liquid] != fluid::not_computed) cv[liquid] /= 1000.0;
}
TESSAREL_FORTRAN_TWIN(tessarel_tmdprop_allphase);
