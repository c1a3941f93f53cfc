#include "fluid/component.hpp"

#include <algorithm>

namespace tessarel::fluid {
namespace {

constexpr std::array<Vector Parameters::*, 17> members{
    &Parameters::tmin,    &Parameters::tmax,   &Parameters::molmas, &Parameters::omega,   &Parameters::mseg,
    &Parameters::sigma,   &Parameters::epsil,  &Parameters::parat,  &Parameters::saftpar, &Parameters::cp0_a,
    &Parameters::cp0_b,   &Parameters::cp0_c,  &Parameters::cp0_d,  &Parameters::delhf0,  &Parameters::dipole,
    &Parameters::quapole, &Parameters::polariz};

}  // namespace

Component::Component(const Parameters& p, std::size_t i) noexcept
    : name_(p.compname[i]), types_(std::clamp(p.nhb_typ[i], 0, max_sites)) {
  for (std::size_t k = 0; k < members.size(); ++k) values_[k] = (p.*members[k])[i];
  if (types_ == 0) return;
  for (std::size_t a = 0; a < at(types_); ++a) {
    sites_[a] = p.nhb_no[i][a];
    for (std::size_t b = 0; b < at(types_); ++b) energy_[a][b] = p.eps_hb[i][i][a][b];
  }
  volume_ = p.kap_hb[i][i];
}

void Component::put(Parameters& p, std::size_t i) const noexcept {
  p.compname[i] = name_;
  for (std::size_t k = 0; k < members.size(); ++k) (p.*members[k])[i] = values_[k];
  p.nhb_typ[i] = types_;
  if (types_ == 0) return;
  for (std::size_t a = 0; a < at(types_); ++a) {
    p.nhb_no[i][a] = sites_[a];
    for (std::size_t b = 0; b < at(types_); ++b) p.eps_hb[i][i][a][b] = energy_[a][b];
  }
  p.kap_hb[i][i] = volume_;
}

bool operator==(const Component& a, const Component& b) noexcept {
  return a.values_ == b.values_ && a.types_ == b.types_ && a.sites_ == b.sites_ && a.energy_ == b.energy_ &&
         a.volume_ == b.volume_ && a.name_.view() == b.name_.view();
}

}  // namespace tessarel::fluid
