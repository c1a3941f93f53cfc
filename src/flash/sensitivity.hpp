// Derivatives of an equilibrium state by temperature, pressure and the amounts of the feed, exact, from the matrix of
// Newton's method (Michelsen & Mollerup 2007, ch. 14).
#pragma once

#include <array>

#include "flash/pt_flash.hpp"

namespace tessarel::flash {

/// One mole of feed, molar SI. Columns of derivatives: 0 by T, 1 by P, 2 + j by the amount of component j, the other
/// amounts held. All quantities are per mole of the feed, so that sum of z_j d/dn_j is 0.
struct Sensitivity {
  static constexpr std::size_t columns = fluid::nmax + 2;
  using Row = std::array<double, columns>;
  double beta = 0, v = 0, h = 0, s = 0;
  Row dbeta{}, dv{}, dh{}, ds{};
  std::array<Row, fluid::nmax> dx{}, dy{};  ///< [component][column]
};

/// Flash at t [K], p [Pa] and the derivatives of the state; one phase counts as success, with beta of 0 or 1 and zeros
/// for the phase that is not there. The derivative of s by an absent component, which is infinite, is the mark of a
/// value not computed. Messages as calc_pt_flash, but for "no phase split detected".
Message flash_sensitivity(const eos::Fluid& fluid, double t, double p, Sensitivity& result);

}  // namespace tessarel::flash
