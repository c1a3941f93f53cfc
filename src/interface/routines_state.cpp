// Exports of the state functions: a, z, p and their derivatives, heat capacities, fugacity coefficients.
#include "eos/caloric.hpp"
#include "eos/compressibility.hpp"
#include "eos/fugacity.hpp"
#include "eos/helmholtz.hpp"
#include "eos/pressure.hpp"
#include "interface/routines_support.hpp"
#include "interface/sectmdprop.hpp"

using namespace tessarel;
using namespace tessarel::routines;
using boundary::any_null;

/// A number at (n, x, t, rho), an array, and a number of a mixture or a component alone.
#define NUMBER(module, name)                                                                              \
  extern "C" void tessarel_##name(const int32_t* n, const double* x, const double* t, const double* rho,  \
                                  double* out) {                                                          \
    scalar(!valid_count(n) || any_null({x, t, rho}), out, [&] { return module::name(*n, x, *t, *rho); }); \
  }
#define ARRAY(module, name)                                                                              \
  extern "C" void tessarel_##name(const int32_t* n, const double* x, const double* t, const double* rho, \
                                  double* out) {                                                         \
    run(!valid_count(n) || any_null({x, t, rho, out}), [&] { module::name(*n, x, *t, *rho, out); });     \
  }
#define NUMBER_PURE(module, name)                                                                           \
  extern "C" void tessarel_##name(const int32_t* n, const double* x, const int32_t* ipure, const double* t, \
                                  const double* rho, double* out) {                                         \
    scalar(!valid_count(n) || !valid_pure(n, ipure) || any_null({x, t, rho}), out,                          \
           [&] { return module::name(*n, x, *ipure, *t, *rho); });                                          \
  }

NUMBER(calc_a_module, calc_a)
NUMBER(calc_a_module, calc_da_dt)
NUMBER(calc_a_module, calc_d2a_dt2)
NUMBER(calc_a_module, calc_d3a_dt3)
NUMBER(calc_a_module, calc_da_drho)
NUMBER(calc_a_module, calc_d2a_drho2)
NUMBER(calc_a_module, calc_d3a_drho3)
NUMBER(calc_a_module, calc_d4a_drho4)
ARRAY(calc_a_module, calc_da_dx)
ARRAY(calc_a_module, calc_d2a_dxdx)
ARRAY(calc_a_module, calc_d3a_dxdxdx)
ARRAY(calc_a_module, calc_d2a_dtdx)
ARRAY(calc_a_module, calc_d2a_drhodx)
ARRAY(calc_a_module, calc_da_dn)
ARRAY(calc_a_module, calc_d2a_dndn)
ARRAY(calc_a_module, calc_d3a_dndndn)

NUMBER_PURE(calc_z_module, calc_z)
NUMBER_PURE(calc_z_module, calc_dz_drho)
NUMBER_PURE(calc_z_module, calc_d2z_drho2)
NUMBER_PURE(calc_z_module, calc_d3z_drho3)
NUMBER(calc_z_module, calc_dz_dt)
NUMBER(calc_z_module, calc_d2z_dt2)
NUMBER(calc_z_module, calc_d2z_dtdrho)
ARRAY(calc_z_module, calc_dz_dx)
ARRAY(calc_z_module, calc_d2z_dxdx)
ARRAY(calc_z_module, calc_dz_dn)
ARRAY(calc_z_module, calc_d2z_dndn)
NUMBER(calc_z_module, calc_dz_dp)  // with p in the place of rho

NUMBER(calc_p_module, calc_p_rho)
NUMBER(calc_p_module, calc_dp_dt)
NUMBER(calc_p_module, calc_d2p_dt2)
NUMBER(calc_p_module, calc_dp_drho)
NUMBER(calc_p_module, calc_d2p_drho2)
NUMBER(calc_p_module, calc_d3p_drho3)
NUMBER(calc_p_module, calc_d2p_dtdrho)
ARRAY(calc_p_module, calc_dp_dx)
ARRAY(calc_p_module, calc_dp_dn)
ARRAY(calc_p_module, calc_d2p_dndn)

NUMBER(calc_hsu_module, calc_cv)
NUMBER(calc_hsu_module, calc_dcv_dt)

extern "C" void tessarel_calc_sectmdprop(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* cv, double* dpdt, double* dpdv, double* d2pdt2, double* d2pdv2,
                                         double* d2pdtdv, double* dcvdt) {
  scalars(!valid_count(n) || any_null({x, t, rho}), {cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt}, [&] {
    const SecondOrder d = calc_sectmdprop(*n, x, *t, *rho);
    *cv = d.cv, *dpdt = d.dpdt, *dpdv = d.dpdv, *d2pdt2 = d.d2pdt2, *d2pdv2 = d.d2pdv2, *d2pdtdv = d.d2pdtdv;
    *dcvdt = d.dcvdt;
  });
}

