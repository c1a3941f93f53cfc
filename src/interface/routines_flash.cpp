// Exports of the phase split: the adapters it is written against, its steps, the flashes.
#include <algorithm>
#include <cmath>

#include "flash/adapters.hpp"
#include "flash/general_flash.hpp"
#include "flash/pt_flash.hpp"
#include "flash/rachford_rice.hpp"
#include "flash/stability.hpp"
#include "interface/flash_checks.hpp"
#include "interface/routines_support.hpp"

using namespace tessarel;
using namespace tessarel::interface;
using fluid::Vector;

namespace {

constexpr Message bad_pair =
    "TESSAREL error: the values given must be finite, and pressure, temperature, volume positive...";
constexpr Message bad_start = "TESSAREL error: the compositions to start from must be finite numbers, none negative...";

/// Amounts of which at least one is positive.
bool usable_amounts(int n, const double* z) {
  const bool finite = std::all_of(z, z + n, [](double v) { return v >= 0 && std::isfinite(v); });
  return finite && std::any_of(z, z + n, [](double v) { return v > 0; });
}

bool finite(int n, const double* values) {
  return std::all_of(values, values + n, [](double v) { return std::isfinite(v); });
}

using PtFlash = Message (*)(const eos::Fluid&, double, double, double*, double*, double&);

/// The flashes at given temperature and pressure: their checks.
void flash_at_tp(PtFlash flash, const double* t, const double* p, double* x, double* y, double* beta, TextField err) {
  Session& session = current_session();
  report(session, {t, p, x, y, beta}, err, [&]() -> Message {
    if (const Message refused = check_flash(session, *t, *p); !ok(refused)) return refused;
    if (x[0] < 0) {
      Vector start{};
      std::copy_n(x, session.n(), start.begin());
      start[0] = -x[0];
      if (!usable_amounts(session.n(), start.data()) || !usable_amounts(session.n(), y)) return bad_start;
    }
    const Message message = flash(session.fluid(), *t, *p, x, y, *beta);
    const int n = session.n();
    return !ok(message) || (finite(n, x) && finite(n, y) && std::isfinite(*beta)) ? message : no_state;
  });
}

using Balance = void (*)(int, const double*, const double*, double*, double*, double&);

/// The solutions of the material balance: their checks.
void material_balance(Balance solve, const int32_t* n, double* x, double* y, const double* z, const double* lnk,
                      double* beta) {
  run(!valid_count(current_session(), n) || any_null({x, y, z, lnk, beta}) || !usable_amounts(*n, z) ||
          !finite(*n, lnk) || !std::isfinite(*beta),
      [&] { solve(*n, z, lnk, x, y, *beta); });
}

/// Conditions of a step that hosts call by itself; pressures there are in bar.
flash::Conditions conditions(const eos::Eos& eos, const int32_t* n, const double* t, const double* p_bar) {
  return {eos, *n, *t, *p_bar * flash::pascal_per_bar};
}

}  // namespace

