// Exports of the state functions: a, z, p and their derivatives, heat capacities, fugacity coefficients.
#include "eos/caloric.hpp"
#include "eos/compressibility.hpp"
#include "eos/fugacity.hpp"
#include "eos/helmholtz.hpp"
#include "eos/pressure.hpp"
#include "interface/flash_checks.hpp"
#include "interface/routines_support.hpp"
#include "interface/sectmdprop.hpp"

using namespace tessarel;
using namespace tessarel::interface;

/// A number at (n, x, t, rho), an array, and a number of a mixture or a component alone.
#define NUMBER(name)                                                                                     \
  extern "C" void tessarel_##name(const int32_t* n, const double* x, const double* t, const double* rho, \
                                  double* out) {                                                         \
    Session& session = current_session();                                                                \
    scalar(!valid_count(session, n) || any_null({x, t, rho}), out,                                       \
           [&] { return eos::name(session.eos(), *n, x, *t, *rho); });                                   \
  }
#define ARRAY(name)                                                                                      \
  extern "C" void tessarel_##name(const int32_t* n, const double* x, const double* t, const double* rho, \
                                  double* out) {                                                         \
    Session& session = current_session();                                                                \
    run(!valid_count(session, n) || any_null({x, t, rho, out}),                                          \
        [&] { eos::name(session.eos(), *n, x, *t, *rho, out); });                                        \
  }
#define NUMBER_PURE(name)                                                                                   \
  extern "C" void tessarel_##name(const int32_t* n, const double* x, const int32_t* ipure, const double* t, \
                                  const double* rho, double* out) {                                         \
    Session& session = current_session();                                                                   \
    scalar(!valid_count(session, n) || !valid_pure(n, ipure) || any_null({x, t, rho}), out,                 \
           [&] { return eos::name(session.eos(), *n, x, *ipure, *t, *rho); });                              \
  }

NUMBER(calc_a)
NUMBER(calc_da_dt)
NUMBER(calc_d2a_dt2)
NUMBER(calc_d3a_dt3)
NUMBER(calc_da_drho)
NUMBER(calc_d2a_drho2)
NUMBER(calc_d3a_drho3)
NUMBER(calc_d4a_drho4)
ARRAY(calc_da_dx)
ARRAY(calc_d2a_dxdx)
ARRAY(calc_d3a_dxdxdx)
ARRAY(calc_d2a_dtdx)
ARRAY(calc_d2a_drhodx)
ARRAY(calc_da_dn)
ARRAY(calc_d2a_dndn)
ARRAY(calc_d3a_dndndn)

NUMBER_PURE(calc_z)
NUMBER_PURE(calc_dz_drho)
NUMBER_PURE(calc_d2z_drho2)
NUMBER_PURE(calc_d3z_drho3)
NUMBER(calc_dz_dt)
NUMBER(calc_d2z_dt2)
NUMBER(calc_d2z_dtdrho)
ARRAY(calc_dz_dx)
ARRAY(calc_d2z_dxdx)
ARRAY(calc_dz_dn)
ARRAY(calc_d2z_dndn)
NUMBER(calc_dz_dp)  // with p in the place of rho

NUMBER(calc_p_rho)
NUMBER(calc_dp_dt)
NUMBER(calc_d2p_dt2)
NUMBER(calc_dp_drho)
NUMBER(calc_d2p_drho2)
NUMBER(calc_d3p_drho3)
NUMBER(calc_d2p_dtdrho)
ARRAY(calc_dp_dx)
ARRAY(calc_dp_dn)
ARRAY(calc_d2p_dndn)

NUMBER(calc_cv)
NUMBER(calc_dcv_dt)

extern "C" void tessarel_calc_sectmdprop(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* cv, double* dpdt, double* dpdv, double* d2pdt2, double* d2pdv2,
                                         double* d2pdtdv, double* dcvdt) {
  Session& session = current_session();
  scalars(!valid_count(session, n) || any_null({x, t, rho}), {cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt}, [&] {
    const SecondOrder d = calc_sectmdprop(session.eos(), *n, x, *t, *rho);
    *cv = d.cv, *dpdt = d.dpdt, *dpdv = d.dpdv, *d2pdt2 = d.d2pdt2, *d2pdv2 = d.d2pdv2, *d2pdtdv = d.d2pdtdv;
    *dcvdt = d.dcvdt;
  });
}

extern "C" void tessarel_calc_p(const double* t, const double* v, double* p) {
  Session& session = current_session();
  const bool refused = !session.selected() || any_null({t, v});
  scalar(refused || !ok(check_phase_at(session, *t, *v)), p,
         [&] { return eos::calc_p(session.eos(), session.n(), session.z.data(), *t, *v); });
}
extern "C" void tessarel_calc_p_deta(const int32_t* n, const int32_t* ipure, const double* t, const double* eta,
                                     double* p, double* dp_deta, double* d2p_deta2, double* d3p_deta3) {
  Session& session = current_session();
  scalars(!valid_count(session, n) || !valid_pure(n, ipure) || any_null({t, eta}), {p, dp_deta, d2p_deta2, d3p_deta3},
          [&] {
            const auto f = eos::calc_p_deta(session.eos(), *n, *ipure, *t, *eta);
            *p = f.p, *dp_deta = f.dp_deta, *d2p_deta2 = f.d2p_deta2, *d3p_deta3 = f.d3p_deta3;
          });
}

