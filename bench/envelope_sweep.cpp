// Sweep of the phase envelope: traces the lines of many mixtures, checks every point of every table, and asks for
// bubble and dew points over the whole range, judged by the flash at T and P, which knows nothing of the tables.
//
//   tessarel_envelope_sweep [--points N] [--compositions M] [--curves FILE]
//
// M compositions of each binary, 7 at most; N queries are made for each branch and each variable. The table of
// docs/robustness.md goes to the standard output, every fault is one line on the standard error. FILE receives the
// lines of a dozen mixtures for tools/plot_envelopes.py.
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>

#include "envelope/critical_point.hpp"
#include "envelope/queries.hpp"
#include "eos/pressure.hpp"
#include "flash/pt_flash.hpp"
#include "flash_sweep_mixtures.hpp"
#include "interface/session.hpp"

namespace tessarel::sweep {
namespace {

using envelope::Point;
using envelope::Saturation;
using envelope::SaturationPoint;
using envelope::Table;
using fluid::at;

/// All binaries of a dozen substances at seven compositions, the mixtures of the flash sweep, and some of special
/// shape.
std::vector<Mixture> envelope_mixtures(int compositions) {
  const std::vector<std::string> dozen = {"methane",  "ethane",         "n-butane", "n-hexane",
                                          "n-decane", "carbon dioxide", "nitrogen", "hydrogen sulfide",
                                          "benzene",  "methanol",       "water",    "acetone"};
  std::vector<Mixture> list;
  for (std::size_t i = 0; i < dozen.size(); ++i)
    for (std::size_t j = i + 1; j < dozen.size(); ++j)
      for (int k = 0; k < std::min(compositions, 7); ++k) {
        const double x = std::array<double, 7>{0.5, 0.05, 0.2, 0.35, 0.65, 0.8, 0.95}[at(k)];
        char share[16] = {};
        if (x != 0.5) std::snprintf(share, sizeof share, " %.2f", x);
        list.push_back({dozen[i] + "/" + dozen[j] + share, {dozen[i], dozen[j]}, {x, 1 - x}});
      }
  for (const Mixture& m : mixtures)
    if (m.name != "methane/n-butane") list.push_back(m);
  const std::vector<Mixture> more = {
      {"near-pure propane/n-butane", {"propane", "n-butane"}, {1 - 1e-6, 1e-6}},
      {"near-pure water/methanol", {"water", "methanol"}, {0.9999, 0.0001}},
      {"azeotropic ethane/carbon dioxide", {"ethane", "carbon dioxide"}, {0.35, 0.65}},
      {"azeotropic methanol/benzene", {"methanol", "benzene"}, {0.6, 0.4}},
      {"retrograde methane/n-butane", {"methane", "n-butane"}, {0.85, 0.15}},
      {"retrograde methane/n-decane", {"methane", "n-decane"}, {0.95, 0.05}},
      {"hydrogen/n-hexane", {"hydrogen", "n-hexane"}, {0.5, 0.5}},
  };
  list.insert(list.end(), more.begin(), more.end());
  return list;
}

/// A dozen lines for the picture.
constexpr const char* pictured[] = {
    "methane/n-butane", "lean natural gas", "natural gas with C7+", "gas condensate",
    "10 n-alkanes",     "20 components",    "r32/r125/r134a",       "retrograde methane/n-decane",
    "benzene/acetone",  "ethanol/water",    "n-hexane/nitrogen",    "n-hexane/water"};

struct Counts {
  int points = 0, unequal = 0, wrong_root = 0, metastable_roots = 0, jumps = 0, critical_out_of_place = 0,
      critical_differs = 0, critical_missed = 0;
  int queries = 0, refused = 0, interpolated = 0, metastable = 0, off = 0, flash_failed = 0;
  double largest = 0;  ///< difference of fugacities
};

class Sweep {
 public:
  explicit Sweep(int points) : points_(points) {}

  void mixture(const Mixture& m) {
    name_ = m.name;
    const std::vector<double> z = select(m, m.amounts);
    const eos::Fluid fluid = interface::current_session().fluid();
    const auto begin = std::chrono::steady_clock::now();
    const int ierr = envelope::calc_phaseenv(fluid, *table_);
    const double ms = 1e3 * std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    if (ms > slowest_) slowest_ = ms, slowest_name_ = m.name;
    const bool two = table_->vap_idx > 1;
    const std::string shape = table_->npnt < 2       ? "none"
                              : two                  ? "joined from two"
                              : table_->vap_idx == 1 ? "dew run"
                                                     : "bubble run";
    ++shapes_[{shape, ierr}];
    if (table_->gap || ierr == envelope::bad_start) fault("gap or no start, code %d", ierr);
    check_points(fluid);
    check_critical(fluid);
    ask(fluid);
  }

