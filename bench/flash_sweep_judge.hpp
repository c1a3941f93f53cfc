// The judge of the flash: phases at given temperature and pressure by brute force. It has no code and no starts in
// common with the flash and calls nothing but densities and fugacity coefficients of one phase.
#pragma once

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <vector>

namespace tessarel::sweep {

using Vec = std::vector<double>;

/// Splitmix64: random numbers that are the same on every machine.
class Random {
 public:
  Random(std::initializer_list<std::uint64_t> seeds) {
    for (const auto s : seeds) state_ = next() ^ s;
  }
  std::uint64_t next();
  /// Between 0 and 1, both excluded.
  double uniform() { return (static_cast<double>(next() >> 11) + 0.5) * 0x1p-53; }
  double normal() { return std::sqrt(-2 * std::log(uniform())) * std::cos(6.283185307179586 * uniform()); }
  double gamma(double shape);

 private:
  std::uint64_t state_ = 0;
};

/// A homogeneous phase of the components that are in the feed.
struct Phase {
  Vec x;           ///< fractions
  int root = 0;    ///< 1 liquid-like, 2 vapour-like density
  double rho = 0;  ///< number density [1/A3]
  Vec lnphi;
  double g = 0;  ///< Gibbs energy over RT but for a part linear in the fractions: sum x (ln x + ln phi)
};

struct Split {
  double beta = 0;  ///< fraction of y
  Phase x, y;       ///< y has the larger molar volume
  double gain = 0;  ///< Gibbs energy of the split less that of the feed, over RT; negative for a real split
};

/// A trial phase and its tangent plane distance.
struct Trial {
  Phase w;
  double tpd = 0;
};

struct Answer {
  bool stable = false;         ///< the feed is one phase; `least` then is its tangent plane distance
  bool three = false;          ///< no stable split into two phases was found
  std::optional<Split> split;  ///< the stable split, or with `three` that of least Gibbs energy
  double least = 0;            ///< least tangent plane distance from the feed
};

class Judge {
 public:
  /// The fractions are those of the selected fluid; components of fraction 0 are left out in all that follows.
  /// `effort` multiplies the random places that the search looks at and the number of those refined.
  Judge(const Vec& fractions, double t, double p, int effort = 1);

  /// The fractions of the components that are in the feed.
  Vec compress(const double* fractions) const;
  /// The phase at its density root of lower Gibbs energy.
  Phase lower(const Vec& x) const;
  const Phase& feed() const { return feed_; }
  /// The plane that touches the Gibbs energy at a phase: ln x + ln phi.
  Vec plane(const Phase& at) const;
  /// Global search for the minima of the tangent plane distance, the lowest first. `touching` are the phases on the
  /// plane. Ends early when a distance below `enough` is found.
  std::vector<Trial> search(const Vec& plane, const std::vector<Phase>& touching, double enough) const;
  std::vector<Trial> search_feed(double enough = -1e300) const { return search(plane(feed_), {feed_}, enough); }
  /// All by itself: one phase, two or more.
  Answer solve() const;
  /// Follows splits to lower and lower Gibbs energy until one is stable.
  Answer settle(std::vector<Split> pool) const;
  /// The splits that begin with a trial phase and the feed, or with it and one of the phases of another split.
  std::vector<Split> splits_from(const std::vector<Trial>& trials, const Split* other) const;
  double gain(double beta, const Phase& x, const Phase& y) const;
  /// Whether the density routines find all stable roots of a composition, and no others. Far below the temperatures of
  /// the fluids they miss the liquid-like root of some compositions or end at packing fractions that no fluid has;
  /// phases then come and go with the path of the density iteration, and neither flash nor judge can be right.
  bool densities_hold(const Phase& phase) const;

 private:
  Phase at_root(const Vec& x, int root, double rho) const;
  double density(const Vec& x, int root) const;
  bool is_root(const Phase& phase) const;
  bool all_roots_found(const Vec& x) const;
  Vec lnphi_n(const Phase& phase) const;
  std::vector<Trial> starts(const Vec& plane, const std::vector<Phase>& touching) const;
  /// `certain`: how many of the first are to be refined whatever they promise.
  std::vector<Vec> compositions(const std::vector<Phase>& touching, std::size_t& certain) const;
  Trial refine(const Trial& start, const Vec& plane, const std::vector<Trial>& known) const;
  std::optional<Split> minimise(double beta, Phase x, Phase y) const;

  std::int32_t n_;
  std::vector<std::size_t> place_;  ///< of the components of the feed in the selection
  Vec z_;
  double t_, p_;
  int effort_;
  Phase feed_;
};

}  // namespace tessarel::sweep