ARRAY(calc_lnphi_rho)
ARRAY(calc_dlnphi_dt_rho)
ARRAY(calc_dlnphi_dp_rho)
ARRAY(calc_dlnphi_drho_t)
ARRAY(calc_dlnphi_dx_rho)
ARRAY(calc_dlnphi_dn_rho)
ARRAY(calc_d2lnphi_dxdx_rho)
ARRAY(calc_d2lnphi_dndn_rho)
ARRAY(calc_lnfug_rho)
ARRAY(calc_dlnfug_dn_rho)
ARRAY(calc_d2lnfug_dndn_rho)

namespace {

bool valid_phase(const int32_t* phase) noexcept {
  return phase != nullptr && (*phase == 1 || *phase == 2 || *phase == -1);
}

}  // namespace

/// Arrays at (n, x, t, p, phase): one, two, three or four.
#define AT_PHASE(name, outputs, list)                                                                  \
  extern "C" void tessarel_##name(const int32_t* n, const double* x, const double* t, const double* p, \
                                  const int32_t* phase, UNWRAP outputs) {                              \
    Session& session = current_session();                                                              \
    run(!valid_count(session, n) || !valid_phase(phase) || any_null({x, t, p, UNWRAP list}),           \
        [&] { eos::name(session.eos(), *n, x, *t, *p, *phase, UNWRAP list); });                        \
  }
#define UNWRAP(...) __VA_ARGS__
AT_PHASE(calc_lnphi, (double* o), (o))
AT_PHASE(calc_lnphi_tp, (double* o, double* dt, double* dp), (o, dt, dp))
AT_PHASE(calc_lnphi_n, (double* o, double* dn), (o, dn))
AT_PHASE(calc_lnphi_tpn, (double* o, double* dt, double* dp, double* dn), (o, dt, dp, dn))
AT_PHASE(calc_dlnphi_dt, (double* o), (o))
AT_PHASE(calc_dlnphi_dp, (double* o), (o))
AT_PHASE(calc_dlnphi_dx, (double* o), (o))
AT_PHASE(calc_dlnphi_dn, (double* o), (o))

extern "C" void tessarel_calc_lnphi_tprho(const int32_t* n, const double* x, const double* t, const double* p,
                                          const double* rho, double* lnphi) {
  Session& session = current_session();
  run(!valid_count(session, n) || any_null({x, t, p, rho, lnphi}),
      [&] { eos::calc_lnphi_tprho(session.eos(), *n, x, *t, *p, *rho, lnphi); });
}
extern "C" void tessarel_calc_lnphi_tpxn(const int32_t* n, const double* x, const double* t, const double* p,
                                         const double* rho, double* dlnphi_dt, double* dlnphi_dp, double* dlnphi_dx,
                                         double* dlnphi_dn) {
  Session& session = current_session();
  run(!valid_count(session, n) || any_null({x, t, p, rho, dlnphi_dt, dlnphi_dp, dlnphi_dx, dlnphi_dn}),
      [&] { eos::calc_lnphi_tpxn(session.eos(), *n, x, *t, *p, *rho, dlnphi_dt, dlnphi_dp, dlnphi_dx, dlnphi_dn); });
}

// The pure-fluid forms.
extern "C" void tessarel_calc_lnphi_rho_pure(const double* t, const double* p, double* lnphi_l, double* lnphi_v,
                                             double* rho_l, double* rho_v) {
  Session& session = current_session();
  scalars(!session.selected() || any_null({t, p}), {lnphi_l, lnphi_v, rho_l, rho_v},
          [&] { eos::calc_lnphi_rho_pure(session.eos(), *t, *p, *lnphi_l, *lnphi_v, *rho_l, *rho_v); });
}
extern "C" void tessarel_calc_lnphi_eta(const double* t, const double* p, double* lnphi_l, double* lnphi_v) {
  Session& session = current_session();
  scalars(!session.selected() || any_null({t, p}), {lnphi_l, lnphi_v},
          [&] { eos::calc_lnphi_eta(session.eos(), *t, *p, *lnphi_l, *lnphi_v); });
}
extern "C" void tessarel_calc_dlnphi_dp_rho_pure(const double* t, const double* p, const double* rho_l,
                                                 const double* rho_v, double* d_l, double* d_v) {
  scalars(!current_session().selected() || any_null({t, p, rho_l, rho_v}), {d_l, d_v},
          [&] { eos::calc_dlnphi_dp_rho_pure(*t, *p, *rho_l, *rho_v, *d_l, *d_v); });
}
extern "C" void tessarel_calc_dlnphi_dt_rho_pure(const double* t, const double* p, const double* rho_l,
                                                 const double* rho_v, double* d_l, double* d_v) {
  Session& session = current_session();
  scalars(!session.selected() || any_null({t, p, rho_l, rho_v}), {d_l, d_v},
          [&] { eos::calc_dlnphi_dt_rho_pure(session.eos(), *t, *p, *rho_l, *rho_v, *d_l, *d_v); });
}
