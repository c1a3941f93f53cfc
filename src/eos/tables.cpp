#include "eos/tables.hpp"

#include <algorithm>
#include <cmath>

#include "eos/association.hpp"
#include "eos/polar_tables.hpp"

namespace tessarel::eos {

Tables tables;

namespace {

using fluid_module::record;

/// The range of k_ij entries that are codes of temperature correlations starts here.
constexpr double first_code = 1000.0;

void combine_energies() {
  const int n = record.n;
  tables.constant_energies = true;
  for (int i = 0; i < n; ++i) {
    const auto a = static_cast<std::size_t>(i);
    if (record.saftpar[a] != 0) tables.constant_energies = false;
    for (int j = 0; j < n; ++j) {
      const auto b = static_cast<std::size_t>(j);
      const double sigma = i == j ? record.sigma[a] : (record.sigma[a] + record.sigma[b]) / 2.0;
      const double k = i == j ? 0.0 : record.k_ij[a][b];
      if (k >= first_code) tables.constant_energies = false;
      const double geometric = i == j ? record.epsil[a] : std::sqrt(record.epsil[a] * record.epsil[b]);
      const double weight = record.mseg[a] * record.mseg[b] * sigma * sigma * sigma;
      tables.sigma3[a][b] = sigma * sigma * sigma;
      tables.energy[a][b] = geometric;
      const double eps = (1.0 - k) * geometric;
      tables.first[a][b] = weight * eps;
      tables.second[a][b] = weight * eps * eps;
    }
  }
}

struct Site {
  int component, type;
};

/// The sum over a class's types of the bond terms seen by site `s`, as a sorted list of (energy, volume).
std::vector<std::pair<double, double>> bonds_with(const Site& s, const std::vector<Site>& members) {
  std::vector<std::pair<double, double>> terms;
  for (const Site& t : members) {
    const auto i = static_cast<std::size_t>(t.component), k = static_cast<std::size_t>(s.component);
    const auto a = static_cast<std::size_t>(t.type), b = static_cast<std::size_t>(s.type);
    const double energy = record.eps_hb[i][k][a][b];
    const double volume = tables.sigma3[i][k] * record.kap_hb[i][k] * record.nhb_no[i][a];
    if (energy == 0 || volume == 0) continue;
    const auto same = std::find_if(terms.begin(), terms.end(), [&](const auto& term) { return term.first == energy; });
    if (same == terms.end())
      terms.emplace_back(energy, volume);
    else
      same->second += volume;
  }
  std::sort(terms.begin(), terms.end());
  return terms;
}

/// Partition refinement: start from the sites of equal number on each component, split while two members of a class
/// see different bonds. Members of a final class have equal unbonded fractions.
void classify_sites() {
  std::vector<std::vector<Site>> partition;
  tables.site_types = 0;
  for (int i = 0; i < record.n; ++i) {
    const auto c = static_cast<std::size_t>(i);
    const std::size_t begin = partition.size();
    for (int a = 0; a < record.nhb_typ[c]; ++a) {
      ++tables.site_types;
      const auto number = record.nhb_no[c][static_cast<std::size_t>(a)];
      const auto alike = std::find_if(
          partition.begin() + static_cast<std::ptrdiff_t>(begin), partition.end(), [&](const auto& members) {
            return record.nhb_no[c][static_cast<std::size_t>(members.front().type)] == number;
          });
      if (alike == partition.end())
        partition.push_back({{i, a}});
      else
        alike->push_back({i, a});
    }
  }
  for (bool split = true; split;) {
    split = false;
    for (std::size_t k = 0; k < partition.size() && !split; ++k) {
      const auto same_as_first = [&](const Site& s) {
        return std::all_of(partition.begin(), partition.end(), [&](const auto& members) {
          return bonds_with(s, members) == bonds_with(partition[k].front(), members);
        });
      };
      const auto boundary = std::stable_partition(partition[k].begin(), partition[k].end(), same_as_first);
      if (boundary != partition[k].end()) {
        const auto at = static_cast<std::ptrdiff_t>(k) + 1;
        std::vector<Site> rest(boundary, partition[k].end());
        partition[k].erase(boundary, partition[k].end());
        partition.insert(partition.begin() + at, std::move(rest));
        split = true;
      }
    }
  }

  tables.classes.clear();
  tables.bonds.clear();
  for (const auto& members : partition) {
    SiteClass site_class{members.front().component, static_cast<double>(members.size()), 0.0, {}};
    for (const Site& s : members) {
      site_class.sites += record.nhb_no[static_cast<std::size_t>(s.component)][static_cast<std::size_t>(s.type)];
      site_class.member[static_cast<std::size_t>(s.type)] = true;
    }
    const int k = static_cast<int>(tables.classes.size());
    for (std::size_t l = 0; l < partition.size(); ++l)
      for (const auto& [energy, volume] : bonds_with(members.front(), partition[l]))
        tables.bonds.push_back({k, static_cast<int>(l), volume, energy});
    tables.classes.push_back(site_class);
  }
}

/// Packs the pair and triplet constants of one type, each unordered combination once.
void pack_polar(std::size_t type, const PairConstants& a, const PairConstants& b, const TripletConstants& c) {
  auto& pairs = tables.pairs[type];
  auto& triplets = tables.triplets[type];
  const int n = record.n;
  for (int i = 0; i < n; ++i) {
    for (int j = i; j < n; ++j) {
      const auto ui = static_cast<std::size_t>(i), uj = static_cast<std::size_t>(j);
      const double factor =
          i == j ? polar.gamma2[type][ui][ui] : polar.gamma2[type][uj][ui] + polar.gamma2[type][ui][uj];
      if (factor == 0) continue;
      PolarPair pair{i, j, {}, {}};
      const double energy = tables.energy[ui][uj];
      for (std::size_t k = 0; k < 5; ++k) {
        pair.a[k] = factor * a[ui][uj][k];
        pair.b[k] = factor * b[ui][uj][k] * energy;
      }
      pairs.push_back(pair);
    }
  }
  for (int i = 0; i < n; ++i) {
    for (int j = i; j < n; ++j) {
      for (int k = j; k < n; ++k) {
        std::array<int, 3> p = {i, j, k};
        double factor = 0;
        do {  // the distinct permutations of (i, j, k)
          factor += polar.gamma3[type][static_cast<std::size_t>(p[0])][static_cast<std::size_t>(p[1])]
                                [static_cast<std::size_t>(p[2])];
        } while (std::next_permutation(p.begin(), p.end()));
        if (factor == 0) continue;
        PolarTriplet triplet{i, j, k, {}};
        const auto& powers = c[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)][static_cast<std::size_t>(k)];
        for (std::size_t power = 0; power < 5; ++power) triplet.c[power] = factor * powers[power];
        triplets.push_back(triplet);
      }
    }
  }
}

/// The components that every pair and triplet of a type holds, as often as all of them do: the only dipole beside
/// quadrupoles once for the mixed type and twice for the dipole-dipole type.
std::vector<int> common_components(std::size_t type) {
  std::vector<int> common;
  if (tables.pairs[type].empty()) return common;
  for (int c = 0; c < record.n; ++c) {
    int times = 2;
    for (const PolarPair& p : tables.pairs[type]) times = std::min(times, (p.i == c) + (p.j == c));
    for (const PolarTriplet& p : tables.triplets[type]) times = std::min(times, (p.i == c) + (p.j == c) + (p.k == c));
    common.insert(common.end(), static_cast<std::size_t>(times), c);
  }
  return common;
}

void pack_polar_tables() {
  for (auto& pairs : tables.pairs) pairs.clear();
  for (auto& triplets : tables.triplets) triplets.clear();
  tables.first_type = 0, tables.last_type = -1;
  if (!record.is_polar) return;
  tables.first_type = polar.s - 1, tables.last_type = polar.e - 1;
  if (record.is_dipole) pack_polar(0, polar.dd_a, polar.dd_b, polar.dd_c);
  if (record.is_quapole) pack_polar(1, polar.qq_a, polar.qq_b, polar.qq_c);
  if (record.is_quadip) pack_polar(2, polar.dq_a, polar.dq_b, polar.dq_c);
  for (std::size_t type = 0; type < tables.common.size(); ++type) tables.common[type] = common_components(type);
}

}  // namespace

void update_tables() {
  combine_energies();
  classify_sites();
  pack_polar_tables();
  reserve_site_storage();
}

}  // namespace tessarel::eos
