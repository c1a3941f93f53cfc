// Exports of the phase envelope: the trace, its table, bubble and dew points, states of a given vapour fraction.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "flash/adapters.hpp"
#include "interface/envelope_state.hpp"
#include "interface/flash_checks.hpp"
#include "interface/routines_support.hpp"
#include "tessarel/tessarel.h"

using namespace tessarel;
using namespace tessarel::interface;
using flash::pascal_per_bar;
using fluid::at;

namespace {

constexpr Message only_mixtures = "TESSAREL error: a phase envelope needs a mixture...";
constexpr Message wrong_count = "TESSAREL error: the envelope is that of all selected components...";

/// What a call that traces refuses.
Message check(const Session& session, const int32_t* n, const double* z) {
  if (session.n() < 2) return only_mixtures;
  if (*n != session.n()) return wrong_count;
  return adds_up(*n, z) ? no_errors : bad_fractions;
}
bool can_trace(const Session& session) {
  const int32_t n = session.n();
  return session.selected() && ok(check(session, &n, session.z.data()));
}

/// The four queries in K and Pa: `phase` receives the incipient phase.
void saturation(char given, char what, const double* value, double* phase, double* result, TextField err) {
  Session& session = current_session();
  FixedText<64> text;
  report(session, {value, phase, result}, err, [&]() -> Message {
    const int32_t n = session.n();
    if (const Message refused = check(session, &n, session.z.data()); !ok(refused)) return refused;
    envelope::SaturationPoint point;
    const bool by_t = given == 'T';
    const Message message =
        bubble_or_dew(session, session.z.data(), given, what, by_t ? *value : *value / pascal_per_bar, point, text);
    *result = by_t && point.result != fluid::not_computed ? point.result * pascal_per_bar : point.result;
    std::copy_n((what == 'B' ? point.y : point.x).begin(), n, phase);
    return message;
  });
}

}  // namespace

