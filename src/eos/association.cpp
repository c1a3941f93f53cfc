#include "eos/association.hpp"

#include <algorithm>
#include <compare>
#include <utility>

#include "eos/energies.hpp"

namespace tessarel::eos {

using fluid::Parameters;

namespace {

struct Site {
  int component, type;
};

/// The sum over a class's types of the bond terms seen by site `s`, as a sorted list of (energy, volume).
std::vector<std::pair<double, double>> bonds_with(const Parameters& p, const Site& s,
                                                  const std::vector<Site>& members) {
  std::vector<std::pair<double, double>> terms;
  for (const Site& t : members) {
    const auto i = at(t.component), k = at(s.component);
    const auto a = at(t.type), b = at(s.type);
    const double energy = p.eps_hb[i][k][a][b];
    const double sigma = mean_diameter(p, i, k);
    const double volume = sigma * sigma * sigma * p.kap_hb[i][k] * p.nhb_no[i][a];
    if (energy == 0 || volume == 0) continue;
    const auto same = std::find_if(terms.begin(), terms.end(), [&](const auto& term) { return term.first == energy; });
    if (same == terms.end())
      terms.emplace_back(energy, volume);
    else
      same->second += volume;
  }
  // A total order also of numbers that a pair of odd parameters made NaN.
  std::sort(terms.begin(), terms.end(),
            [](const auto& a, const auto& b) { return std::strong_order(a.first, b.first) < 0; });
  return terms;
}

}  // namespace

/// Partition refinement: start from the sites of equal number on each component, split while two members of a class
/// see different bonds. Members of a final class have equal unbonded fractions.
void Association::Tables::update(const Parameters& p) {
  std::vector<std::vector<Site>> partition;
  first_associating = nmax;
  for (int i = 0; i < p.n; ++i) {
    const auto c = at(i);
    const std::size_t begin = partition.size();
    if (p.is_assoc && p.nhb_typ[c] > 0 && first_associating == nmax) first_associating = i;
    for (int a = 0; a < p.nhb_typ[c]; ++a) {
      const auto number = p.nhb_no[c][at(a)];
      const auto alike =
          std::find_if(partition.begin() + static_cast<std::ptrdiff_t>(begin), partition.end(),
                       [&](const auto& members) { return p.nhb_no[c][at(members.front().type)] == number; });
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
          return bonds_with(p, s, members) == bonds_with(p, partition[k].front(), members);
        });
      };
      // The first one stays in any case, so that the refinement ends with bonds that are NaN and equal to nothing.
      std::vector<Site> alike{partition[k].front()}, rest;
      for (std::size_t m = 1; m < partition[k].size(); ++m)
        (same_as_first(partition[k][m]) ? alike : rest).push_back(partition[k][m]);
      if (!rest.empty()) {
        partition[k] = std::move(alike);
        partition.insert(partition.begin() + static_cast<std::ptrdiff_t>(k) + 1, std::move(rest));
        split = true;
      }
    }
  }

  classes.clear();
  bonds.clear();
  for (const auto& members : partition) {
    SiteClass site_class{members.front().component, static_cast<double>(members.size()), 0.0, {}};
    for (const Site& s : members) {
      site_class.sites += p.nhb_no[at(s.component)][at(s.type)];
      site_class.member[at(s.type)] = true;
    }
    const int k = static_cast<int>(classes.size());
    for (std::size_t l = 0; l < partition.size(); ++l)
      for (const auto& [energy, volume] : bonds_with(p, members.front(), partition[l]))
        bonds.push_back({k, static_cast<int>(l), volume, energy});
    classes.push_back(site_class);
  }
}

}  // namespace tessarel::eos
