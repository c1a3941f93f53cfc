// Every routine with arguments that no host should hand in: none may crash, hang or write where it must not. The calls
// are made by signature, and the list is made from the headers.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <set>

#include "interface/host.hpp"
#include "tessarel/blocks.h"

namespace {

using Record = std::unique_ptr<tessarel_blocks, void (*)(tessarel_blocks*)>;

/// Room behind each pointer: enough for any output of a mixture of two.
constexpr std::size_t room = 4096, text_length = 40;
constexpr std::size_t text_room = 2000 * text_length;
constexpr double mark = 0.4375;

/// What a call is made with.
struct Offer {
  double number = mark;
  std::int32_t integer = 2;
  int null = -1;  ///< place of the pointer that is null; -1 none, -2 all
};

void forward(double* t, double* p, double* v, double* u, double* h, double* s, char* err, std::size_t err_len) {
  *v = *u = *h = *s = *t + *p;
  tessarel::assign_padded(err, err_len, "No errors");
}
void forward2(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double*, double*, char* err,
              std::size_t err_len) {
  *q = 0;
  forward(t, p, v, u, h, s, err, err_len);
}

/// The storage of one call.
class Storage {
 public:
  explicit Storage(const Offer& offer) : offer_(offer), blocks_(tessarel_blocks_new(), tessarel_blocks_free) {}

  template <class P>
  P argument(int place) {
    if constexpr (std::is_same_v<P, std::size_t>) {
      return text_length;
    } else if constexpr (std::is_same_v<P, tessarel_forward_1ph>) {
      return null(place) ? nullptr : forward;
    } else if constexpr (std::is_same_v<P, tessarel_forward>) {
      return null(place) ? nullptr : forward2;
    } else {
      using T = std::remove_const_t<std::remove_pointer_t<P>>;
      if (null(place)) return nullptr;
      if constexpr (std::is_same_v<T, tessarel_blocks>) {
        return blocks_.get();
      } else if constexpr (std::is_same_v<T, double>) {
        return numbers_.emplace_back(new std::vector<double>(room, offer_.number))->data();
      } else if constexpr (std::is_same_v<T, std::int32_t>) {
        return integers_.emplace_back(new std::vector<std::int32_t>(room, offer_.integer))->data();
      } else {
        return texts_.emplace_back(new std::vector<char>(text_room, 'x'))->data();
      }
    }
  }
  /// True when no array of numbers has changed behind its first element.
  [[nodiscard]] bool arrays_untouched() const {
    for (const auto& array : numbers_)
      for (std::size_t k = 1; k < room; ++k)
        if (std::memcmp(&(*array)[k], &offer_.number, sizeof(double)) != 0) return false;
    return true;
  }

 private:
  [[nodiscard]] bool null(int place) const { return offer_.null == place || offer_.null == -2; }

  Offer offer_;
  Record blocks_;
  std::vector<std::unique_ptr<std::vector<double>>> numbers_;
  std::vector<std::unique_ptr<std::vector<std::int32_t>>> integers_;
  std::vector<std::unique_ptr<std::vector<char>>> texts_;
};

struct Routine {
  std::string name;
  int pointers = 0;
  bool counts = false;  ///< its first argument is an integer
  std::function<void(Storage&)> call;
};

template <class R, class... P, std::size_t... I>
Routine make(const char* name, R (*routine)(P...), std::index_sequence<I...>) {
  Routine r;
  r.name = name;
  r.pointers = static_cast<int>((0U + ... + (std::is_same_v<P, std::size_t> ? 0U : 1U)));
  using First = std::tuple_element_t<0, std::tuple<P..., void>>;
  r.counts = std::is_same_v<First, const std::int32_t*>;
  r.call = [routine](Storage& s) { (void)routine(s.template argument<P>(static_cast<int>(I))...); };
  return r;
}
template <class R, class... P>
Routine make(const char* name, R (*routine)(P...)) {
  return make(name, routine, std::index_sequence_for<P...>{});
}

/// All that a Storage can call; the life of a record is its own.
const std::vector<Routine>& routines() {
  static const std::vector<Routine> all = [] {
    std::vector<Routine> list = {
#define ROUTINE(name) make("tessarel_" #name, tessarel_##name),
#include "routines.inc"
    };
    std::erase_if(list, [](const Routine& r) { return r.name.starts_with("tessarel_blocks_"); });
    return list;
  }();
  return all;
}

class Routines : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(host::select({"methanol", "acetone"}, {0.4, 0.6}), "No errors"); }
};