extern "C" {

void tessarel_calc_phaseenv(const int32_t* n, const double* z, int32_t* ierr) {
  Session& session = current_session();
  if (ierr == nullptr) return;
  *ierr = refused_code;
  run(any_null({n, z}) || !session.selected() || !ok(check(session, n, z)), [&] {
    int code = 0;
    session.envelope.traced = false;
    traced_envelope(session, z, code);
    envelope_for_query(session, z);
    *ierr = code;
  });
}

void tessarel_calc_bubdew(const int32_t* n, const double* z, const char* given, const char* what, const double* value,
                          double* x, double* y, double* result, char* errormsg, size_t given_len, size_t what_len,
                          size_t errormsg_len) {
  Session& session = current_session();
  FixedText<64> unknown;
  report(session, {n, z, value, x, y, result}, {errormsg, errormsg_len}, [&]() -> Message {
    if (const Message refused = check(session, n, z); !ok(refused)) return refused;
    const auto first = [](const char* text, size_t length) { return usable_field(text, length) ? text[0] : ' '; };
    envelope::SaturationPoint point;
    const Message message =
        bubble_or_dew(session, z, first(given, given_len), first(what, what_len), *value, point, unknown);
    *result = point.result;
    std::copy_n(point.x.begin(), *n, x);
    std::copy_n(point.y.begin(), *n, y);
    return message;
  });
}

void tessarel_calc_bubble_p(const double* t, double* y, double* p, char* err, size_t err_len) {
  saturation('T', 'B', t, y, p, {err, err_len});
}
void tessarel_calc_bubble_t(const double* p, double* y, double* t, char* err, size_t err_len) {
  saturation('P', 'B', p, y, t, {err, err_len});
}
void tessarel_calc_dew_p(const double* t, double* x, double* p, char* err, size_t err_len) {
  saturation('T', 'D', t, x, p, {err, err_len});
}
void tessarel_calc_dew_t(const double* p, double* x, double* t, char* err, size_t err_len) {
  saturation('P', 'D', p, x, t, {err, err_len});
}

void tessarel_calc_prop_q(const int32_t* n, const double* z, const double* beta, const char* given, const double* value,
                          double* x, double* y, double* result, char* errormsg, size_t given_len, size_t errormsg_len) {
  Session& session = current_session();
  FixedText<64> unknown;
  report(session, {n, z, beta, value, x, y, result}, {errormsg, errormsg_len}, [&]() -> Message {
    if (const Message refused = check(session, n, z); !ok(refused)) return refused;
    if (!(*beta >= 0 && *beta <= 1) || !positive(*value))
      return "TESSAREL error: vapour fraction must be 0 to 1, temperature and pressure positive...";
    envelope::SaturationPoint point;
    const eos::Fluid fluid{session.eos(), *n, z, session.limits};
    const int code =
        envelope::calc_prop_q(fluid, *beta, usable_field(given, given_len) ? given[0] : ' ', *value, point);
    *result = point.result;
    std::copy_n(point.x.begin(), *n, x);
    std::copy_n(point.y.begin(), *n, y);
    return envelope::errorstring(code, unknown);
  });
}

void tessarel_getphaseenv(int32_t* npnt, double* t, double* p, double* x, double* y) {
  Session& session = current_session();
  if (npnt == nullptr) return;
  *npnt = 0;
  run(any_null({t, p, x, y}) || !can_trace(session), [&] {
    int ierr = 0;
    const envelope::Table& table = traced_envelope(session, session.z.data(), ierr);
    const auto n = at(session.n());
    for (int j = 1; j <= table.npnt; ++j) {
      const envelope::Point& point = table.point(j);
      const auto row = at(j - 1);
      t[row] = std::exp(point[n]) - 273.15;
      p[row] = std::exp(point[n + 1]);
      envelope::unwrap(session.n(), session.z.data(), table.beta(j), point, x + row * fluid::nmax,
                       y + row * fluid::nmax);
    }
    *npnt = table.npnt;
  });
}

void tessarel_getminima(double* tbub, double* pbub, double* tdew, double* pdew) {
  Session& session = current_session();
  scalars(!can_trace(session), {tbub, pbub, tdew, pdew}, [&] {
    int ierr = 0;
    const envelope::Table& table = traced_envelope(session, session.z.data(), ierr);
    const bool line = table.npnt > 0;
    const envelope::Minima m =
        line ? envelope::getminima(session.n(), table)
             : envelope::Minima{fluid::not_computed, fluid::not_computed, fluid::not_computed, fluid::not_computed};
    *tbub = m.tbub, *pbub = m.pbub, *tdew = m.tdew, *pdew = m.pdew;
  });
}
void tessarel_getmaxima(double* tmax, double* p_tmax, double* pmax, double* t_pmax) {
  Session& session = current_session();
  scalars(!can_trace(session), {tmax, p_tmax, pmax, t_pmax}, [&] {
    int ierr = 0;
    const envelope::Table& table = traced_envelope(session, session.z.data(), ierr);
    *tmax = table.tmaxpe, *p_tmax = table.p_tmaxpe, *pmax = table.pmaxpe, *t_pmax = table.t_pmaxpe;
  });
}

void tessarel_errorstring(const int32_t* ierr, char* errormsg, size_t errormsg_len) {
  const TextField err{errormsg, errormsg_len};
  FixedText<64> text;
  err.assign(ierr == nullptr ? null_argument : envelope::errorstring(*ierr, text));
}

void tessarel_write_phaseenv(void) {
  Session& session = current_session();
  run(!can_trace(session), [&] {
    int ierr = 0;
    const envelope::Table& table = traced_envelope(session, session.z.data(), ierr);
    const auto n = at(session.n());
    std::printf("Phase Envelope\n--------------------------------------------------\n");
    std::printf("K_i [-], T [K], T [\u00b0C], P [bar]  : \nvap_idx = %d\n", table.vap_idx);
    for (int j = 1; j <= table.npnt; ++j) {
      const envelope::Point& point = table.point(j);
      std::printf("%5d   %s", j, j < table.vap_idx ? "liq" : "vap");
      for (std::size_t i = 0; i < n; ++i) std::printf("%12.5f", std::exp(point[i]));
      const double t = std::exp(point[n]);
      std::printf("%12.5f%12.5f%12.5f\n", t, t - 273.15, std::exp(point[n + 1]));
    }
    const auto line = [](const char* name, double t, double p) {
      std::printf("%s%12.5f%12.5f%12.5f\n", name, t, t - 273.15, p);
    };
    if (table.tcrtpe > 0) line("Crit. ", table.tcrtpe, table.pcrtpe);
    line("Max.T ", table.tmaxpe, table.p_tmaxpe);
    line("Max.P ", table.t_pmaxpe, table.pmaxpe);
    if (table.tminpe > 0) line("Min.T ", table.tminpe, table.p_tminpe);
    if (table.pminpe > 0) line("Min.P ", table.t_pminpe, table.pminpe);
  });
}

void tessarel_phaseenvelope(int32_t* n, double* t, double* p, double* x, double* y) {
  tessarel_getphaseenv(n, t, p, x, y);
}

}  // extern "C"

TESSAREL_FORTRAN_TWIN(tessarel_phaseenvelope);