  int report() const {
    std::printf("| line | code | mixtures |\n|---|---|---|\n");
    int mixtures = 0;
    for (const auto& [key, count] : shapes_) {
      std::printf("| %s | %d | %d |\n", key.first.c_str(), key.second, count);
      mixtures += count;
    }
    std::printf("\n| %d mixtures | |\n|---|---|\n", mixtures);
    const std::pair<const char*, int> rows[] = {
        {"points of the tables", counts_.points},
        {"fugacities differ by more than 1e-9", counts_.unequal},
        {"a phase is not on its root of lower Gibbs energy", counts_.wrong_root},
        {"the same where the feed splits into two liquids", counts_.metastable_roots},
        {"the line leaves the cubic through four points by more than 1 %", counts_.jumps},
        {"critical points out of place", counts_.critical_out_of_place},
        {"critical points that the search does not confirm to 1e-8", counts_.critical_differs},
        {"lines without a critical point where the search finds one", counts_.critical_missed},
        {"bubble and dew points asked for", counts_.queries},
        {"refused", counts_.refused},
        {"interpolations returned", counts_.interpolated},
        {"metastable: another phase lies below the tangent plane", counts_.metastable},
        {"the flash fails", counts_.flash_failed},
        {"not at the boundary of the flash", counts_.off}};
    for (const auto& [what, count] : rows) std::printf("| %s | %d |\n", what, count);
    const eos::Statistics& used = interface::current_session().work.statistics;
    std::printf("| second runs after a first without error | %lld |\n", used.added_runs);
    std::printf("| lines cut where they cross themselves | %lld |\n", used.cut_lines);
    std::printf("| largest difference of fugacities | %.1e |\n", counts_.largest);
    std::printf("| slowest trace, %s | %.1f ms |\n", slowest_name_.c_str(), slowest_);
    return counts_.unequal + counts_.wrong_root + counts_.jumps + counts_.critical_out_of_place +
           counts_.critical_differs + counts_.refused + counts_.interpolated + counts_.off;
  }

  /// T and P of the points, and of the middles between them.
  void write_curve(std::FILE* file) const {
    const auto n = at(interface::current_session().n());
    const auto write = [&](bool critical, const Point& x) {
      std::fprintf(file, "%s,%d,%.3f,%.5g\n", name_.c_str(), critical ? 1 : 0, std::exp(x[n]), std::exp(x[n + 1]));
    };
    for (int j = 1; j <= table_->npnt; ++j) {
      write(j == table_->idx_cp, table_->point(j));
      if (is_smooth(n, j)) write(false, between(n + 2, j));
    }
  }

 private:
  template <class... Args>
  void fault(const char* format, Args... args) {
    std::fprintf(stderr, "%-34s ", name_.c_str());
    std::fprintf(stderr, format, args...);
    std::fputc('\n', stderr);
  }

  Saturation system_at(const eos::Fluid& fluid, int j) const {
    Saturation system(fluid.eos, fluid.n, fluid.z, table_->beta(j));
    system.selectors = table_->selectors[at(j - 1)];
    return system;
  }

  /// Whether the points around the stretch behind j lie on one smooth line, without a seam or a three-phase point.
  [[nodiscard]] bool is_smooth(std::size_t n, int j) const {
    if (j < 2 || j + 2 > table_->npnt || j == table_->idx_cp || j + 1 == table_->idx_cp) return false;
    if (table_->vap_idx > 1 && j - 1 < table_->vap_idx && table_->vap_idx <= j + 2) return false;
    for (int k = j - 1; k < j + 2; ++k)
      if (std::abs(table_->point(k)[n] - table_->point(k + 1)[n]) +
              std::abs(table_->point(k)[n + 1] - table_->point(k + 1)[n + 1]) <
          1e-9)
        return false;
    return true;
  }

  /// The middle between points j and j + 1, on the cubic through the four points around in the length along the line.
  [[nodiscard]] Point between(std::size_t size, int j) const {
    std::array<double, 4> length{};
    for (int k = 1; k < 4; ++k) {
      double square = 0;
      for (std::size_t i = 0; i < size; ++i)
        square += std::pow(table_->point(j - 1 + k)[i] - table_->point(j - 2 + k)[i], 2);
      length[at(k)] = length[at(k - 1)] + std::sqrt(square);
    }
    const double middle = 0.5 * (length[1] + length[2]);
    Point out{};
    for (int k = 0; k < 4; ++k) {
      double weight = 1;
      for (int m = 0; m < 4; ++m)
        if (m != k) weight *= (middle - length[at(m)]) / (length[at(k)] - length[at(m)]);
      for (std::size_t i = 0; i < size; ++i) out[i] += weight * table_->point(j - 1 + k)[i];
    }
    return out;
  }

