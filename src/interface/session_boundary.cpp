#include "interface/session_boundary.hpp"

#include "envelope/criticality.hpp"
#include "flash/adapters.hpp"
#include "interface/envelope_state.hpp"

namespace tessarel::interface {

Message SessionBoundary::saturation(char given, char what, double value, envelope::SaturationPoint& point) {
  return bubble_or_dew(session_, session_.z.data(), given, what, value, point, text_);
}

Message SessionBoundary::dew_t(double p, double& t) {
  // A line that nothing else has needed yet is not traced for this.
  if (!traced() && envelope::dew_without_trace(session_.fluid(), p / flash::pascal_per_bar, t)) return no_errors;
  envelope::SaturationPoint point;
  const Message message = saturation('P', 'D', p / flash::pascal_per_bar, point);
  t = point.result;
  return message;
}

const envelope::Table& SessionBoundary::table() {
  int ierr = 0;
  return traced_envelope(session_, session_.z.data(), ierr);
}

bool SessionBoundary::trace() {
  return envelope_for_query(session_, session_.z.data());
}

bool SessionBoundary::above_critical(double t) {
  double& known = session_.envelope.above_critical;
  if (t >= known) return true;
  const eos::Fluid fluid = session_.fluid();
  if (!envelope::stable_at_all_densities(fluid.eos, fluid.n, fluid.z, t)) return false;
  known = t;
  return true;
}

}  // namespace tessarel::interface
