// An equilibrium state with its first derivatives: what the general flash iterates on, and what hosts get as
// sensitivities. Reduced by the gas constant: t [K], p [bar], h and u [K], s, v = V / R [K/bar].
//
// The derivatives come from the matrix of Newton's method: with H the Hessian of the Gibbs energy by the vapour amounts
// and g_i = ln f_i^v - ln f_i^l, the amounts follow a change of a variable w by H dn/dw = -dg/dw (Michelsen & Mollerup
// 2007, ch. 11).
#pragma once

#include "flash/split.hpp"

namespace tessarel::flash {

/// Properties of one mole of a phase, or of the whole, and their derivatives at constant composition, or along the
/// equilibrium.
struct Properties {
  double h = 0, s = 0, v = 0;
  double h_t = 0, h_p = 0, v_t = 0, v_p = 0;

  [[nodiscard]] double u(double p) const { return h - p * v; }
  [[nodiscard]] double s_t(double t) const { return h_t / t; }
  [[nodiscard]] double s_p() const { return -v_t; }
  [[nodiscard]] double u_t(double p) const { return h_t - p * v_t; }
  [[nodiscard]] double u_p(double p) const { return h_p - v - p * v_p; }
};

/// Of one phase at its density; p [bar].
Properties phase_properties(const eos::Eos& eos, int n, const Phase& phase, double t, double p);

/// Of the whole at fixed amounts of the phases.
Properties mix(const Properties& liquid, const Properties& vapour, double beta);

/// How the phases enter the matrix: with their derivatives by composition, or as ideal mixtures, which is successive
/// substitution.
enum class Mixing { real, ideal };

/// Two phases at t and p and their linearisation. Arrays belong to the arena frame of the caller.
class Equilibrium {
 public:
  Equilibrium(const eos::Eos& eos, int n, const double* z);

  /// Evaluates the phases of `split`. False where the Hessian is not positive definite or something is not finite.
  bool linearise(double t, double p, const Split& split, Mixing mixing = Mixing::real);

  /// The response of the scaled vapour amounts, M w = -scale gradient, dn = beta (1 - beta) scale w.
  void respond(const Vector& gradient, Vector& scaled) const;
  /// The same as a change of ln K.
  void change_of_lnk(const Vector& gradient, Vector& delta) const;
  /// beta (1 - beta) times the sum of a_i scale_i w_i: a sum over the responding amounts.
  [[nodiscard]] double over_amounts(const Vector& a, const Vector& scaled) const;

  double t = 0, p = 0;
  Split split;
  Vector liquid_t{}, liquid_p{}, vapour_t{}, vapour_p{};  ///< derivatives of lnphi by t and p
  Vector g{}, g_t{}, g_p{};                   ///< ln f_v - ln f_l and its derivatives by t and p at constant amounts
  Vector scaled_g{}, scaled_t{}, scaled_p{};  ///< responses to them
  Properties liquid, vapour;                  ///< of the phases
  Properties overall;                         ///< of the whole, derivatives along the equilibrium
  double h_g = 0, s_g = 0, v_g = 0;           ///< changes of the whole when the amounts follow g to 0
  double beta_t = 0, beta_p = 0, beta_g = 0;  ///< of the vapour fraction, by t and p and with g

  [[nodiscard]] const double* liquid_dn() const { return liquid_dn_; }
  [[nodiscard]] const double* vapour_dn() const { return vapour_dn_; }
  [[nodiscard]] const Vector& scale() const { return scale_; }

 private:
  const eos::Eos& eos_;
  int n_;
  const double* z_;
  double *liquid_dn_, *vapour_dn_;
  numerics::Square<double> factors_;
  Vector scale_{};
};

}  // namespace tessarel::flash