  /// Equal fugacities at each point; densities that belong to the lower Gibbs energy; and the true line between points
  /// against the cubic through the four around.
  void check_points(const eos::Fluid& fluid) {
    const auto n = at(fluid.n), size = n + 2;
    for (int j = 1; j <= table_->npnt; ++j) {
      if (j == table_->idx_cp) continue;
      const Arena::Frame frame(fluid.eos.arena());
      ++counts_.points;
      Saturation system = system_at(fluid, j);
      const Point& x = table_->point(j);
      if (!system.prepare(x, fluid.n, x[n]) || !(system.residual() < 1e-9)) {
        ++counts_.unequal;
        fault("point %d: fugacities differ by %.1e", j, system.residual());
      }
      counts_.largest = std::max(counts_.largest, system.residual());
      const double t = std::exp(x[n]), p = std::exp(x[n + 1]) * 1e5;
      for (const flash::Phase* phase : {&system.liquid(), &system.vapour()}) {
        flash::Phase lower = *phase;
        flash::evaluate({fluid.eos, fluid.n, t, p}, lower);
        if (std::abs(lower.rho / phase->rho - 1) < 1e-9) continue;
        const auto flash = flash::flmain(fluid, t, p, false, nullptr, nullptr);
        if (flash.code == 0 && lowest_distance(fluid, t, p, flash) < -1e-8) {
          ++counts_.metastable_roots;
        } else {
          ++counts_.wrong_root;
          fault("point %d: density %g, root of lower Gibbs energy %g", j, phase->rho, lower.rho);
        }
      }
      if (!is_smooth(n, j)) continue;
      const Point cubic = between(size, j);
      std::size_t spec = 0;
      for (std::size_t i = 1; i < size; ++i)
        if (std::abs(table_->point(j + 1)[i] - x[i]) > std::abs(table_->point(j + 1)[spec] - x[spec])) spec = i;
      Point true_point = cubic;
      const bool solved = system.solve(true_point, static_cast<int>(spec), cubic[spec]);
      const double off = std::abs(true_point[n] - cubic[n]) + std::abs(true_point[n + 1] - cubic[n + 1]);
      if (!solved || off > 0.01) {
        ++counts_.jumps;
        fault("between points %d and %d: off the cubic by %.2e, %s", j, j + 1, off, solved ? "solved" : "not solved");
      }
    }
  }

  /// The critical point lies between its neighbours, has all ln K zero, and is the one that the search finds.
  void check_critical(const eos::Fluid& fluid) {
    const int cp = table_->idx_cp;
    const auto n = at(fluid.n);
    double t = 0, rho = 0;
    const bool found = envelope::critical_point(fluid.eos, fluid.n, fluid.z, fluid.limits.tc, t, rho);
    const double p = found ? eos::calc_p_rho(fluid.eos, fluid.n, fluid.z, t, rho) : 0.0;
    if (cp == 0) {
      // A trace ends at 1000 bar.
      if (found && p < 1e8) {
        ++counts_.critical_missed;
        fault("no critical point, the search finds %.6f K %.6f bar", t, p / 1e5);
      }
      return;
    }
    bool zero = cp > 1 && cp < table_->npnt;
    for (std::size_t i = 0; i < n; ++i) zero = zero && table_->point(cp)[i] == 0;
    if (zero) {
      const Point &before = table_->point(cp - 1), &behind = table_->point(cp + 1);
      std::size_t k = 0;
      for (std::size_t i = 1; i < n; ++i)
        if (fluid.z[i] > 0 && std::abs(before[i]) > std::abs(before[k])) k = i;
      zero = before[k] * behind[k] < 0;
    }
    if (!zero) {
      ++counts_.critical_out_of_place;
      fault("critical point %d of %d: out of place", cp, table_->npnt);
    }
    if (!found || std::abs(t / table_->tcrtpe - 1) > 1e-8 || std::abs(p / (table_->pcrtpe * 1e5) - 1) > 1e-8) {
      ++counts_.critical_differs;
      fault("critical point %.6f K %.6f bar, the search %s %.6f K %.6f bar", table_->tcrtpe, table_->pcrtpe,
            found ? "finds" : "fails at", t, p / 1e5);
    }
  }

