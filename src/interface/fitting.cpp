// Entries for regression programs: they overwrite parameters of the selected fluid with trial values and return what is
// compared with measurements. The trial values stay; critical point and limits are those of the selection.
#include <algorithm>
#include <cmath>

#include "eos/density.hpp"
#include "flash/adapters.hpp"
#include "flash/pt_flash.hpp"
#include "fluid/combining_rules.hpp"
#include "interface/flash_checks.hpp"
#include "interface/parameter_keys.hpp"
#include "interface/routines_support.hpp"
#include "interface/session_boundary.hpp"
#include "solvers/psat_tsat.hpp"
#include "solvers/residual.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

using fluid::at, fluid::Parameters;

bool valid_segments(double m, double sigma, double epsil) {
  return positive(m) && positive(sigma) && positive(epsil);
}

void set_segments(Parameters& p, std::size_t i, double m, double sigma, double epsil) {
  p.mseg[i] = m;
  p.sigma[i] = sigma;
  p.epsil[i] = epsil;
}

/// Bonds between the first two site types, none between sites of one type.
void set_association(Parameters& p, std::size_t i, double energy, double volume) {
  auto& self = p.eps_hb[i][i];
  self[0][0] = self[1][1] = 0.0;
  self[0][1] = self[1][0] = energy;
  p.kap_hb[i][i] = volume;
}

void set_moment(Session& session, double mu) {
  Parameters& p = session.model.parameters;
  // Not by the flags as they are now: a trial value of 0 must not end the fit of a moment.
  if (session.moment == fluid::Moment::dipole) p.dipole[0] = mu;
  if (session.moment == fluid::Moment::quadrupole) p.quapole[0] = mu;
}

/// Saturation pressure and density of the saturated liquid, from the parameters as they are. The message is that of the
/// density, also after a saturation pressure that failed.
Message saturated_liquid(Session& session, double t, double& p, double& rho) {
  derive(session);
  const eos::Fluid fluid = session.fluid();
  const Message saturation = solvers::calc_psat(fluid, t, p);
  double v = 0;
  const Message density = eos::calc_v(fluid.eos, fluid.n, fluid.z, t, p, 1, v);
  rho = 1.0 / v;
  if (!ok(density) || std::isfinite(p * rho)) return density;
  return ok(saturation) ? no_state : saturation;
}

/// The three fits of a pure fluid: `set(session)` stores what is beyond m, sigma and epsilon, the values `extra`, of
/// which none may be below `least`.
template <class Set>
void fit_pure(std::initializer_list<const double*> extra, double least, const double* m, const double* sigma,
              const double* epsil, const double* t, double* p, double* rho, TextField err, Set&& set) {
  Session& session = current_session();
  const bool missing = std::find(extra.begin(), extra.end(), nullptr) != extra.end();
  report(session, {m, sigma, epsil, t, p, rho, missing ? nullptr : m}, err, [&]() -> Message {
    const bool valid =
        std::all_of(extra.begin(), extra.end(), [&](const double* e) { return *e >= least && std::isfinite(*e); });
    if (session.n() != 1) return "TESSAREL error: this entry is for a pure fluid...";
    if (!valid_segments(*m, *sigma, *epsil) || !valid) return bad_parameter;
    if (!positive(*t)) return bad_state;
    set_segments(session.model.parameters, 0, *m, *sigma, *epsil);
    set(session);
    return saturated_liquid(session, *t, *p, *rho);
  });
}

/// Stores the interaction parameter of components 1 and 2.
Message set_pair(Session& session, double kij) {
  if (session.n() < 2) return "TESSAREL error: an interaction parameter needs a mixture...";
  if (!std::isfinite(kij)) return "TESSAREL error: an interaction parameter must be a finite number...";
  auto& entries = session.model.parameters.k_ij;
  if (entries[0][1] == kij && entries[1][0] == kij) return no_errors;
  entries[0][1] = entries[1][0] = kij;
  derive(session);
  return no_errors;
}

