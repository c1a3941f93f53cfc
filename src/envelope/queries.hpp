// Bubble and dew points from the traced envelope, and states of a given vapour fraction.
#pragma once

#include "envelope/tracer.hpp"
#include "support/text.hpp"

namespace tessarel::envelope {

using fluid::Vector;

/// The incipient phase beside the feed, and the other variable of the point.
struct SaturationPoint {
  Vector x{}, y{};                      ///< liquid and vapour; one of them is the feed
  double result = fluid::not_computed;  ///< [bar] for `given` T, [K] for P
};

/// Finds the point in a traced table: `given` 'T' [K] or 'P' [bar], `what` 'B' or 'D'. The walk starts at the low end
/// of the branch asked for and goes past the maximum along the other one; the first point met counts. Returns 0 or a
/// code of errorstring; `interpolated` tells that Newton's method did not converge and the table's value stands.
int calc_bubdew(const eos::Fluid& fluid, const Table& table, char given, char what, double value,
                SaturationPoint& point, bool& interpolated);

/// Whether a query of calc_bubdew asks for a kind of point that the line lacks: an open line of one run at a value that
/// it passes once has no other answer than its own. Returns 0, or the code 462 for a bubble and 463 for a dew query.
int lacks_kind(int n, const Table& table, char given, char what, double value);

/// A dew temperature [K] at `p` [bar] from nothing but the feed, to about the price of a flash. It may be a metastable
/// one; false where Newton's method does not arrive.
bool dew_without_trace(const eos::Fluid& fluid, double p, double& t);

/// The state of the feed with the vapour fraction `beta` at given T [K] or P [bar]. Returns 0, 455 or 470.
int calc_prop_q(const eos::Fluid& fluid, double beta, char given, double value, SaturationPoint& point);

/// Text of a code; for one without a text `text` holds it.
Message errorstring(int ierr, FixedText<64>& text);

/// Ends of the branches [K], [bar].
struct Minima {
  double tbub, pbub, tdew, pdew;
};
Minima getminima(int n, const Table& table);

}  // namespace tessarel::envelope
