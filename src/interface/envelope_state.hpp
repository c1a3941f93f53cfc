// When the phase envelope of a session is traced: at the first reading of it, for the composition and the parameters as
// they are then.
#pragma once

#include "envelope/queries.hpp"
#include "interface/session.hpp"

namespace tessarel::interface {

/// The table of the composition `z`, traced if need be from the critical point of the selection. `ierr` tells how the
/// trace ended.
envelope::Table& traced_envelope(Session& session, const double* z, int& ierr);

/// The same for a query: the limits of the session become those of the trace. A trace ends well enough for queries with
/// any line, also where the critical point fits nowhere in it.
bool envelope_for_query(Session& session, const double* z);

/// A bubble or dew point of `z`, as envelope::calc_bubdew; `text` holds the message of a code without a text.
Message bubble_or_dew(Session& session, const double* z, char given, char what, double value,
                      envelope::SaturationPoint& point, FixedText<64>& text);

}  // namespace tessarel::interface
