// Critical points: the true one of a pure fluid, the pseudo-critical one of a mixture by
// mole-fraction averages, and a search for a mixture on the conditions of Heidemann & Khalil (1980).
//
// Results go to the limits: tc [K], pc [Pa], rhoc [mol/m3], and tci, pci of the components for a mixture.
#pragma once

#include <array>
#include <cstdint>

#include "eos/model.hpp"
#include "fluid/component.hpp"
#include "fluid/limits.hpp"
#include "support/text.hpp"

namespace tessarel::envelope {

/// Critical points found last, by the parameters of the component. One that is found here is the one that the search
/// would end at, bit by bit.
class CriticalMemory {
 public:
  struct Point {
    double t = 0, p = 0, eta = 0;  ///< [K], [Pa], packing fraction
  };
  [[nodiscard]] const Point* find(const fluid::Component& component, bool simplified) const noexcept;
  void keep(const fluid::Component& component, bool simplified, const Point& point) noexcept;

 private:
  struct Entry {
    bool used = false, simplified = false;
    fluid::Component component;
    Point point;
  };
  std::array<Entry, 2 * fluid::nmax> entries_;
  std::size_t next_ = 0;
};

/// Critical state of the selected fluid: critpure of the only component, or critmixt_pseudo. Messages:
/// "Critical point: density iteration 1 not converged...", "... 2 not converged...",
/// "Critical point: : temperature-iteration not converged"; then tc and pc hold the start estimates.
Message critpoint(const eos::Eos& eos, int n, const double* z, fluid::Limits& limits, CriticalMemory* memory = nullptr);

/// The search for component `i`. Precondition: 1 <= i <= n.
Message critpure(const eos::Eos& eos, int n, const double* z, int i, fluid::Limits& limits,
                 CriticalMemory* memory = nullptr);

/// Critical points of all components and their averages over z.
Message critmixt_pseudo(const eos::Eos& eos, int n, const double* z, fluid::Limits& limits,
                        CriticalMemory* memory = nullptr);

/// The averages alone, with tci and pci of the same components in place.
Message average_critical_points(const eos::Eos& eos, int n, const double* z, fluid::Limits& limits);

/// Reserved: "No errors" and no other effect.
Message critmixt_brent();

/// Two-level search from tc, and the search of `critical_point` where that does not end in a stable critical state;
/// writes tc, pc and rhoc, the latter in 1/A3. "Critical point calulation failed..." or "No errors".
Message critmixt_newton(const eos::Eos& eos, int n, const double* z, fluid::Limits& limits);

/// The true critical point of a mixture: t [K], rho [1/A3], by the search along the limit of stability; `t_start` is an
/// estimate of the temperature. False if none is found that no other phase is more stable than.
bool critical_point(const eos::Eos& eos, int n, const double* z, double t_start, double& t, double& rho);

/// The same iteration on the caller's number density [1/A3] and temperature [K]; returns 0, 310, 320 or 321. `debug`
/// prints each pass to standard output.
std::int32_t cubic_newton(const eos::Eos& eos, bool debug, int n, const double* z, double& rho, double& t);

/// The temperature near `t` with det Q = 0 at the density `rho`; `q` (n x n) is Q one step before. Returns 0, 310, 321.
std::int32_t det_q_newton(const eos::Eos& eos, bool debug, int n, const double* z, double rho, double& t, double* q);

}  // namespace tessarel::envelope
