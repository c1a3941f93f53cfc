// The equations of a state with a given vapour fraction (Michelsen 1980, doi:10.1016/0378-3812(80)80001-X): unknowns
// are ln K, ln T and ln P, of which one is specified.
//
//   F_i     = ln K_i + ln phi_i(vapour) - ln phi_i(liquid)
//   F_(n+1) = sum of (y_i - x_i)
//   F_(n+2) = X(spec) - S
#pragma once

#include "envelope/table.hpp"
#include "flash/phase.hpp"
#include "numerics/views.hpp"

namespace tessarel::envelope {

/// Whether the last evaluation is spared that would only confirm the solution; phases and Jacobian are then those of
/// the iterate before, some 1e-6 beside it.
enum class Finish { early, confirmed };

/// Whether the correction after two in a row is rounding, as Newton's method converges: with the square.
inline bool next_is_rounding(double error, double last) {
  return error < 1e-5 && last < 1e-2 && error * error * error < 1e-14 * last * last;
}

/// The equations at one iterate and their Jacobian, factored on demand. Arrays belong to the caller's arena frame.
class Saturation {
 public:
  Saturation(const eos::Eos& eos, int n, const double* z, double beta);

  Selectors selectors;

  /// Evaluates both phases at `x`, with `spec` (from 0) specified as `value`. False if something is not finite.
  bool prepare(const Point& x, int spec, double value);
  /// Factors the Jacobian and gives the correction of Newton's method; false if it is singular.
  bool correction(Point& step);
  /// Solves with the factors of the last correction: dX for a unit change of the specified variable.
  void tangent(Point& dx);

  /// At most ten steps of Newton's method from `x` with `spec` held at `value`. True to 1e-12, or to the rounding of
  /// the fugacities.
  bool solve(Point& x, int spec, double value, Finish finish = Finish::early);
  /// Whether Newton's method has arrived after a correction of this size and the one before it.
  [[nodiscard]] bool converged(double error, double last) const;
  /// Adds a correction; its root mean square.
  double apply(const Point& step, Point& x) const;

  [[nodiscard]] const flash::Phase& liquid() const { return liquid_; }
  [[nodiscard]] const flash::Phase& vapour() const { return vapour_; }
  /// The phase of the feed; at its end of the line the other one is there in traces.
  [[nodiscard]] const flash::Phase& bulk() const { return beta_ < 0.5 ? liquid_ : vapour_; }
  /// Largest |F_i| over the fugacities and the material balance.
  [[nodiscard]] double residual() const;
  [[nodiscard]] int size() const { return n_ + 2; }

 private:
  const eos::Eos& eos_;
  int n_;
  const double* z_;
  double beta_;
  flash::Phase liquid_{}, vapour_{};
  double *liquid_dn_, *vapour_dn_;
  double* jacobian_;  ///< (n + 2) x (n + 2)
  std::array<std::int32_t, fluid::nmax + 2> pivots_{};
  Point f_{};
};

/// The point near `x` at which the tangent of the line has no part along `variable` (ln T or ln P: n or n + 1), found
/// along the variable `by` or one that moves better there. `critical`: the critical point if it is known, else null.
bool find_turning_point(Saturation& system, int n, std::size_t variable, std::size_t by, const Point* critical,
                        Point& x);

/// Compositions at K: x_i = z_i / (1 - beta + beta K_i), y_i = K_i x_i.
void unwrap(int n, const double* z, double beta, const Point& x, double* liquid, double* vapour);

/// Largest |ln K| of the components that are there.
double largest_lnk(int n, const double* z, const Point& x);

/// Neville's interpolation of all `size` variables through four points, at the `value` of the variable `spec`; false
/// where that variable turns or stands still between them.
bool interpolate_four(const std::array<const Point*, 4>& points, std::size_t spec, double value, std::size_t size,
                      Point& x);

}  // namespace tessarel::envelope
