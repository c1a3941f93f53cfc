// The fluids that ship: both routes agree with each other and with the tables of sources, and the figures are sound.
#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "fluid/bips.hpp"
#include "fluid/cp0_module.hpp"
#include "fluid/file_location.hpp"
#include "fluid/fluid_module.hpp"
#include "fluid/readers.hpp"
#include "fluid/sample_records.hpp"

namespace tessarel::fluid_module {
namespace {

using Row = std::map<std::string, std::string>;

std::vector<std::string> split(const std::string& line) {
  std::vector<std::string> cells(1);
  bool quoted = false;
  for (const char c : line) {
    if (c == '"')
      quoted = !quoted;
    else if (c == ',' && !quoted)
      cells.emplace_back();
    else
      cells.back() += c;
  }
  return cells;
}

std::vector<Row> read_table(const std::string& name) {
  std::ifstream stream(std::string(PROJECT_DIR) + "/data/sources/" + name);
  std::string line;
  std::getline(stream, line);
  const auto heads = split(line);
  std::vector<Row> rows;
  while (std::getline(stream, line)) {
    const auto cells = split(line);
    Row row;
    for (std::size_t i = 0; i < heads.size() && i < cells.size(); ++i) row[heads[i]] = cells[i];
    rows.push_back(row);
  }
  return rows;
}

double number(const std::string& cell) {
  return cell.empty() ? 0.0 : std::strtod(cell.c_str(), nullptr);
}

/// Molar mass by the conventional atomic weights (IUPAC 2021).
double mass_of(const std::string& formula) {
  static const std::map<std::string, double> weights{{"H", 1.008},  {"C", 12.011},  {"N", 14.007},  {"O", 15.999},
                                                     {"F", 18.998}, {"Si", 28.085}, {"S", 32.06},   {"Cl", 35.45},
                                                     {"Ar", 39.95}, {"Br", 79.904}, {"Kr", 83.798}, {"Xe", 131.29}};
  double mass = 0;
  for (std::size_t i = 0; i < formula.size();) {
    std::string element(1, formula[i++]);
    if (i < formula.size() && std::islower(static_cast<unsigned char>(formula[i])) != 0) element += formula[i++];
    std::string count;
    while (i < formula.size() && std::isdigit(static_cast<unsigned char>(formula[i])) != 0) count += formula[i++];
    mass += weights.at(element) * (count.empty() ? 1 : std::stoi(count));
  }
  return mass;
}

class ShippedData : public testing::Test {
 protected:
  static void SetUpTestSuite() { fluids_ = read_table("fluids.csv"); }
  static std::vector<Row> fluids_;
  const std::string directory_{fluidpath(model_key).trimmed()};
};
std::vector<Row> ShippedData::fluids_;

TEST_F(ShippedData, BothRoutesGiveTheSameRecord) {
  ASSERT_EQ(fluids_.size(), 247U);
  for (const Row& fluid : fluids_) {
    const std::string key = fluid.at("name") + ".saf";
    record = Record{};
    ASSERT_EQ(readfluidsfile(directory_ + key, 0), "No errors") << key;
    const std::string from_file = test::all_values(0);
    record = Record{};
    ASSERT_EQ(readfluidsdb(directory_, key, 0), "No errors") << key;
    ASSERT_EQ(test::all_values(0), from_file) << key;
  }
}

TEST_F(ShippedData, RecordsHoldTheTabulatedValues) {
  for (const Row& fluid : fluids_) {
    SCOPED_TRACE(fluid.at("name"));
    record = Record{};
    ASSERT_EQ(readfluidsdb(directory_, fluid.at("name") + ".saf", 0), "No errors");
    const Record& r = record;
    EXPECT_EQ(r.compname[0].trimmed(), fluid.at("name"));
    const std::pair<double, const char*> columns[] = {{r.tmin[0], "tmin"},
                                                      {r.tmax[0], "tmax"},
                                                      {r.molmas[0], "molar_mass"},
                                                      {r.omega[0], "omega"},
                                                      {r.mseg[0], "m"},
                                                      {r.sigma[0], "sigma"},
                                                      {r.epsil[0], "epsilon_k"},
                                                      {r.cp0_a[0], "cp_a"},
                                                      {r.delhf0[0], "hf298"},
                                                      {r.cp0_b[0] * 1e3, "cp_b"},
                                                      {r.cp0_c[0] * 1e6, "cp_c"},
                                                      {r.cp0_d[0] * 1e9, "cp_d"},
                                                      {r.dipole[0], "dipole"},
                                                      {r.quapole[0], "quadrupole"},
                                                      {r.polariz[0], "polarizability"}};
    for (const auto& [value, column] : columns)
      EXPECT_NEAR(value, number(fluid.at(column)), 1e-15 * std::abs(value)) << column;
    const bool associates = number(fluid.at("n_donor_sites")) > 0 && number(fluid.at("n_acceptor_sites")) > 0;
    ASSERT_EQ(r.nhb_typ[0], associates ? 2 : 0);
    if (!associates) continue;
    EXPECT_EQ(r.nhb_no[0][0], number(fluid.at("n_donor_sites")));
    EXPECT_EQ(r.nhb_no[0][1], number(fluid.at("n_acceptor_sites")));
    EXPECT_EQ(r.eps_hb[0][0][0][1], number(fluid.at("epsilon_k_ab")));
    EXPECT_EQ(r.kap_hb[0][0], number(fluid.at("kappa_ab")));
  }
}

TEST_F(ShippedData, FiguresAreSound) {
  std::set<std::string> names;
  for (const Row& fluid : fluids_) {
    SCOPED_TRACE(fluid.at("name"));
    EXPECT_TRUE(names.insert(fluid.at("name")).second);
    EXPECT_LE(fluid.at("name").size(), 32U);
    ASSERT_EQ(readfluidsdb(directory_, fluid.at("name") + ".saf", 0), "No errors");
    const Record& r = record;
    const double mass = mass_of(fluid.at("formula"));
    EXPECT_NEAR(r.molmas[0], mass, 2e-4 * mass);
    EXPECT_TRUE(r.mseg[0] > 0.9 && r.mseg[0] < 20);  // the fits of the noble gases lie a little below 1
    EXPECT_TRUE(r.sigma[0] > 2 && r.sigma[0] < 6);
    EXPECT_TRUE(r.epsil[0] > 10 && r.epsil[0] < 600);
    EXPECT_TRUE(r.tmin[0] > 0 && r.tmin[0] < r.tmax[0]);
    for (int k = 0; k <= 50; ++k) {
      const double t = r.tmin[0] + k * (r.tmax[0] - r.tmin[0]) / 50;
      EXPECT_GT(cp0_module::calc_cp0(0, t), 0) << t;
    }
  }
}

TEST_F(ShippedData, EveryPairIsInTheTable) {
  const auto pairs = read_table("kij.csv");
  ASSERT_EQ(pairs.size(), 783U);
  record.n = 2;
  for (const Row& pair : pairs) {
    record.compname[0].assign(pair.at("name2"));
    record.compname[1].assign(pair.at("name1"));
    ASSERT_EQ(readbips(), "No errors");
    ASSERT_EQ(record.k_ij[0][1], number(pair.at("kij"))) << pair.at("name1") << ", " << pair.at("name2");
  }
}

TEST_F(ShippedData, IsWhatTheSourcesGive) {
  if (std::system("python3 --version > /dev/null 2>&1") != 0) GTEST_SKIP() << "needs python3";
  EXPECT_EQ(std::system("python3 \"" PROJECT_DIR "/tools/make_fluid_data.py\" --check"), 0);
}

}  // namespace
}  // namespace tessarel::fluid_module
