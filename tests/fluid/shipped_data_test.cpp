// The fluids that ship: both routes agree with each other, the files with their sources, and the figures are sound.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "fluid/file_location.hpp"
#include "fluid/ideal_gas.hpp"
#include "fluid/readers.hpp"
#include "fluid/sample_records.hpp"

namespace tessarel::fluid {
namespace {

using test::record;

TEST(ShippedData, RecordsAreSoundAndTheSameOnBothRoutes) {
  const std::string directory(fluidpath(model_key).trimmed());
  int files = 0;
  for (const auto& file : std::filesystem::directory_iterator(PROJECT_DIR "/data/fluids")) {
    const std::string name = file.path().stem().string();
    SCOPED_TRACE(name);
    ++files;
    record = Parameters{};
    ASSERT_EQ(readfluidsfile(file.path().string(), 0, record, test::sources.text), "No errors");
    const std::string from_file = test::all_values(0);
    record = Parameters{};
    ASSERT_EQ(readfluidsdb(directory, name + ".saf", 0, record, test::sources), "No errors");
    ASSERT_EQ(test::all_values(0), from_file);
    const Parameters& r = record;
    EXPECT_EQ(r.compname[0].trimmed(), name);
    EXPECT_TRUE(r.mseg[0] > 0.9 && r.mseg[0] < 20);  // the fits of the noble gases lie a little below 1
    EXPECT_TRUE(r.sigma[0] > 2 && r.sigma[0] < 6);
    EXPECT_TRUE(r.epsil[0] > 10 && r.epsil[0] < 600);
    EXPECT_TRUE(r.tmin[0] > 0 && r.tmin[0] < r.tmax[0]);
    for (int k = 0; k <= 50; ++k) EXPECT_GT(calc_cp0(r, 0, r.tmin[0] + k * (r.tmax[0] - r.tmin[0]) / 50), 0);
  }
  EXPECT_EQ(files, 247);
}

TEST(ShippedData, IsWhatTheSourcesGive) {
  if (std::system("python3 --version > /dev/null 2>&1") != 0) GTEST_SKIP() << "needs python3";
  EXPECT_EQ(std::system("python3 \"" PROJECT_DIR "/tools/make_fluid_data.py\" --check"), 0);
}

}  // namespace
}  // namespace tessarel::fluid
