#include <algorithm>

#include "envelope/critical_point.hpp"
#include "eos/pressure.hpp"
#include "interface/boundary.hpp"
#include "interface/flash_checks.hpp"
#include "interface/routines_support.hpp"
#include "tessarel/tessarel.h"

extern "C" void tessarel_criticalpoint(double* tc, double* pc, double* rhoc, char* err, size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  Session& session = current_session();
  report(session, {tc, pc, rhoc}, {err, err_len}, [&]() -> Message {
    *tc = *pc = *rhoc = fluid::not_computed;
    if (!adds_up(session.n(), session.z.data())) return bad_fractions;
    const eos::Fluid f = session.fluid();
    if (f.pure()) {
      fluid::Limits limits = session.limits;
      const int present = 1 + static_cast<int>(std::max_element(f.z, f.z + f.n) - f.z);
      if (const Message message = envelope::critpure(f.eos, f.n, f.z, present, limits); !ok(message)) return message;
      *tc = limits.tc, *pc = limits.pc, *rhoc = limits.rhoc;
      return no_errors;
    }
    double t = 0, rho = 0;
    // From the average of the selection, whatever a query of the envelope has made of the limits since.
    if (!envelope::critical_point(f.eos, f.n, f.z, session.envelope.at_selection.tc, t, rho))
      return "Critical point calulation failed...";
    *tc = t;
    *pc = eos::calc_p_rho(f.eos, f.n, f.z, t, rho);
    *rhoc = rho / fluid::avogadro_factor;
    return no_errors;
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_criticalpoint);