/// Bubble point for q of 0, dew point for 1; nothing for any other. `given` is T [K] or P [bar].
Message saturation_point(Session& session, SessionBoundary& boundary, double kij, char given, double value, double q,
                         double& result) {
  if (!positive(value)) return bad_state;
  if (const Message refused = set_pair(session, kij); !ok(refused)) return refused;
  if (q != 0.0 && q != 1.0) return no_errors;
  if (!adds_up(session.n(), session.z.data())) return bad_fractions;
  envelope::SaturationPoint point;
  const Message message = boundary.saturation(given, q == 0.0 ? 'B' : 'D', value, point);
  result = point.result;
  return message;
}

/// Columns of the table of parameters, one row for each component.
enum Column : int {
  molar_mass,
  segments,
  diameter,
  energy,
  bond_energy,
  bond_volume,
  dipole,
  quadrupole,
  polarisability
};
constexpr int columns = 9;

struct ParameterTable {
  int n;
  const double* values;
  double operator()(std::size_t i, Column c) const { return values[at(static_cast<int>(i) + n * c)]; }
};

Message check(const ParameterTable& par) {
  if (!std::all_of(par.values, par.values + par.n * columns, [](double v) { return std::isfinite(v); }))
    return bad_parameter;
  for (std::size_t i = 0; i < at(par.n); ++i) {
    if (par(i, molar_mass) < fluid::least_molar_mass) return bad_molar_mass;
    if (par(i, bond_energy) < 0 || par(i, bond_volume) < 0 ||
        !valid_segments(par(i, segments), par(i, diameter), par(i, energy)))
      return bad_parameter;
  }
  return no_errors;
}

void load(Parameters& p, const ParameterTable& par) {
  for (std::size_t i = 0; i < at(par.n); ++i) {
    p.molmas[i] = par(i, molar_mass);
    set_segments(p, i, par(i, segments), par(i, diameter), par(i, energy));
    p.dipole[i] = par(i, dipole);
    p.quapole[i] = par(i, quadrupole);
    p.polariz[i] = par(i, polarisability);
    set_association(p, i, par(i, bond_energy), par(i, bond_volume));
    const bool associates = par(i, bond_energy) != 0 && par(i, bond_volume) != 0;
    p.nhb_typ[i] = associates ? 2 : 0;
    if (associates) p.nhb_no[i][0] = p.nhb_no[i][1] = 1;
  }
}

Message equilibrium(Session& session, double t, double p, double& h, double& s, double* x, double* y) {
  if (const Message refused = check_flash(session, t, p); !ok(refused)) return refused;
  const Message message = solvers::tp_zelmaron(session.fluid(), t, p, h, s, x, y);
  const auto finite = [&](const double* of) {
    return std::all_of(of, of + session.n(), [](double value) { return std::isfinite(value); });
  };
  return !ok(message) || (std::isfinite(h + s) && finite(x) && finite(y)) ? message : no_state;
}

}  // namespace
}  // namespace tessarel::interface

using namespace tessarel;
using namespace tessarel::interface;

extern "C" void tessarel_prho_mset(const double* m, const double* sigma, const double* epsil, const double* t,
                                   double* p, double* rho, char* err, size_t err_len) {
  fit_pure({}, 0.0, m, sigma, epsil, t, p, rho, {err, err_len}, [](Session&) {});
}
TESSAREL_FORTRAN_TWIN(tessarel_prho_mset);

