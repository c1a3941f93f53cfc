// The parameters of the components of a fluid or mixture, and the constants of the model. A value: constant between
// selections, handed to whatever calculates with it.
//
// Indices inside the library run from 0; the documented numbering of the interface (components, site types)
// runs from 1. Entries beyond `n` are stale and never read.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "support/text.hpp"

namespace tessarel::fluid {

inline constexpr int nmax = 20;      ///< capacity: components of a mixture
inline constexpr int max_sites = 5;  ///< capacity: association site types of a component

inline constexpr double gas_constant = 8.31441;                ///< R [J/(mol K)]
inline constexpr double avogadro_factor = 6.022045e-7;         ///< rho [1/A3] = factor / v [m3/mol]
inline constexpr double pressure_factor = 13806622.169047227;  ///< p [Pa] = factor * z * t * rho
inline constexpr double pi = 3.14159265359;                    ///< the model's pi
inline constexpr double pi_6 = 0.5235987755983333;             ///< the model's pi / 6
inline constexpr double not_computed = -8888.8;                ///< mark of a value that is not there

using Vector = std::array<double, nmax>;
using Matrix = std::array<Vector, nmax>;
template <class T>
using PerComponent = std::array<T, nmax>;
using Name = FixedText<32>;

/// An index into an array of the library.
constexpr std::size_t at(int i) noexcept {
  return static_cast<std::size_t>(i);
}

/// Parameters of the components and of their pairs, and the flags derived from both.
struct Parameters {
  int n = 0;                      ///< number of components
  PerComponent<Name> compname{};  ///< names as they stand in row 1 of the fluid records

  Vector tmin{}, tmax{};                      ///< validity range [K]
  Vector molmas{};                            ///< molar mass [g/mol]
  Vector omega{};                             ///< acentric factor
  Vector mseg{};                              ///< segment number
  Vector sigma{};                             ///< segment diameter [A]
  Vector epsil{};                             ///< dispersion energy / k [K]
  Vector parat{};                             ///< factor of the temperature-dependent diameter, 0.12
  Vector saftpar{};                           ///< temperature coefficient of the dispersion energy [K], 0
  Vector cp0_a{}, cp0_b{}, cp0_c{}, cp0_d{};  ///< ideal-gas heat capacity polynomial [J/(mol K), /K, /K2, /K3]
  Vector delhf0{};                            ///< ideal-gas enthalpy of formation at 298.15 K [J/mol]
  Vector dipole{};                            ///< [D]
  Vector quapole{};                           ///< [D A]
  Vector polariz{};                           ///< [A3], reported only

  // Association: nhb_typ site types on a component, nhb_no[i][a] sites of type a.
  PerComponent<std::int32_t> nhb_typ{};
  std::array<std::array<std::int32_t, max_sites>, nmax> nhb_no{};
  std::array<std::array<std::array<std::array<double, max_sites>, max_sites>, nmax>, nmax>
      eps_hb{};     ///< [i][k][a][b], K
  Matrix kap_hb{};  ///< [i][k]

  Matrix k_ij{};  ///< numbers, or codes of temperature correlations (kij.hpp)
  bool is_assoc = false, is_polar = false, is_dipole = false, is_quapole = false, is_quadip = false;
  PerComponent<bool> is_assoc_cmp{}, is_polar_cmp{};
};

/// Below this a molar mass [g/mol] is a misprint, in kg/mol perhaps; hydrogen atoms have it. What else means no fluid:
/// segment number, diameter, energy or lowest temperature of 0 or below, a highest temperature below the lowest, a bond
/// of negative energy or volume.
inline constexpr double least_molar_mass = 1.0;

enum class Moment { none, dipole, quadrupole };

}  // namespace tessarel::fluid
