// From the molar SI values of the solvers to the engineering units of the property calls.
#pragma once

#include "fluid/parameters.hpp"

namespace tessarel::interface {

/// Conversions for one composition: K to degrees Celsius, Pa to bar, mol to kg, J to kJ for the caloric properties.
class EngineeringUnits {
 public:
  /// `composition`: mole fractions that give the molar mass.
  EngineeringUnits(const fluid::Parameters& p, const double* composition) noexcept {
    double molar_mass = 0;
    for (int i = 0; i < p.n; ++i) molar_mass += composition[i] * p.molmas[fluid::at(i)];
    moles_ = 1000.0 / molar_mass;
  }

  static void temperature(double& t) noexcept { t -= 273.15; }
  static void pressure(double& p) noexcept { p /= 100000.0; }
  void volume(double& v) const noexcept { v *= moles_; }
  void caloric(double& x) const noexcept { x = x * moles_ / 1000.0; }
  /// The mark of a value that is not there passes through.
  void heat_capacity(double& c) const noexcept {
    if (c != fluid::not_computed) caloric(c);
  }
  void heat_capacity_slope(double& x) const noexcept { x *= moles_; }
  void per_volume(double& x) const noexcept { x /= moles_; }
  void per_volume_squared(double& x) const noexcept { x /= moles_ * moles_; }

 private:
  double moles_;  ///< mol/kg
};

}  // namespace tessarel::interface