TEST_F(Routines, NullPointersAreRefused) {
  EXPECT_EQ(routines().size() + 2, host::declared_names("routines.h").size() + host::declared_names("blocks.h").size());
  for (const Routine& r : routines()) {
    for (int place = -2; place < r.pointers; ++place) {
      if (place == -1) continue;
      Storage s({mark, 2, place});
      r.call(s);
      // An optional output (the status, the texts) may be missing; then the arrays are those of a complete call.
    }
  }
}

TEST_F(Routines, CountsOutOfRangeLeaveArraysAlone) {
  constexpr auto lowest = std::numeric_limits<std::int32_t>::min(), highest = std::numeric_limits<std::int32_t>::max();
  for (const Routine& r : routines()) {
    for (const std::int32_t n : {0, -1, 3, 21, lowest, highest}) {
      Storage s({mark, n, -1});
      r.call(s);
      // Of the kernels of linear algebra n is the order of a matrix, which may be 3.
      EXPECT_TRUE(!r.counts || n == 3 || s.arrays_untouched()) << r.name << " with " << n;
    }
  }
}

TEST_F(Routines, AnyNumbersAreSurvived) {
  constexpr double huge = std::numeric_limits<double>::infinity();
  for (const Routine& r : routines())
    for (const double value : {std::nan(""), huge, -huge, 0.0, -1.0, 1.0, 300.0, 1e300, 1e-300})
      for (const std::int32_t integer : {1, 2}) {
        Storage s({value, integer, -1});
        r.call(s);
      }
}

TEST_F(Routines, RefusedNumbersAreNaN) {
  const double x[2] = {0.4, 0.6}, t = 300, rho = 0.01;
  const std::int32_t one_too_many = 3, two = 2, outside[] = {-1, 3};
  double out = 0;
  tessarel_calc_a(&one_too_many, x, &t, &rho, &out);
  EXPECT_TRUE(std::isnan(out));
  for (const std::int32_t& ipure : outside) {
    out = 0;
    tessarel_calc_z(&two, x, &ipure, &t, &rho, &out);
    EXPECT_TRUE(std::isnan(out)) << ipure;
    EXPECT_TRUE(std::isnan(tessarel_calc_cp0(&ipure, &t))) << ipure;
    const std::int32_t first_power = 1;
    out = 0;
    tessarel_calc_zeta(&two, x, &ipure, &rho, x, &first_power, &out);
    EXPECT_TRUE(std::isnan(out)) << ipure;
  }
  const std::int32_t phase = 3;
  tessarel_calc_rho(&two, x, &t, &t, &phase, &out);
  EXPECT_TRUE(std::isnan(out));
}

// Preparing and assembling apart.

using Prep = void (*)(const std::int32_t*, const double*, const double*, const double*, tessarel_blocks*,
                      std::int32_t*);
using Base = void (*)(const std::int32_t*, const double*, const double*, const tessarel_blocks*, double*);
using Plain = void (*)(const std::int32_t*, const double*, const double*, const double*, double*);

/// `routine` as an F; one that takes ipure, at the mixture.
template <class F, auto routine>
constexpr F at_mixture() {
  if constexpr (std::is_convertible_v<decltype(routine), F>)
    return routine;
  else
    return [](auto n, auto x, auto... more) {
      constexpr std::int32_t mixture = 0;
      routine(n, x, &mixture, more...);
    };
}

