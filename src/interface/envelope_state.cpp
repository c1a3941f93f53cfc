#include "interface/envelope_state.hpp"

#include <algorithm>

#include "flash/adapters.hpp"
#include "solvers/pure_saturation.hpp"

namespace tessarel::interface {

using flash::pascal_per_bar;

envelope::Table& traced_envelope(Session& session, const double* z, int& ierr) {
  Session::Envelope& e = session.envelope;
  const int n = session.n();
  const bool same = e.traced && e.simplified == session.simplified && std::equal(z, z + n, e.z.begin());
  if (!same) {
    const eos::Fluid fluid{session.eos(), n, z, e.at_selection};
    e.ierr = envelope::calc_phaseenv(fluid, *e.table);
    std::copy_n(z, n, e.z.begin());
    e.simplified = session.simplified;
    e.traced = true;
    e.hasphaseenv = false;
  }
  ierr = e.ierr;
  return *e.table;
}

bool envelope_for_query(Session& session, const double* z) {
  int ierr = 0;
  const envelope::Table& table = traced_envelope(session, z, ierr);
  if (table.npnt < 2 || ierr == envelope::bad_start) return false;
  Session::Envelope& e = session.envelope;
  // The limits are those of the selected composition.
  if (!e.hasphaseenv && std::equal(z, z + session.n(), session.z.begin())) {
    fluid::Limits& l = session.limits;
    if (table.tcrtpe > 0) {
      l.tc = table.tcrtpe;
      l.pc = table.pcrtpe * pascal_per_bar;
    }
    l.tcritherm = table.tmaxpe;
    l.pcritherm = table.p_tmaxpe * pascal_per_bar;
    l.tcribar = table.t_pmaxpe;
    l.pcribar = table.pmaxpe * pascal_per_bar;
    e.hasphaseenv = true;
  }
  return true;
}

namespace {

/// Of a mixture of which one component alone is present: that of the component.
Message saturation_alone(const eos::Fluid& fluid, char given, double value, envelope::SaturationPoint& point) {
  solvers::PureSaturation found;
  const bool by_t = given == 'T';
  const Message message = by_t ? solvers::saturation_at_t(fluid, value, found)
                               : solvers::saturation_at_p(fluid, value * pascal_per_bar, found);
  if (ok(message)) point.result = by_t ? found.p / pascal_per_bar : found.t;
  return message;
}

}  // namespace

Message bubble_or_dew(Session& session, const double* z, char given, char what, double value,
                      envelope::SaturationPoint& point, FixedText<64>& text) {
  point = {};
  std::copy_n(z, session.n(), point.x.begin());
  std::copy_n(z, session.n(), point.y.begin());
  const envelope::SaturationPoint unanswered = point;
  if (const eos::Fluid alone{session.eos(), session.n(), z, session.limits}; alone.n > 1 && alone.pure())
    return saturation_alone(alone, given, value, point);
  if (!envelope_for_query(session, z)) return "Error calculating phase envelope...";
  bool interpolated = false;
  const eos::Fluid fluid{session.eos(), session.n(), z, session.limits};
  const envelope::Table& table = *session.envelope.table;
  int code = envelope::calc_bubdew(fluid, table, given, what, value, point, interpolated);
  if (code == 0) code = envelope::lacks_kind(fluid.n, table, given, what, value);
  if (code != 0) point = unanswered;
  if (interpolated) ++session.work.statistics.interpolated_queries;
  return envelope::errorstring(code, text);
}

}  // namespace tessarel::interface
