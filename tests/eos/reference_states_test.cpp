// Every quantity of the evaluation stack against values computed in 40-digit arithmetic.
#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>

#include "common/test_fluid.hpp"
#include "eos/caloric.hpp"
#include "eos/composition.hpp"
#include "eos/compressibility.hpp"
#include "eos/fugacity.hpp"
#include "eos/helmholtz.hpp"
#include "eos/pressure.hpp"

namespace tessarel::testing {
namespace {

using namespace eos;

struct State {
  const Eos& eos;
  int n;
  const double* x;
  double t, rho, p;
};

template <class F>
auto scalar(F f) {
  return [f](const State& s) { return Values{f(s.eos, s.n, s.x, s.t, s.rho)}; };
}
template <class F>
auto array(F f, int rank) {
  return [f, rank](const State& s) {
    std::size_t size = 1;
    for (int i = 0; i < rank; ++i) size *= static_cast<std::size_t>(s.n);
    Values out(size);
    f(s.eos, s.n, s.x, s.t, s.rho, out.data());
    return out;
  };
}
/// The forms at given t and p, through the phase whose density is that of the state.
auto at_pressure(std::size_t which, int rank) {
  return array(
      [which](const Eos& eos, int n, const double* x, double t, double rho, double* out) {
        std::array<Values, 4> d{Values(20), Values(20), Values(400), Values(400)};
        calc_lnphi_tpxn(eos, n, x, t, calc_p_rho(eos, n, x, t, rho), rho, d[0].data(), d[1].data(), d[2].data(),
                        d[3].data());
        std::copy_n(d[which].begin(), which < 2 ? n : n * n, out);
      },
      rank);
}
/// The part of one term.
template <class Term>
auto term() {
  return [](const State& s) {
    const Arena::Frame frame(s.eos.arena());
    MixtureState<double> state;
    prepare(s.eos, state, s.n, s.x, 0, s.t);
    auto q = point_at(state, s.rho, site_tolerance(s.rho));
    const auto& of_term = state.term<Term>();
    return Values{of_term.present ? of_term.a(state, q) : 0.0};
  };
}
auto caloric(int which) {
  return [which](const State& s) {
    double h = 0, entropy = 0, u = 0;
    calc_hsu(s.eos, s.n, s.x, s.t, s.p, fluid::avogadro_factor / s.rho, h, entropy, u);
    return Values{which == 0 ? h : which == 1 ? entropy : u};
  };
}

struct Quantity {
  std::function<Values(const State&)> evaluate;
  int order = 0;  ///< of the derivative; the third and fourth get a wider tolerance
};

const std::map<std::string, Quantity>& quantities() {
  const auto z_pure_or_mixture = [](auto f) {
    return scalar(
        [f](const Eos& eos, int n, const double* x, double t, double rho) { return f(eos, n, x, 0, t, rho); });
  };
  static const std::map<std::string, Quantity> table = {
      {"calc_a", {scalar(calc_a)}},
      {"part_hard_chain", {term<HardChain>()}},
      {"part_disp", {term<Dispersion>()}},
      {"part_assoc", {term<Association>()}},
      {"part_polar", {term<Polar>()}},
      {"calc_da_dt", {scalar(calc_da_dt)}},
      {"calc_d2a_dt2", {scalar(calc_d2a_dt2)}},
      {"calc_d3a_dt3", {scalar(calc_d3a_dt3), 3}},
      {"calc_da_drho", {scalar(calc_da_drho)}},
      {"calc_d2a_drho2", {scalar(calc_d2a_drho2)}},
      {"calc_d3a_drho3", {scalar(calc_d3a_drho3), 3}},
      {"calc_d4a_drho4", {scalar(calc_d4a_drho4), 4}},
      {"calc_da_dx", {array(calc_da_dx, 1)}},
      {"calc_d2a_dxdx", {array(calc_d2a_dxdx, 2)}},
      {"calc_d3a_dxdxdx", {array(calc_d3a_dxdxdx, 3), 3}},
      {"calc_d2a_dtdx", {array(calc_d2a_dtdx, 1)}},
      {"calc_z", {z_pure_or_mixture(calc_z)}},
      {"calc_dz_drho", {z_pure_or_mixture(calc_dz_drho)}},
      {"calc_d2z_drho2", {z_pure_or_mixture(calc_d2z_drho2)}},
      {"calc_d3z_drho3", {z_pure_or_mixture(calc_d3z_drho3), 3}},
      {"calc_dz_dt", {scalar(calc_dz_dt)}},
      {"calc_d2z_dt2", {scalar(calc_d2z_dt2)}},
      {"calc_d2z_dtdrho", {scalar(calc_d2z_dtdrho)}},
      {"calc_dz_dx", {array(calc_dz_dx, 1)}},
      {"calc_d2z_dxdx", {array(calc_d2z_dxdx, 2)}},
      {"calc_p_rho", {scalar(calc_p_rho)}},
      {"calc_dp_dt", {scalar(calc_dp_dt)}},
      {"calc_d2p_dt2", {scalar(calc_d2p_dt2)}},
      {"calc_dp_drho", {scalar(calc_dp_drho)}},
      {"calc_d2p_drho2", {scalar(calc_d2p_drho2)}},
      {"calc_d3p_drho3", {scalar(calc_d3p_drho3), 3}},
      {"calc_d2p_dtdrho", {scalar(calc_d2p_dtdrho)}},
      {"calc_h", {caloric(0)}},
      {"calc_s", {caloric(1)}},
      {"calc_u", {caloric(2)}},
      {"calc_cv", {scalar(calc_cv)}},
      {"calc_dcv_dt", {scalar(calc_dcv_dt), 3}},
      {"calc_lnphi_rho", {array(calc_lnphi_rho, 1)}},
      {"calc_dlnphi_dt_rho", {array(calc_dlnphi_dt_rho, 1)}},
      {"calc_dlnphi_dp_rho", {array(calc_dlnphi_dp_rho, 1)}},
      {"calc_dlnphi_drho_t", {array(calc_dlnphi_drho_t, 1)}},
      {"calc_dlnphi_dx_rho", {array(calc_dlnphi_dx_rho, 2)}},
      {"calc_dlnphi_dt", {at_pressure(0, 1)}},
      {"calc_dlnphi_dx", {at_pressure(2, 2)}},
      {"calc_dlnphi_dn", {at_pressure(3, 2)}},
  };
  return table;
}

struct Row {
  std::string mixture, kij, simplified;
  double t, rho;
  std::string index;
  double value;
};

/// Rows by case and quantity.
std::map<std::string, std::map<std::string, std::vector<Row>>> read_states() {
  std::map<std::string, std::map<std::string, std::vector<Row>>> cases;
  for (const auto& f : read_reference("states.csv")) {
    auto& rows = cases[f.at(0)];
    const double value = std::stod(f.at(8));
    // The table has the hard-sphere and the chain part apart.
    if (f[6] == "part_chain")
      rows.at("part_hard_chain").front().value += value;
    else
      rows[f[6] == "part_hs" ? "part_hard_chain" : f[6]].push_back(
          {f[1], f[2], f[3], std::stod(f[4]), std::stod(f[5]), f[7], value});
  }
  return cases;
}

/// Position of a 1-based index i, j, k in an array laid out first-index-fastest.
std::size_t position(const std::vector<std::string>& index, std::size_t n) {
  std::size_t at = 0, stride = 1;
  for (const std::string& part : index) {
    at += (std::stoul(part) - 1) * stride;
    stride *= n;
  }
  return at;
}

class ReferenceStates : public ::testing::TestWithParam<std::string> {};

TEST_P(ReferenceStates, EveryQuantity) {
  static const auto cases = read_states();
  for (const auto& [quantity, rows] : cases.at(GetParam())) {
    const Row& head = rows.front();
    const TestFluid f(Mixture(head.mixture), head.kij, head.simplified == "1");
    const auto found = quantities().find(quantity);
    ASSERT_NE(found, quantities().end()) << quantity << " is not tested";
    const State state{f.eos, f.n, f.z, head.t, head.rho, calc_p_rho(f.eos, f.n, f.z, head.t, head.rho)};
    const Values values = found->second.evaluate(state);
    double largest = 0;
    for (const Row& row : rows) largest = std::max(largest, std::abs(row.value));
    const bool high_order = found->second.order >= 3;
    double tolerance = high_order ? 1e-10 : 1e-11;
    if (f.parameters.is_assoc || f.parameters.is_polar) tolerance *= 10;
    for (const Row& row : rows) {
      // Of derivatives by fractions alone the table has each unordered index once.
      auto index = split(row.index, ';');
      do
        EXPECT_NEAR(values.at(position(index, fluid::at(f.n))), row.value, tolerance * largest)
            << quantity << "(" << row.index << ")";
      while (quantity.ends_with("dxdx") && std::next_permutation(index.begin(), index.end()));
    }
  }
}

std::vector<std::string> case_names() {
  std::vector<std::string> names;
  for (const auto& [name, rows] : read_states()) names.push_back(name);
  return names;
}

INSTANTIATE_TEST_SUITE_P(All, ReferenceStates, ::testing::ValuesIn(case_names()), [](const auto& tested) {
  std::string name = tested.param;
  for (char& c : name)
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  return name;
});

}  // namespace
}  // namespace tessarel::testing