/// A value with its orders by t, rho and x.
struct Split {
  const char* name;
  Prep prep;
  Base base;
  Plain plain;
  int t, rho, x;

  /// The lower orders by the same variables; for the mixed derivative by t and rho all of its total order.
  [[nodiscard]] bool serves(const Split& o) const {
    const bool within = t > 0 && rho > 0 ? o.t + o.rho <= t + rho : o.t <= t && o.rho <= rho;
    return within && o.x <= x;
  }
};
#define SPLIT(name, ...)                                                                                       \
  Split {                                                                                                      \
#name, at_mixture < Prep, tessarel_calc_##name##_prep>(), tessarel_calc_##name##_base, at_mixture < Plain, \
        tessarel_calc_##name>(), __VA_ARGS__                                                                   \
  }
const std::vector<Split> splits[] = {
    {SPLIT(a, 0, 0, 0), SPLIT(da_dt, 1, 0, 0), SPLIT(d2a_dt2, 2, 0, 0), SPLIT(d3a_dt3, 3, 0, 0), SPLIT(da_dx, 0, 0, 1),
     SPLIT(d2a_dxdx, 0, 0, 2), SPLIT(d3a_dxdxdx, 0, 0, 3), SPLIT(d2a_dtdx, 1, 0, 1)},
    {SPLIT(z, 0, 0, 0), SPLIT(dz_drho, 0, 1, 0), SPLIT(d2z_drho2, 0, 2, 0), SPLIT(d3z_drho3, 0, 3, 0),
     SPLIT(dz_dt, 1, 0, 0), SPLIT(d2z_dt2, 2, 0, 0), SPLIT(d2z_dtdrho, 1, 1, 0), SPLIT(dz_dx, 0, 0, 1),
     SPLIT(d2z_dxdx, 0, 0, 2)},
};

TEST_F(Routines, BaseOnAPreparedRecordEqualsThePlainRoutine) {
  const std::int32_t n = 2, other = 1;
  const double x[2] = {0.4, 0.6}, t = 320, rho = 0.008;
  for (const auto& of : splits) {
    for (const Split& prepared : of) {
      const Record blocks(tessarel_blocks_new(), tessarel_blocks_free);
      std::int32_t status = 7;
      prepared.prep(&n, x, &t, &rho, blocks.get(), &status);
      EXPECT_EQ(status, 0) << prepared.name;
      for (const auto& all : splits) {
        for (const Split& read : all) {
          std::array<double, 8> value{}, expected{};
          value.fill(mark), expected.fill(mark);
          if (read.x == 0) expected[0] = std::nan("");
          if (&all == &of && prepared.serves(read)) read.plain(&n, x, &t, &rho, expected.data());
          read.base(&n, x, &rho, blocks.get(), value.data());
          for (std::size_t k = 0; k < value.size(); ++k)
            EXPECT_TRUE(std::isnan(expected[k])
                            ? std::isnan(value[k])
                            : std::abs(value[k] - expected[k]) <= 1e-12 * (1 + std::abs(expected[k])))
                << read.name << " on " << prepared.name << ": " << value[k] << " against " << expected[k];
        }
      }
      double value = 0;
      tessarel_calc_a_base(&other, x, &rho, blocks.get(), &value);
      EXPECT_TRUE(std::isnan(value)) << prepared.name;
    }
  }
}

TEST_F(Routines, PureComponentIsPrepared) {
  const std::int32_t n = 2, second = 2, other = 0;
  const double x[2] = {0.4, 0.6}, nothing[2] = {std::nan(""), std::nan("")}, t = 320, rho = 0.008;
  const Record blocks(tessarel_blocks_new(), tessarel_blocks_free);
  double value = 0, expected = 0, mixture = 0;
  tessarel_calc_z_prep(&n, nothing, &second, &t, &rho, blocks.get(), nullptr);
  tessarel_calc_z_base(&n, nothing, &rho, blocks.get(), &value);
  tessarel_calc_z(&n, x, &second, &t, &rho, &expected);
  tessarel_calc_z(&n, x, &other, &t, &rho, &mixture);
  EXPECT_EQ(value, expected);
  EXPECT_NE(value, mixture);
}