extern "C" void tessarel_calc_p(const double* t, const double* v, double* p) {
  scalar(!boundary::fluid_selected() || any_null({t, v}), p, [&] { return calc_p_module::calc_p(*t, *v); });
}
extern "C" void tessarel_calc_p_deta(const int32_t* n, const int32_t* ipure, const double* t, const double* eta,
                                     double* p, double* dp_deta, double* d2p_deta2, double* d3p_deta3) {
  scalars(!valid_count(n) || !valid_pure(n, ipure) || any_null({t, eta}), {p, dp_deta, d2p_deta2, d3p_deta3}, [&] {
    const auto f = calc_p_module::calc_p_deta(*n, *ipure, *t, *eta);
    *p = f.p, *dp_deta = f.dp_deta, *d2p_deta2 = f.d2p_deta2, *d3p_deta3 = f.d3p_deta3;
  });
}

ARRAY(fugacity, calc_lnphi_rho)
ARRAY(fugacity, calc_dlnphi_dt_rho)
ARRAY(fugacity, calc_dlnphi_dp_rho)
ARRAY(fugacity, calc_dlnphi_drho_t)
ARRAY(fugacity, calc_dlnphi_dx_rho)
ARRAY(fugacity, calc_dlnphi_dn_rho)
ARRAY(fugacity, calc_d2lnphi_dxdx_rho)
ARRAY(fugacity, calc_d2lnphi_dndn_rho)
ARRAY(fugacity, calc_lnfug_rho)
ARRAY(fugacity, calc_dlnfug_dn_rho)
ARRAY(fugacity, calc_d2lnfug_dndn_rho)

namespace {

bool valid_phase(const int32_t* phase) noexcept {
  return phase != nullptr && (*phase == 1 || *phase == 2 || *phase == -1);
}

}  // namespace

/// Arrays at (n, x, t, p, phase): one, two, three or four.
#define AT_PHASE(name, outputs, list)                                                                  \
  extern "C" void tessarel_##name(const int32_t* n, const double* x, const double* t, const double* p, \
                                  const int32_t* phase, UNWRAP outputs) {                              \
    run(!valid_count(n) || !valid_phase(phase) || any_null({x, t, p, UNWRAP list}),                    \
        [&] { fugacity::name(*n, x, *t, *p, *phase, UNWRAP list); });                                  \
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
  run(!valid_count(n) || any_null({x, t, p, rho, lnphi}),
      [&] { fugacity::calc_lnphi_tprho(*n, x, *t, *p, *rho, lnphi); });
}
extern "C" void tessarel_calc_lnphi_tpxn(const int32_t* n, const double* x, const double* t, const double* p,
                                         const double* rho, double* dlnphi_dt, double* dlnphi_dp, double* dlnphi_dx,
                                         double* dlnphi_dn) {
  run(!valid_count(n) || any_null({x, t, p, rho, dlnphi_dt, dlnphi_dp, dlnphi_dx, dlnphi_dn}),
      [&] { fugacity::calc_lnphi_tpxn(*n, x, *t, *p, *rho, dlnphi_dt, dlnphi_dp, dlnphi_dx, dlnphi_dn); });
}

// The pure-fluid forms.
extern "C" void tessarel_calc_lnphi_rho_pure(const double* t, const double* p, double* lnphi_l, double* lnphi_v,
                                             double* rho_l, double* rho_v) {
  scalars(!boundary::fluid_selected() || any_null({t, p}), {lnphi_l, lnphi_v, rho_l, rho_v},
          [&] { fugacity::calc_lnphi_rho_pure(*t, *p, *lnphi_l, *lnphi_v, *rho_l, *rho_v); });
}
extern "C" void tessarel_calc_lnphi_eta(const double* t, const double* p, double* lnphi_l, double* lnphi_v) {
  scalars(!boundary::fluid_selected() || any_null({t, p}), {lnphi_l, lnphi_v},
          [&] { fugacity::calc_lnphi_eta(*t, *p, *lnphi_l, *lnphi_v); });
}
#define ON_BOTH_ROOTS(name)                                                                                   \
  extern "C" void tessarel_##name(const double* t, const double* p, const double* rho_l, const double* rho_v, \
                                  double* d_l, double* d_v) {                                                 \
    scalars(!boundary::fluid_selected() || any_null({t, p, rho_l, rho_v}), {d_l, d_v},                        \
            [&] { fugacity::name(*t, *p, *rho_l, *rho_v, *d_l, *d_v); });                                     \
  }
ON_BOTH_ROOTS(calc_dlnphi_dp_rho_pure)
ON_BOTH_ROOTS(calc_dlnphi_dt_rho_pure)