  void ask(const eos::Fluid& fluid) {
    if (table_->npnt < 2) return;
    const envelope::Minima ends = envelope::getminima(fluid.n, *table_);
    for (const char given : {'T', 'P'})
      for (const char what : {'B', 'D'}) {
        const bool by_t = given == 'T', bubble = what == 'B';
        const double low = by_t ? (bubble ? ends.tbub : ends.tdew) : std::max(bubble ? ends.pbub : ends.pdew, 1e-3);
        const double high = by_t ? table_->tmaxpe : table_->pmaxpe;
        for (int i = 0; i <= points_; ++i)
          query(fluid, given, what, low * std::pow(high / low, static_cast<double>(i) / points_));
        // Next to the maximum, where a critical point may be near.
        for (const double below : {1e-2, 3e-3, 1e-3, 1e-4, 1e-5})
          if (high * (1 - below) > low) query(fluid, given, what, high * (1 - below));
      }
  }

  /// How far the phases of a flash lie below the tangent plane of the feed; 0 where they do not.
  static double lowest_distance(const eos::Fluid& fluid, double t, double p, const flash::PtResult& flash) {
    double lowest = 0;
    const flash::Feed feed = flash::make_feed(fluid, t, p);
    for (const auto* composition : {&flash.x, &flash.y}) {
      flash::Phase phase;
      flash::set_composition(phase, fluid.n, composition->data());
      flash::evaluate({fluid.eos, fluid.n, t, p}, phase);
      lowest = std::min(lowest, flash::tangent_distance(fluid.n, fluid.z, feed.d.data(), phase));
    }
    return lowest;
  }

  void query(const eos::Fluid& fluid, char given, char what, double value) {
    ++counts_.queries;
    SaturationPoint point;
    bool interpolated = false;
    const int code = envelope::calc_bubdew(fluid, *table_, given, what, value, point, interpolated);
    if (code != 0) {
      ++counts_.refused;
      fault("%c at given %c %.6g: code %d", what, given, value, code);
      return;
    }
    if (interpolated) {
      ++counts_.interpolated;
      fault("%c at given %c %.6g: interpolated", what, given, value);
    }
    const double t = given == 'T' ? value : point.result, p = 1e5 * (given == 'T' ? point.result : value);
    const auto flash = flash::flmain(fluid, t, p, false, nullptr, nullptr);
    if (flash.code == 3) return;
    // Beta moves from 0 to 1 over the width of the two-phase region, in ln P here: its slope scales the distance.
    double slope = 1;
    if (flash.code == 0) {
      const auto beside = flash::flmain(fluid, t, p * (1 + 1e-5), false, nullptr, nullptr);
      if (beside.code == 0) slope = std::max(1.0, std::abs(beside.beta - flash.beta) / 1e-5);
    }
    const double off = std::min(flash.beta, 1 - flash.beta);
    if (flash.code == 0 && off < 1e-6 * slope) return;
    const double lowest = lowest_distance(fluid, t, p, flash);
    if (flash.code == 0 && lowest < -1e-8) {
      ++counts_.metastable;
      return;
    }
    // Splits that close to a critical point are rounding.
    if (flash.code == 0 && lowest > -1e-11) return;
    if (flash.code != 0) {
      ++counts_.flash_failed;
      return;
    }
    ++counts_.off;
    fault("%c at given %c %.6g: flash code %d, beta %.3e, tangent distance %.1e", what, given, value, flash.code,
          flash.beta, lowest);
  }

  int points_;
  std::string name_, slowest_name_;
  std::unique_ptr<Table> table_ = std::make_unique<Table>();
  std::map<std::pair<std::string, int>, int> shapes_;
  Counts counts_;
  double slowest_ = 0;
};

}  // namespace
}  // namespace tessarel::sweep

int main(int argc, char** argv) {
  using namespace tessarel::sweep;
  int points = 12, compositions = 7;
  std::FILE* curves = nullptr;
  for (int i = 1; i + 1 < argc; i += 2) {
    const std::string name = argv[i];
    if (name == "--points") points = std::max(1, std::atoi(argv[i + 1]));
    if (name == "--compositions") compositions = std::max(1, std::atoi(argv[i + 1]));
    if (name == "--curves") curves = std::fopen(argv[i + 1], "w");
  }
  Sweep sweep(points);
  for (const Mixture& m : envelope_mixtures(compositions)) {
    sweep.mixture(m);
    if (curves != nullptr)
      for (const char* name : pictured)
        if (m.name == name) {
          sweep.write_curve(curves);
          break;
        }
  }
  if (curves != nullptr) std::fclose(curves);
  return sweep.report() > 0 ? 1 : 0;
}