// Brent's method on a host's forward calculation.

void square(double* t, double*, double*, double*, double* h, double*, char* err, std::size_t err_len) {
  *h = *t * *t;
  tessarel::assign_padded(err, err_len, *t > 4 ? "too hot" : "No errors");
}

TEST_F(Routines, BrentCallsTheHost) {
  struct Case {
    double a, b, target;
    std::int32_t unknown;
    double root;
    const char* message;
  };
  for (const Case& c : {Case{0, 3, 2, 1, std::sqrt(2.0), "No errors"},
                        Case{1, 3, -1, 1, 0, "Brent_Root: root not bracketed..."}, Case{0, 5, 2, 1, 0, "too hot"},
                        Case{0, 3, 2, 7, std::nan(""), "TESSAREL error: control pair out of range..."}}) {
    std::array<double, 6> vars{};
    vars[4] = c.target;
    const std::int32_t ptr[2] = {c.unknown, 5};
    std::array<char, 80> err{};
    const double root = tessarel_brent_root_1ph(square, &c.a, &c.b, vars.data(), ptr, err.data(), err.size());
    EXPECT_EQ(host::text(err.data(), err.size()), c.message);
    if (std::isnan(c.root))
      EXPECT_TRUE(std::isnan(root));
    else
      EXPECT_NEAR(root, c.root, 1e-14);
    EXPECT_EQ(vars[4], c.target);
  }
}

// Texts and fluid data.

TEST_F(Routines, TextsArePaddedAndFilesFound) {
  std::array<char, 40> lower{};
  tessarel_tolower_tessarel(lower.data(), "Water And ICE", lower.size(), 13);
  EXPECT_EQ(std::string(lower.data(), lower.size()), "water and ice" + std::string(27, ' '));
  std::array<char, 256> directory{};
  tessarel_fluidpath(directory.data(), "TESSAREL", directory.size(), 8);
  const std::string fluids = host::text(directory.data(), directory.size());
  std::vector<char> list(500 * 64);
  tessarel_searchdirectory(fluids.data(), "water*.saf", list.data(), fluids.size(), 10, 64);
  EXPECT_EQ(host::text(list.data(), 64).substr(0, 5), "water");
  std::vector<char> rows(255 * 80);
  std::int32_t status = 7;
  EXPECT_GE(tessarel_getfluid(fluids.data(), "water.saf", rows.data(), &status, fluids.size(), 9, 80), 18);
  EXPECT_EQ(status, 1);
  EXPECT_EQ(host::text(rows.data(), 6), "water");
  EXPECT_EQ(tessarel_getfluid(fluids.data(), "no such", rows.data(), &status, fluids.size(), 7, 80), 0);
  EXPECT_EQ(status, 0);
}

TEST_F(Routines, BinaryParametersAreRead) {
  std::array<char, 256> directory{};
  tessarel_modulepath(directory.data(), "TESSAREL", directory.size(), 8);
  const std::string table = host::text(directory.data(), directory.size()) + "BIPs.mix";
  std::vector<double> bip(1000, mark);
  std::vector<char> names(2000 * 32, '?');
  std::array<char, 80> err{};
  const std::int32_t rows = 3;
  tessarel_readbipsfile(table.data(), &rows, bip.data(), names.data(), err.data(), table.size(), 32, err.size());
  EXPECT_EQ(host::text(err.data(), err.size()), "No errors");
  EXPECT_NE(bip[2], mark);
  EXPECT_EQ(bip[3], mark);
  EXPECT_NE(names[1002 * 32], '?');
  EXPECT_EQ(names[3 * 32], '?');
}

}  // namespace