extern "C" void tessarel_prho_mseekt(const double* m, const double* sigma, const double* epsil, const double* eps,
                                     const double* kap, const double* t, double* p, double* rho, char* err,
                                     size_t err_len) {
  fit_pure({eps, kap}, 0.0, m, sigma, epsil, t, p, rho, {err, err_len}, [&](Session& session) {
    Parameters& parameters = session.model.parameters;
    if (parameters.is_assoc) set_association(parameters, 0, *eps, *kap);
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_prho_mseekt);

extern "C" void tessarel_prho_msemut(const double* m, const double* sigma, const double* epsil, const double* mu,
                                     const double* t, double* p, double* rho, char* err, size_t err_len) {
  fit_pure({mu}, -HUGE_VAL, m, sigma, epsil, t, p, rho, {err, err_len},
           [&](Session& session) { set_moment(session, *mu); });
}
TESSAREL_FORTRAN_TWIN(tessarel_prho_msemut);

extern "C" void tessarel_xy_kij(const double* kij, const double* p, const double* t, double* x, double* y, char* err,
                                size_t err_len) {
  Session& session = current_session();
  report(session, {kij, p, t, x, y}, {err, err_len}, [&]() -> Message {
    if (session.n() != 2) return "TESSAREL error: a mixture of two components is needed...";
    if (const Message refused = check_flash(session, *t, *p); !ok(refused)) return refused;
    if (const Message refused = set_pair(session, *kij); !ok(refused)) return refused;
    for (std::size_t i = 0; i < 2; ++i) x[i] = y[i] = session.z[i];
    double beta = 0;
    const Message message = flash::calc_pt_flash(session.fluid(), *t, *p, x, y, beta);
    return message == flash::no_phase_split ? no_errors : message;
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_xy_kij);

extern "C" void tessarel_p_kij(const double* kij, const double* t, const double* q, double* p, char* err,
                               size_t err_len) {
  Session& session = current_session();
  SessionBoundary boundary(session);
  report(session, {kij, t, q, p}, {err, err_len}, [&] {
    double bar = 0;
    const Message message = saturation_point(session, boundary, *kij, 'T', *t, *q, bar);
    // 0: no point was asked for.
    if (bar != 0) *p = bar == fluid::not_computed ? bar : bar * flash::pascal_per_bar;
    return message;
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_p_kij);

extern "C" void tessarel_t_kij(const double* kij, const double* p, const double* q, double* t, char* err,
                               size_t err_len) {
  Session& session = current_session();
  SessionBoundary boundary(session);
  report(session, {kij, p, q, t}, {err, err_len},
         [&] { return saturation_point(session, boundary, *kij, 'P', *p / flash::pascal_per_bar, *q, *t); });
}
TESSAREL_FORTRAN_TWIN(tessarel_t_kij);

extern "C" void tessarel_hsxy_mp(const double* t, const double* p, const double* par, double* h, double* s, double* x,
                                 double* y, char* err, size_t err_len) {
  Session& session = current_session();
  report(session, {t, p, par, h, s, x, y}, {err, err_len}, [&]() -> Message {
    const ParameterTable table{session.n(), par};
    if (const Message refused = check(table); !ok(refused)) return refused;
    load(session.model.parameters, table);
    derive(session);
    session.moment = fluid::moment_of(session.model.parameters);
    std::copy_n(session.z.begin(), session.n(), x);
    std::copy_n(session.z.begin(), session.n(), y);
    return equilibrium(session, *t, *p, *h, *s, x, y);
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_hsxy_mp);

extern "C" void tessarel_tp_zelmaron(const double* t, const double* p, double* h, double* s, double* x, double* y,
                                     char* err, size_t err_len) {
  Session& session = current_session();
  report(session, {t, p, h, s, x, y}, {err, err_len}, [&] { return equilibrium(session, *t, *p, *h, *s, x, y); });
}

extern "C" void tessarel_calc_hs_res(const double* t, const double* p, const double* v, double* h, double* s) {
  Session& session = current_session();
  const bool refused = !session.selected() || any_null({t, p, v});
  scalars(refused || !ok(check_phase_at(session, *t, *v, *p)), {h, s},
          [&] { solvers::calc_hs_res(session.fluid(), *t, *p, *v, *h, *s); });
}