extern "C" {

void tessarel_fugacoeff(const int32_t* icon, const int32_t* mt, const int32_t* n, const double* z, const double* t,
                        const double* p, double* lnphi, double* dlnphi_dt, double* dlnphi_dp, double* dlnphi_dn,
                        int32_t* ic, int32_t* ierr) {
  Session& session = current_session();
  if (icon == nullptr) return;
  const bool by_tp = *icon == 2 || *icon == 6, by_n = *icon == 3 || *icon == 6;
  const bool refused = !valid_count(session, n) || any_null({mt, z, t, p, lnphi, ic, ierr}) ||
                       (by_tp && any_null({dlnphi_dt, dlnphi_dp})) || (by_n && dlnphi_dn == nullptr);
  run(refused, [&] {
    flash::fugacoeff(session.eos(), *icon, *mt, *n, z, *t, *p, lnphi, dlnphi_dt, dlnphi_dp, dlnphi_dn, *ic, *ierr);
  });
}
void tessarel_fluiddata(const int32_t* i, double* tc, double* pc, double* omega) {
  Session& session = current_session();
  scalars(!valid_place(session, i), {tc, pc, omega},
          [&] { flash::fluiddata(session.model.parameters, session.limits, *i, *tc, *pc, *omega); });
}
void tessarel_auxprop(const int32_t* n, const double* x, const double* t, double* p, const int32_t* mt, double* z,
                      double* aux) {
  Session& session = current_session();
  run(!valid_count(session, n) || any_null({x, t, p, mt, z, aux}),
      [&] { flash::auxprop(session.eos(), *n, x, *t, *p, *mt, *z, aux); });
}
void tessarel_auxprop_v(const int32_t* n, const double* x, const double* t, double* p, const double* v, double* aux) {
  Session& session = current_session();
  run(!valid_count(session, n) || any_null({x, t, p, v, aux}),
      [&] { flash::auxprop_v(session.eos(), *n, x, *t, *p, *v, aux); });
}

void tessarel_solrac(const int32_t* n, double* x, double* y, const double* z, const double* lnk, double* beta) {
  material_balance(flash::solrac, n, x, y, z, lnk, beta);
}
void tessarel_rr_solve(const int32_t* n, double* x, double* y, const double* z, const double* lnk, double* beta) {
  material_balance(flash::rr_solve, n, x, y, z, lnk, beta);
}
void tessarel_dirsub(const int32_t* n, const double* t, const double* p_bar, double* x, double* y, const double* z,
                     const double* lnk, double* lnk_new, double* beta, double* dlnk, double* errk, double* errmax,
                     const double* fz, double* tmx, double* tmy, double* gmix) {
  Session& session = current_session();
  const bool refused = !valid_count(session, n) ||
                       any_null({t, p_bar, x, y, z, lnk, lnk_new, beta, dlnk, errk, errmax, fz, tmx, tmy, gmix}) ||
                       !positive(*t) || !positive(*p_bar) || !usable_amounts(*n, z) || !finite(*n, lnk) ||
                       !finite(*n, fz) || !std::isfinite(*beta);
  run(refused, [&] {
    const eos::Eos eos = session.eos();
    flash::Feed feed{conditions(eos, n, t, p_bar), z, {}};
    std::copy_n(fz, *n, feed.d.begin());
    flash::set_composition(feed.phase, *n, z);
    flash::evaluate(feed.c, feed.phase);
    flash::Substitution s;
    std::copy_n(lnk, *n, s.lnk.begin());
    s.beta = *beta;
    flash::dirsub(feed, s);
    std::copy_n(s.liquid.x.begin(), *n, x);
    std::copy_n(s.vapour.x.begin(), *n, y);
    std::copy_n(s.lnk_new.begin(), *n, lnk_new);
    std::copy_n(s.dlnk.begin(), *n, dlnk);
    *beta = s.beta;
    *errk = s.errk;
    *errmax = s.errmax;
    *tmx = s.tmx;
    *tmy = s.tmy;
    *gmix = s.gmix;
  });
}
void tessarel_hebmin(const int32_t* n, const int32_t* option, int32_t* conv, int32_t* split, const double* t,
                     const double* p_bar, double* y, const double* z, const double* fz, double* tm,
                     const int32_t* /*idebug*/) {
  Session& session = current_session();
  const bool refused = !valid_count(session, n) || any_null({option, conv, split, t, p_bar, y, z, fz, tm}) ||
                       !positive(*t) || !positive(*p_bar) || !usable_amounts(*n, z) || !usable_amounts(*n, y) ||
                       !finite(*n, fz);
  run(refused, [&] {
    const eos::Eos eos = session.eos();
    const double* known[] = {z};
    const auto test = flash::hebmin(conditions(eos, n, t, p_bar), z, fz, known, *option == 0, y);
    *conv = std::isfinite(test.tm) ? test.conv : 0;
    *split = test.split ? 1 : 0;
    *tm = test.tm;
  });
}
void tessarel_solmin(const int32_t* n, int32_t* ifail, const double* t, const double* p_bar, double* x, double* y,
                     const double* z, const double* gfeed, const int32_t* /*idebug*/) {
  Session& session = current_session();
  if (ifail == nullptr) return;
  *ifail = 1;
  const bool refused = !valid_count(session, n) || any_null({t, p_bar, x, y, z, gfeed}) || !positive(*t) ||
                       !positive(*p_bar) || !usable_amounts(*n, z) || !usable_amounts(*n, x) ||
                       !usable_amounts(*n, y) || !std::isfinite(*gfeed);
  run(refused, [&] {
    const eos::Eos eos = session.eos();
    *ifail = flash::solmin(conditions(eos, n, t, p_bar), z, *gfeed, x, y) ? 0 : 1;
  });
}

void tessarel_calc_pt_flash(const double* t, const double* p, double* x, double* y, double* beta, char* errormsg,
                            size_t errormsg_len) {
  flash_at_tp(flash::calc_pt_flash, t, p, x, y, beta, {errormsg, errormsg_len});
}
void tessarel_calc_flash_michelsen(const double* t, const double* p, double* x, double* y, double* beta, char* errormsg,
                                   size_t errormsg_len) {
  flash_at_tp(flash::calc_pt_flash, t, p, x, y, beta, {errormsg, errormsg_len});
}
void tessarel_flmain(const double* t, const double* p, double* x, double* y, double* beta, char* errormsg,
                     size_t errormsg_len) {
  flash_at_tp(flash::calc_pt_flash, t, p, x, y, beta, {errormsg, errormsg_len});
}
void tessarel_calc_flash_velda(const double* t, const double* p, double* x, double* y, double* beta, char* errormsg,
                               size_t errormsg_len) {
  flash_at_tp(flash::calc_flash_velda, t, p, x, y, beta, {errormsg, errormsg_len});
}

void tessarel_calc_ab_flash(const int32_t* mode, const double* a, const double* b, double* t, double* p, double* v,
                            double* u, double* h, double* s, double* q, double* x, double* y, char* errormsg,
                            size_t errormsg_len) {
  Session& session = current_session();
  report(session, {mode, a, b, t, p, v, u, h, s, q, x, y}, {errormsg, errormsg_len}, [&]() -> Message {
    if (*mode < 1 || *mode > 5) return "TESSAREL error: mode of the flash must be 1 to 5...";
    const bool b_is_positive = *mode == 1 || *mode == 4;
    if (!positive(*a) || !std::isfinite(*b) || (b_is_positive && !positive(*b))) return bad_pair;
    const double t_given = *mode == 1 ? *b : *mode == 4 ? *a : 300.0, p_given = *mode <= 3 ? *a : 1e5;
    if (const Message refused = check_flash(session, t_given, p_given); !ok(refused)) return refused;
    // A component is smallest when hot.
    const double v_given = *mode == 4 ? *b : *mode == 5 ? *a : 1.0, hot = *mode == 4 ? *a : 1000.0;
    if (below_packing(session, session.z.data(), hot, v_given)) return too_dense;
    flash::AbResult r;
    const Message message = flash::calc_ab_flash(session.fluid(), *mode, *a, *b, r);
    *t = r.t, *p = r.p, *v = r.v, *u = r.u, *h = r.h, *s = r.s, *q = r.q;
    std::copy_n(r.x.begin(), session.n(), x);
    std::copy_n(r.y.begin(), session.n(), y);
    return message;
  });
}
void tessarel_genflash(const int32_t* ispec, const double* spec1, const double* spec2, const int32_t* n, double* t,
                       double* p, const double* z, double* bv, double* bl, double* x, double* y, double* h, double* s,
                       double* u, double* v, const int32_t* /*debug*/, int32_t* icode) {
  Session& session = current_session();
  if (icode == nullptr) return;
  *icode = refused_code;
  const bool refused = !valid_count(session, n) || any_null({ispec, spec1, spec2, t, p, z, bv, bl, x, y, h, s, u, v}) ||
                       *ispec < 1 || *ispec > 5 || !std::isfinite(*spec1) || !positive(*spec2) ||
                       ((*ispec == 1 || *ispec == 4) && !positive(*spec1)) || !usable_amounts(*n, z);
  run(refused, [&] {
    flash::GeneralState state;
    const eos::Fluid fluid{session.eos(), *n, z, session.limits};
    *icode = flash::genflash(static_cast<flash::Given>(*ispec), *spec1, *spec2, fluid, state);
    *t = state.t, *p = state.p, *bv = state.bv, *bl = state.bl;
    *h = state.h, *s = state.s, *u = state.u, *v = state.v;
    std::copy_n(state.x.begin(), *n, x);
    std::copy_n(state.y.begin(), *n, y);
  });
}

}  // extern "C"
