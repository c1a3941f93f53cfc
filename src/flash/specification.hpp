// What a flash for a pair of properties is asked for, and Newton's step towards it in t and p.
//
// Reduced by the gas constant: t [K], p [bar], h and u [K], s, v = V / R [K/bar].
#pragma once

#include <algorithm>
#include <cmath>

#include "flash/equilibrium.hpp"

namespace tessarel::flash {

/// The pairs, named by their properties; the order of the values is that of `properties_of`.
enum class Given { tp = 1, ph, ps, tv, vu, pu, vp, ts, vh, vs, hs, pq, tq, vq };

enum class Property { t, p, v, u, h, s, q };

struct Pair {
  Property first, second;
};
constexpr Pair properties_of(Given given) {
  constexpr Pair pairs[] = {{Property::t, Property::p}, {Property::h, Property::p}, {Property::s, Property::p},
                            {Property::t, Property::v}, {Property::u, Property::v}, {Property::u, Property::p},
                            {Property::v, Property::p}, {Property::t, Property::s}, {Property::h, Property::v},
                            {Property::s, Property::v}, {Property::s, Property::h}, {Property::q, Property::p},
                            {Property::t, Property::q}, {Property::q, Property::v}};
  return pairs[static_cast<int>(given) - 1];
}

/// What the amounts of two phases add to h, s, v and q when they follow ln f_v - ln f_l to 0; zeros for one phase. And
/// the vapour fraction q with its derivatives along the equilibrium.
struct Following {
  double h = 0, s = 0, v = 0, q = 0;
  double fraction = 0, fraction_t = 0, fraction_p = 0;
};

/// A property with its derivatives by t and p, and what `Following` adds to it.
struct Response {
  double value, by_t, by_p, following;
};
inline Response response(Property property, const Properties& whole, double t, double p, const Following& f) {
  switch (property) {
    case Property::t:
      return {t, 1, 0, 0};
    case Property::p:
      return {p, 0, 1, 0};
    case Property::v:
      return {whole.v, whole.v_t, whole.v_p, f.v};
    case Property::u:
      return {whole.u(p), whole.u_t(p), whole.u_p(p), f.h - p * f.v};
    case Property::h:
      return {whole.h, whole.h_t, whole.h_p, f.h};
    case Property::q:
      return {f.fraction, f.fraction_t, f.fraction_p, f.q};
    case Property::s:
      break;
  }
  return {whole.s, whole.s_t(t), whole.s_p(), f.s};
}

struct Specification {
  Given given;
  double first, second;

  [[nodiscard]] bool has(Property property) const {
    const Pair pair = properties_of(given);
    return pair.first == property || pair.second == property;
  }
  [[nodiscard]] bool varies_t() const { return !has(Property::t); }
  [[nodiscard]] bool varies_p() const { return !has(Property::p); }

  /// The first property, and the second where the first is t, against their targets.
  [[nodiscard]] Property searched() const {
    const Pair pair = properties_of(given);
    return pair.first == Property::t ? pair.second : pair.first;
  }
  [[nodiscard]] double target() const { return properties_of(given).first == Property::t ? second : first; }
  [[nodiscard]] double residual(const Properties& whole, double t, double p) const {
    return response(searched(), whole, t, p, {}).value - target();
  }
  /// How far the properties are from their targets, relative; energies to their own size and that of R t.
  [[nodiscard]] double distance(const Properties& whole, double t, double p, const Following& f) const {
    const auto of = [&](Property property, double target) {
      const bool energy = property == Property::h || property == Property::u;
      const double least = property == Property::s ? 1.0 : energy ? t : 0.0;
      const double value = response(property, whole, t, p, f).value;
      return std::abs(target - value) / (property == Property::q ? 1.0 : std::abs(target) + least);
    };
    const Pair pair = properties_of(given);
    return std::max(of(pair.first, first), of(pair.second, second));
  }
  /// The steps of t and p that bring both properties to their targets to first order. False for a singular system.
  bool step(const Properties& whole, double t, double p, const Following& following, double& dt, double& dp) const {
    dt = dp = 0;
    if (given == Given::tp) return true;
    const Pair pair = properties_of(given);
    const Response a = response(pair.first, whole, t, p, following), b = response(pair.second, whole, t, p, following);
    const double error_a = first - a.value - a.following, error_b = second - b.value - b.following;
    const double det = a.by_t * b.by_p - a.by_p * b.by_t;
    dt = (error_a * b.by_p - a.by_p * error_b) / det;
    dp = (a.by_t * error_b - b.by_t * error_a) / det;
    return std::isfinite(dt) && std::isfinite(dp);
  }
};

/// Size of a step of t and p, relative. Of a liquid p is known no better than its volume: a step that does not change
/// the volume counts as none.
inline double step_size(const Properties& whole, double t, double p, double dt, double dp) {
  const double of_volume = 10.0 * std::abs(dp * whole.v_p) / whole.v;
  return std::max(std::abs(dt) / t, std::min(std::abs(dp) / p, of_volume));
}

}  // namespace tessarel::flash
