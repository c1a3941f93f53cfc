// Every routine with arguments that no host should hand in: none may crash, hang or write where it must not. The calls
// are made by signature, and the list is made from the headers.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <regex>
#include <set>

#include "envelope/critical_point.hpp"
#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "eos/pressure.hpp"
#include "flash/adapters.hpp"
#include "interface/host.hpp"
#include "solvers/psat_tsat.hpp"
#include "solvers/spinodal.hpp"
#include "tessarel/blocks.h"

namespace {

using Values = std::vector<double>;
using Record = std::unique_ptr<tessarel_blocks, void (*)(tessarel_blocks*)>;

/// Room behind each pointer: enough for the third composition derivatives of an association strength of three
/// components, 3^3 values for each of 15 x 15 pairs of site types.
constexpr std::size_t room = 8192, text_length = 40;
constexpr std::size_t text_room = 2000 * text_length;
constexpr double mark = 0.4375;

/// What a call is made with.
struct Offer {
  double number = mark;
  std::int32_t integer = 2;
  int null = -1;                   ///< place of the pointer that is null; -1 none, -2 all
  std::int32_t further = integer;  ///< the integers behind the first
  std::vector<Values> state{};     ///< what the first arrays of numbers begin with
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
  explicit Storage(const Offer& offer, tessarel_blocks* blocks = nullptr)
      : offer_(offer), own_(tessarel_blocks_new(), tessarel_blocks_free), blocks_(blocks) {}

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
        return blocks();
      } else if constexpr (std::is_same_v<T, double>) {
        const std::size_t k = numbers_.size();
        Values& array = *numbers_.emplace_back(new Values(room, offer_.number));
        if (k < offer_.state.size()) std::copy(offer_.state[k].begin(), offer_.state[k].end(), array.begin());
        return array.data();
      } else if constexpr (std::is_same_v<T, std::int32_t>) {
        const std::int32_t value = integers_.empty() ? offer_.integer : offer_.further;
        return integers_.emplace_back(new std::vector<std::int32_t>(room, value))->data();
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
  [[nodiscard]] tessarel_blocks* blocks() const { return blocks_ != nullptr ? blocks_ : own_.get(); }
  /// What the last array begins with.
  [[nodiscard]] Values output() const { return {numbers_.back()->begin(), numbers_.back()->begin() + 8}; }
  /// The first 32 bit patterns of each array of numbers.
  [[nodiscard]] std::vector<std::uint64_t> results() const {
    std::vector<std::uint64_t> all;
    for (const auto& array : numbers_)
      for (std::size_t k = 0; k < 32; ++k) all.push_back(std::bit_cast<std::uint64_t>((*array)[k]));
    return all;
  }

 private:
  [[nodiscard]] bool null(int place) const { return offer_.null == place || offer_.null == -2; }

  Offer offer_;
  Record own_;
  tessarel_blocks* blocks_;
  std::vector<std::unique_ptr<Values>> numbers_;
  std::vector<std::unique_ptr<std::vector<std::int32_t>>> integers_;
  std::vector<std::unique_ptr<std::vector<char>>> texts_;
};

struct Routine {
  std::string name;
  int pointers = 0;
  bool counts = false;   ///< its first argument is an integer
  bool mixture = false;  ///< ... and its second an array of numbers
  std::function<void(Storage&)> call;
};

template <class R, class... P, std::size_t... I>
Routine make(const char* name, R (*routine)(P...), std::index_sequence<I...>) {
  Routine r;
  r.name = name;
  r.pointers = static_cast<int>((0U + ... + (std::is_same_v<P, std::size_t> ? 0U : 1U)));
  using Arguments = std::tuple<P..., void, void>;
  r.counts = std::is_same_v<std::tuple_element_t<0, Arguments>, const std::int32_t*>;
  r.mixture = r.counts && std::is_same_v<std::tuple_element_t<1, Arguments>, const double*>;
  r.call = [routine](Storage& s) {
    const std::tuple<P...> in_order{s.template argument<P>(static_cast<int>(I))...};
    (void)std::apply(routine, in_order);
  };
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

// With n below the number of selected components the results are those of the first n alone, to the bit.
TEST_F(Routines, ReadTheFirstComponentsAlone) {
  const std::vector<std::string> names = {"methane", "ethanol", "propane", "carbon dioxide", "water", "acetone"};
  for (const std::int32_t n : {1, 2, 3}) {
    std::vector<std::vector<std::uint64_t>> alone;
    for (const std::int32_t selected : {n, 6}) {
      ASSERT_EQ(host::select({names.begin(), names.begin() + selected}, Values(6, 1.0 / selected)), "No errors");
      std::size_t place = 0;
      for (const Routine& r : routines())
        for (const std::int32_t further : {0, 1, 2}) {
          // These begin with a phase or a pair and take the selection, or take all of its components.
          static const std::regex others(".*(_spin|flash|phaseenv|bubdew|prop_q)");
          if (!r.mixture || std::regex_match(r.name, others)) continue;
          Storage s({mark, n, -1, further, {{0.2, 0.5, 0.3}, {320}, {0.006}, {0.006}}});
          r.call(s);
          if (selected == n) alone.push_back(s.results());
          EXPECT_TRUE(alone[place++] == s.results()) << r.name << " of " << n << " with " << further;
        }
    }
    EXPECT_GT(alone.size(), 3 * 60U);
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

/// A value with its orders by t, rho and x.
struct Split {
  const char* name;
  Routine prep, base, plain;
  int t, rho, x;

  /// The lower orders by the same variables; for the mixed derivative by t and rho all of its total order.
  [[nodiscard]] bool serves(const Split& o) const {
    const bool within = t > 0 && rho > 0 ? o.t + o.rho <= t + rho : o.t <= t && o.rho <= rho;
    return within && o.x <= x;
  }
};
#define SPLIT(name, ...)                                                                 \
  Split {                                                                                \
#name, make("", tessarel_calc_##name##_prep), make("", tessarel_calc_##name##_base), \
        make("", tessarel_calc_##name), __VA_ARGS__                                      \
  }
const std::vector<Split> splits[] = {
    {SPLIT(a, 0, 0, 0), SPLIT(da_dt, 1, 0, 0), SPLIT(d2a_dt2, 2, 0, 0), SPLIT(d3a_dt3, 3, 0, 0), SPLIT(da_dx, 0, 0, 1),
     SPLIT(d2a_dxdx, 0, 0, 2), SPLIT(d3a_dxdxdx, 0, 0, 3), SPLIT(d2a_dtdx, 1, 0, 1)},
    {SPLIT(z, 0, 0, 0), SPLIT(dz_drho, 0, 1, 0), SPLIT(d2z_drho2, 0, 2, 0), SPLIT(d3z_drho3, 0, 3, 0),
     SPLIT(dz_dt, 1, 0, 0), SPLIT(d2z_dt2, 2, 0, 0), SPLIT(d2z_dtdrho, 1, 1, 0), SPLIT(dz_dx, 0, 0, 1),
     SPLIT(d2z_dxdx, 0, 0, 2)},
};

TEST_F(Routines, BaseOnAPreparedRecordEqualsThePlainRoutine) {
  const Offer state{mark, 2, -1, 0, {{0.4, 0.6}, {320}, {0.008}}}, density{mark, 2, -1, 0, {{0.4, 0.6}, {0.008}}};
  for (const auto& of : splits) {
    for (const Split& prepared : of) {
      Storage storage(state);
      prepared.prep.call(storage);
      const auto value_of = [&](const Split& read, const Offer& offer) {
        Storage s(offer, storage.blocks());
        read.base.call(s);
        return s.output();
      };
      for (const auto& all : splits) {
        for (const Split& read : all) {
          Storage plain(state);
          read.plain.call(plain);
          const bool served = &all == &of && prepared.serves(read);
          const Values value = value_of(read, density), refused = read.x > 0 ? Values(8, mark) : Values{};
          const Values expected = served ? plain.output() : refused;
          EXPECT_EQ(std::isnan(value[0]), expected.empty()) << read.name << " on " << prepared.name;
          for (std::size_t k = 0; k < expected.size(); ++k)
            EXPECT_NEAR(value[k], expected[k], 1e-12 * (1 + std::abs(expected[k])))
                << read.name << " on " << prepared.name;
        }
      }
      EXPECT_TRUE(std::isnan(value_of(splits[0][0], {mark, 1, -1, 0, density.state})[0])) << prepared.name;
    }
  }
}

TEST_F(Routines, PureComponentIsPrepared) {
  const std::int32_t n = 2, second = 2, other = 0;
  const double x[2] = {0.4, 0.6}, nothing[2] = {std::nan(""), std::nan("")}, t = 320, rho = 0.008;
  const Record blocks(tessarel_blocks_new(), tessarel_blocks_free);
  double value = 0, expected = 0, mixture = 0;
  std::int32_t status = 7;
  tessarel_calc_z_prep(&n, nothing, &second, &t, &rho, blocks.get(), &status);
  EXPECT_EQ(status, 0);
  tessarel_calc_z_base(&n, nothing, &rho, blocks.get(), &value);
  tessarel_calc_z(&n, x, &second, &t, &rho, &expected);
  tessarel_calc_z(&n, x, &other, &t, &rho, &mixture);
  EXPECT_EQ(value, expected);
  EXPECT_NE(value, mixture);
}

TEST(CriticalSearch, PrintsItsPassesForAHostThatAsks) {
  ASSERT_EQ(host::select({"n-hexane", "toluene"}, {0.5, 0.5}), "No errors");
  const double z[] = {0.5, 0.5};
  const std::int32_t n = 2;
  for (const std::int32_t debug : {0, 2, 1, -1}) {  // a host's logical is its lowest bit
    double rho = 1.3e-3, t = 400;
    std::int32_t status = 7;
    ::testing::internal::CaptureStdout();
    tessarel_cubic_newton(&debug, &n, z, &rho, &t, &status);
    EXPECT_EQ(::testing::internal::GetCapturedStdout().find("det Q: pass 1, T = ") == 0, debug % 2 != 0) << debug;
    EXPECT_EQ(status, 0);
  }
}

// Brent's method on a host's forward calculation.

void square(double* t, double*, double*, double*, double* h, double*, char* err, std::size_t err_len) {
  *h = *t * *t;
  tessarel::assign_padded(err, err_len, *t > 4 ? "too hot" : *t < 0 ? "" : "No errors");
}

TEST_F(Routines, BrentCallsTheHost) {
  // A host that reports nothing has failed as well.
  for (const auto& [a, b, target, unknown, message] :
       {std::tuple{0.0, 5.0, 2.0, 1, "too hot"},
        {-1.0, 3.0, 2.0, 1, ""},
        {0.0, 5.0, 2.0, 7, "TESSAREL error: control pair out of range..."}}) {
    std::array<double, 6> vars{0, 0, 0, 0, target, 0};
    const std::int32_t ptr[2] = {unknown, 5};
    std::array<char, 80> err{};
    tessarel_brent_root_1ph(square, &a, &b, vars.data(), ptr, err.data(), err.size());
    EXPECT_EQ(host::text(err.data(), err.size()), message);
    EXPECT_EQ(vars[4], target);
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
  Values bip(1000, mark);
  std::vector<char> names(2000 * 32, '?');
  std::array<char, 80> err{};
  const std::int32_t rows = 3;
  tessarel_readbipsfile(table.data(), &rows, bip.data(), names.data(), err.data(), table.size(), 32, err.size());
  EXPECT_EQ(host::text(err.data(), err.size()), "No errors");
  EXPECT_NE(bip[2], mark);
  EXPECT_EQ(bip[3], mark);
  std::ifstream file(table);
  std::string line;
  for (std::size_t k = 0; k < 3; ++k) {
    const std::string first = host::text(&names[k * 32], 32), second = host::text(&names[(1000 + k) * 32], 32);
    while (std::getline(file, line) && line.find(first) == std::string::npos) continue;
    EXPECT_FALSE(first.empty() || second.empty());
    EXPECT_NE(line.find(second), std::string::npos) << line << " of " << first << ' ' << second;
  }
  EXPECT_EQ(names[3 * 32], '?');
  ASSERT_EQ(host::select({"propane"}, {1}), "No errors");
  err.fill('?');
  tessarel_readbips(err.data(), err.size());
  EXPECT_EQ(err[0], '?');
}

TEST_F(Routines, ReadersFillTheirPlaceAndTheEvaluationsFollow) {
  std::array<char, 256> path{};
  tessarel_fluidpath(path.data(), "TESSAREL", path.size(), 8);
  const std::string directory = host::text(path.data(), path.size()), file = directory + "methane.saf";
  const auto a = [] {
    const std::int32_t n = 2;
    const double x[2] = {0.4, 0.6}, t = 300, rho = 0.008;
    double value = 0;
    tessarel_calc_a(&n, x, &t, &rho, &value);
    return value;
  };
  for (const bool database : {false, true}) {
    ASSERT_EQ(host::select({"methanol", "acetone"}, {0.4, 0.6}), "No errors");
    double before = a();
    for (const std::int32_t i : {0, -1, 21, 2}) {
      std::array<char, 80> err{};
      if (database)
        tessarel_readfluidsdb(directory.data(), "methane.saf", &i, err.data(), directory.size(), 11, err.size());
      else
        tessarel_readfluidsfile(file.data(), &i, err.data(), file.size(), err.size());
      EXPECT_EQ(host::text(err.data(), 80), i == 2 ? "No errors" : "Place of a component must be 1 to 20...");
    }
    EXPECT_EQ(host::parameters().compname[0].trimmed(), "methanol");
    EXPECT_EQ(host::parameters().compname[1].trimmed(), "methane");
    EXPECT_NE(a(), std::exchange(before, a()));
    host::parameters().eps_hb[0][0][0][1] += 100;
    tessarel_setassocpar();
    EXPECT_NE(a(), before);
    ASSERT_EQ(host::select({"propane"}, {1}), "No errors");
  }
}

// Exports that are written out, against the functions behind them: the same numbers in the same places.

void expect_same(const char* what, const std::function<void(double*)>& exported,
                 const std::function<void(double*)>& inner) {
  const Values untouched(20, mark);
  Values a = untouched, b = untouched;
  exported(a.data()), inner(b.data());
  EXPECT_EQ(a, b) << what;
  EXPECT_NE(a, untouched) << what;
}
#define SAME(exported, inner) \
  expect_same(                \
      #exported, [&](double* o) { tessarel_##exported; }, [&](double* o) { (void)(inner); })

TEST_F(Routines, ExportsOfAMixtureAreTheFunctionsBehindThem) {
  using namespace tessarel;
  const eos::Fluid f = host::session().fluid();
  const eos::Eos& eos = f.eos;
  const std::int32_t n = 2, zero = 0, one = 1, two = 2, all = 6;
  const double x[2] = {0.3, 0.7}, t = 320, p = 2e5, rho = 0.008, eta = 0.3, v = 2e-4, vr = 9;
  double bar = 2;
  std::int32_t code = 0;
  std::array<char, 80> err{};
  char* e = err.data();
  const auto d = calc_p_deta(eos, 2, 2, t, eta);
  SAME(calc_v(&t, &p, &one, o, e, 80), calc_v(eos, 2, f.z, t, p, 1, *o));
  SAME(calc_hsu(&t, &p, &v, o, o + 1, o + 2, e, 80), calc_hsu(eos, 2, f.z, t, p, v, o[0], o[1], o[2]));
  SAME(calc_rho(&n, x, &t, &p, &two, o), calc_rho(eos, 2, x, t, p, 2, *o));
  SAME(calc_eta_rho(&n, x, &two, &t, &rho, o), *o = calc_eta_rho(eos, 2, x, 2, t, rho));
  SAME(calc_rho_eta(&n, x, &two, &t, &eta, o), *o = calc_rho_eta(eos, 2, x, 2, t, eta));
  SAME(calc_p(&t, &v, o), *o = calc_p(eos, 2, f.z, t, v));
  SAME(calc_p_deta(&n, &two, &t, &eta, o, o + 1, o + 2, o + 3),
       (o[0] = d.p, o[1] = d.dp_deta, o[2] = d.d2p_deta2, o[3] = d.d3p_deta3));
  SAME(calc_lnphi_tprho(&n, x, &t, &p, &rho, o), calc_lnphi_tprho(eos, 2, x, t, p, rho, o));
  SAME(calc_lnphi_tpxn(&n, x, &t, &p, &rho, o, o + 2, o + 4, o + 8),
       calc_lnphi_tpxn(eos, 2, x, t, p, rho, o, o + 2, o + 4, o + 8));
  SAME(calc_lnphi_tpn(&n, x, &t, &p, &one, o, o + 2, o + 4, o + 6),
       calc_lnphi_tpn(eos, 2, x, t, p, 1, o, o + 2, o + 4, o + 6));
  SAME(fugacoeff(&all, &one, &n, x, &t, &bar, o, o + 2, o + 4, o + 6, &code, &code),
       flash::fugacoeff(eos, 6, 1, 2, x, t, bar, o, o + 2, o + 4, o + 6, code, code));
  SAME(fluiddata(&two, o, o + 1, o + 2), flash::fluiddata(host::parameters(), f.limits, 2, o[0], o[1], o[2]));
  SAME(auxprop(&n, x, &t, &bar, &one, o, o + 1), flash::auxprop(eos, 2, x, t, bar, 1, *o, o + 1));
  SAME(auxprop_v(&n, x, &t, &bar, &vr, o), flash::auxprop_v(eos, 2, x, t, bar, vr, o));
  SAME(calc_d(&n, &two, &t, o), (tessarel_calc_d(&n, &zero, &t, o), o[0] = mark));
  fluid::Limits limits = f.limits;
  EXPECT_EQ(envelope::critpure(eos, 2, f.z, 2, limits), no_errors);
  tessarel_critpure(&two, e, 80);
  EXPECT_TRUE(f.limits.tc == limits.tc && f.limits.pc == limits.pc && f.limits.rhoc == limits.rhoc);
  EXPECT_TRUE(std::isfinite(tessarel_calc_cp0(&two, &t)));
  double lnphi[2] = {mark, mark};
  tessarel_calc_lnphi(&n, x, &t, &p, &zero, lnphi);
  EXPECT_EQ(lnphi[0], mark);
}

TEST_F(Routines, ExportsOfAPureFluidAreTheFunctionsBehindThem) {
  using namespace tessarel;
  ASSERT_EQ(host::select({"propane"}, {1}), "No errors");
  const eos::Fluid f = host::session().fluid();
  const double t = 320, p = 2e6, rho_l = 0.006, rho_v = 0.0004, eta = 0.3, a = 0.9 * t, b = f.limits.tc;
  const std::int32_t liquid = 1;
  std::array<char, 80> err{};
  char* e = err.data();
  SAME(calc_lnphi_rho_pure(&t, &p, o, o + 1, o + 2, o + 3), calc_lnphi_rho_pure(f.eos, t, p, o[0], o[1], o[2], o[3]));
  SAME(calc_lnphi_eta(&t, &p, o, o + 1), calc_lnphi_eta(f.eos, t, p, o[0], o[1]));
  SAME(calc_dlnphi_dp_rho_pure(&t, &p, &rho_l, &rho_v, o, o + 1),
       eos::calc_dlnphi_dp_rho_pure(t, p, rho_l, rho_v, o[0], o[1]));
  SAME(calc_dlnphi_dt_rho_pure(&t, &p, &rho_l, &rho_v, o, o + 1),
       calc_dlnphi_dt_rho_pure(f.eos, t, p, rho_l, rho_v, o[0], o[1]));
  SAME(calc_psat(&t, o, e, 80), solvers::calc_psat(f, t, *o));
  SAME(calc_tsat(&p, o, e, 80), solvers::calc_tsat(f, p, *o));
  SAME(calc_vspin(&t, o, o + 1, e, 80), solvers::calc_vspin(f, t, o[0], o[1]));
  SAME(calc_vspin_phase(&eta, &t, o, e, 80), solvers::calc_vspin_phase(f, eta, t, *o));
  SAME(calc_pspin(&t, o, o + 1, e, 80), solvers::calc_pspin(f, t, o[0], o[1]));
  SAME(calc_tspin(&p, o, o + 1, e, 80), solvers::calc_tspin(f, p, o[0], o[1]));
  SAME(brent_spin(&liquid, &p, &a, &b, o, e, 80), solvers::brent_spin(f, 1, p, a, b, *o));
  SAME(bisec_spin(&liquid, &p, &a, &b, o, e, 80), solvers::bisec_spin(f, 1, p, a, b, *o));
}

}  // namespace
