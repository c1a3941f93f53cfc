#include "eos/derived.hpp"

#include <cmath>

#include "eos/pressure.hpp"
#include "flash/phase_check.hpp"
#include "interface/flash_checks.hpp"
#include "interface/routines_support.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

/// Refuses what is not a stable phase.
Message check_phase(Session& session, const double* x, double t, double v) {
  if (!adds_up(session.n(), x)) return "TESSAREL error: mole fractions must be none negative and sum to 1...";
  if (!positive(t) || !positive(v)) return "TESSAREL error: temperature and volume must be positive finite numbers...";
  if (t < 1.0 || t > 1e5) return no_model;
  if (below_packing(session, x, t, v)) return too_dense;
  const eos::Fluid phase{session.eos(), session.n(), x, session.limits};
  const double rho = fluid::avogadro_factor / v, p = eos::calc_p_rho(phase.eos, phase.n, x, t, rho);
  if (p > 1e12) return no_model;
  if (!(eos::calc_dp_drho(phase.eos, phase.n, x, t, rho) > 0))
    return "TESSAREL error: mechanically unstable at this composition, temperature and volume...";
  return flash::check_stable(phase, t, p, rho);
}

}  // namespace
}  // namespace tessarel::interface

extern "C" void tessarel_derived(const double* x, const double* t, const double* v, double* cp, double* w, double* jt,
                                 double* kappa, double* alpha, double* g, char* err, size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  Session& session = current_session();
  report(session, {x, t, v, cp, w, jt, kappa, alpha, g}, {err, err_len}, [&]() -> Message {
    *cp = *w = *jt = *kappa = *alpha = *g = fluid::not_computed;
    if (const Message refused = check_phase(session, x, *t, *v); !ok(refused)) return refused;
    const eos::Derived d = eos::calc_derived(session.eos(), session.n(), x, *t, *v);
    if (!std::isfinite(d.cp + d.w + d.jt + d.kappa + d.alpha + d.g))
      return "TESSAREL error: no finite properties at this composition, temperature and volume...";
    *cp = d.cp, *w = d.w, *jt = d.jt, *kappa = d.kappa, *alpha = d.alpha, *g = d.g;
    return no_errors;
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_derived);
