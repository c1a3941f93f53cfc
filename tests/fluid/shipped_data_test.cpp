// The fluids that ship: both routes agree with each other and with the tables of sources, and the figures are sound.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "fluid/bips.hpp"
#include "fluid/file_location.hpp"
#include "fluid/ideal_gas.hpp"
#include "fluid/readers.hpp"
#include "fluid/sample_records.hpp"

namespace tessarel::fluid {
namespace {

using test::record;

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
  static const std::regex element("([A-Z][a-z]?)([0-9]*)");
  double mass = 0;
  for (std::sregex_iterator part(formula.begin(), formula.end(), element), end; part != end; ++part)
    mass += weights.at(part->str(1)) * (part->length(2) == 0 ? 1 : std::stoi(part->str(2)));
  return mass;
}

TEST(ShippedData, RecordsHoldTheTabulatedValuesOnBothRoutesAndTheyAreSound) {
  const auto fluids = read_table("fluids.csv");
  ASSERT_EQ(fluids.size(), 247U);
  const std::string directory(fluidpath(model_key).trimmed());
  const Parameters& r = record;
  std::set<std::string> names;
  for (const Row& fluid : fluids) {
    const std::string& name = fluid.at("name");
    SCOPED_TRACE(name);
    EXPECT_TRUE(names.insert(name).second);
    EXPECT_LE(name.size(), 32U);
    record = Parameters{};
    ASSERT_EQ(readfluidsfile(directory + name + ".saf", 0, record, test::sources.text), "No errors");
    const std::string from_file = test::all_values(0);
    record = Parameters{};
    ASSERT_EQ(readfluidsdb(directory, name + ".saf", 0, record, test::sources), "No errors");
    ASSERT_EQ(test::all_values(0), from_file);

    EXPECT_EQ(r.compname[0].trimmed(), name);
    const auto expect = [&](double value, const char* column) {
      EXPECT_NEAR(value, number(fluid.at(column)), 1e-15 * std::abs(value)) << column;
    };
    expect(r.tmin[0], "tmin"), expect(r.tmax[0], "tmax"), expect(r.molmas[0], "molar_mass"),
        expect(r.omega[0], "omega");
    expect(r.mseg[0], "m"), expect(r.sigma[0], "sigma"), expect(r.epsil[0], "epsilon_k"), expect(r.delhf0[0], "hf298");
    expect(r.cp0_a[0], "cp_a"), expect(r.cp0_b[0] * 1e3, "cp_b");
    expect(r.cp0_c[0] * 1e6, "cp_c"), expect(r.cp0_d[0] * 1e9, "cp_d");
    expect(r.dipole[0], "dipole"), expect(r.quapole[0], "quadrupole"), expect(r.polariz[0], "polarizability");
    const bool associates = number(fluid.at("n_donor_sites")) > 0 && number(fluid.at("n_acceptor_sites")) > 0;
    ASSERT_EQ(r.nhb_typ[0], associates ? 2 : 0);
    if (associates) {
      expect(r.nhb_no[0][0], "n_donor_sites"), expect(r.nhb_no[0][1], "n_acceptor_sites");
      expect(r.eps_hb[0][0][0][1], "epsilon_k_ab"), expect(r.kap_hb[0][0], "kappa_ab");
    }

    const double mass = mass_of(fluid.at("formula"));
    EXPECT_NEAR(r.molmas[0], mass, 2e-4 * mass);
    EXPECT_TRUE(r.mseg[0] > 0.9 && r.mseg[0] < 20);  // the fits of the noble gases lie a little below 1
    EXPECT_TRUE(r.sigma[0] > 2 && r.sigma[0] < 6);
    EXPECT_TRUE(r.epsil[0] > 10 && r.epsil[0] < 600);
    EXPECT_TRUE(r.tmin[0] > 0 && r.tmin[0] < r.tmax[0]);
    for (int k = 0; k <= 50; ++k) EXPECT_GT(calc_cp0(r, 0, r.tmin[0] + k * (r.tmax[0] - r.tmin[0]) / 50), 0);
  }
}

TEST(ShippedData, EveryPairIsInTheTable) {
  const auto pairs = read_table("kij.csv");
  ASSERT_EQ(pairs.size(), 783U);
  record.n = 2;
  for (const Row& pair : pairs) {
    record.compname[0].assign(pair.at("name2"));
    record.compname[1].assign(pair.at("name1"));
    ASSERT_EQ(readbips(record, test::sources.bips), "No errors");
    ASSERT_EQ(record.k_ij[0][1], number(pair.at("kij"))) << pair.at("name1") << ", " << pair.at("name2");
  }
}

TEST(ShippedData, IsWhatTheSourcesGive) {
  if (std::system("python3 --version > /dev/null 2>&1") != 0) GTEST_SKIP() << "needs python3";
  EXPECT_EQ(std::system("python3 \"" PROJECT_DIR "/tools/make_fluid_data.py\" --check"), 0);
}

}  // namespace
}  // namespace tessarel::fluid
